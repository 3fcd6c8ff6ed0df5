#include "tools/window_placement.h"

#include <gtest/gtest.h>

namespace vrl::placement {
namespace {

TEST(PlacementFile, SavedLayoutReadsBackAsWritten) {
    SavedLayout layout;
    layout.logDocked = 1;
    layout.logTabPage = 1;
    layout.windows = {{u"Morva", {10, 20, 830, 640}, 1}, {u"LogEx", {-3000, -5, -2000, 300}, 0}};
    const KcsvFile table = ToTable(layout);
    EXPECT_EQ(table.ToUtf8(),
              "#format,kcsv\r\n#option,LogEx_Docked:1\r\n#option,LogEx_TabPage:1\r\n"
              "#column,WindowID,rcNormalPosition.left,rcNormalPosition.top,rcNormalPosition.right,"
              "rcNormalPosition.bottom,showCmd\r\n"
              "Morva,10,20,830,640,1\r\nLogEx,-3000,-5,-2000,300,0\r\n");

    KcsvFile read;
    ASSERT_TRUE(read.ParseUtf8(table.ToUtf8()));
    const SavedLayout back = FromTable(read);
    EXPECT_EQ(back.logDocked, 1);
    EXPECT_EQ(back.logTabPage, 1);
    ASSERT_EQ(back.windows.size(), 2u);
    EXPECT_EQ(back.windows[1].id, u"LogEx");
    EXPECT_EQ(back.windows[1].normal, (PixelRect{-3000, -5, -2000, 300}));
    EXPECT_EQ(back.windows[1].showCmd, 0);

    // Nothing to place still records the log windows' state.
    EXPECT_EQ(ToTable(SavedLayout{}).ToUtf8(), "#format,kcsv\r\n#option,LogEx_Docked:0\r\n#option,LogEx_TabPage:0\r\n#column\r\n");
}

TEST(PlacementFile, MissingColumnsAndGarbageReadAsTheFallbacks) {
    KcsvFile table;
    ASSERT_TRUE(table.ParseUtf8("#format,kcsv\r\n#column,rcNormalPosition.top,rcNormalPosition.left\r\n"
                                " -7px,99999999999\r\n"));
    const SavedLayout layout = FromTable(table);
    EXPECT_EQ(layout.logDocked, 0);
    ASSERT_EQ(layout.windows.size(), 1u);
    EXPECT_EQ(layout.windows[0].id, u"");
    EXPECT_EQ(layout.windows[0].normal.top, -7);
    EXPECT_EQ(layout.windows[0].normal.right, 2147483647);
    EXPECT_EQ(layout.windows[0].showCmd, 5);
}

TEST(DefaultLayout, WindowsSitOnTheWorkAreasBottomAndFarEdges) {
    const WorkArea area{1280, 994, 994};
    EXPECT_EQ(AboveWorkAreaRect(DefaultPlaceOf(kExtractedLogId), area, 96), (PixelRect{640, 634, 1280, 994}));
    // The sizes are pixels at 96 DPI: at 144 the quick search bar is wide enough for its buttons.
    EXPECT_EQ(AboveWorkAreaRect(DefaultPlaceOf(kQuickSearchId), area, 144), (PixelRect{0, 409, 812, 454}));
    EXPECT_EQ(DefaultPlaceOf(kGameId).kind, DefaultPlace::Kind::ScreenOrigin);

    // The pet panel at 2 pixels per unit: right edge on the area's right.
    EXPECT_EQ(AnchorInArea(DefaultPlaceOf(kPetPanelId).units, {-1040, 0, 0, 800}, 1280, 994),
              (PixelRect{240, 0, 1280, 800}));
    // The music panel's corner.
    EXPECT_EQ(AnchorInArea(DefaultPlaceOf(kMusicPanelId).units, {-414, -361, 0, 0}, 1280, 994),
              (PixelRect{866, 633, 1280, 994}));
    // An edge that rounds to 0 pixels is still anchored by its units.
    EXPECT_EQ(AnchorInArea({-1, 5, -1, 6}, {0, 8, 0, 10}, 100, 50), (PixelRect{100, 8, 100, 10}));
}

// Saved with the taskbar 40 pixels tall on the left, restored by SetWindowPos: the same spot.
TEST(PlacementFile, AWorkspaceRectangleIsPlacedByTheWorkAreasOffset) {
    EXPECT_EQ(ScreenFromWorkspace({10, 20, 830, 640}, 40, 0), (PixelRect{50, 20, 870, 640}));
    EXPECT_EQ(ScreenFromWorkspace({10, 20, 830, 640}, 0, 40), (PixelRect{10, 60, 830, 680}));
}

}  // namespace
}  // namespace vrl::placement
