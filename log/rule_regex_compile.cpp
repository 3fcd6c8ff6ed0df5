// Compiler from an expression to the automaton of rule_regex_program.h. It builds, state by state,
// the automaton std::wregex builds, so that the same expressions are refused (the 100 000-state
// ceiling included) and matching visits states in the same order. Unlike the standard library it
// does not recurse per term, and it refuses groups nested deeper than kMaxNesting.

#include "log/rule_regex_program.h"
#include "log/rule_regex_scanner.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <stack>

namespace vrl {
namespace rx {

namespace {

using Program = RuleRegex::Program;

// A run of states from start to end; appending links end's next to what follows.
struct Seq {
    int start;
    int end;
};

class Compiler {
public:
    Compiler(Program& program, const std::wstring& pattern)
        : p_(program),
          ctype_(std::use_facet<std::ctype<wchar_t>>(program.traits.getloc())),
          scanner_(pattern.data(), pattern.data() + pattern.size(), ctype_) {}

    void Run();

private:
    int Insert(State s);
    int InsertOp(Op op) {
        State s;
        s.op = op;
        return Insert(s);
    }
    int InsertGroupBegin();
    int InsertGroupEnd();
    int InsertBackref(long index);
    int InsertRepeat(int next, int alt, bool lazy);
    void Append(Seq& seq, int id) {
        p_.states[static_cast<std::size_t>(seq.end)].next = id;
        seq.end = id;
    }
    void Append(Seq& seq, const Seq& tail) {
        p_.states[static_cast<std::size_t>(seq.end)].next = tail.start;
        seq.end = tail.end;
    }
    Seq Clone(const Seq& seq);
    Seq Pop() {
        Seq s = stack_.back();
        stack_.pop_back();
        return s;
    }
    void Push(int id) { stack_.push_back(Seq{id, id}); }
    void EliminateDummies();

    bool Match(Tok token);
    long IntValue(int radix) const;

    void Disjunction();
    void Alternative();
    bool Term();
    bool Assertion();
    bool Quantifier();
    void Interval();
    bool Atom();
    bool TryChar();
    void Nested(bool capture);
    bool BracketExpression();
    bool BracketTerm(BracketMatcher& m, int& lastKind, wchar_t& lastChar);
    void AddClass(BracketMatcher& m, bool negated);
    int InsertBracket(BracketMatcher m);

