#pragma once
// Regular expressions of the players' log rules: ECMAScript grammar over UTF-16, case-sensitive,
// giving the results of the standard library's std::wregex for ordinary expressions. Matching
// never recurses on the machine stack and is bounded in work, so a pathological rule such as
// (a|aa)*$ on a 2045-character line ends quickly as TooComplex (which counts as no match) instead
// of overflowing the stack or holding the game's SendMessage.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vrl {

class RuleRegex {
public:
    enum class Result { NoMatch, Match, TooComplex };

    // Steps a match may take before it gives up as TooComplex. A step is a state visited, a
    // character compared by a backreference, eight characters passed over by a loop such as .*,
    // or eight captures or counters copied. Ordinary rules on a full 2045-character line need a
    // few thousand; rules that go over the line once for each place, such as .*a.*b, need up to
    // about a million; this many take some 10 to 30 ms.
    static constexpr std::size_t kStepBudget = 2000000;

    // Compiles once; nullopt for an expression that std::wregex (ECMAScript) would reject, which
    // the caller then treats as never matching. Also nullopt, where std::wregex might still have
    // accepted it, for groups and lookaheads nested more than 200 deep.
    static std::optional<RuleRegex> Compile(std::u16string_view pattern);

    // Somewhere in the text (regex_search). With groups, fills the captured texts (group 0 is
    // the matched part; an unmatched group is empty).
    // With `spent`, stores the steps it took (at most the budget).
    Result Search(std::u16string_view text, std::vector<std::u16string>* groups = nullptr,
                  std::size_t budget = kStepBudget, std::size_t* spent = nullptr) const;
    // The whole text (regex_match). With groups, fills the captured texts (group 0 is the whole
    // text; an unmatched group is empty).
    Result FullMatch(std::u16string_view text, std::vector<std::u16string>* groups = nullptr,
                     std::size_t budget = kStepBudget, std::size_t* spent = nullptr) const;

    // The same walks without the quick refusal of a text that lacks a character every match
    // needs. For differential tests: their step counts then bound the work a plain backtracking
    // engine such as std::wregex does on the same input.
    Result SearchWithoutShortcut(std::u16string_view text, std::vector<std::u16string>* groups,
                                 std::size_t budget) const;
    Result FullMatchWithoutShortcut(std::u16string_view text, std::vector<std::u16string>* groups,
                                    std::size_t budget) const;

    RuleRegex(RuleRegex&&) noexcept;
    RuleRegex& operator=(RuleRegex&&) noexcept;
    ~RuleRegex();

    struct Program;  // compiled form (private to the implementation)

private:
    explicit RuleRegex(std::unique_ptr<Program> program);
    Result Run(std::u16string_view text, bool whole, std::vector<std::u16string>* groups,
               std::size_t budget, bool shortcut, std::size_t* spent = nullptr) const;
    std::unique_ptr<Program> program_;
};

}  // namespace vrl
