#pragma once
// Reading windows and menus of this process as a player sees them, for the Win32 unit tests.

#include <windows.h>

#include <string>

namespace vrltest {

inline std::wstring WindowText(HWND window) {
    wchar_t text[512] = {};
    ::GetWindowTextW(window, text, 512);
    return text;
}

inline std::wstring ClassName(HWND window) {
    wchar_t name[128] = {};
    ::GetClassNameW(window, name, 128);
    return name;
}

inline std::wstring MenuItemText(HMENU menu, int position) {
    wchar_t text[128] = {};
    ::GetMenuStringW(menu, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
    return text;
}

// The first visible top-level window of the class (and title, unless null) within five seconds.
inline HWND WaitForVisibleWindow(const wchar_t* className, const wchar_t* title = nullptr) {
    for (int i = 0; i < 250; ++i) {
        const HWND window = ::FindWindowW(className, title);
        if (window && ::IsWindowVisible(window)) return window;
        ::Sleep(20);
    }
    return nullptr;
}

}  // namespace vrltest
