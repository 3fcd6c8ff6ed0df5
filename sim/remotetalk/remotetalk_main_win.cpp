// Stand-in of the speech program: records how it was started instead of speaking.
// Each start appends one UTF-8 line (CR LF) to "RemoteTalk.log" in its own folder (and to the file named
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

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    GetStartupInfoW(&startup);
    const bool asked = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    const int show = asked ? startup.wShowWindow : -1;

    const std::string line = "RemoteTalk hidden=" + std::to_string(show == SW_HIDE) +
                             " show=" + std::to_string(show) +
                             " cmdline=" + vrl::sim::Utf8(OneLine(GetCommandLineW()));
    vrl::sim::AppendLine(vrl::sim::ModuleFolder(nullptr) + L"\\RemoteTalk.log", line);
    vrl::sim::AppendLine(vrl::sim::EnvironmentValue(L"VRL_SIM_TRANSCRIPT"), line);
    return 0;
}
