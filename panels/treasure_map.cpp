#include "panels/treasure_map.h"

namespace vrl::treasure_map {

MapRect MapRegion(int clientWidth, int clientHeight) {
    return {(clientWidth - kMapWidth) / 2, 24 * ((clientHeight + 4) / 48) - 148, kMapWidth, kMapHeight};
}

std::optional<int> DisplayScale(int drawClientHeight, int gameClientHeight) {
    if (drawClientHeight <= 0 || gameClientHeight <= 0) return std::nullopt;
    return static_cast<int>(static_cast<long long>(drawClientHeight) * 100 / gameClientHeight);
}

PictureSize ScaledPicture(int scalePercent) {
    const long long scale = scalePercent;
    return {static_cast<int>(scale * kMapWidth / 100), static_cast<int>(scale * kMapHeight / 100)};
}

int MapWindowLeft(int drawRight, int windowWidth, int desktopRight) {
    return drawRight + windowWidth > desktopRight ? desktopRight - windowWidth : drawRight;
}

}  // namespace vrl::treasure_map
