#include "ui/lang_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(LangText, PicksByLanguageAndTreatsUnknownLanguagesAsEnglish) {
    const vrl::LangText text{u"Full Log", u"全ログ"};
    vrl::SetLanguageIndex(1);
    EXPECT_EQ(std::u16string(text.Get()), u"全ログ");
    vrl::SetLanguageIndex(7);
    EXPECT_EQ(vrl::LanguageIndex(), 0);
    EXPECT_EQ(std::u16string(text.Get()), u"Full Log");
    vrl::SetLanguageIndex(0);
}

}  // namespace
