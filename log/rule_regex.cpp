// Matching: a depth-first walk of the automaton in the standard library's order, with the walk's
// stack on the heap and a budget of steps. Each record on the stack is either something to undo
// when the walk backs up (a capture, a repetition counter, the position) or a branch still to
// try. A lookahead runs a nested walk from the current position; nesting is bounded by the
// compiler's limit on nested groups.
//
// A loop over a single character test (.* [^,]+ a*?) is walked without visiting its states: the
// greedy one takes every character it can at once and gives them back one record at a time, the
// lazy one takes one more character each time the walk backs up to it. The order of the tries is
// the same, and such a loop can neither capture nor meet its own counter at the position where
// it last began, so the result is too.
//
// Work that copies (the captures and counters a lookahead or a new start takes) is charged like
// the steps it stands for, so a rule with thousands of groups stops as soon as a plain one would.

#include "log/rule_regex.h"

#include "log/rule_regex_program.h"
#include "log/rule_regex_scanner.h"

#include <new>

namespace vrl {

namespace rx {
namespace {

struct Capture {
    int first = -1;  // -1: never set
    int second = -1;
    bool matched = false;
};
using Captures = std::vector<Capture>;

enum class Rec : std::uint8_t {
    ThenState,      // if nothing matched yet, continue at state a
    ThenRepeatOnce, // if nothing matched yet, one more iteration of repeat state a
    RestoreCount,   // repeat slot a back to (b, c)
    DropCount,      // repeat slot a: one empty iteration less
    RestoreFirst,   // capture a's start back to b
    RestoreCapture, // capture a back to (b, c, flag)
    RestorePos,     // position back to a
    GiveBack,       // greedy single loop: continue at state a from position c, then c-1, down to b
    TakeOneMore,    // lazy single loop of state a: one more character at position b, then continue
};

struct Record {
    Rec kind;
    bool flag;
    int a;
    int b;
    int c;
};

struct RepeatCount {
    int pos = -1;
    int count = 0;
};

// Shared by a walk and the walks of its lookaheads.
struct Budget {
    std::size_t steps = 0;
    std::size_t limit = 0;
    bool exhausted = false;

    bool Spend(std::size_t n) {
        steps += n;
        if (steps > limit) exhausted = true;
        return !exhausted;
    }
};

// What copying n captures or counters is charged, in steps.
std::size_t CopyCost(std::size_t n) { return n / 8; }

// Ordinary rules need a few records per character of the line; this leaves a wide margin and
// keeps a runaway walk to a few megabytes.
constexpr std::size_t kMaxRecords = std::size_t{1} << 18;

class Walk {
public:
    Walk(const RuleRegex::Program& p, std::u16string_view text, Budget& budget)
        : p_(p), text_(text), end_(static_cast<int>(text.size())), budget_(budget),
          counts_(static_cast<std::size_t>(p.repeatSlots)) {}

    // One attempt from `begin`; `exact` demands that the match ends at the end of the text.
    // On success `results` holds the captures.
    bool Attempt(int begin, bool prevAvail, bool exact, int startState, Captures& results);

private:
    int Visit(int id);  // handles one state; the next state to visit or kNoState
    int RepeatOnce(int id);
    int SingleLoop(const State& s, int id);
    int GiveBack(const Record& r);
    int TakeOneMore(int id, int pos);
    bool AtBegin() const { return cur_ == begin_ && !prevAvail_; }
    bool IsWord(int pos) const { return p_.wordTable->Has(static_cast<wchar_t>(text_[static_cast<std::size_t>(pos)])); }
    bool WordBoundary() const {
        const bool left = (cur_ != begin_ || prevAvail_) && IsWord(cur_ - 1);
        const bool right = cur_ != end_ && IsWord(cur_);
        return left != right;
    }
    bool Lookahead(int inner);
    int Backref(const State& s);
    void Push(Rec kind, int a, int b = 0, int c = 0, bool flag = false) {
        if (top_ == records_.size()) Grow();
        records_[top_++] = Record{kind, flag, a, b, c};
    }
    void Grow() { records_.resize(records_.empty() ? 256 : records_.size() * 2); }

