#include "ui/colour.h"

#include <array>

namespace vrl {
namespace {

// Value of one hexadecimal digit, or -1.
int HexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

bool EqualsNoCase(std::u16string_view text, std::u16string_view ascii) {
    if (text.size() != ascii.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t a = text[i];
        if (a >= u'A' && a <= u'Z') a = static_cast<char16_t>(a - u'A' + u'a');
        if (a != ascii[i]) return false;
    }
    return true;
}

const std::array<NamedColour, kNamedColourCount + 1> kNamedColours = {{
    {u"", u"", 0},
    {u"Black", u"黒色", MakeColour(0, 0, 0)},
    {u"White", u"白色", MakeColour(255, 255, 255)},
    {u"Blue", u"青色", MakeColour(0, 0, 255)},
    {u"Red", u"赤色", MakeColour(255, 0, 0)},
    {u"Purple", u"紫色", MakeColour(255, 0, 255)},
    {u"Green", u"緑色", MakeColour(0, 255, 0)},
    {u"Light blue", u"水色", MakeColour(0, 255, 255)},
    {u"Yellow", u"黄色", MakeColour(255, 255, 0)},
    {u"Orange", u"橙色", MakeColour(255, 127, 0)},
    {u"Gray", u"灰色", MakeColour(127, 127, 127)},
    {u"Light Gray", u"薄い灰色", MakeColour(223, 223, 223)},
    {u"Dark Blue", u"暗い青色", MakeColour(0, 0, 191)},
    {u"Dark Red", u"暗い赤色", MakeColour(191, 0, 0)},
    {u"Dark Purple", u"暗い紫色", MakeColour(191, 0, 191)},
    {u"Dark Green", u"暗い緑色", MakeColour(0, 191, 0)},
    {u"Dark Cyan", u"暗い水色", MakeColour(0, 191, 191)},
    {u"Dark Yellow", u"暗い黄色", MakeColour(191, 191, 0)},
    {u"Dark Orange", u"暗い橙色", MakeColour(191, 127, 0)},
    {u"Morva Red", u"Morva 赤", MakeColour(255, 155, 155)},
    {u"Morva Pink", u"Morva 桃", MakeColour(255, 195, 185)},
    {u"Morva Orange", u"Morva 橙", MakeColour(255, 215, 175)},
    {u"Morva Green", u"Morva 緑", MakeColour(175, 255, 175)},
    {u"Morva L.Blue", u"Morva 水色", MakeColour(155, 205, 205)},
    {u"Morva Purple 1", u"Morva 紫1", MakeColour(175, 175, 255)},
    {u"Morva Purple 2", u"Morva 紫2", MakeColour(185, 155, 215)},
    {u"Morva Yellow", u"Morva 黄", MakeColour(255, 255, 175)},
    {u"Morva Black", u"Morva 黒", MakeColour(49, 42, 37)},
}};

}  // namespace

Colour ParseColour(std::u16string_view text, Colour fallback) {
    if (EqualsNoCase(text, u"nothing")) return fallback;
    if (!text.empty() && text.front() == u'#') text.remove_prefix(1);
    if (text.size() != 6) return fallback;
    unsigned bytes[3] = {};
    for (std::size_t i = 0; i < 6; ++i) {
        const int digit = HexDigit(text[i]);
        if (digit < 0) return fallback;
        bytes[i / 2] = bytes[i / 2] * 16 + static_cast<unsigned>(digit);
    }
    return MakeColour(bytes[0], bytes[1], bytes[2]);
}

std::u16string FormatColour(Colour colour) {
    static constexpr char16_t kDigits[] = u"0123456789abcdef";
    std::u16string text(7, u'#');
    const unsigned bytes[3] = {RedOf(colour), GreenOf(colour), BlueOf(colour)};
    for (int i = 0; i < 3; ++i) {
        text[1 + 2 * i] = kDigits[bytes[i] >> 4];
        text[2 + 2 * i] = kDigits[bytes[i] & 0xF];
    }
    return text;
}

// Out-of-range indices give the unused entry 0 (black, no names) rather than undefined behaviour.
const NamedColour& NamedColourAt(int index) {
    if (index < 1 || index > kNamedColourCount) return kNamedColours[0];
    return kNamedColours[static_cast<std::size_t>(index)];
}

}  // namespace vrl
