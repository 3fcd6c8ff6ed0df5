// How long the game waits for one log line. A sender thread stands in for the module: it sends
// each line with SendMessage WM_COPYDATA across threads, alternately to the real full-log window
// (100 rules, half of them expressions, both views visible) and to a window that only answers 1,
// so both round trips are measured side by side under the same load. Then the same in bursts,
// where each line also waits for the window to finish the one before. Then 100,000 lines go to the
// log window (or as many as the first argument after "visible"/"hidden" says) to show whether
// the cost per line stays flat as the views grow.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "app/app_state_win.h"
#include "bench/common/round_trip_win.h"
#include "log/log_window_win.h"

namespace {

using vrlbench::CreateNullReceiver;
using vrlbench::Mean;
using vrlbench::Median;
using Clock = std::chrono::steady_clock;

constexpr int kSideBySideLines = 2000;
constexpr int kGrowthLines = 100000;

double SendLine(HWND target, const std::string& line) {
    COPYDATASTRUCT data{};
    data.cbData = static_cast<DWORD>(line.size());
    data.lpData = const_cast<char*>(line.data());
    const auto start = Clock::now();
    ::SendMessageW(target, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Returns once the window's thread has handled everything sent to it before.
void WaitUntilIdle(HWND window) { ::SendMessageW(window, WM_NULL, 0, 0); }

void Measure(HWND logWindow, HWND nullReceiver, DWORD uiThread, int growthLines) {
    std::vector<double> toLog, toNull;
    for (int i = 0; i < kSideBySideLines; ++i) {
        // Each line finds the window idle, as a line of a game in play does: the window answers
        // before it handles the line, so without this wait a line would find the previous one
        // still being handled (the bursts below measure that case).
        const std::string line = vrlbench::payload::LogLine(i);
        WaitUntilIdle(logWindow);
        toNull.push_back(SendLine(nullReceiver, line));
        WaitUntilIdle(logWindow);
        toLog.push_back(SendLine(logWindow, line));
    }
    WaitUntilIdle(logWindow);
    std::printf("round trip of one line that finds the window idle, %d lines side by side (ms):\n",
                kSideBySideLines);
    std::printf("  receiver that does nothing: median %.3f  mean %.3f\n", Median(toNull), Mean(toNull));
    std::printf("  log window (100 rules):     median %.3f  mean %.3f\n", Median(toLog), Mean(toLog));
    std::printf("  ratio: median %.2f  mean %.2f\n", Median(toLog) / Median(toNull), Mean(toLog) / Mean(toNull));

    // A burst: each line sent as soon as the last one was answered, so that a line also waits for
    // whatever the window still does with the one before.
    std::vector<double> burstNull, burstLog;
    for (int i = 0; i < kSideBySideLines; ++i) burstNull.push_back(SendLine(nullReceiver, vrlbench::payload::LogLine(i)));
    for (int i = 0; i < kSideBySideLines; ++i) burstLog.push_back(SendLine(logWindow, vrlbench::payload::LogLine(i)));
    WaitUntilIdle(logWindow);
    std::printf("bursts of %d lines, one after the other (ms):\n", kSideBySideLines);
    std::printf("  receiver that does nothing: median %.3f  mean %.3f\n", Median(burstNull), Mean(burstNull));
    std::printf("  log window (100 rules):     median %.3f  mean %.3f\n", Median(burstLog), Mean(burstLog));
    std::printf("  ratio: median %.2f  mean %.2f\n", Median(burstLog) / Median(burstNull),
                Mean(burstLog) / Mean(burstNull));

    const int blockSize = growthLines >= 10 ? growthLines / 10 : 1;
    std::printf("%d more lines to the log window, mean cost per line by block of %d (ms):\n", growthLines, blockSize);
    std::vector<double> block;
    for (int i = 0; i < growthLines; ++i) {
        block.push_back(SendLine(logWindow, vrlbench::payload::LogLine(kSideBySideLines + i)));
        if (block.size() == static_cast<size_t>(blockSize)) {
            std::printf("  lines %6d-%6d: mean %.3f  median %.3f\n", i + 2 - blockSize, i + 1, Mean(block), Median(block));
            std::fflush(stdout);
            block.clear();
        }
    }
    ::PostThreadMessageW(uiThread, WM_QUIT, 0, 0);
}

}  // namespace

int main(int argc, char** argv) {
    const bool hidden = argc > 1 && std::string(argv[1]) == "hidden";
    const int growth = argc > 2 ? std::atoi(argv[2]) : kGrowthLines;
    const std::wstring folder = vrlbench::EnterBenchFolder(L"vrl_log_line_bench");
    std::ofstream((folder + L"\\LogEx.kcsv").c_str(), std::ios::binary) << vrlbench::payload::LogRules();

    ::LoadLibraryW(L"riched20.dll");
    vrl::App().folders.program = folder;
    vrl::App().folders.game = folder;
    vrl::App().settings.enLogExtender_FullLog = 1;
    vrl::CLogExtenderDlg log;
    if (!log.Create()) {
        std::printf("the log window could not be created\n");
        return 1;
    }
    if (!hidden) {
        log.Show(SW_SHOW);
        log.Child().Show(SW_SHOW);
    }
    HWND nullReceiver = CreateNullReceiver();

    vrlbench::PumpWhileSending([&](DWORD uiThread) { Measure(log.Handle(), nullReceiver, uiThread, growth); });
    log.DestroyWindows();
    ::DestroyWindow(nullReceiver);
    ::DeleteFileW((folder + L"\\LogEx.kcsv").c_str());
    ::RemoveDirectoryW(folder.c_str());
    return 0;
}