    const RuleRegex::Program& p_;
    std::u16string_view text_;
    const int end_;
    Budget& budget_;
    int begin_ = 0;
    int cur_ = 0;
    bool prevAvail_ = false;
    bool exact_ = false;
    bool solved_ = false;
    Captures cur_captures_;
    Captures* results_ = nullptr;
    std::vector<RepeatCount> counts_;
    std::vector<Record> records_;  // used up to top_; resized only to grow
    std::size_t top_ = 0;
};

bool Walk::Attempt(int begin, bool prevAvail, bool exact, int startState, Captures& results) {
    begin_ = cur_ = begin;
    prevAvail_ = prevAvail;
    exact_ = exact;
    solved_ = false;
    results_ = &results;
    cur_captures_ = results;
    top_ = 0;
    if (!budget_.Spend(CopyCost(results.size()))) return false;
    int target = startState;
    for (;;) {
        if (target != kNoState) {
            if (!budget_.Spend(1) || top_ > kMaxRecords) {
                budget_.exhausted = true;
                return false;
            }
            target = Visit(target);
            if (solved_ || budget_.exhausted) return solved_;
            continue;
        }
        if (top_ == 0) return false;
        const Record r = records_[--top_];
        switch (r.kind) {
        case Rec::ThenState: target = r.a; break;
        case Rec::ThenRepeatOnce: target = RepeatOnce(r.a); break;
        case Rec::RestoreCount: counts_[static_cast<std::size_t>(r.a)] = RepeatCount{r.b, r.c}; break;
        case Rec::DropCount: --counts_[static_cast<std::size_t>(r.a)].count; break;
        case Rec::RestoreFirst: cur_captures_[static_cast<std::size_t>(r.a)].first = r.b; break;
        case Rec::RestoreCapture: cur_captures_[static_cast<std::size_t>(r.a)] = Capture{r.b, r.c, r.flag}; break;
        case Rec::RestorePos: cur_ = r.a; break;
        case Rec::GiveBack: target = GiveBack(r); break;
        case Rec::TakeOneMore: target = TakeOneMore(r.a, r.b); break;
        }
    }
}

int Walk::Visit(int id) {
    const State& s = p_.states[static_cast<std::size_t>(id)];
    switch (s.op) {
    case Op::Repeat:
        if (s.single) return SingleLoop(s, id);
        if (!s.neg) {
            Push(Rec::ThenState, s.next);
            return RepeatOnce(id);
        }
        Push(Rec::ThenRepeatOnce, id);
        return s.next;
    case Op::Alternative:
        Push(Rec::ThenState, s.next);
        return s.alt;
    case Op::GroupBegin: {
        Capture& c = cur_captures_[static_cast<std::size_t>(s.index)];
        Push(Rec::RestoreFirst, s.index, c.first);
        c.first = cur_;
        return s.next;
    }
    case Op::GroupEnd: {
        Capture& c = cur_captures_[static_cast<std::size_t>(s.index)];
        Push(Rec::RestoreCapture, s.index, c.first, c.second, c.matched);
        c.second = cur_;
        c.matched = true;
        return s.next;
    }
    case Op::LineBegin: return AtBegin() ? s.next : kNoState;
    case Op::LineEnd: return cur_ == end_ ? s.next : kNoState;
    case Op::WordBoundary: return WordBoundary() != s.neg ? s.next : kNoState;
    case Op::Lookahead: return Lookahead(s.alt) != s.neg ? s.next : kNoState;
    case Op::Backref: return Backref(s);
    case Op::MatchChar:
    case Op::MatchAny:
    case Op::MatchBracket:
        if (cur_ == end_ || !p_.Consumes(s, static_cast<wchar_t>(text_[static_cast<std::size_t>(cur_)])))
            return kNoState;
        Push(Rec::RestorePos, cur_);
        ++cur_;
        return s.next;
    case Op::Accept:
        solved_ = !exact_ || cur_ == end_;
        if (solved_) *results_ = cur_captures_;
        return kNoState;
    case Op::Dummy: return s.next;
    }
    return kNoState;
}

int Walk::SingleLoop(const State& s, int id) {
    if (s.neg) {
        Push(Rec::RestorePos, cur_);
        Push(Rec::TakeOneMore, id, cur_);
        return s.next;
    }
    const State& body = p_.states[static_cast<std::size_t>(s.alt)];
    int stop = cur_;
    while (stop != end_ && p_.Consumes(body, static_cast<wchar_t>(text_[static_cast<std::size_t>(stop)]))) ++stop;
    if (!budget_.Spend(static_cast<std::size_t>(stop - cur_) / 8)) return kNoState;
    if (stop != cur_) {
        Push(Rec::RestorePos, cur_);
        Push(Rec::GiveBack, s.next, cur_, stop - 1);
        cur_ = stop;
    }
    return s.next;
}

// When the loop is followed by a character test (after group marks, which change nothing the
// test sees), the positions where that test fails are passed over here rather than tried one by
// one.
int Walk::GiveBack(const Record& r) {
    int pos = r.c;
    int after = r.a;
    while (after != kNoState && (p_.states[static_cast<std::size_t>(after)].op == Op::GroupBegin ||
                                 p_.states[static_cast<std::size_t>(after)].op == Op::GroupEnd ||
                                 p_.states[static_cast<std::size_t>(after)].op == Op::Dummy))
        after = p_.states[static_cast<std::size_t>(after)].next;
    const State& next = p_.states[static_cast<std::size_t>(after == kNoState ? r.a : after)];
    if (next.op == Op::MatchChar || next.op == Op::MatchAny || next.op == Op::MatchBracket) {
        while (pos >= r.b && (pos == end_ || !p_.Consumes(next, static_cast<wchar_t>(text_[static_cast<std::size_t>(pos)]))))
            --pos;
    }
    if (!budget_.Spend(1 + static_cast<std::size_t>(r.c - pos) / 8) || pos < r.b) return kNoState;
    cur_ = pos;
    if (pos != r.b) Push(Rec::GiveBack, r.a, r.b, pos - 1);
    return r.a;
}

int Walk::TakeOneMore(int id, int pos) {
    if (!budget_.Spend(1)) return kNoState;
    const State& s = p_.states[static_cast<std::size_t>(id)];
    if (pos == end_ || !p_.Consumes(p_.states[static_cast<std::size_t>(s.alt)],
                                    static_cast<wchar_t>(text_[static_cast<std::size_t>(pos)])))
        return kNoState;
    cur_ = pos + 1;
    Push(Rec::TakeOneMore, id, cur_);
    return s.next;
}

// An iteration that would start where the previous one started is allowed twice, then refused;
// this is what stops a loop over something that can match empty.
int Walk::RepeatOnce(int id) {
    const State& s = p_.states[static_cast<std::size_t>(id)];
    RepeatCount& rc = counts_[static_cast<std::size_t>(s.index)];
    if (rc.count == 0 || rc.pos != cur_) {
        Push(Rec::RestoreCount, s.index, rc.pos, rc.count);
        rc = RepeatCount{cur_, 1};
        return s.alt;
    }
    if (rc.count < 2) {
        ++rc.count;
        Push(Rec::DropCount, s.index);
        return s.alt;
    }
    return kNoState;
}

// The nested walk starts with a copy of the captures and hands back those it set. Its ^ and \b
// see the current position as the start of the text, as the standard library's do.
bool Walk::Lookahead(int inner) {
    if (!budget_.Spend(1 + CopyCost(2 * cur_captures_.size() + counts_.size()))) return false;
    Captures what = cur_captures_;
    Walk sub(p_, text_, budget_);
    if (!sub.Attempt(cur_, prevAvail_, false, inner, what)) return false;
    for (std::size_t i = 0; i < what.size(); ++i) {
        if (what[i].matched) cur_captures_[i] = what[i];
    }
    return true;
}

// A group that has not matched makes the reference fail (not match empty).
int Walk::Backref(const State& s) {
    const Capture& c = cur_captures_[static_cast<std::size_t>(s.index)];
    if (!c.matched) return kNoState;
    const int length = c.second - c.first;
    if (length < 0 || !budget_.Spend(static_cast<std::size_t>(length))) return kNoState;
    if (end_ - cur_ < length) return kNoState;
    if (text_.substr(static_cast<std::size_t>(c.first), static_cast<std::size_t>(length)) !=
        text_.substr(static_cast<std::size_t>(cur_), static_cast<std::size_t>(length)))
        return kNoState;
    if (length != 0) {
        Push(Rec::RestorePos, cur_);
        cur_ += length;
    }
    return s.next;
}

// The last position at which the required states can all still be met; -1 when one of them
// matches nowhere.
int LastPossibleStart(const RuleRegex::Program& p, std::u16string_view text) {
    int last = static_cast<int>(text.size());
    for (int id : p.required) {
        const State& s = p.states[static_cast<std::size_t>(id)];
        int pos = static_cast<int>(text.size()) - 1;
        while (pos >= 0 && !p.Consumes(s, static_cast<wchar_t>(text[static_cast<std::size_t>(pos)]))) --pos;
        if (pos < last) last = pos;
        if (last < 0) return -1;
    }
    return last;
}

void CopyGroups(const Captures& captures, std::u16string_view text, std::vector<std::u16string>* groups) {
    if (groups == nullptr) return;
    groups->clear();
    for (const Capture& c : captures) {
        if (c.matched && c.first >= 0 && c.second >= c.first)
            groups->emplace_back(text.substr(static_cast<std::size_t>(c.first), static_cast<std::size_t>(c.second - c.first)));
        else
            groups->emplace_back();
    }
}

}  // namespace
}  // namespace rx

std::optional<RuleRegex> RuleRegex::Compile(std::u16string_view pattern) {
    try {
        return RuleRegex(rx::CompileProgram(pattern));
    } catch (const rx::Rejected&) {
    } catch (const std::bad_alloc&) {
    }
    return std::nullopt;
}

RuleRegex::Result RuleRegex::Run(std::u16string_view text, bool whole, std::vector<std::u16string>* groups,
                                 std::size_t budget, bool shortcut, std::size_t* spent) const {
    using namespace rx;
    if (groups != nullptr) groups->clear();
    if (spent != nullptr) *spent = 0;
    const int lastStart = shortcut ? LastPossibleStart(*program_, text) : static_cast<int>(text.size());
    if (lastStart < 0) return Result::NoMatch;
    Budget spend;
    spend.limit = budget;
    Captures results(static_cast<std::size_t>(program_->groupCount));
    Walk walk(*program_, text, spend);
    bool found = walk.Attempt(0, false, whole, program_->start, results);
    const auto lineBreak = [](char16_t c) { return c == u'\n' || c == u'\r' || c == u'\u2028' || c == u'\u2029'; };
    for (int begin = 1; !found && !whole && !spend.exhausted && begin <= lastStart; ++begin) {
        if (program_->leadingAnyLoop) {
            while (begin <= lastStart && !lineBreak(text[static_cast<std::size_t>(begin - 1)])) ++begin;
            if (begin > lastStart) break;
        }
        found = walk.Attempt(begin, true, false, program_->start, results);
    }
    if (spent != nullptr) *spent = spend.steps < budget ? spend.steps : budget;
    if (spend.exhausted) return Result::TooComplex;
    if (!found) return Result::NoMatch;
    CopyGroups(results, text, groups);
    return Result::Match;
}

RuleRegex::Result RuleRegex::Search(std::u16string_view text, std::vector<std::u16string>* groups,
                                    std::size_t budget, std::size_t* spent) const {
    return Run(text, false, groups, budget, true, spent);
}

RuleRegex::Result RuleRegex::FullMatch(std::u16string_view text, std::vector<std::u16string>* groups,
                                       std::size_t budget, std::size_t* spent) const {
    return Run(text, true, groups, budget, true, spent);
}

RuleRegex::Result RuleRegex::SearchWithoutShortcut(std::u16string_view text, std::vector<std::u16string>* groups,
                                                   std::size_t budget) const {
    return Run(text, false, groups, budget, false);
}

RuleRegex::Result RuleRegex::FullMatchWithoutShortcut(std::u16string_view text,
                                                      std::vector<std::u16string>* groups, std::size_t budget) const {
    return Run(text, true, groups, budget, false);
}

RuleRegex::RuleRegex(std::unique_ptr<Program> program) : program_(std::move(program)) {}
RuleRegex::RuleRegex(RuleRegex&&) noexcept = default;
RuleRegex& RuleRegex::operator=(RuleRegex&&) noexcept = default;
RuleRegex::~RuleRegex() = default;

}  // namespace vrl
