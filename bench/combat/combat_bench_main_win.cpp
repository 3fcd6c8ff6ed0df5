// What the game waits for in a fight. The companion runs with every window shown; this program
// stands in for the module and sends, at game pace, bursts of log lines with a pet message in
// which every row changed ten times a second in the middle of them, now and then an item message
// and a music request for a map change. Every message goes the same way to a process whose
// window only answers, so that each round trip is set against the bare one of the same moment.
//
//   pet busy   a pet message sent to an idle panel, until the panel's thread is idle and painted
//   pictures   the answer to a pet message that makes the panel read its pictures, against one
//              that does not
//   bursts     the same bursts of lines without the pet messages
//   combat     10,000 lines (or the first argument) with everything else in between
//
// The last line sums it up in a fixed form, so that runs can be compared.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <vector>

#include "bench/common/companion_run_win.h"

namespace {

using vrlbench::Clock;
using vrlbench::CompanionRun;
using vrlbench::Median;
namespace payload = vrlbench::payload;

constexpr int kBurstLines = 6;
constexpr int kTickMs = 25;          // one burst per game turn
constexpr int kTicksPerPet = 4;      // ten pet messages a second
constexpr int kTicksPerItem = 40;
constexpr int kTicksPerMusic = 400;
constexpr int kPetBusyMessages = 300;
constexpr int kBurstOnlyLines = 2400;

double Percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const auto at = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5);
    return values[std::min(at, values.size() - 1)];
}

double Worst(const std::vector<double>& values) { return *std::max_element(values.begin(), values.end()); }

struct Targets {
    HWND log, pet, item, music;
};

// Round trips of one side (the companion or the bare receiver).
struct Side {
    explicit Side(const Targets& targets) : to(targets) {}
    Targets to;
    std::vector<double> lines, pets;
    int lineNumber = 0;

    void Line() {
        const std::string text = payload::LogLine(lineNumber++);
        lines.push_back(vrlbench::SendCopyData(to.log, 0, text.data(), text.size()));
    }
    void Pet(int round) {
        const std::string pets16 = payload::Pets(round);
        pets.push_back(vrlbench::SendCopyData(to.pet, vrl::kPetRows, pets16.data(), pets16.size()));
    }
    // One game turn: a burst of lines, the pet message in its middle when `withPet`.
    void Turn(int tick, bool withPet) {
        for (int i = 0; i < kBurstLines; ++i) {
            if (withPet && i == 2) Pet(tick);
            Line();
        }
        if (tick % kTicksPerItem == kTicksPerItem - 1) {
            const auto item = payload::Item(tick);
            vrlbench::SendCopyData(to.item, 0, item.data(), item.size());
        }
        if (tick % kTicksPerMusic == kTicksPerMusic - 1) {
            const std::string music = payload::Music(tick / kTicksPerMusic);
            vrlbench::SendCopyData(to.music, 1, music.data(), music.size());
        }
    }
};

// Plays `ticks` game turns on both sides, one turn each in turn, at game pace.
void Play(Side& companion, Side& bare, int ticks, bool withPets) {
    for (int tick = 0; tick < ticks; ++tick) {
        const auto start = Clock::now();
        const bool pet = withPets && tick % kTicksPerPet == 0;
        companion.Turn(tick, pet);
        bare.Turn(tick, pet);
        const double spent = vrlbench::MillisecondsSince(start);
        if (spent < kTickMs) ::Sleep(static_cast<DWORD>(kTickMs - spent));
    }
}

// Idle to idle (painted) per pet message with every row changed.
double PetBusy(HWND target, int round) {
    CompanionRun::WaitUntilPainted(target);
    const std::string pets = payload::Pets(round);
    const auto start = Clock::now();
    vrlbench::SendCopyData(target, vrl::kPetRows, pets.data(), pets.size());
    CompanionRun::WaitUntilPainted(target);
    return vrlbench::MillisecondsSince(start);
}

// The answer to a message whose row count changed (the pictures are read before it) against one
// in which only the rows' values changed, each sent to an idle panel.
void PictureReadCost(HWND pet) {
    std::vector<double> refreshed, changed;
    for (int i = 0; i < 200; ++i) {
        const int count = i % 2 ? vrl::kPetRows - 1 : vrl::kPetRows;
        for (std::vector<double>* answers : {&refreshed, &changed}) {
            CompanionRun::WaitUntilPainted(pet);
            const std::string pets = payload::Pets(i * 2 + (answers == &changed), count);
            answers->push_back(vrlbench::SendCopyData(pet, static_cast<ULONG_PTR>(count), pets.data(), pets.size()));
        }
    }
    std::printf("pet message answer when the row count changed (pictures read first): median %.3f ms, "
                "values changed only: median %.3f ms\n",
                Median(refreshed), Median(changed));
}

void Report(const char* what, const std::vector<double>& companion, const std::vector<double>& bare) {
    std::printf("  %-28s median %.3f  p99 %.3f  worst %.3f   bare: median %.3f  p99 %.3f  worst %.3f   "
                "ratio median %.2fx  p99 %.2fx\n",
                what, Median(companion), Percentile(companion, 0.99), Worst(companion), Median(bare),
                Percentile(bare, 0.99), Worst(bare), Median(companion) / Median(bare),
                Percentile(companion, 0.99) / Percentile(bare, 0.99));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (vrlbench::RunNullReceiverIfAsked(argc, argv)) return 0;
    const int combatLines = argc > 1 ? std::max(kBurstLines, _wtoi(argv[1])) : 10000;
    try {
        CompanionRun run;
        Side companion(Targets{run.fullLog, run.pet, run.item, run.music});
        Side bare(Targets{run.nullReceiver, run.nullReceiver, run.nullReceiver, run.nullReceiver});
        Play(companion, bare, 40, true);  // warm-up, not counted
        companion = Side(companion.to);
        bare = Side(bare.to);

        std::vector<double> busy, bareBusy;
        for (int i = 0; i < kPetBusyMessages; ++i) {
            busy.push_back(PetBusy(run.pet, i));
            bareBusy.push_back(PetBusy(run.nullReceiver, i));
        }
        std::printf("pet message with every row changed, sent to an idle panel, %d side by side (ms):\n",
                    kPetBusyMessages);
        std::printf("  busy until idle and painted: median %.3f  p99 %.3f   the same to the bare receiver: "
                    "median %.3f\n",
                    Median(busy), Percentile(busy, 0.99), Median(bareBusy));

        PictureReadCost(run.pet);

        Play(companion, bare, kBurstOnlyLines / kBurstLines, false);
        std::printf("bursts of %d lines every %d ms, no pets, %d lines side by side (ms):\n", kBurstLines, kTickMs,
                    kBurstOnlyLines);
        Report("log line", companion.lines, bare.lines);
        const double bursts = Median(companion.lines) / Median(bare.lines);

        companion = Side(companion.to);
        bare = Side(bare.to);
        Play(companion, bare, (combatLines + kBurstLines - 1) / kBurstLines, true);
        std::printf("combat: bursts of %d lines every %d ms, pets ten times a second, items and music between, "
                    "%zu lines side by side (ms):\n",
                    kBurstLines, kTickMs, companion.lines.size());
        Report("log line", companion.lines, bare.lines);
        Report("pet message (answer)", companion.pets, bare.pets);

        std::printf("combat: line median %.2fx, p99 %.2fx; pet busy %.2f ms; bursts %.2fx\n",
                    Median(companion.lines) / Median(bare.lines),
                    Percentile(companion.lines, 0.99) / Percentile(bare.lines, 0.99), Median(busy), bursts);
        std::fflush(stdout);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
