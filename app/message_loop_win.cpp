#include "app/message_loop_win.h"

#include <algorithm>

namespace vrl {

CAppModule g_module;

void CMessageLoop::AddMessageFilter(CMessageFilter* filter) { filters_.push_back(filter); }

void CMessageLoop::RemoveMessageFilter(CMessageFilter* filter) {
    filters_.erase(std::remove(filters_.begin(), filters_.end(), filter), filters_.end());
}

void CMessageLoop::AddIdleHandler(CIdleHandler* handler) { idleHandlers_.push_back(handler); }

void CMessageLoop::RemoveIdleHandler(CIdleHandler* handler) {
    idleHandlers_.erase(std::remove(idleHandlers_.begin(), idleHandlers_.end(), handler), idleHandlers_.end());
}

bool CMessageLoop::IsIdleMessage(UINT message) {
    switch (message) {
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
    case WM_PAINT:
    case 0x0118:  // the system timer that blinks the caret
        return true;
    }
    return false;
}

bool CMessageLoop::RunIdleHandlers(int /*idleCount*/) {
    // A handler may remove itself while it runs, so walk a copy.
    const std::vector<CIdleHandler*> handlers = idleHandlers_;
    for (CIdleHandler* handler : handlers) handler->OnIdle();
    return false;  // one pass per stretch of idleness
}

bool CMessageLoop::PreTranslate(MSG* msg) {
    const std::vector<CMessageFilter*> filters = filters_;
    for (auto it = filters.rbegin(); it != filters.rend(); ++it) {
        if ((*it)->PreTranslateMessage(msg)) return true;
    }
    return false;
}

int CMessageLoop::Run() {
    bool doIdle = true;
    int idleCount = 0;
    for (;;) {
        while (doIdle && !::PeekMessageW(&msg_, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!RunIdleHandlers(idleCount++)) doIdle = false;
        }
        const BOOL got = ::GetMessageW(&msg_, nullptr, 0, 0);
        if (got == -1) continue;
        if (!got) break;
        if (!PreTranslate(&msg_)) {
            ::TranslateMessage(&msg_);
            ::DispatchMessageW(&msg_);
        }
        if (!IsIdleMessage(msg_.message)) {
            doIdle = true;
            idleCount = 0;
        }
    }
    return static_cast<int>(msg_.wParam);
}

void CAppModule::Init(HINSTANCE instance) {
    instance_ = instance;
    mainThreadId_ = ::GetCurrentThreadId();
    ::InitializeCriticalSection(&loopLock_);
    lockReady_ = true;
}

void CAppModule::Term() {
    if (!lockReady_) return;
    ::EnterCriticalSection(&loopLock_);
    loops_.clear();
    ::LeaveCriticalSection(&loopLock_);
    ::DeleteCriticalSection(&loopLock_);
    lockReady_ = false;
}

bool CAppModule::AddMessageLoop(CMessageLoop* loop) {
    ::EnterCriticalSection(&loopLock_);
    const bool added = loops_.emplace(::GetCurrentThreadId(), loop).second;
    ::LeaveCriticalSection(&loopLock_);
    return added;
}

bool CAppModule::RemoveMessageLoop() {
    ::EnterCriticalSection(&loopLock_);
    const bool removed = loops_.erase(::GetCurrentThreadId()) == 1;
    ::LeaveCriticalSection(&loopLock_);
    return removed;
}

CMessageLoop* CAppModule::GetMessageLoop(DWORD threadId) {
    if (!lockReady_) return nullptr;
    ::EnterCriticalSection(&loopLock_);
    auto it = loops_.find(threadId);
    CMessageLoop* loop = it == loops_.end() ? nullptr : it->second;
    ::LeaveCriticalSection(&loopLock_);
    return loop;
}

}  // namespace vrl
