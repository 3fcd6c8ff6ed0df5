#include "panels/treasure_map.h"

#include <gtest/gtest.h>

namespace {

using namespace vrl::treasure_map;

TEST(TreasureMap, RegionFollowsTheGameClientArea) {
    const MapRect region = MapRegion(800, 600);
    EXPECT_EQ(region.x, 196);
    EXPECT_EQ(region.y, 140);  // 24 * (604 / 48) - 148
    EXPECT_EQ(region.width, 408);
    EXPECT_EQ(region.height, 312);
    EXPECT_EQ(MapRegion(1024, 768).y, 24 * 16 - 148);
}

TEST(TreasureMap, ScaleAndPictureSizeFromTheDrawWindow) {
    EXPECT_EQ(DisplayScale(600, 600), 100);
    EXPECT_EQ(DisplayScale(1200, 600), 200);
    EXPECT_EQ(DisplayScale(599, 600), 99) << "integer percent, truncated";
    EXPECT_FALSE(DisplayScale(600, 0)) << "no game client area: nothing to divide by";
    EXPECT_FALSE(DisplayScale(0, 600));
    EXPECT_EQ(ScaledPicture(200).width, 816);
    EXPECT_EQ(ScaledPicture(200).height, 624);
    EXPECT_EQ(ScaledPicture(150).height, 468);
}

TEST(TreasureMap, WindowSitsRightOfTheDrawWindowAndStaysOnTheDesktop) {
    EXPECT_EQ(MapWindowLeft(806, 420, 1280), 806);
    EXPECT_EQ(MapWindowLeft(1100, 420, 1280), 860) << "pulled back over the game";
    EXPECT_EQ(MapWindowLeft(860, 420, 1280), 860) << "exactly on the edge";
}

}  // namespace
