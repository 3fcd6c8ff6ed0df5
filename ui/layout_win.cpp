#include "ui/layout_win.h"

namespace vrl {

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
