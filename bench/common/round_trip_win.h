#pragma once
// Shared by the round-trip benchmarks: a window that only answers WM_COPYDATA with 1 (the bare
// round trip the real windows are measured against), and the two figures they print.

#include <windows.h>

#include <algorithm>
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

}  // namespace vrlbench
