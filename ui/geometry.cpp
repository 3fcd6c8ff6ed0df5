#include "ui/geometry.h"

#include <cstdint>

namespace vrl {
namespace {

int MulDivRounded(int value, int numerator, int denominator) {
    if (denominator <= 0 || numerator <= 0) return value;
    const std::int64_t product = static_cast<std::int64_t>(value) * numerator;
    const std::int64_t half = denominator / 2;
    return static_cast<int>(product >= 0 ? (product + half) / denominator : -((-product + half) / denominator));
}

}  // namespace

PixelRect AnchorInArea(const UnitRect& units, PixelRect pixels, int width, int height) {
    if (units.left < 0) pixels.left += width;
    if (units.right < 1) pixels.right += width;
    if (units.top < 0) pixels.top += height;
    if (units.bottom < 1) pixels.bottom += height;
    return pixels;
}

int ScaleToDpi(int pixels, int dpi) { return MulDivRounded(pixels, dpi, kBaseDpi); }

int ScaleFromDpi(int pixels, int dpi) { return MulDivRounded(pixels, kBaseDpi, dpi); }

PixelRect VisibleFrameInWindow(const PixelRect& window, const PixelRect& screenWindow, const PixelRect& frame) {
    const PixelRect whole{0, 0, window.Width(), window.Height()};
    const bool inside = frame.Width() > 0 && frame.Height() > 0 && frame.left >= screenWindow.left &&
                        frame.top >= screenWindow.top && frame.right <= screenWindow.right &&
                        frame.bottom <= screenWindow.bottom;
    if (!inside) return whole;
    // The borders in screen pixels, in the window's own pixels.
    const auto across = [&](int pixels) { return MulDivRounded(pixels, window.Width(), screenWindow.Width()); };
    const auto down = [&](int pixels) { return MulDivRounded(pixels, window.Height(), screenWindow.Height()); };
    return {across(frame.left - screenWindow.left), down(frame.top - screenWindow.top),
            whole.right - across(screenWindow.right - frame.right),
            whole.bottom - down(screenWindow.bottom - frame.bottom)};
}

}  // namespace vrl
