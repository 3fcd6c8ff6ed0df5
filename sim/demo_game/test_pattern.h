#pragma once
// The picture the demo game draws on request instead of its playfield: every pixel of a
// 1024 x 1024 client area has a colour of its own, so a test can tell from any captured pixel
// where in the client area it came from. Colours are 0x00BBGGRR.

#include <cstdint>

namespace vrl::sim {

inline constexpr unsigned kDrawTestPattern = 0x8000 + 0x39;  // WM_APP + 0x39, to the game window

inline std::uint32_t TestPatternColour(int x, int y) {
    const std::uint32_t red = static_cast<std::uint32_t>(x) & 0xFF;
    const std::uint32_t green = static_cast<std::uint32_t>(y) & 0xFF;
    const std::uint32_t blue = 0x80 | ((static_cast<std::uint32_t>(x) >> 8 & 3) << 2) |
                               (static_cast<std::uint32_t>(y) >> 8 & 3);
    return red | green << 8 | blue << 16;
}

}  // namespace vrl::sim
