#include "ui/window_capture_win.h"

#include <string>

#include "ui/geometry.h"

namespace vrl {
namespace {

// Windows' own types for these (DPI_AWARENESS_CONTEXT) come with newer headers than we target;
// the handle is a handle either way.
using GetWindowDpiAwarenessContextFn = HANDLE(WINAPI*)(HWND);
using SetThreadDpiAwarenessContextFn = HANDLE(WINAPI*)(HANDLE);
using DwmGetWindowAttributeFn = HRESULT(WINAPI*)(HWND, DWORD, void*, DWORD);
constexpr DWORD kExtendedFrameBounds = 9;  // DWMWA_EXTENDED_FRAME_BOUNDS
const HANDLE kPerMonitorAware = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-3));  // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE

FARPROC User32Function(const char* name) { return ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name); }

SetThreadDpiAwarenessContextFn SetThreadContext() {
    static const auto set =
        reinterpret_cast<SetThreadDpiAwarenessContextFn>(User32Function("SetThreadDpiAwarenessContext"));
    return set;
}

PixelRect Pixels(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

// The window's visible frame on the screen, in physical pixels whatever the caller's awareness;
// empty when the desktop window manager cannot say (before Windows Vista, or composition off).
RECT ExtendedFrameBounds(HWND window) {
    RECT bounds{};
    wchar_t system[MAX_PATH];
    const UINT length = ::GetSystemDirectoryW(system, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return bounds;
    HMODULE dwm = ::LoadLibraryW((std::wstring(system, length) + L"\\dwmapi.dll").c_str());
    if (!dwm) return bounds;
    const auto get = reinterpret_cast<DwmGetWindowAttributeFn>(::GetProcAddress(dwm, "DwmGetWindowAttribute"));
    if (!get || FAILED(get(window, kExtendedFrameBounds, &bounds, sizeof bounds))) bounds = RECT{};
    ::FreeLibrary(dwm);
    return bounds;
}

}  // namespace

WindowDpiScope::WindowDpiScope(HWND window) {
    static const auto getContext =
        reinterpret_cast<GetWindowDpiAwarenessContextFn>(User32Function("GetWindowDpiAwarenessContext"));
    if (getContext && window) Enter(getContext(window));
}

WindowDpiScope::WindowDpiScope(ScreenPixels) { Enter(kPerMonitorAware); }

void WindowDpiScope::Enter(HANDLE context) {
    if (context && SetThreadContext()) previous_ = SetThreadContext()(context);
}

WindowDpiScope::~WindowDpiScope() {
    if (previous_) SetThreadContext()(previous_);
}

HBITMAP CopyRegion(HDC source, const RECT& region, int width, int height) {
    HBITMAP bitmap = ::CreateCompatibleBitmap(source, width, height);
    HDC memory = ::CreateCompatibleDC(source);
    if (bitmap && memory) {
        HGDIOBJ old = ::SelectObject(memory, bitmap);
        const int regionWidth = region.right - region.left;
        const int regionHeight = region.bottom - region.top;
        if (regionWidth == width && regionHeight == height) {
            ::BitBlt(memory, 0, 0, width, height, source, region.left, region.top, SRCCOPY);
        } else {
            ::SetStretchBltMode(memory, HALFTONE);
            ::SetBrushOrgEx(memory, 0, 0, nullptr);
            ::StretchBlt(memory, 0, 0, width, height, source, region.left, region.top, regionWidth, regionHeight,
                         SRCCOPY);
        }
        ::SelectObject(memory, old);
    }
    if (memory) ::DeleteDC(memory);
    return bitmap;
}

HBITMAP CaptureClientRegion(HWND window, const RECT& region, int width, int height) {
    HDC source = ::GetDC(window);
    if (!source) return nullptr;
    HBITMAP bitmap = CopyRegion(source, region, width, height);
    ::ReleaseDC(window, source);
    return bitmap;
}

RECT VisibleWindowFrame(HWND window) {
    // The frame bounds are in screen pixels, whatever the caller's awareness.
    RECT onScreen{};
    {
        const WindowDpiScope scope{WindowDpiScope::ScreenPixels{}};
        ::GetWindowRect(window, &onScreen);
    }
    const RECT frame = ExtendedFrameBounds(window);
    RECT own{};
    {
        const WindowDpiScope scope(window);
        ::GetWindowRect(window, &own);
    }
    const PixelRect r = VisibleFrameInWindow(Pixels(own), Pixels(onScreen), Pixels(frame));
    return RECT{r.left, r.top, r.right, r.bottom};
}

}  // namespace vrl
