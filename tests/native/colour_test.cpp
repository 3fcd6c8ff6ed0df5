#include "ui/colour.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using vrl::Colour;
using vrl::MakeColour;
using vrl::ParseColour;

constexpr Colour kFallback = 0x00123456u;

TEST(ParseColour, ReadsSixDigitsWithOrWithoutHashInAnyCase) {
    EXPECT_EQ(ParseColour(u"#FF8000", kFallback), MakeColour(255, 128, 0));
    EXPECT_EQ(ParseColour(u"ff8000", kFallback), MakeColour(255, 128, 0));
    EXPECT_EQ(ParseColour(u"#aBcDeF", kFallback), MakeColour(0xAB, 0xCD, 0xEF));
    EXPECT_EQ(ParseColour(u"#000000", kFallback), 0u);
    // Red is the first pair but the lowest byte of the value.
    EXPECT_EQ(ParseColour(u"#0000ff", kFallback), 0x00FF0000u);
}

TEST(ParseColour, MalformedTextGivesTheFallback) {
    int n = 0;
    for (const char16_t* text : {u"", u"#", u"#ff800", u"#ff80001", u"#gg0000", u"ff80 0",
                                 u" ff8000", u"##ff8000", u"#ff8000 ", u"0xff8000", u"-f8000",
                                 u"ｆｆ８０００", u"nothing", u"NOTHING", u"Nothing"}) {
        EXPECT_EQ(ParseColour(text, kFallback), kFallback) << "case " << n;
        ++n;
    }
    EXPECT_EQ(ParseColour(u"", vrl::kNoColour), vrl::kNoColour);
}

TEST(FormatColour, WritesLowerCaseHashForm) {
    EXPECT_EQ(vrl::FormatColour(MakeColour(255, 128, 0)), u"#ff8000");
    EXPECT_EQ(vrl::FormatColour(0), u"#000000");
    EXPECT_EQ(vrl::FormatColour(MakeColour(1, 2, 3)), u"#010203");
    // Every byte value survives a round trip.
    for (unsigned v = 0; v < 256; ++v) {
        const Colour c = MakeColour(v, 255 - v, v ^ 0x5A);
        EXPECT_EQ(ParseColour(vrl::FormatColour(c), kFallback), c);
    }
}

TEST(NamedColours, TableHasBothNamesAndTheRightValues) {
    EXPECT_EQ(vrl::NamedColourAt(19).value, MakeColour(255, 155, 155));
    EXPECT_EQ(vrl::FormatColour(vrl::NamedColourAt(19).value), u"#ff9b9b");
    EXPECT_EQ(std::u16string(vrl::NamedColourAt(19).english), u"Morva Red");
    EXPECT_EQ(std::u16string(vrl::NamedColourAt(16).japanese), u"暗い水色");
    EXPECT_EQ(vrl::NamedColourAt(16).value, MakeColour(0, 191, 191));
    EXPECT_EQ(vrl::NamedColourAt(1).value, 0u);
    EXPECT_EQ(vrl::NamedColourAt(27).value, MakeColour(49, 42, 37));

    std::set<std::u16string> english, japanese;
    for (int i = 1; i <= vrl::kNamedColourCount; ++i) {
        english.insert(vrl::NamedColourAt(i).english);
        japanese.insert(vrl::NamedColourAt(i).japanese);
    }
    EXPECT_EQ(english.size(), 27u);
    EXPECT_EQ(japanese.size(), 27u);
    EXPECT_EQ(english.count(u""), 0u);
    // Indices outside 1..27 are harmless.
    EXPECT_EQ(std::u16string(vrl::NamedColourAt(0).english), u"");
    EXPECT_EQ(std::u16string(vrl::NamedColourAt(28).english), u"");
}

}  // namespace
