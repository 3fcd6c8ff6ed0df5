#pragma once
// Anchor layout for resizable panels: rectangles in dialog units whose negative (or, on the
// right and bottom, zero) edges count from the far side of the client area.

#include <windows.h>

#include "ui/geometry.h"

namespace vrl {

// The pixel rectangle of `units` in a client area of `clientWidth` x `clientHeight`:
// (6, 24, -6, -6) stays 6 units away from every edge; a right or bottom of 0 is the edge itself.
RECT AnchoredRect(HWND panel, const UnitRect& units, int clientWidth, int clientHeight);
// The same for a window placed in an area of `width` x `height` by its own dialog units.
PixelRect AnchoredWindowRect(HWND window, const UnitRect& units, int width, int height);

// Moves the control to its anchored rectangle and repaints it.
void MoveAnchored(HWND panel, HWND control, const UnitRect& units, int clientWidth,
                  int clientHeight);
inline void MoveAnchored(HWND panel, int controlId, const UnitRect& units, int clientWidth,
                         int clientHeight) {
    MoveAnchored(panel, ::GetDlgItem(panel, controlId), units, clientWidth, clientHeight);
}

// Pixels per logical inch of `window` (of the screen when `window` is null or Windows cannot say).
int WindowDpi(HWND window);
// A size given in pixels at 96 DPI, in pixels of `window`.
inline int ScaledForWindow(HWND window, int pixelsAt96) { return ScaleToDpi(pixelsAt96, WindowDpi(window)); }

}  // namespace vrl
