// Character tests of the compiled automaton, and the search for states every match must pass.

#include "log/rule_regex_program.h"

#include <algorithm>
#include <deque>
#include <mutex>

namespace vrl {
namespace rx {

std::shared_ptr<const ClassTable> ClassTable::For(const Traits& traits, ClassMask mask) {
    // A handful of distinct classes exist per process (\d, \w, \s and a few [[:name:]]); each
    // table costs one classification of every code unit, done once.
    struct Entry {
        ClassMask mask;
        std::string locale;
        std::shared_ptr<const ClassTable> table;
    };
    static std::mutex lock;
    static std::deque<Entry> cache;
    const std::string localeName = traits.getloc().name();
    std::lock_guard<std::mutex> guard(lock);
    for (const Entry& e : cache) {
        if (e.mask == mask && e.locale == localeName) return e.table;
    }
    auto table = std::make_shared<ClassTable>();
    for (std::uint32_t u = 0; u < 0x10000u; ++u) {
        if (traits.isctype(static_cast<wchar_t>(u), mask)) table->bits_[u >> 6] |= std::uint64_t{1} << (u & 63u);
    }
    cache.push_back(Entry{mask, localeName, table});
    return table;
}

void BracketMatcher::Ready(const Traits& traits) {
    std::sort(chars.begin(), chars.end());
    chars.erase(std::unique(chars.begin(), chars.end()), chars.end());
    if (hasClass) classTable = ClassTable::For(traits, classMask);
    for (const ClassMask& mask : negClassMasks) negClassTables.push_back(ClassTable::For(traits, mask));
    for (std::uint32_t u = 0; u < 128u; ++u) {
        if (Evaluate(static_cast<wchar_t>(u), traits)) ascii[u >> 6] |= std::uint64_t{1} << (u & 63u);
    }
}

bool BracketMatcher::Evaluate(wchar_t c, const Traits& traits) const {
    auto test = [&] {
        if (std::binary_search(chars.begin(), chars.end(), c)) return true;
        for (const auto& [low, high] : ranges) {
            if (low <= c && c <= high) return true;
        }
        if (classTable && classTable->Has(c)) return true;
        if (!equivalents.empty()) {
            const std::wstring key = traits.transform_primary(&c, &c + 1);
            if (std::find(equivalents.begin(), equivalents.end(), key) != equivalents.end()) return true;
        }
        for (const auto& table : negClassTables) {
            if (!table->Has(c)) return true;
        }
        return false;
    };
    return test() != negated;
}

namespace {

// States that can follow s on the way to the final accept. A lookahead's body ends in an accept
// of its own and is not on that way.
template <typename Visit>
void ForEachSuccessor(const State& s, Visit visit) {
    if (s.op == Op::Accept) return;
    if (s.next != kNoState) visit(s.next);
    if ((s.op == Op::Alternative || s.op == Op::Repeat) && s.alt != kNoState) visit(s.alt);
}

// Whether the final accept can be reached from the start without passing through `avoid`.
bool ReachableAvoiding(const RuleRegex::Program& p, int avoid, std::vector<char>& seen, std::vector<int>& work) {
    std::fill(seen.begin(), seen.end(), 0);
    work.clear();
    if (p.start == avoid) return false;
    work.push_back(p.start);
    seen[static_cast<std::size_t>(p.start)] = 1;
    while (!work.empty()) {
        const int id = work.back();
        work.pop_back();
        if (id == p.accept) return true;
        ForEachSuccessor(p.states[static_cast<std::size_t>(id)], [&](int to) {
            if (to != avoid && !seen[static_cast<std::size_t>(to)]) {
                seen[static_cast<std::size_t>(to)] = 1;
                work.push_back(to);
            }
        });
    }
    return false;
}

constexpr std::size_t kMaxAnalysedStates = 2000;
constexpr std::size_t kMaxRequired = 8;

}  // namespace

// Every consuming state on all paths is a dominator of the accept; the check is quadratic, so it
// is done for ordinary-sized expressions only (larger ones simply go without the shortcut).
void FindRequiredStates(RuleRegex::Program& p) {
    p.required.clear();
    if (p.states.size() > kMaxAnalysedStates) return;
    std::vector<char> seen(p.states.size(), 0);
    std::vector<int> work;
    for (std::size_t id = 0; id < p.states.size() && p.required.size() < kMaxRequired; ++id) {
        const Op op = p.states[id].op;
        if (op != Op::MatchChar && op != Op::MatchBracket) continue;
        if (!ReachableAvoiding(p, static_cast<int>(id), seen, work)) p.required.push_back(static_cast<int>(id));
    }
}

}  // namespace rx
}  // namespace vrl
