#pragma once
// Driving windows as the module or a screenshot script does; both Windows test programs use these.

#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace vrltest {

// WM_COPYDATA as the module sends it; the reply.
inline LRESULT SendCopyData(HWND to, ULONG_PTR code, const void* bytes, size_t size) {
    COPYDATASTRUCT data{code, static_cast<DWORD>(size), const_cast<void*>(bytes)};
    return ::SendMessageW(to, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}
inline LRESULT SendCopyData(HWND to, ULONG_PTR code, const std::string& bytes) {
    return SendCopyData(to, code, bytes.data(), bytes.size());
}

// With VRL_SHOT_SIGNAL set (a folder), announces "<folder>\<name>.ready" and holds the screen
// still for VRL_MENU_HOLD_MS (a second by default), so that a script can take a screenshot.
inline void HoldForScreenshot(const char* name) {
    const char* folder = std::getenv("VRL_SHOT_SIGNAL");
    if (!folder) return;
    std::ofstream(std::string(folder) + "\\" + name + ".ready") << "ready\n";
    const char* ms = std::getenv("VRL_MENU_HOLD_MS");
    // Windows of this thread paint only while it takes its messages.
    const ULONGLONG end = ::GetTickCount64() + (ms ? static_cast<DWORD>(std::atoi(ms)) : 1000);
    while (::GetTickCount64() < end) {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&msg);
        ::Sleep(10);
    }
}

}  // namespace vrltest
