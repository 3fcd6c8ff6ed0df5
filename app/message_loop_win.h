#pragma once
// The program's one message loop, with the filter and idle-handler chains that the main frame
// registers itself in. Filters see each message last-registered first; idle handlers run
// first-registered first, once per stretch of idleness.

#include <windows.h>

#include <map>
#include <vector>

namespace vrl {

class CMessageFilter {
public:
    virtual ~CMessageFilter() = default;
    // True when the message was consumed and must not be dispatched.
    virtual bool PreTranslateMessage(MSG* msg) = 0;
};

class CIdleHandler {
public:
    virtual ~CIdleHandler() = default;
    virtual bool OnIdle() = 0;
};

class CMessageLoop {
public:
    void AddMessageFilter(CMessageFilter* filter);
    void RemoveMessageFilter(CMessageFilter* filter);
    void AddIdleHandler(CIdleHandler* handler);
    void RemoveIdleHandler(CIdleHandler* handler);

    // Runs until WM_QUIT and returns its wParam.
    int Run();

    // Messages that do not end a stretch of idleness: mouse moves, paints and the caret's system timer.
    static bool IsIdleMessage(UINT message);

private:
    bool RunIdleHandlers(int idleCount);
    bool PreTranslate(MSG* msg);

    std::vector<CMessageFilter*> filters_;
    std::vector<CIdleHandler*> idleHandlers_;
    MSG msg_{};
};

// The module: one per process. Maps the user-interface thread to its message loop.
class CAppModule {
public:
    void Init(HINSTANCE instance);
    void Term();

    HINSTANCE Instance() const { return instance_; }
    DWORD MainThreadId() const { return mainThreadId_; }

    bool AddMessageLoop(CMessageLoop* loop);
    bool RemoveMessageLoop();
    CMessageLoop* GetMessageLoop(DWORD threadId = ::GetCurrentThreadId());

private:
    HINSTANCE instance_ = nullptr;
    DWORD mainThreadId_ = 0;
    CRITICAL_SECTION loopLock_{};
    bool lockReady_ = false;
    std::map<DWORD, CMessageLoop*> loops_;
};

extern CAppModule g_module;

}  // namespace vrl
