// A long evening of play: whether the companion's process grows. The companion runs with every
// window shown; this program stands in for the module and plays 20 minutes of game time (or the
// first argument, in minutes) as fast as the companion answers. Each second of game time brings
// two log lines and a pet message in which every row changed; every ten seconds the number of
// pets changes, so that the pictures are read again, and an item comes; every minute a map change
// (a music request), a treasure map capture and a screenshot; every two minutes both log views
// are cleared. Each pet message waits until the panel has painted it.
//
// At the start and at the end of each quarter it prints what the companion's process holds:
// private bytes and GDI and USER objects (where the system counts them; under Wine, which counts
// none, the anonymous resident memory of the Linux process stands in for private bytes). From
// the second quarter to the last, nothing should grow by more than 1 %.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "bench/common/companion_run_win.h"

namespace {

using vrlbench::CompanionRun;
namespace payload = vrlbench::payload;

constexpr int kLinesPerSecond = 2;
constexpr WPARAM kScreenshotWholeWindow = 33001;  // the tray's "whole window" screenshot
constexpr int kTreasureMapHotkey = 1200;

void Send(HWND target, ULONG_PTR code, const std::string& bytes) {
    vrlbench::SendCopyData(target, code, bytes.data(), bytes.size());
}

void RemoveFilesIn(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) ::DeleteFileW((folder + L"\\" + found.cFileName).c_str());
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
}

// One second of game time.
void PlaySecond(CompanionRun& run, int second, int& line) {
    // Every ten seconds one pet leaves and comes back: two messages that refresh every row and
    // read the pictures again.
    const int count = second % 10 == 8 ? vrl::kPetRows - 1 : vrl::kPetRows;
    Send(run.pet, static_cast<ULONG_PTR>(count), payload::Pets(second, count));
    CompanionRun::WaitUntilPainted(run.pet);
    for (int i = 0; i < kLinesPerSecond; ++i) Send(run.fullLog, 0, payload::LogLine(line++));
    if (second % 10 == 9) {
        const auto item = payload::Item(second);
        vrlbench::SendCopyData(run.item, 0, item.data(), item.size());
    }
    if (second % 60 == 59) {
        Send(run.music, 1, payload::Music(second / 60));
        ::PostMessageW(run.map, WM_HOTKEY, kTreasureMapHotkey, 0);
        CompanionRun::WaitUntilPainted(run.map);
        ::SendMessageW(run.frame, WM_COMMAND, kScreenshotWholeWindow, 0);
        RemoveFilesIn(run.ProgramFolderOfCompanion() + L"\\screenshot");
    }
    if (second % 120 == 119) {
        for (WPARAM view : {0, 1}) ::SendMessageW(run.frame, vrl::game_link::kMsgClearLog, view, 0);
    }
    CompanionRun::WaitUntilPainted(run.fullLog);
}

void Print(const char* when, const CompanionRun::Footprint& f) {
    std::printf("  %-22s %s %8.2f MiB   GDI objects %5lu   USER objects %5lu\n", when,
                f.fromLinux ? "private (Linux RssAnon)" : "private bytes", static_cast<double>(f.privateBytes) / (1024.0 * 1024.0),
                f.gdiObjects, f.userObjects);
    std::fflush(stdout);
}

double Growth(double from, double to) { return from > 0 ? 100.0 * (to - from) / from : 0; }

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (vrlbench::RunNullReceiverIfAsked(argc, argv)) return 0;
    const int minutes = argc > 1 ? std::max(4, _wtoi(argv[1])) : 20;
    try {
        CompanionRun run;
        std::printf("%d minutes of game time: %d log lines and a pet message a second; items, map changes, treasure "
                    "maps, screenshots and cleared views between\n",
                    minutes, kLinesPerSecond);
        const DWORD started = ::GetTickCount();
        Print("start", run.Measure());
        std::vector<CompanionRun::Footprint> quarters;
        int line = 0;
        const int secondsPerQuarter = minutes * 60 / 4;
        for (int quarter = 1; quarter <= 4; ++quarter) {
            for (int s = 0; s < secondsPerQuarter; ++s) PlaySecond(run, (quarter - 1) * secondsPerQuarter + s, line);
            quarters.push_back(run.Measure());
            const std::string when = "quarter " + std::to_string(quarter) + " (" +
                                     std::to_string((::GetTickCount() - started) / 1000) + " s)";
            Print(when.c_str(), quarters.back());
        }
        const auto& second = quarters[1];
        const auto& last = quarters[3];
        std::printf("soak: private %+.2f %%, GDI %+.2f %%, USER %+.2f %% from the second quarter to the last\n",
                    Growth(static_cast<double>(second.privateBytes), static_cast<double>(last.privateBytes)),
                    Growth(second.gdiObjects, last.gdiObjects), Growth(second.userObjects, last.userObjects));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
