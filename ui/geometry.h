#pragma once
// Pixel rectangles, and the rectangles of the anchor layout: edges given in dialog units, where a
// negative edge (and a right or bottom of 0) counts from the far side of the area the rectangle
// lives in. Panels lay out their controls in their client area this way, and the default window
// layout places panels on the work area the same way.

namespace vrl {

// Left, top, right, bottom in dialog units of a window's font.
struct UnitRect {
    int left, top, right, bottom;
};

struct PixelRect {
    int left = 0, top = 0, right = 0, bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool operator==(const PixelRect& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
};

// `pixels` is `units` converted with the window's own dialog-unit conversion; the result counts
// the anchored edges from the far sides of a `width` x `height` area. Which edges are anchored is
// decided on the unit values: rounding to pixels must not move an edge to the other side.
PixelRect AnchorInArea(const UnitRect& units, PixelRect pixels, int width, int height);

// Sizes that the companion fixes in pixels are pixels at 96 per logical inch. The program tells
// Windows it is DPI-aware, so Windows leaves its windows unscaled: the program scales them itself.
inline constexpr int kBaseDpi = 96;
// `pixels` at 96 DPI, at `dpi`; rounded to nearest, halves away from zero (as MulDiv rounds).
int ScaleToDpi(int pixels, int dpi);
// A size measured at `dpi`, at 96 DPI again: how a width the user set is stored. For any dpi of
// 96 or more, scaling a stored size and storing it again gives the same number.
int ScaleFromDpi(int pixels, int dpi);

// The rectangle the player sees as a window, in the coordinates of that window's own device
// context. `window` is the window's rectangle as its device context counts it; `screenWindow` the
// same rectangle and `frame` the visible frame, both in screen pixels (which differ from the
// first when Windows scales the window). The whole window when the frame is empty or not inside it.
PixelRect VisibleFrameInWindow(const PixelRect& window, const PixelRect& screenWindow, const PixelRect& frame);

}  // namespace vrl
