// std::wregex is the reference here; GCC 12 warns falsely inside its headers under the sanitizers.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include "log/rule_regex.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace vrl {
namespace {

std::wstring Wide(std::u16string_view s) { return std::wstring(s.begin(), s.end()); }
std::u16string Narrow(const std::wstring& s) { return std::u16string(s.begin(), s.end()); }

// What std::wregex says about one pattern and text.
struct Reference {
    bool compiles = false;
    bool found = false;
    std::vector<std::u16string> searchGroups;
    bool whole = false;
    std::vector<std::u16string> wholeGroups;
};

std::vector<std::u16string> Groups(const std::wsmatch& m) {
    std::vector<std::u16string> out;
    for (std::size_t i = 0; i < m.size(); ++i) out.push_back(Narrow(m.str(i)));
    return out;
}

Reference AskStandardLibrary(std::u16string_view pattern, std::u16string_view text) {
    Reference r;
    std::wregex re;
    try {
        re.assign(Wide(pattern), std::regex_constants::ECMAScript);
    } catch (const std::regex_error&) {
        return r;
    }
    r.compiles = true;
    const std::wstring wide = Wide(text);
    std::wsmatch m;
    r.found = std::regex_search(wide, m, re);
    if (r.found) r.searchGroups = Groups(m);
    r.whole = std::regex_match(wide, m, re);
    if (r.whole) r.wholeGroups = Groups(m);
    return r;
}

void ExpectSameAsStandardLibrary(std::u16string_view pattern, std::u16string_view text) {
    SCOPED_TRACE(std::string("pattern: ") + std::string(pattern.begin(), pattern.end()) +
                 "  text: " + std::string(text.begin(), text.end()));
    const Reference ref = AskStandardLibrary(pattern, text);
    const auto ours = RuleRegex::Compile(pattern);
    ASSERT_EQ(ours.has_value(), ref.compiles);
    if (!ours) return;
    std::vector<std::u16string> groups;
    const auto found = ours->Search(text, &groups);
    ASSERT_NE(found, RuleRegex::Result::TooComplex);
    EXPECT_EQ(ours->SearchWithoutShortcut(text, nullptr, RuleRegex::kStepBudget), found);
    EXPECT_EQ(found == RuleRegex::Result::Match, ref.found);
    if (ref.found) {
        EXPECT_EQ(groups, ref.searchGroups);
    }
    const auto whole = ours->FullMatch(text, &groups);
    ASSERT_NE(whole, RuleRegex::Result::TooComplex);
    EXPECT_EQ(ours->FullMatchWithoutShortcut(text, nullptr, RuleRegex::kStepBudget), whole);
    EXPECT_EQ(whole == RuleRegex::Result::Match, ref.whole);
    if (ref.whole) {
        EXPECT_EQ(groups, ref.wholeGroups);
    }
}

const std::vector<std::u16string> kTexts = {
    u"", u"a", u"aaa", u"ab", u"abcabc", u"You hit the putit.", u"[12] The door opens.", u"[3] ",
    u"ally joined the party", u"Hello!", u"foo bar_baz 42 qux", u"line1\nline2", u"tab\there\r\n",
    u"x+y=z? (1) {2} [3] ^$ \\ .", u"aAbBzZ09_-", u"\u3042\u3044\u3046 \u30ab\u30ad 123", u"mississippi", u"aaab",
    u"abab ab ba",
};

TEST(RuleRegexTest, OrdinaryPatternsBehaveLikeTheStandardLibrary) {
    const std::vector<std::u16string> patterns = {
        u"a", u"ab", u"^You", u"opens\\.$", u"^\\[\\d+\\] (.*)", u"ally|party", u"a|ab|abc", u"(a|ab)(c|bcd)?",
        u"a*", u"a+", u"a?", u"a*?", u"a+?", u"a??", u"a{2}", u"a{2,}", u"a{1,2}", u"a{0,2}?", u"a{0}",
        u"(a)(b)?", u"(a*)*", u"(a*)+b", u"(a|b)*", u"(?:a|b)+c", u"((a)|b)+", u"(?:(a)|b)*", u"(a|)*",
        u"(a)\\1", u"(a*)b\\1", u"(\\w+) \\1", u"(a)|\\1b", u"(?=a)", u"(?!a)\\w", u"a(?=b)", u"a(?!b)",
        u"(?=(a+))a*b\\1", u"(?!(a))\\w+", u"a(?=^)b", u"x(?=\\b)", u"\\bfoo\\b", u"\\Bar", u"\\b", u"\\B",
        u".", u".*", u".+", u"^.*$", u"line1.line2", u"\\d+", u"\\D+", u"\\w+", u"\\W", u"\\s+", u"\\S+",
        u"[abc]", u"[^abc]+", u"[a-z]+", u"[A-Za-z0-9_]+", u"[\\d.]+", u"[\\w-]+", u"[-a]", u"[a-]", u"[]",
        u"[^]", u"[\\]]", u"[\\b]", u"[\\D]", u"[^\\W]", u"[[:alpha:]]+", u"[[:digit:][:space:]]+",
        u"[[:upper:]]", u"[[:ALNUM:]]+", u"[[:w:]]+", u"[[.a.]]", u"[[.space.]]", u"[a-c[:digit:]]",
        u"\\t", u"\\n", u"\\r\\n", u"\\x41", u"\\u3042", u"\\cJ", u"\\0", u"\\.", u"\\$", u"\\/", u"\\-",
        u"x\\+y", u"\\(1\\)", u"\\{2\\}", u"}", u"]", u"a{,", u"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)\\10",
        u"(x+x+)+y", u"(a|aa)*$", u"(a|aa)*b", u"(.*)(.*)", u"(.*?)(b|$)", u"^(a+)+$", u"a**", u"a*?b",
        u"(?:)", u"()", u"(|a)+", u"a|", u"|", u"a{2}{2}", u"(ab){2}", u"(?:a{2})*", u"[ab]{2,3}?c",
        u"issi", u"(ss)i\\1?", u"(?:ss|i)+p", u"^\\S+ \\S+$", u"\\$", u"^$",
    };
    for (const auto& pattern : patterns) {
        for (const auto& text : kTexts) ExpectSameAsStandardLibrary(pattern, text);
    }
}

TEST(RuleRegexTest, RefusesExactlyWhatTheStandardLibraryRefuses) {
    const std::vector<std::u16string> patterns = {
        u"(", u")", u"(a", u"a)", u"(?", u"(?a)", u"(?<=a)", u"[", u"[a", u"[^", u"*", u"*a", u"+", u"?",
        u"a**", u"a*+", u"^*", u"$+", u"\\b*", u"(?=a)*", u"{", u"a{", u"a{1", u"a{1,", u"a{,2}", u"a{2,1}",
        u"a{x}", u"{2}", u"a{1}{", u"[z-a]", u"[a-\\d]", u"[\\d-z]", u"[\\w-]", u"[a-]", u"\\", u"a\\",
        u"\\x4", u"\\xZZ", u"\\u123", u"\\c", u"\\1", u"(a)\\2", u"(a\\1)", u"(a)\\1", u"\\0", u"[[:foo:]]",
        u"[[:alpha:]", u"[[.ab.]]", u"[[.nothing.]]", u"[[=a=]]", u"[\\B]", u"[\\1]", u"()\\1", u"a|*", u"(*)", u"[[]", u"[[a]", u"a{1,2}{3}",
    };
    for (const auto& pattern : patterns) ExpectSameAsStandardLibrary(pattern, u"a");
    // Both sides refuse an expression whose automaton would pass 100 000 states, at exactly the
    // same count, copies of counted repetitions included.
    ExpectSameAsStandardLibrary(u"(?:(a)|b*c|(?=d)e?){4544}", u"bc");
    ExpectSameAsStandardLibrary(u"(?:(a)|b*c|(?=d)e?){4545}", u"bc");
}

TEST(RuleRegexTest, PatternsTooLargeOrTooDeepAreRefusedQuickly) {
    EXPECT_FALSE(RuleRegex::Compile(std::u16string(100000, u'(')));
    EXPECT_FALSE(RuleRegex::Compile(std::u16string(100000, u'a')));
    EXPECT_FALSE(RuleRegex::Compile(u"((((a{100}){100}){100}){100}){100}"));
    EXPECT_FALSE(RuleRegex::Compile(u"(a{1000}){1000}"));
    EXPECT_FALSE(RuleRegex::Compile(std::u16string(300, u'(') + u"a" + std::u16string(300, u')')));
    // Within the nesting limit nested groups are fine.
    const auto deep = RuleRegex::Compile(std::u16string(150, u'(') + u"a" + std::u16string(150, u')'));
    ASSERT_TRUE(deep);
    std::vector<std::u16string> groups;
    EXPECT_EQ(deep->FullMatch(u"a", &groups), RuleRegex::Result::Match);
    EXPECT_EQ(groups.size(), 151u);
}

// A full-length log line: what the game sends at most.
std::u16string LongLine(char16_t fill, char16_t last) {
    std::u16string line(2044, fill);
    line += last;
    return line;
}

TEST(RuleRegexTest, PathologicalRulesEndAsTooComplexOrAnswerCorrectly) {
    struct Case {
        const char16_t* pattern;
        std::u16string text;
        bool matches;  // the true answer, when the search gets that far
    };
    const std::vector<Case> cases = {
        {u"(a|aa)*$", LongLine(u'a', u'b'), true},   // $ matches after the b... only when reached
        {u"(a|aa)*c", LongLine(u'a', u'b'), false},
        {u"(x+x+)+y", LongLine(u'x', u'x'), false},
        {u"(x+x+)+y", std::u16string(2043, u'x') + u"zy", false},
        {u"^(a+)+$", LongLine(u'a', u'!'), false},
        {u"(.*)*z", LongLine(u'q', u'q'), false},
        {u"((a*)*)*b", LongLine(u'a', u'a'), false},
        {u"(a|a?)+$", LongLine(u'a', u'!'), true},
        {u"(?=(a+)+b)", LongLine(u'a', u'a'), false},
        {u"(\\w+\\s?)+!", LongLine(u'w', u'w'), false},
        {u"(a*)\\1*c", LongLine(u'a', u'a'), false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.pattern, c.pattern + std::char_traits<char16_t>::length(c.pattern)));
        const auto re = RuleRegex::Compile(c.pattern);
        ASSERT_TRUE(re);
        const auto result = re->Search(c.text);
        if (result != RuleRegex::Result::TooComplex) {
            EXPECT_EQ(result == RuleRegex::Result::Match, c.matches);
        }
        const auto whole = re->FullMatch(c.text);
        EXPECT_NE(whole, RuleRegex::Result::Match);
    }
}

