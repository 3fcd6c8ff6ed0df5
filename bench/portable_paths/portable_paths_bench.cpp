// The portable work behind the companion's messages, one path at a time:
//   line   a log line against 100 rules, half of them regular expressions (the last one matches)
//   pets   the diff of a pet message of 16 rows, every row changed
//   music  the choice of a music rule among 200
//   kcsv   the parse of a table of 1,000 rows
// `portable_paths_bench PATH N` does the set-up and then N operations of PATH, for the
// instruction counts of count_instructions.sh (the difference of two counts, N and 0, is the
// paths' own). Without arguments it prints the time per operation of each path.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "log/log_rules.h"
#include "music/music_rules.h"
#include "panels/pet_record.h"
#include "settings/kcsv.h"

namespace {

volatile std::size_t g_sink = 0;  // keeps the results alive

std::u16string Number(int n) {
    const std::string digits = std::to_string(n);
    return std::u16string(digits.begin(), digits.end());
}

vrl::KcsvFile LogRuleTable() {
    vrl::KcsvFile table;
    table.AddColumn(u"keyword");
    table.AddColumn(u"exact");
    table.AddColumn(u"regex");
    for (unsigned i = 0; i < 99; ++i) {
        const bool regex = i % 2 == 0;
        table.SetCell(i, 0, regex ? u"^\\[\\d+\\] The monster" + Number(static_cast<int>(i)) + u" (hits|misses) you\\.$"
                                  : u"no such thing " + Number(static_cast<int>(i)));
        table.SetCell(i, 2, regex ? u"1" : u"");
    }
    table.SetCell(99, 0, u"putit");
    return table;
}

std::string Pets(int round) {
    std::string bytes;
    for (int slot = 0; slot < vrl::kPetRows; ++slot)
        vrl::PetRecord::Make("pet " + std::to_string(slot), 1, 5 + slot, 100 * slot + round, 5000,
                             10 + (slot + round) % 40, 60, 3, 9, 40, 50)
            .Encode(bytes);
    return bytes;
}

std::u16string MusicTableText() {
    std::u16string text = u"#format,kcsv\r\n#column,orgfile,month,day,hour,playlist\r\n";
    for (int i = 0; i < 200; ++i)
        text += u"map" + Number(i) + u".mid,," + Number(1 + i % 28) + u",," + u"own" + Number(i) + u".mid/other.ogg\r\n";
    return text;
}

std::u16string LargeTableText() {
    std::u16string text = u"#format,kcsv\r\n#option,bkcolor:#000000\r\n#column,keyword,exact,regex,color\r\n";
    for (int i = 0; i < 1000; ++i)
        text += u"\"keyword, number " + Number(i) + u"\",," + (i % 2 ? u"1" : u"") + u",#ff00" + Number(i % 10) + u"0\r\n";
    return text;
}

// Runs `n` operations of `path` after its set-up; false for an unknown path.
template <typename Each>
bool Run(const char* path, long n, Each each) {
    if (std::strcmp(path, "line") == 0) {
        vrl::LogRuleSet rules;
        rules.Load(LogRuleTable());
        const std::u16string line = u"[12] You see a putit.";
        each([&] { g_sink = g_sink + *rules.FirstMatch(line); }, n);
    } else if (std::strcmp(path, "pets") == 0) {
        const std::string a = Pets(0), b = Pets(1);
        vrl::PetRows rows;
        rows.Take(reinterpret_cast<const unsigned char*>(a.data()), vrl::kPetRows, vrl::kPetFilterAll);
        long i = 0;
        each([&] {
            const std::string& next = ++i % 2 ? b : a;
            g_sink = g_sink + rows.Take(reinterpret_cast<const unsigned char*>(next.data()), vrl::kPetRows,
                                        vrl::kPetFilterAll).changedColumns[0];
        }, n);
    } else if (std::strcmp(path, "music") == 0) {
        vrl::KcsvFile table;
        table.Parse(MusicTableText());
        const std::vector<vrl::MusicRule> rules = vrl::MusicRulesOf(table);
        vrl::MusicRequest request;
        request.path = u"C:\\Morva\\sound\\map150.mid";
        request.day = 11;
        each([&] { g_sink = g_sink + vrl::FindCandidates(rules, request).entries.size(); }, n);
    } else if (std::strcmp(path, "kcsv") == 0) {
        const std::u16string text = LargeTableText();
        each([&] {
            vrl::KcsvFile table;
            table.Parse(text);
            g_sink = g_sink + table.RowCount();
        }, n);
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        const long n = std::atol(argv[2]);
        return Run(argv[1], n, [](auto op, long count) {
            for (long i = 0; i < count; ++i) op();
        }) ? 0 : 2;
    }
    for (const char* path : {"line", "pets", "music", "kcsv"}) {
        Run(path, 0, [path](auto op, long) {
            long count = 0;
            const auto start = std::chrono::steady_clock::now();
            std::chrono::duration<double, std::micro> spent{};
            while ((spent = std::chrono::steady_clock::now() - start).count() < 200000) {
                op();
                ++count;
            }
            std::printf("%-6s %10.2f us per operation\n", path, spent.count() / static_cast<double>(count));
        });
    }
    return 0;
}
