// Rule expressions against the Windows build's own std::wregex: there wchar_t is UTF-16 and the
// C runtime classifies characters beyond ASCII, so \w, \d, \s and [[:alpha:]] on Japanese text
// must agree with what the standard library did for the same rules on this platform.

#include "log/rule_regex.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace vrl {
namespace {

std::vector<std::u16string> Groups(const std::wsmatch& m) {
    std::vector<std::u16string> out;
    for (std::size_t i = 0; i < m.size(); ++i) {
        const std::wstring s = m.str(i);
        out.emplace_back(s.begin(), s.end());
    }
    return out;
}

void ExpectSameAsStandardLibrary(const std::u16string& pattern, const std::u16string& text) {
    SCOPED_TRACE(::testing::Message() << "pattern " << pattern.size() << " units, text " << text.size());
    const std::wstring widePattern(pattern.begin(), pattern.end());
    const std::wstring wideText(text.begin(), text.end());
    std::wregex theirs;
    bool compiles = true;
    try {
        theirs.assign(widePattern, std::regex_constants::ECMAScript);
    } catch (const std::regex_error&) {
        compiles = false;
    }
    const auto ours = RuleRegex::Compile(pattern);
    ASSERT_EQ(ours.has_value(), compiles);
    if (!ours) return;
    std::wsmatch m;
    std::vector<std::u16string> groups;
    const bool found = std::regex_search(wideText, m, theirs);
    EXPECT_EQ(ours->Search(text, &groups) == RuleRegex::Result::Match, found);
    if (found) {
        EXPECT_EQ(groups, Groups(m));
    }
    const bool whole = std::regex_match(wideText, m, theirs);
    EXPECT_EQ(ours->FullMatch(text, &groups) == RuleRegex::Result::Match, whole);
    if (whole) {
        EXPECT_EQ(groups, Groups(m));
    }
}

TEST(RuleRegexWin, ClassesOnJapaneseTextAsTheStandardLibrary) {
    const std::vector<std::u16string> patterns = {
        u"\\w+", u"\\W+", u"\\d+", u"\\D", u"\\s", u"\\S+", u"[[:alpha:]]+", u"[[:digit:]]+", u"[[:space:]]",
        u"[[:punct:]]+", u"[[:upper:]]", u"[^\\W\\d]+", u"\\b\\w", u"\\B.", u"(\\w+)\\s+(\\d+)", u".+",
        u"[\u3041-\u3096]+", u"^\\[\\d+\\] (.*)", u"\\u30a2.",
    };
    const std::vector<std::u16string> texts = {
        u"\u3042\u3044\u3046\u3000\u30a2\u30a4 \uff11\uff12\uff13 12",
        u"[\uff13] \u6249\u304c\u958b\u3044\u305f\u3002",
        u"caf\u00e9 \u00c9t\u00e9 \u00a0x\u2028y",
        u"\u0660\u0661 \u0966 \uff21\uff42 _",
        u"[12] You see a putit.",
    };
    for (const auto& p : patterns) {
        for (const auto& t : texts) ExpectSameAsStandardLibrary(p, t);
    }
}

TEST(RuleRegexWin, PathologicalRuleOnAFullLineEndsQuickly) {
    const auto re = RuleRegex::Compile(u"(a|aa)*$");
    ASSERT_TRUE(re);
    std::u16string line(2044, u'a');
    line += u'b';
    // Either the budget stops it or the empty match at the end is found; never a crash.
    EXPECT_NE(re->Search(line), RuleRegex::Result::NoMatch);
    EXPECT_NE(re->FullMatch(line), RuleRegex::Result::Match);
}

}  // namespace
}  // namespace vrl