TEST(RuleRegexTest, OrdinaryRulesFinishOnTheLongestLine) {
    std::u16string line;
    while (line.size() < 2045) line += u"You see a putit. [12] Ally joined 42 \u3042\u3044 ";
    line.resize(2045);
    for (const std::u16string p :
         {u"putit", u"^You", u"\\[\\d+\\] (.*)", u".*joined.*", u"(\\w+) joined", u"^(.*)$", u"\\d{3}",
          u"(?:a|b|c|d|e|f)+z", u"[A-Z]\\w+ \\w+$", u".*\u3046", u"(\\w+)\\s+\\1", u"^\\S+( \\S+)*$", u"^.*?x",
          u"(\\d+).*\\1z"}) {
        const auto re = RuleRegex::Compile(p);
        ASSERT_TRUE(re);
        EXPECT_NE(re->Search(line), RuleRegex::Result::TooComplex) << std::string(p.begin(), p.end());
        EXPECT_NE(re->FullMatch(line), RuleRegex::Result::TooComplex) << std::string(p.begin(), p.end());
    }

    // Rules that go over the line once for each place they could start still give the answer.
    std::u16string party;
    while (party.size() < 700) party += u"the ally waits ";
    party += u"Bob joined ";
    while (party.size() < 2045) party += u"an ally rests ";
    party.resize(2045);
    const std::u16string as = u"ab" + std::u16string(2043, u'a');
    struct Case {
        const char16_t* pattern;
        const std::u16string& text;
        RuleRegex::Result search, whole;
    };
    using R = RuleRegex::Result;
    for (const Case& c : {Case{u".*ally.*joined", party, R::Match, R::NoMatch},
                          Case{u".*ally.*joined$", party, R::NoMatch, R::NoMatch},
                          Case{u"(.*)ally(.*)joined", party, R::Match, R::NoMatch},
                          Case{u".*?ally.*?joined", party, R::Match, R::NoMatch},
                          Case{u".*a.*b", as, R::Match, R::NoMatch},
                          Case{u"(.*)a(.*)b.*", as, R::Match, R::Match}}) {
        SCOPED_TRACE(std::string(c.pattern, c.pattern + std::char_traits<char16_t>::length(c.pattern)));
        const auto re = RuleRegex::Compile(c.pattern);
        ASSERT_TRUE(re);
        EXPECT_EQ(re->Search(c.text), c.search);
        EXPECT_EQ(re->FullMatch(c.text), c.whole);
    }
}

