#include "app/version_text.h"

#include <gtest/gtest.h>

namespace {

TEST(VersionText, BothLanguagesAndTheReleaseKinds) {
    EXPECT_EQ(vrl::FormatVersionText(vrl::kThisRelease, 0), u"[Dec 30, 2023]");
    EXPECT_EQ(vrl::FormatVersionText(vrl::kThisRelease, 1), u"[2023/12/30]");
    EXPECT_EQ(vrl::FormatVersionText({2024, 3, 5, 1}, 0), u"[Mar 5, 2024 (beta)]");
    EXPECT_EQ(vrl::FormatVersionText({2024, 3, 5, 3}, 1), u"[2024/03/05 (test)]");
    EXPECT_EQ(vrl::FormatVersionText({2024, 0, 1, 2}, 0), u"[--- 1, 2024 (alpha)]");
}

}  // namespace
