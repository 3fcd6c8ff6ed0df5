#include "ui/geometry.h"

namespace vrl {

PixelRect AnchorInArea(const UnitRect& units, PixelRect pixels, int width, int height) {
    if (units.left < 0) pixels.left += width;
    if (units.right < 1) pixels.right += width;
    if (units.top < 0) pixels.top += height;
    if (units.bottom < 1) pixels.bottom += height;
    return pixels;
}

}  // namespace vrl