TEST(RuleRegexTest, TheBudgetIsWhatStopsTheWork) {
    const auto re = RuleRegex::Compile(u"(a|aa)*c");
    ASSERT_TRUE(re);
    const std::u16string text(40, u'a');
    EXPECT_EQ(re->Search(text + u"c", nullptr, 1000000), RuleRegex::Result::Match);
    EXPECT_EQ(re->Search(text + u"bc", nullptr, 1000), RuleRegex::Result::TooComplex);
    // A required character missing from the text ends the search before any work.
    EXPECT_EQ(re->Search(text, nullptr, 1), RuleRegex::Result::NoMatch);

    // Each lookahead starts from a copy of every capture: thousands of groups make each one
    // cost thousands of steps.
    std::u16string groups;
    for (int i = 0; i < 30000; ++i) groups += u"()";
    const auto plain = RuleRegex::Compile(u"(?:(?=a)a|(?=a)aa)*$");
    const auto heavy = RuleRegex::Compile(groups + u"(?:(?=a)a|(?=a)aa)*$");
    ASSERT_TRUE(plain && heavy);
    EXPECT_EQ(plain->FullMatch(u"aaaa", nullptr, 1000), RuleRegex::Result::Match);
    EXPECT_EQ(heavy->FullMatch(u"aaaa", nullptr, 1000), RuleRegex::Result::TooComplex);
    std::size_t spent = 0;
    EXPECT_EQ(heavy->Search(LongLine(u'a', u'b'), nullptr, RuleRegex::kStepBudget, &spent),
              RuleRegex::Result::TooComplex);
    EXPECT_EQ(spent, RuleRegex::kStepBudget);
}

}  // namespace
}  // namespace vrl