    Program& p_;
    const std::ctype<wchar_t>& ctype_;
    Scanner scanner_;
    std::wstring value_;
    std::vector<Seq> stack_;
    std::vector<int> openGroups_;
    int depth_ = 0;
};

int Compiler::Insert(State s) {
    p_.states.push_back(s);
    if (p_.states.size() > kMaxStates) throw Rejected{};
    return static_cast<int>(p_.states.size() - 1);
}

int Compiler::InsertGroupBegin() {
    State s;
    s.op = Op::GroupBegin;
    s.index = p_.groupCount++;
    openGroups_.push_back(s.index);
    return Insert(s);
}

int Compiler::InsertGroupEnd() {
    State s;
    s.op = Op::GroupEnd;
    s.index = openGroups_.back();
    openGroups_.pop_back();
    return Insert(s);
}

int Compiler::InsertBackref(long index) {
    // The standard library keeps the index as size_t: a negative one is out of range too.
    const auto wanted = static_cast<std::size_t>(index);
    if (wanted >= static_cast<std::size_t>(p_.groupCount)) throw Rejected{};
    if (std::find(openGroups_.begin(), openGroups_.end(), index) != openGroups_.end()) throw Rejected{};
    State s;
    s.op = Op::Backref;
    s.index = static_cast<int>(index);
    return Insert(s);
}

int Compiler::InsertRepeat(int next, int alt, bool lazy) {
    State s;
    s.op = Op::Repeat;
    s.next = next;
    s.alt = alt;
    s.neg = lazy;
    return Insert(s);
}

// Copies the states reachable from seq.start (stopping at seq.end). The walk, including the way
// it may copy a state twice, follows the standard library, so state counts stay identical.
Seq Compiler::Clone(const Seq& seq) {
    std::map<int, int> copies;
    std::stack<int> pending;
    pending.push(seq.start);
    while (!pending.empty()) {
        const int u = pending.top();
        pending.pop();
        const State dup = p_.states[static_cast<std::size_t>(u)];
        copies[u] = Insert(dup);
        if (dup.HasAlt() && dup.alt != kNoState && copies.count(dup.alt) == 0) pending.push(dup.alt);
        if (u == seq.end) continue;
        if (dup.next != kNoState && copies.count(dup.next) == 0) pending.push(dup.next);
    }
    for (const auto& [from, to] : copies) {
        (void)from;
        State& s = p_.states[static_cast<std::size_t>(to)];
        if (s.next != kNoState) s.next = copies.find(s.next)->second;
        if (s.HasAlt() && s.alt != kNoState) s.alt = copies.find(s.alt)->second;
    }
    return Seq{copies[seq.start], copies[seq.end]};
}

void Compiler::EliminateDummies() {
    const auto count = p_.states.size();
    auto skip = [&](int id) {
        // Dummies only ever point forward; the guard keeps a malformed chain from looping.
        for (std::size_t hops = 0; id >= 0 && p_.states[static_cast<std::size_t>(id)].op == Op::Dummy; ++hops) {
            if (hops > count) throw Rejected{};
            id = p_.states[static_cast<std::size_t>(id)].next;
        }
        return id;
    };
    for (State& s : p_.states) {
        s.next = skip(s.next);
        if (s.HasAlt()) s.alt = skip(s.alt);
    }
}

bool Compiler::Match(Tok token) {
    if (scanner_.Token() != token) return false;
    value_ = scanner_.Value();
    scanner_.Advance();
    return true;
}

// Digits as the standard library adds them up: in a long that wraps, truncated to int.
long Compiler::IntValue(int radix) const {
    std::uint64_t v = 0;
    for (wchar_t c : value_) {
        const auto digit = static_cast<std::int64_t>(p_.traits.value(c, radix));
        v = v * static_cast<std::uint64_t>(radix) + static_cast<std::uint64_t>(digit);
    }
    return static_cast<int>(static_cast<std::uint32_t>(v));
}

void Compiler::Run() {
    const int first = InsertGroupBegin();
    p_.start = first;
    Seq whole{first, first};
    Disjunction();
    if (!Match(Tok::Eof)) throw Rejected{};
    Append(whole, Pop());
    Append(whole, InsertGroupEnd());
    p_.accept = InsertOp(Op::Accept);
    Append(whole, p_.accept);
    EliminateDummies();
}

void Compiler::Disjunction() {
    Alternative();
    while (Match(Tok::Or)) {
        Seq first = Pop();
        Alternative();
        Seq second = Pop();
        const int end = InsertOp(Op::Dummy);
        Append(first, end);
        Append(second, end);
        State alt;
        alt.op = Op::Alternative;
        alt.next = second.start;
        alt.alt = first.start;
        stack_.push_back(Seq{Insert(alt), end});
    }
}

void Compiler::Alternative() {
    std::vector<Seq> terms;
    while (Term()) terms.push_back(Pop());
    Seq tail{InsertOp(Op::Dummy), 0};
    tail.end = tail.start;
    for (auto it = terms.rbegin(); it != terms.rend(); ++it) {
        Append(*it, tail);
        tail = *it;
    }
    stack_.push_back(tail);
}

bool Compiler::Term() {
    if (Assertion()) return true;
    if (!Atom()) return false;
    while (Quantifier()) {
    }
    return true;
}

bool Compiler::Assertion() {
    if (Match(Tok::LineBegin)) {
        Push(InsertOp(Op::LineBegin));
    } else if (Match(Tok::LineEnd)) {
        Push(InsertOp(Op::LineEnd));
    } else if (Match(Tok::WordBound)) {
        State s;
        s.op = Op::WordBoundary;
        s.neg = value_[0] == L'n';
        Push(Insert(s));
    } else if (Match(Tok::LookaheadBegin)) {
        const bool negative = value_[0] == L'n';
        if (++depth_ > kMaxNesting) throw Rejected{};
        Disjunction();
        --depth_;
        if (!Match(Tok::GroupEnd)) throw Rejected{};
        Seq inner = Pop();
        Append(inner, InsertOp(Op::Accept));
        State s;
        s.op = Op::Lookahead;
        s.alt = inner.start;
        s.neg = negative;
        Push(Insert(s));
    } else {
        return false;
    }
    return true;
}

bool Compiler::Quantifier() {
    Tok kind;
    if (Match(Tok::Star)) {
        kind = Tok::Star;
    } else if (Match(Tok::Plus)) {
        kind = Tok::Plus;
    } else if (Match(Tok::Opt)) {
        kind = Tok::Opt;
    } else if (Match(Tok::IntervalBegin)) {
        Interval();
        return true;
    } else {
        return false;
    }
    if (stack_.empty()) throw Rejected{};
    const bool lazy = Match(Tok::Opt);
    Seq e = Pop();
    if (kind == Tok::Star) {
        const int rep = InsertRepeat(kNoState, e.start, lazy);
        Append(e, rep);
        Push(rep);
    } else if (kind == Tok::Plus) {
        Append(e, InsertRepeat(kNoState, e.start, lazy));
        stack_.push_back(e);
    } else {
        const int end = InsertOp(Op::Dummy);
        Seq r{InsertRepeat(kNoState, e.start, lazy), 0};
        r.end = r.start;
        Append(e, end);
        Append(r, end);
        stack_.push_back(r);
    }
    return true;
}

// {n}, {n,} and {n,m}: the repeated part is copied n times, then once more inside a loop, or
// m-n times as optional copies.
void Compiler::Interval() {
    if (stack_.empty()) throw Rejected{};
    if (!Match(Tok::DupCount)) throw Rejected{};
    const Seq r = Pop();
    Seq e{InsertOp(Op::Dummy), 0};
    e.end = e.start;
    const long minRep = IntValue(10);
    bool infinite = false;
    long extra = 0;
    if (Match(Tok::Comma)) {
        if (Match(Tok::DupCount))
            extra = IntValue(10) - minRep;
        else
            infinite = true;
    }
    if (!Match(Tok::IntervalEnd)) throw Rejected{};
    const bool lazy = Match(Tok::Opt);
    for (long i = 0; i < minRep; ++i) Append(e, Clone(r));
    if (infinite) {
        Seq tmp = Clone(r);
        const int loop = InsertRepeat(kNoState, tmp.start, lazy);
        Append(tmp, loop);
        Append(e, loop);
    } else {
        if (extra < 0) throw Rejected{};
        const int end = InsertOp(Op::Dummy);
        std::vector<int> optional;
        for (long i = 0; i < extra; ++i) {
            const Seq tmp = Clone(r);
            const int alt = InsertRepeat(tmp.start, end, lazy);
            optional.push_back(alt);
            Append(e, Seq{alt, tmp.end});
        }
        Append(e, end);
        for (auto it = optional.rbegin(); it != optional.rend(); ++it) {
            State& s = p_.states[static_cast<std::size_t>(*it)];
            std::swap(s.next, s.alt);
        }
    }
    stack_.push_back(e);
}

bool Compiler::Atom() {
    if (Match(Tok::AnyChar)) {
        Push(InsertOp(Op::MatchAny));
    } else if (TryChar()) {
        State s;
        s.op = Op::MatchChar;
        s.ch = value_[0];
        Push(Insert(s));
    } else if (Match(Tok::Backref)) {
        Push(InsertBackref(IntValue(10)));
    } else if (Match(Tok::QuotedClass)) {
        BracketMatcher m;
        m.negated = ctype_.is(std::ctype_base::upper, value_[0]);
        AddClass(m, false);
        Push(InsertBracket(std::move(m)));
    } else if (Match(Tok::NoGroupBegin)) {
        Nested(false);
    } else if (Match(Tok::GroupBegin)) {
        Nested(true);
    } else {
        return BracketExpression();
    }
    return true;
}

bool Compiler::TryChar() {
    if (Match(Tok::HexNum)) {
        value_.assign(1, static_cast<wchar_t>(IntValue(16)));
        return true;
    }
    return Match(Tok::OrdChar);
}

void Compiler::Nested(bool capture) {
    if (++depth_ > kMaxNesting) throw Rejected{};
    Seq r{capture ? InsertGroupBegin() : InsertOp(Op::Dummy), 0};
    r.end = r.start;
    Disjunction();
    if (!Match(Tok::GroupEnd)) throw Rejected{};
    --depth_;
    Append(r, Pop());
    if (capture) Append(r, InsertGroupEnd());
    stack_.push_back(r);
}

namespace {
enum LastKind { kNone, kChar, kClass };
}

bool Compiler::BracketExpression() {
    const bool negated = Match(Tok::BracketNegBegin);
    if (!negated && !Match(Tok::BracketBegin)) return false;
    BracketMatcher m;
    m.negated = negated;
    int lastKind = kNone;
    wchar_t lastChar = 0;
    if (TryChar()) {
        lastKind = kChar;
        lastChar = value_[0];
    } else if (Match(Tok::BracketDash)) {
        lastKind = kChar;
        lastChar = L'-';
    }
    while (BracketTerm(m, lastKind, lastChar)) {
    }
    if (lastKind == kChar) m.chars.push_back(lastChar);
    Push(InsertBracket(std::move(m)));
    return true;
}

// One element of a bracket expression; false at the closing bracket. A character is held back
// in lastChar until it is known whether a range starts with it.
bool Compiler::BracketTerm(BracketMatcher& m, int& lastKind, wchar_t& lastChar) {
    if (Match(Tok::BracketEnd)) return false;
    auto pushChar = [&](wchar_t c) {
        if (lastKind == kChar) m.chars.push_back(lastChar);
        lastKind = kChar;
        lastChar = c;
    };
    auto pushClass = [&] {
        if (lastKind == kChar) m.chars.push_back(lastChar);
        lastKind = kClass;
    };
    if (Match(Tok::CollSymbol)) {
        const std::wstring symbol = p_.traits.lookup_collatename(value_.begin(), value_.end());
        if (symbol.empty()) throw Rejected{};
        m.chars.push_back(symbol[0]);
        if (symbol.size() == 1)
            pushChar(symbol[0]);
        else
            pushClass();
    } else if (Match(Tok::EquivClass)) {
        pushClass();
        const std::wstring name = p_.traits.lookup_collatename(value_.begin(), value_.end());
        if (name.empty()) throw Rejected{};
        m.equivalents.push_back(p_.traits.transform_primary(name.begin(), name.end()));
    } else if (Match(Tok::ClassName)) {
        pushClass();
        AddClass(m, false);
    } else if (TryChar()) {
        pushChar(value_[0]);
    } else if (Match(Tok::BracketDash)) {
        if (Match(Tok::BracketEnd)) {
            pushChar(L'-');
            return false;
        }
        if (lastKind == kClass) throw Rejected{};
        if (lastKind == kChar) {
            wchar_t high;
            if (TryChar())
                high = value_[0];
            else if (Match(Tok::BracketDash))
                high = L'-';
            else
                throw Rejected{};
            if (lastChar > high) throw Rejected{};
            m.ranges.emplace_back(lastChar, high);
            lastKind = kNone;
        } else {
            pushChar(L'-');
        }
    } else if (Match(Tok::QuotedClass)) {
        pushClass();
        AddClass(m, ctype_.is(std::ctype_base::upper, value_[0]));
    } else {
        throw Rejected{};
    }
    return true;
}

void Compiler::AddClass(BracketMatcher& m, bool negated) {
    const ClassMask mask = p_.traits.lookup_classname(value_.begin(), value_.end(), false);
    if (mask == ClassMask{}) throw Rejected{};
    if (negated) {
        m.negClassMasks.push_back(mask);
    } else {
        m.classMask |= mask;
        m.hasClass = true;
    }
}

int Compiler::InsertBracket(BracketMatcher m) {
    m.Ready(p_.traits);
    p_.brackets.push_back(std::move(m));
    State s;
    s.op = Op::MatchBracket;
    s.index = static_cast<int>(p_.brackets.size() - 1);
    return Insert(s);
}

}  // namespace

std::unique_ptr<RuleRegex::Program> CompileProgram(std::u16string_view pattern) {
    auto program = std::make_unique<RuleRegex::Program>();
    const std::wstring wide(pattern.begin(), pattern.end());
    Compiler compiler(*program, wide);
    compiler.Run();
    int slots = 0;
    for (std::size_t id = 0; id < program->states.size(); ++id) {
        State& s = program->states[id];
        if (s.op != Op::Repeat) continue;
        s.index = slots++;
        if (s.alt == kNoState) continue;
        const State& body = program->states[static_cast<std::size_t>(s.alt)];
        const bool consumes = body.op == Op::MatchChar || body.op == Op::MatchAny || body.op == Op::MatchBracket;
        s.single = consumes && body.next == static_cast<int>(id);
    }
    program->repeatSlots = slots;
    const State& first = program->states[static_cast<std::size_t>(program->states[static_cast<std::size_t>(program->start)].next)];
    program->leadingAnyLoop =
        first.op == Op::Repeat && first.single && !first.neg &&
        program->states[static_cast<std::size_t>(first.alt)].op == Op::MatchAny &&
        std::none_of(program->states.begin(), program->states.end(), [](const State& s) { return s.op == Op::Lookahead; });
    const wchar_t w = L'w';
    program->wordTable = ClassTable::For(program->traits, program->traits.lookup_classname(&w, &w + 1));
    FindRequiredStates(*program);
    return program;
}

}  // namespace rx
}  // namespace vrl
