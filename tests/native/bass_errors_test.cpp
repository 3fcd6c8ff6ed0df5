#include "music/bass_errors.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vrl {
namespace {

std::u16string Name(int code) { return BassErrorName(code); }

TEST(BassErrorName, NamesTheCodesThePanelShows) {
    EXPECT_EQ(Name(0), u"BASS_OK");
    EXPECT_EQ(Name(-1), u"BASS_ERROR_UNKNOWN");
    EXPECT_EQ(Name(2), u"BASS_ERROR_FILEOPEN");
    EXPECT_EQ(Name(10), u"BASS_ERROR_SSL");
    EXPECT_EQ(Name(14), u"BASS_ERROR_ALREADY");
    EXPECT_EQ(Name(27), u"BASS_ERROR_NOTFILE");
    EXPECT_EQ(Name(41), u"BASS_ERROR_FILEFORM");
    EXPECT_EQ(Name(46), u"BASS_ERROR_BUSY");
}

TEST(BassErrorName, GapsAndOutOfRangeCodesAreUndefined) {
    const std::set<int> gaps = {11, 12, 13, 15, 16, 17, 26, 28, 30, 35, 36};
    std::set<std::u16string> distinct;
    for (int code = -40; code <= 60; ++code) {
        const bool undefined = code < -1 || code > 46 || gaps.count(code) != 0;
        if (undefined) {
            EXPECT_EQ(Name(code), u"BASS_ERROR_UNDEFINED") << code;
        } else {
            EXPECT_NE(Name(code), u"BASS_ERROR_UNDEFINED") << code;
            EXPECT_TRUE(distinct.insert(Name(code)).second) << "name repeated for " << code;
        }
    }
    EXPECT_EQ(distinct.size(), 48u - gaps.size());
    EXPECT_EQ(Name(-2147483647 - 1), u"BASS_ERROR_UNDEFINED");
    EXPECT_EQ(Name(2147483647), u"BASS_ERROR_UNDEFINED");
}

}  // namespace
}  // namespace vrl
