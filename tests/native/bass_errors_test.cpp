#include "music/bass_errors.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vrl {
namespace {

std::u16string Name(int code) { return BassErrorName(code); }

// Every defined code has a name of its own; gaps and anything outside -1 to 46 read as undefined.
TEST(BassErrorName, NamesEachDefinedCodeOnce) {
    EXPECT_EQ(Name(-1), u"BASS_ERROR_UNKNOWN");
    EXPECT_EQ(Name(0), u"BASS_OK");
    EXPECT_EQ(Name(46), u"BASS_ERROR_BUSY");
    const std::set<int> gaps = {11, 12, 13, 15, 16, 17, 26, 28, 30, 35, 36};
    std::set<std::u16string> distinct;
    for (int code = -40; code <= 60; ++code) {
        const bool undefined = code < -1 || code > 46 || gaps.count(code) != 0;
        if (undefined) {
            EXPECT_EQ(Name(code), u"BASS_ERROR_UNDEFINED") << code;
        } else {
            EXPECT_TRUE(distinct.insert(Name(code)).second) << "name repeated for " << code;
        }
    }
    EXPECT_EQ(distinct.count(u"BASS_ERROR_UNDEFINED"), 0u);
    EXPECT_EQ(Name(-2147483647 - 1), u"BASS_ERROR_UNDEFINED");
    EXPECT_EQ(Name(2147483647), u"BASS_ERROR_UNDEFINED");
}

}  // namespace
}  // namespace vrl
