#pragma once
// The compiled form of a rule expression, shared by the compiler and the matcher.
//
// The automaton deliberately has the same shape as the one the standard library builds for
// std::wregex (ECMAScript): the same kinds of states, the same cloning of counted repetitions,
// the same 100 000-state ceiling and the same depth-first visiting order. Rules that players
// wrote against the standard library therefore keep their exact meaning, quirks included
// (captures kept across iterations, an empty iteration tried twice, ^ inside a lookahead).
// Character classification goes through std::regex_traits<wchar_t> of the global locale, as the
// standard library's does, so \w or [[:alpha:]] classify exactly as before on each platform.

#include "log/rule_regex.h"

#include <cstdint>
#include <memory>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace vrl {
namespace rx {

using Traits = std::regex_traits<wchar_t>;
using ClassMask = Traits::char_class_type;

// Membership of every UTF-16 code unit in one character class (or a union of classes), computed
// once per process: text characters are classified by a bit test instead of a locale call.
class ClassTable {
public:
    static std::shared_ptr<const ClassTable> For(const Traits& traits, ClassMask mask);
    bool Has(wchar_t c) const {
        const auto u = static_cast<std::uint32_t>(c);
        return u < 0x10000u && ((bits_[u >> 6] >> (u & 63u)) & 1u) != 0;
    }

private:
    std::vector<std::uint64_t> bits_ = std::vector<std::uint64_t>(0x10000 / 64, 0);
};

// A bracket expression or a class escape such as \w or \D.
struct BracketMatcher {
    bool negated = false;
    std::vector<wchar_t> chars;                      // sorted, unique
    std::vector<std::pair<wchar_t, wchar_t>> ranges;
    bool hasClass = false;
    ClassMask classMask{};
    std::shared_ptr<const ClassTable> classTable;     // set by Ready() when hasClass
    std::vector<ClassMask> negClassMasks;             // from \D \S \W inside brackets
    std::vector<std::shared_ptr<const ClassTable>> negClassTables;
    std::vector<std::wstring> equivalents;           // [[=x=]], compared by primary collation key
    std::uint64_t ascii[2] = {0, 0};                  // the whole test, precomputed below 128

    void Ready(const Traits& traits);  // sorts the characters, builds the tables
    bool Matches(wchar_t c, const Traits& traits) const {
        const auto u = static_cast<std::uint32_t>(c);
        if (u < 128u) return ((ascii[u >> 6] >> (u & 63u)) & 1u) != 0;
        return Evaluate(c, traits);
    }
    bool Evaluate(wchar_t c, const Traits& traits) const;
};

enum class Op : std::uint8_t {
    Alternative,
    Repeat,
    Backref,
    LineBegin,
    LineEnd,
    WordBoundary,
    Lookahead,
    GroupBegin,
    GroupEnd,
    Dummy,
    MatchChar,
    MatchAny,
    MatchBracket,
    Accept,
};

inline constexpr int kNoState = -1;

struct State {
    Op op = Op::Dummy;
    bool neg = false;    // lazy repetition, \B, negative lookahead
    bool single = false; // Repeat whose body is one consuming state looping straight back
    int next = kNoState;
    int alt = kNoState;  // Alternative, Repeat, Lookahead
    int index = 0;       // group (GroupBegin/End, Backref), bracket (MatchBracket), repeat slot
    wchar_t ch = 0;      // MatchChar

    bool HasAlt() const { return op == Op::Alternative || op == Op::Repeat || op == Op::Lookahead; }
};

}  // namespace rx

struct RuleRegex::Program {
    std::vector<rx::State> states;
    std::vector<rx::BracketMatcher> brackets;
    rx::Traits traits;
    std::shared_ptr<const rx::ClassTable> wordTable;  // \b and \B
    int groupCount = 0;                                // group 0 included
    int repeatSlots = 0;
    int start = 0;
    int accept = 0;
    // Consuming states that every successful path passes through: a text in which one of them
    // matches nowhere cannot match, and a match cannot start after the last place they match.
    std::vector<int> required;
    // The expression begins with a greedy .* and has no lookahead: when a search from one place
    // fails, so does every search from a later place before the next line break, since the .*
    // from the first reaches everything the later ones could.
    bool leadingAnyLoop = false;

    bool Consumes(const rx::State& s, wchar_t c) const {
        switch (s.op) {
        case rx::Op::MatchChar: return s.ch == c;
        case rx::Op::MatchAny: return c != L'\n' && c != L'\r' && c != L'\u2028' && c != L'\u2029';
        default: return brackets[static_cast<std::size_t>(s.index)].Matches(c, traits);
        }
    }
};

namespace rx {
// Limits that keep a compile bounded: deeper nesting of groups is refused.
inline constexpr int kMaxNesting = 200;
inline constexpr std::size_t kMaxStates = 100000;

std::unique_ptr<RuleRegex::Program> CompileProgram(std::u16string_view pattern);
void FindRequiredStates(RuleRegex::Program& program);
}  // namespace rx

}  // namespace vrl
