#pragma once
// Shared by the round-trip benchmarks: a window that only answers WM_COPYDATA with 1 (the bare
// round trip the real windows are measured against), the two figures they print, their scratch
// folder and the message loop that runs while a second thread sends.

#include <windows.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

namespace vrlbench {

inline LRESULT CALLBACK NullReceiverProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COPYDATA) return 1;
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

// A message-only window of the calling thread.
inline HWND CreateNullReceiver() {
    WNDCLASSW cls{};
    cls.lpfnWndProc = NullReceiverProc;
    cls.hInstance = ::GetModuleHandleW(nullptr);
    cls.lpszClassName = L"VrlBenchNullReceiver";
    ::RegisterClassW(&cls);
    return ::CreateWindowExW(0, cls.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, cls.hInstance, nullptr);
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

inline double Mean(const std::vector<double>& values) {
    double sum = 0;
    for (double v : values) sum += v;
    return sum / static_cast<double>(values.size());
}

// A folder of the benchmark's own under the temporary folder, made the current one.
inline std::wstring EnterBenchFolder(const wchar_t* name) {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    const std::wstring folder = std::wstring(temp) + name;
    ::CreateDirectoryW(folder.c_str(), nullptr);
    ::SetCurrentDirectoryW(folder.c_str());
    return folder;
}

// Runs `measure(uiThread)` on a thread of its own while this thread pumps the windows' messages;
// `measure` posts WM_QUIT to uiThread when it is done.
template <typename Measure>
void PumpWhileSending(Measure measure) {
    std::thread sender(measure, ::GetCurrentThreadId());
    MSG msg;
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
    sender.join();
}

// The log rules and lines every log benchmark sends, as the module builds them.
namespace payload {

// 50 substring rules and 50 expressions, most of which never match; a few pick lines in colour.
inline std::string LogRules() {
    std::string table = "#format,kcsv\r\n#option,bkcolor:#000000\r\n#column,keyword,exact,regex,color\r\n";
    for (int i = 0; i < 50; ++i) {
        table += "no such thing " + std::to_string(i) + ",,,#ff0000\r\n";
        table += "^\\[\\d+\\] The monster" + std::to_string(i) + " (hits|misses) you\\.$,,1,#00ff00\r\n";
    }
    table += "gold,,,#ffd700\r\n";
    return table;
}

inline std::string LogLine(int i) {
    static const char* const kTexts[] = {"You hit the putit.", "The putit misses you.", "You pick up 12 gold pieces.",
                                         "The shopkeeper greets you.", "It starts to rain."};
    return "[" + std::to_string(i) + "] " + kTexts[i % 5];
}

}  // namespace payload

}  // namespace vrlbench
