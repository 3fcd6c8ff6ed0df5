// Differential fuzzing of the rule expressions against std::wregex: whether a pattern compiles,
// whether it is found in a text and where, whether it matches the whole text, and the captures.
// Inputs stay tiny so that std::wregex, which recurses, cannot exhaust the stack itself.

#include "log/rule_regex.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kMaxPattern = 20;
constexpr std::size_t kMaxText = 10;

// Bytes below 0x80 are themselves; the others pick characters the rules meet in the game's log
// or that the engine treats specially.
char16_t CharFor(std::uint8_t b) {
    static const char16_t kWide[] = {u'\u3042', u'\u30a2', u'\u4e00', u'\u00e9', u'\u2028', u'\u2029',
                                     u'\u3000', u'\uff11', u'\u0660', u'\u00a0', u'\ufffd', char16_t{0xD800}};
    if (b < 0x80) return b;
    return kWide[b % (sizeof kWide / sizeof kWide[0])];
}

// Counted repetitions above 20 build automata too large for std::wregex's recursion here.
bool HasLargeCount(const std::u16string& pattern) {
    long value = 0;
    for (char16_t c : pattern) {
        if (c >= u'0' && c <= u'9') {
            value = value * 10 + (c - u'0');
            if (value > 20) return true;
        } else {
            value = 0;
        }
    }
    return false;
}

// The reference walks the same automaton in the same order but has no shortcuts, so it is asked
// only where our walk without shortcuts ends within this many steps.
constexpr std::size_t kReferenceSteps = 100000;

std::vector<std::u16string> Groups(const std::wsmatch& m) {
    std::vector<std::u16string> out;
    for (std::size_t i = 0; i < m.size(); ++i) {
        const std::wstring s = m.str(i);
        out.emplace_back(s.begin(), s.end());
    }
    return out;
}

[[noreturn]] void Differs(const char* what, const std::u16string& pattern, const std::u16string& text) {
    std::fprintf(stderr, "difference in %s\npattern:", what);
    for (char16_t c : pattern) std::fprintf(stderr, " %04x", static_cast<unsigned>(c));
    std::fprintf(stderr, "\ntext:");
    for (char16_t c : text) std::fprintf(stderr, " %04x", static_cast<unsigned>(c));
    std::fprintf(stderr, "\n");
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Pattern, then a 0xFF byte, then the text.
    std::u16string pattern;
    std::u16string text;
    std::size_t i = 0;
    for (; i < size && data[i] != 0xFF; ++i) pattern += CharFor(data[i]);
    for (++i; i < size; ++i) text += CharFor(data[i]);
    if (pattern.size() > kMaxPattern || text.size() > kMaxText || HasLargeCount(pattern)) return 0;

    const auto ours = vrl::RuleRegex::Compile(pattern);
    std::wregex theirs;
    bool compiles = true;
    try {
        theirs.assign(std::wstring(pattern.begin(), pattern.end()), std::regex_constants::ECMAScript);
    } catch (const std::regex_error&) {
        compiles = false;
    }
    if (ours.has_value() != compiles) Differs("compile", pattern, text);
    if (!ours) return 0;

    using Result = vrl::RuleRegex::Result;
    const std::wstring wide(text.begin(), text.end());
    std::wsmatch m;
    std::vector<std::u16string> groups;
    const Result found = ours->Search(text, &groups);
    const Result plainFound = ours->SearchWithoutShortcut(text, nullptr, kReferenceSteps);
    if (found != Result::TooComplex && plainFound != Result::TooComplex) {
        if (plainFound != found) Differs("search shortcut", pattern, text);
        const bool theirsFound = std::regex_search(wide, m, theirs);
        if ((found == Result::Match) != theirsFound) Differs("search", pattern, text);
        if (theirsFound && groups != Groups(m)) Differs("search captures", pattern, text);
    }
    const Result whole = ours->FullMatch(text, &groups);
    const Result plainWhole = ours->FullMatchWithoutShortcut(text, nullptr, kReferenceSteps);
    if (whole != Result::TooComplex && plainWhole != Result::TooComplex) {
        if (plainWhole != whole) Differs("full match shortcut", pattern, text);
        const bool theirsWhole = std::regex_match(wide, m, theirs);
        if ((whole == Result::Match) != theirsWhole) Differs("full match", pattern, text);
        if (theirsWhole && groups != Groups(m)) Differs("full match captures", pattern, text);
    }
    return 0;
}
