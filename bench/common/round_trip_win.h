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

}  // namespace vrlbench
