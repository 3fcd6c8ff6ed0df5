#include "ui/colour.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using vrl::Colour;
using vrl::MakeColour;
using vrl::ParseColour;

constexpr Colour kFallback = 0x00123456u;

TEST(ParseColour, SixHexDigitsWithOrWithoutHashElseTheFallback) {
    EXPECT_EQ(ParseColour(u"#FF8000", kFallback), MakeColour(255, 128, 0));
    EXPECT_EQ(ParseColour(u"ff8000", kFallback), MakeColour(255, 128, 0));
    EXPECT_EQ(ParseColour(u"#aBcDeF", kFallback), MakeColour(0xAB, 0xCD, 0xEF));
    // Red is the first pair but the lowest byte of the value.
    EXPECT_EQ(ParseColour(u"#0000ff", kFallback), 0x00FF0000u);
    for (const char16_t* text : {u"", u"#", u"#ff800", u"#ff80001", u"#gg0000", u"ff80 0", u" ff8000", u"##ff8000",
                                 u"#ff8000 ", u"0xff8000", u"-f8000", u"ｆｆ８０００", u"Nothing"}) {
        EXPECT_EQ(ParseColour(text, kFallback), kFallback) << std::u16string(text).size();
    }
}

TEST(FormatColour, WritesLowerCaseHashFormThatReadsBack) {
    EXPECT_EQ(vrl::FormatColour(MakeColour(255, 128, 0)), u"#ff8000");
    EXPECT_EQ(vrl::FormatColour(MakeColour(1, 2, 3)), u"#010203");
    for (unsigned v = 0; v < 256; ++v) {
        const Colour c = MakeColour(v, 255 - v, v ^ 0x5A);
        EXPECT_EQ(ParseColour(vrl::FormatColour(c), kFallback), c);
    }
}

TEST(NamedColours, EachHasNamesOfItsOwnAndOtherIndicesAreHarmless) {
    std::set<std::u16string> english, japanese;
    std::set<Colour> values;
    for (int i = 1; i <= vrl::kNamedColourCount; ++i) {
        english.insert(vrl::NamedColourAt(i).english);
        japanese.insert(vrl::NamedColourAt(i).japanese);
        values.insert(vrl::NamedColourAt(i).value);
    }
    EXPECT_EQ(english.size(), 27u);
    EXPECT_EQ(japanese.size(), 27u);
    EXPECT_EQ(values.size(), 27u);
    EXPECT_EQ(english.count(u""), 0u);
    EXPECT_EQ(std::u16string(vrl::NamedColourAt(0).english), u"");
    EXPECT_EQ(std::u16string(vrl::NamedColourAt(28).english), u"");
}

}  // namespace
