#include "tools/screenshot.h"

#include <gtest/gtest.h>

namespace vrl::screenshot {
namespace {

using Kind = Capture::Kind;

PixelRect RectOf(int range, int cw, int ch) { return ClientCaptureRect(CaptureForRange(range, 0, false), cw, ch); }

TEST(ScreenshotRange, ScreensAreCentredOnTheGamesRowGrid) {
    EXPECT_EQ(RectOf(4, 800, 600), (PixelRect{81, 72, 81 + 638, 72 + 432}));
    // The client-area range goes through the same arithmetic: 12 rows above the client at 600.
    EXPECT_EQ(RectOf(2, 800, 600), (PixelRect{0, -12, 800, 588}));
    EXPECT_EQ(RectOf(2, 640, 576), (PixelRect{0, 0, 640, 576}));
    // Negative halves truncate towards zero: a client narrower than the screen.
    EXPECT_EQ(RectOf(11, 595, 20), (PixelRect{2, -196, 602, 180}));
}

TEST(ScreenshotRange, AutoDetectionFollowsTheReportedScreen) {
    EXPECT_EQ(CaptureForRange(0, 0, true).kind, Kind::Nothing);
    EXPECT_EQ(CaptureForRange(0, 12, false).kind, Kind::Nothing);
    EXPECT_EQ(CaptureForRange(0, -1, false).kind, Kind::Nothing);
    EXPECT_EQ(CaptureForRange(0, 1, false).kind, Kind::WholeWindow);
    EXPECT_EQ(CaptureForRange(0, 2, true).kind, Kind::WholeWindow);
    EXPECT_EQ(CaptureForRange(0, 2, false).kind, Kind::Client);
    EXPECT_EQ(CaptureForRange(0, 9, true).height, 312);
    // The frame flag belongs to auto-detection only.
    EXPECT_EQ(CaptureForRange(2, 0, true).kind, Kind::Client);
    EXPECT_EQ(CaptureForRange(12, 4, false).kind, Kind::Nothing);
}

TEST(ScreenshotFile, NamesFollowFormatAndTime) {
    const LocalTime t{2026, 3, 7, 9, 5, 1};
    const OutputFile png = OutputFor(1, 75, t, u"C:\\V\\screenshot", u"C:\\V\\save.bak");
    EXPECT_EQ(png.encoding, OutputFile::Encoding::Png);
    EXPECT_EQ(png.path, u"C:\\V\\screenshot\\26-03-07 09_05_01.png");
    EXPECT_EQ(OutputFor(0, 75, t, u"S", u"B").path, u"S\\26-03-07 09_05_01.png");

    const OutputFile jpeg = OutputFor(2, 75, LocalTime{2100, 12, 31, 23, 59, 59}, u"S", u"B");
    EXPECT_EQ(jpeg.encoding, OutputFile::Encoding::Jpeg);
    EXPECT_EQ(jpeg.jpegQuality, 75);
    EXPECT_EQ(jpeg.path, u"S\\00-12-31 23_59_59.jpg");

    const OutputFile backup = OutputFor(3, 75, t, u"S", u"B");
    EXPECT_EQ(backup.jpegQuality, 20);
    EXPECT_EQ(backup.path, u"B\\MorvaBackupSS.jpg");

    for (int format : {-1, 4}) {
        EXPECT_EQ(OutputFor(format, 75, t, u"S", u"B").encoding, OutputFile::Encoding::Unknown);
        EXPECT_TRUE(OutputFor(format, 75, t, u"S", u"B").path.empty());
    }
}

}  // namespace
}  // namespace vrl::screenshot
