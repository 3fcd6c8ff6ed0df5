#pragma once
// The treasure map: the part of the game window where the game shows the map, cut out and scaled
// like the game's display. Portable: where the map lies, how large the picture is, where the map
// window goes.

#include <optional>

namespace vrl::treasure_map {

inline constexpr int kMapWidth = 408;
inline constexpr int kMapHeight = 312;

struct MapRect {
    int x = 0, y = 0, width = 0, height = 0;
};

// The map in a game client area of that size: 408 x 312 pixels, centred horizontally, its top on
// the game's 24-pixel row grid.
MapRect MapRegion(int clientWidth, int clientHeight);

// The display scale in percent: the draw window's client height over the game window's. None when
// either height is 0 or less (no game window yet, or a minimised one): nothing is captured then.
std::optional<int> DisplayScale(int drawClientHeight, int gameClientHeight);

struct PictureSize {
    int width = 0, height = 0;
};
PictureSize ScaledPicture(int scalePercent);

// Left edge of a map window `windowWidth` wide, placed at `drawRight` (the draw window's right
// edge) and pulled back left so that it ends at the desktop's right edge when it would pass it.
int MapWindowLeft(int drawRight, int windowWidth, int desktopRight);

}  // namespace vrl::treasure_map
