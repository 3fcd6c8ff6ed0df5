#include "ui/geometry.h"

#include <gtest/gtest.h>

namespace vrl {
namespace {

TEST(DpiScaling, RoundsLikeMulDivAndStoredSizesSurviveARoundTrip) {
    EXPECT_EQ(ScaleToDpi(499, 144), 749);  // 748.5
    EXPECT_EQ(ScaleToDpi(-3, 144), -5);    // -4.5: halves go away from zero
    EXPECT_EQ(ScaleToDpi(150, 96), 150);
    EXPECT_EQ(ScaleToDpi(40, 0), 40) << "no resolution known scales nothing";
    // A column width stored at 96 DPI, shown at another resolution and stored again, is unchanged.
    for (int dpi : {96, 120, 144, 168, 192, 240}) {
        for (int width = -20; width <= 2000; ++width)
            ASSERT_EQ(ScaleFromDpi(ScaleToDpi(width, dpi), dpi), width) << width << " at " << dpi;
    }
}

TEST(VisibleWindowFrame, LeavesOutTheInvisibleBordersInTheWindowsOwnPixels) {
    // Unscaled: the borders are cut off as they are.
    EXPECT_EQ(VisibleFrameInWindow({100, 100, 916, 739}, {100, 100, 916, 739}, {107, 100, 909, 732}),
              (PixelRect{7, 0, 809, 632}));
    // A window Windows draws at 150 %: its 10-pixel borders on the screen are 7 of its own pixels.
    EXPECT_EQ(VisibleFrameInWindow({100, 100, 916, 739}, {150, 150, 1374, 1108}, {160, 150, 1364, 1098}),
              (PixelRect{7, 0, 809, 632}));
    // A frame Windows could not give, or one outside the window, leaves the whole window.
    EXPECT_EQ(VisibleFrameInWindow({100, 100, 916, 739}, {100, 100, 916, 739}, {}), (PixelRect{0, 0, 816, 639}));
    EXPECT_EQ(VisibleFrameInWindow({100, 100, 916, 739}, {100, 100, 916, 739}, {90, 100, 909, 732}),
              (PixelRect{0, 0, 816, 639}));
}

}  // namespace
}  // namespace vrl
