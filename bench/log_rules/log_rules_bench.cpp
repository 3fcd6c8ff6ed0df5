// How much compiling each rule expression once per load saves: a line is tested against 100
// rules (half of them regular expressions, none matching until the last), once through
// LogRuleSet and once the naive way, building a std::wregex for every expression and line.
// Both run side by side in one process; only the ratio is meant to be compared between runs.

#include "log/log_rules.h"

#include <chrono>
#include <cstdio>
#include <regex>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

struct Rule {
    std::u16string keyword;
    bool exact;
    bool regex;
};

std::vector<Rule> MakeRules() {
    static const char16_t* const kExpressions[] = {
        u"^You feel (\\w+)\\.", u"\\[\\d+\\] .*dies", u"(gold|platinum) coin", u"^\\S+ hits? you",
        u"level (\\d+)!$",      u"[Ss]ummon\\w*",    u"(?:fire|ice) bolt",    u"\\bghost\\b",
        u"^Your .* breaks",     u"x{2,}z",
    };
    std::vector<Rule> rules;
    for (int i = 0; i < 99; ++i) {
        const std::u16string n = std::u16string(u"#") + static_cast<char16_t>(u'A' + i % 26);
        if (i % 2 == 0)
            rules.push_back({kExpressions[i / 2 % 10] + n, i % 4 == 0, true});
        else
            rules.push_back({u"keyword" + n, i % 3 == 0, false});
    }
    rules.push_back({u"putit", false, false});  // the rule that finally matches
    return rules;
}

vrl::KcsvFile TableOf(const std::vector<Rule>& rules) {
    vrl::KcsvFile table;
    table.AddColumn(u"keyword");
    table.AddColumn(u"exact");
    table.AddColumn(u"regex");
    for (unsigned i = 0; i < rules.size(); ++i) {
        table.SetCell(i, 0, rules[i].keyword);
        table.SetCell(i, 1, rules[i].exact ? u"1" : u"");
        table.SetCell(i, 2, rules[i].regex ? u"1" : u"");
    }
    return table;
}

// What a straightforward handler does: a fresh std::wregex per rule and line.
int NaiveFirstMatch(const std::vector<Rule>& rules, const std::wstring& text) {
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const Rule& r = rules[i];
        const std::wstring keyword(r.keyword.begin(), r.keyword.end());
        bool hit;
        if (!r.regex) {
            hit = r.exact ? text == keyword : text.find(keyword) != std::wstring::npos;
        } else {
            try {
                const std::wregex re(keyword, std::regex_constants::ECMAScript);
                hit = r.exact ? std::regex_match(text, re) : std::regex_search(text, re);
            } catch (const std::regex_error&) {
                hit = false;
            }
        }
        if (hit) return static_cast<int>(i);
    }
    return -1;
}

template <typename F>
double MicrosecondsPerLine(int lines, F&& testLine) {
    const auto start = Clock::now();
    for (int i = 0; i < lines; ++i) testLine();
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count() / lines;
}

}  // namespace

int main() {
    const std::vector<Rule> rules = MakeRules();
    vrl::LogRuleSet set;
    const auto loadStart = Clock::now();
    set.Load(TableOf(rules));
    const double loadMs = std::chrono::duration<double, std::milli>(Clock::now() - loadStart).count();

    std::vector<std::u16string> lines = {u"[12] You see a putit.", u""};
    while (lines[1].size() < vrl::kLogTextLimit - 10) lines[1] += u"The putit is hit by an arrow. ";
    const char* const names[] = {"short line", "2035-char line"};

    std::printf("log rules: 100 rules (50 regular expressions), first match at the last rule\n");
    std::printf("load with compile once: %.2f ms\n", loadMs);
    for (std::size_t l = 0; l < lines.size(); ++l) {
        const std::u16string& line = lines[l];
        const std::wstring wide(line.begin(), line.end());
        int sink = 0;
        const int count = l == 0 ? 300 : 30;
        const double once = MicrosecondsPerLine(count, [&] { sink += static_cast<int>(*set.FirstMatch(line)); });
        const double naive = MicrosecondsPerLine(count, [&] { sink += NaiveFirstMatch(rules, wide); });
        std::printf("%-15s compiled once %9.1f us/line   std::wregex per line %9.1f us/line   ratio %.1fx  (%d)\n",
                    names[l], once, naive, naive / once, sink);
    }
    return 0;
}
