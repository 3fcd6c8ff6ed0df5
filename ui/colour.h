#pragma once
// Colour values (0x00BBGGRR, the platform's colour-reference layout) and their text form "#rrggbb".

#include <cstdint>
#include <string>
#include <string_view>

namespace vrl {

using Colour = std::uint32_t;
inline constexpr Colour kNoColour = 0xFFFFFFFFu;

constexpr Colour MakeColour(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFFu) | ((green & 0xFFu) << 8) | ((blue & 0xFFu) << 16);
}
constexpr unsigned RedOf(Colour c) { return c & 0xFFu; }
constexpr unsigned GreenOf(Colour c) { return (c >> 8) & 0xFFu; }
constexpr unsigned BlueOf(Colour c) { return (c >> 16) & 0xFFu; }

// The fallback when the text is empty, "Nothing" in any case, or not exactly six hexadecimal
// digits after an optional "#".
Colour ParseColour(std::u16string_view text, Colour fallback);
// "#rrggbb", lower-case digits.
std::u16string FormatColour(Colour colour);

struct NamedColour {
    const char16_t* english;
    const char16_t* japanese;
    Colour value;
};
// The 27 named colours; index 1 to 27 as the colour menu numbers them (entry 0 is unused).
const NamedColour& NamedColourAt(int index);
inline constexpr int kNamedColourCount = 27;

}  // namespace vrl
