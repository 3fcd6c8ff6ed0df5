#include "music/vst_host_win.h"

#include <vector>

#include "music/midi_back_ends.h"
#include "ui/wide_win.h"

namespace vrl {

int ReadVstBits(const std::wstring& path, int previous) {
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE) return previous;
    int bits = previous;
    unsigned char dos[kDosHeaderBytes] = {};
    unsigned char signature[kPeSignatureBytes] = {};
    DWORD read = 0;
    if (::ReadFile(file, dos, sizeof dos, &read, nullptr) && read == sizeof dos) {
        LARGE_INTEGER at{};
        at.QuadPart = PeHeaderOffset(dos);
        if (::SetFilePointerEx(file, at, nullptr, FILE_BEGIN) &&
            ::ReadFile(file, signature, sizeof signature, &read, nullptr) && read == sizeof signature) {
            bits = VstBitsOf(signature, previous);
        }
    }
    ::CloseHandle(file);
    return bits;
}

LRESULT SendVstHostCommand(int command, const std::u16string& text) {
    HWND host = ::FindWindowW(L"VrlVstHost32", nullptr);
    if (!host) host = ::FindWindowW(L"VrlVstHost64", nullptr);
    if (!host || !VstCommandFits(text.size())) return 0;
    std::vector<char16_t> buffer(kVstCommandChars, u'\0');
    text.copy(buffer.data(), text.size());
    COPYDATASTRUCT data{static_cast<ULONG_PTR>(command), VstCommandBytes(text.size()), buffer.data()};
    // A host that hangs is given up rather than freezing the panel and the game's messages.
    DWORD_PTR answer = 0;
    if (!::SendMessageTimeoutW(host, WM_COPYDATA, reinterpret_cast<WPARAM>(host), reinterpret_cast<LPARAM>(&data),
                               SMTO_NORMAL | SMTO_ABORTIFHUNG, kVstHostAnswerMs, &answer)) {
        return 0;
    }
    return static_cast<LRESULT>(answer);
}

void StartVstHost(int bits, const std::u16string& instrument, HWND playingFile, HWND status) {
    SendVstHostCommand(kVstQuit, u"");
    wchar_t current[MAX_PATH] = {};
    const DWORD length = ::GetCurrentDirectoryW(MAX_PATH, current);
    const std::u16string folder = VstHostFolder(U16(std::wstring(current, length < MAX_PATH ? length : 0)), bits);
    std::wstring commandLine = Wstr(VstHostCommandLine(
        folder, bits, ::GetCurrentProcessId(), static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(playingFile)),
        static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(status))));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, W(folder), &startup,
                         &process)) {
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::Sleep(1000);
    SendVstHostCommand(kVstLoad, instrument);
}

}  // namespace vrl
