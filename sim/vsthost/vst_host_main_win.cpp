// Stand-in of the VST instrument host for the tests: creates the host window class of its own
// bitness, writes its command line and every command it receives, with its text, to
// "vst_trace.txt" beside it, and ends on command 7 or when the companion it was started for ends.
//
// Files beside it change what it does:
//   embed.txt     command 5 sets the status window (hwndee=) to "TRUE": an editor can be shown.
//   hang.txt      every command after 5 blocks, as a host that stopped answering, until the
//                 companion ends (a minute at most).
//   slow.txt      command 5 takes eight seconds before it answers, as a large instrument loads,
//                 and the host takes no other message meanwhile.
//   nowindow.txt  no window at all: it waits ten seconds and ends.
#include <windows.h>

#include <cwchar>
#include <string>

#include "sim/common/sim_io_win.h"

namespace {

#if defined(_WIN64)
const wchar_t kClassName[] = L"VrlVstHost64";
#else
const wchar_t kClassName[] = L"VrlVstHost32";
#endif

std::wstring g_folder;
HWND g_status = nullptr;
HANDLE g_companion = nullptr;

bool Beside(const wchar_t* name) {
    return ::GetFileAttributesW((g_folder + L"\\" + name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void Trace(const std::wstring& line) { vrl::sim::AppendLine(g_folder + L"\\vst_trace.txt", vrl::sim::Utf8(line)); }

// The value of "name=" in the command line, as an unsigned number.
unsigned long long Argument(const wchar_t* commandLine, const wchar_t* name) {
    const wchar_t* at = std::wcsstr(commandLine, name);
    return at ? std::wcstoull(at + std::wcslen(name), nullptr, 10) : 0;
}

LRESULT CALLBACK HostWindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COPYDATA) {
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lp);
        const auto* text = static_cast<const wchar_t*>(data->lpData);
        const std::size_t characters = data->cbData >= 2 ? data->cbData / 2 - 1 : 0;
        const int command = static_cast<int>(data->dwData);
        Trace(L"command " + std::to_wstring(command) + L" size=" + std::to_wstring(data->cbData) +
              L" self=" + std::to_wstring(reinterpret_cast<WPARAM>(hwnd) == wp) + L" text=" +
              (text ? std::wstring(text, ::wcsnlen(text, characters)) : std::wstring()));
        if (command == 5 && Beside(L"slow.txt")) ::Sleep(8000);
        if (command == 5 && Beside(L"embed.txt") && g_status) ::SendMessageW(g_status, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"TRUE"));
        if (command != 5 && command != 7 && Beside(L"hang.txt")) ::WaitForSingleObject(g_companion ? g_companion : ::GetCurrentProcess(), 60000);
        if (command == 7) ::DestroyWindow(hwnd);
        return 1;
    }
    if (msg == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    g_folder = vrl::sim::ModuleFolder(nullptr);
    const wchar_t* commandLine = ::GetCommandLineW();
    wchar_t current[MAX_PATH] = {};
    ::GetCurrentDirectoryW(MAX_PATH, current);
    STARTUPINFOW startup{};
    ::GetStartupInfoW(&startup);
    Trace(std::wstring(L"start ") + commandLine);
    Trace(std::wstring(L"folder ") + current + L" show=" +
          std::to_wstring((startup.dwFlags & STARTF_USESHOWWINDOW) ? startup.wShowWindow : -1));
    HANDLE companion = g_companion = ::OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(Argument(commandLine, L"pid=")));
    g_status = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(Argument(commandLine, L"hwndee=")));
    if (Beside(L"nowindow.txt")) {
        if (companion) ::WaitForSingleObject(companion, 10000);
        return 0;
    }

    WNDCLASSW wc{};
    wc.lpfnWndProc = HostWindowProc;
    wc.hInstance = instance;
    wc.lpszClassName = kClassName;
    ::RegisterClassW(&wc);
    HWND window = ::CreateWindowW(kClassName, L"", WS_OVERLAPPED, 0, 0, 100, 100, nullptr, nullptr, instance, nullptr);
    if (!window) return 1;
    for (;;) {
        const DWORD waited = ::MsgWaitForMultipleObjects(companion ? 1 : 0, &companion, FALSE, INFINITE, QS_ALLINPUT);
        if (companion && waited == WAIT_OBJECT_0) {
            Trace(L"companion ended");
            break;
        }
        MSG msg;
        bool quit = false;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) quit = true;
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        if (quit) {
            Trace(L"end");
            break;
        }
    }
    if (companion) ::CloseHandle(companion);
    return 0;
}
