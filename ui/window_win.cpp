#include "ui/window_win.h"

#include <vector>

namespace vrl {
namespace {

// Objects waiting for their window, per thread; the first message of the new window takes one.
thread_local std::vector<CWindowImplBase*> t_pendingCreations;

}  // namespace

void CWindowImplBase::ExpectCreation(CWindowImplBase* object) { t_pendingCreations.push_back(object); }

CWindowImplBase* CWindowImplBase::TakeCreation() {
    if (t_pendingCreations.empty()) return nullptr;
    CWindowImplBase* object = t_pendingCreations.back();
    t_pendingCreations.pop_back();
    return object;
}

void CWindowImplBase::CancelCreation(CWindowImplBase* object) {
    if (!t_pendingCreations.empty() && t_pendingCreations.back() == object) t_pendingCreations.pop_back();
}

bool CWindowImplBase::Dispatch(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) noexcept {
    // An exception must not reach the system's frames between us and the message loop: the
    // 32-bit build unwinds with DWARF tables, which cannot pass through them, and the process
    // ends on the spot. What a handler had not finished stays undone; the program goes on.
    try {
        return ProcessWindowMessage(hwnd, msg, wp, lp, result);
    } catch (...) {
        result = 0;
        return true;
    }
}

HWND CWindowImpl::Create(const ClassSpec& spec, HWND parent, const wchar_t* title, DWORD style, DWORD exStyle,
                         int x, int y, int width, int height, HMENU menu) {
    HINSTANCE instance = ::GetModuleHandleW(nullptr);
    WNDCLASSEXW existing{};
    existing.cbSize = sizeof existing;
    if (!::GetClassInfoExW(instance, spec.name, &existing)) {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        wc.style = spec.style;
        wc.lpfnWndProc = &CWindowImpl::StartWindowProc;
        wc.cbWndExtra = spec.windowExtraBytes;
        wc.hInstance = instance;
        wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = spec.background;
        wc.lpszClassName = spec.name;
        if (!::RegisterClassExW(&wc)) return nullptr;
    }
    ExpectCreation(this);
    HWND hwnd = ::CreateWindowExW(exStyle, spec.name, title, style, x, y, width, height, parent, menu,
                                  instance, this);
    if (!hwnd) {
        CancelCreation(this);
        Detach();
    }
    return hwnd;
}

LRESULT CALLBACK CWindowImpl::StartWindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = static_cast<CWindowImpl*>(TakeCreation());
    if (!self) return ::DefWindowProcW(hwnd, msg, wp, lp);
    self->Attach(hwnd);
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWindowImpl::WindowProc));
    return self->Route(hwnd, msg, wp, lp);
}

LRESULT CALLBACK CWindowImpl::WindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = reinterpret_cast<CWindowImpl*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self) return ::DefWindowProcW(hwnd, msg, wp, lp);
    return self->Route(hwnd, msg, wp, lp);
}

LRESULT CWindowImpl::Route(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    LRESULT result = 0;
    if (!Dispatch(hwnd, msg, wp, lp, result)) result = DefaultHandling(msg, wp, lp);
    if (msg == WM_NCDESTROY) {
        ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        Detach();
        OnFinalMessage(hwnd);
    }
    return result;
}

LRESULT CWindowImpl::DefaultHandling(UINT msg, WPARAM wp, LPARAM lp) {
    return ::DefWindowProcW(m_hWnd, msg, wp, lp);
}

LRESULT CFrameWindowImpl::DefaultHandling(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DESTROY) {
        // Only a top-level frame ends the program, and it ends it with the value 1.
        const LONG_PTR style = ::GetWindowLongPtrW(m_hWnd, GWL_STYLE);
        if ((style & (WS_CHILD | WS_POPUP)) == 0) ::PostQuitMessage(1);
        return 0;
    }
    return CWindowImpl::DefaultHandling(msg, wp, lp);
}

}  // namespace vrl
