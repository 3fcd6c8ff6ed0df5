#include "ui/layout_win.h"

namespace vrl {

int WindowDpi(HWND window) {
    // Windows 10 1607 and later say what each window is drawn at; before, a DPI-aware program
    // runs at the resolution of the screen's device context.
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    static const auto dpiForWindow =
        reinterpret_cast<GetDpiForWindowFn>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow"));
    if (window && dpiForWindow) {
        const UINT dpi = dpiForWindow(window);
        if (dpi > 0) return static_cast<int>(dpi);
    }
    HDC screen = ::GetDC(nullptr);
    const int dpi = screen ? ::GetDeviceCaps(screen, LOGPIXELSY) : 0;
    if (screen) ::ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : kBaseDpi;
}

PixelRect AnchoredWindowRect(HWND window, const UnitRect& units, int width, int height) {
    RECT r{units.left, units.top, units.right, units.bottom};
    ::MapDialogRect(window, &r);
    return AnchorInArea(units, PixelRect{r.left, r.top, r.right, r.bottom}, width, height);
}

RECT AnchoredRect(HWND panel, const UnitRect& units, int clientWidth, int clientHeight) {
    const PixelRect r = AnchoredWindowRect(panel, units, clientWidth, clientHeight);
    return RECT{r.left, r.top, r.right, r.bottom};
}

void MoveAnchored(HWND panel, HWND control, const UnitRect& units, int clientWidth,
                  int clientHeight) {
    if (!control) return;
    const RECT r = AnchoredRect(panel, units, clientWidth, clientHeight);
    ::MoveWindow(control, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
}

}  // namespace vrl
