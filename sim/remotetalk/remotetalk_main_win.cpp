// Stand-in of the speech program: records how it was started instead of speaking.
// Each start appends one UTF-8 line to "RemoteTalk.log" in its own folder (and to the file named
// by VRL_SIM_TRANSCRIPT, if set):
//     RemoteTalk hidden=1 show=0 cmdline= /Talk "Hello"
// hidden is 1 when the starter asked for a hidden window; show is the requested show command, or
// -1 when none was given; cmdline is the whole command line as received, with CR and LF written
// as \r and \n so that one start stays one line.
#include <windows.h>

#include <string>

#include "sim/common/sim_io_win.h"

namespace {

std::wstring OneLine(const wchar_t* text) {
    std::wstring out;
    for (; *text; ++text) {
        if (*text == L'\r') out += L"\\r";
        else if (*text == L'\n') out += L"\\n";
        else out += *text;
    }
    return out;
}

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH * 2] = {};
    std::wstring self(path, GetModuleFileNameW(nullptr, path, MAX_PATH * 2));
    const std::size_t slash = self.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::wstring(L".") : self.substr(0, slash);
}

void Append(const std::wstring& file, const std::string& line) {
    // Overlapping speeches may write at once: FILE_APPEND_DATA keeps each line whole.
    const HANDLE h = CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                 nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    WriteFile(h, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(h);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    GetStartupInfoW(&startup);
    const bool asked = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    const int show = asked ? startup.wShowWindow : -1;

    const std::string line = "RemoteTalk hidden=" + std::to_string(show == SW_HIDE) +
                             " show=" + std::to_string(show) +
                             " cmdline=" + vrl::sim::Utf8(OneLine(GetCommandLineW())) + "\n";
    Append(OwnFolder() + L"\\RemoteTalk.log", line);

    wchar_t transcript[MAX_PATH * 2] = {};
    const DWORD n = GetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", transcript, MAX_PATH * 2);
    if (n > 0 && n < MAX_PATH * 2) Append(transcript, line);
    return 0;
}
