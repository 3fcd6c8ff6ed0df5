#include "ui/layout_win.h"

namespace vrl {

RECT AnchoredRect(HWND panel, const UnitRect& units, int clientWidth, int clientHeight) {
    RECT r{units.left, units.top, units.right, units.bottom};
    ::MapDialogRect(panel, &r);
    // Decided on the unit values: rounding to pixels must not move an edge to the other side.
    if (units.left < 0) r.left += clientWidth;
    if (units.right < 1) r.right += clientWidth;
    if (units.top < 0) r.top += clientHeight;
    if (units.bottom < 1) r.bottom += clientHeight;
    return r;
}

void MoveAnchored(HWND panel, HWND control, const UnitRect& units, int clientWidth,
                  int clientHeight) {
    if (!control) return;
    const RECT r = AnchoredRect(panel, units, clientWidth, clientHeight);
    ::MoveWindow(control, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
}

}  // namespace vrl
