#include "log/speech_win.h"

#include <windows.h>

#include <vector>

#include "log/speech.h"
#include "ui/wide_win.h"

namespace vrl {

void Speak(const std::u16string& programPath, std::u16string_view text) {
    // CreateProcessW may write into the command line, so it gets a buffer of its own.
    const std::u16string commandLine = SpeechCommandLine(text);
    std::vector<wchar_t> buffer(commandLine.begin(), commandLine.end());
    buffer.push_back(L'\0');

    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process = {};
    if (CreateProcessW(W(programPath), buffer.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       nullptr, &startup, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
}

}  // namespace vrl
