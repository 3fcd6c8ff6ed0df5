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

namespace {

constexpr const wchar_t* kHostClasses[] = {L"VrlVstHost32", L"VrlVstHost64"};

// The first host window by class (the 32-bit one first) that is not `passOver` and, when
// `processId` is given, belongs to that process.
HWND FindHostWindow(HWND passOver, DWORD processId = 0) {
    for (const wchar_t* hostClass : kHostClasses) {
        HWND window = nullptr;
        while ((window = ::FindWindowExW(nullptr, window, hostClass, nullptr)) != nullptr) {
            DWORD owner = 0;
            ::GetWindowThreadProcessId(window, &owner);
            if (window != passOver && (processId == 0 || owner == processId)) return window;
        }
    }
    return nullptr;
}

// Relative to the current folder (the program folder), as the host could not resolve it.
std::u16string FullPathOf(const std::u16string& path) {
    const DWORD needed = ::GetFullPathNameW(W(path), 0, nullptr, nullptr);
    if (needed == 0) return path;
    std::wstring full(needed, L'\0');
    const DWORD length = ::GetFullPathNameW(W(path), needed, full.data(), nullptr);
    if (length == 0 || length >= needed) return path;
    full.resize(length);
    return U16(full);
}

}  // namespace

LRESULT VstHostLink::Send(int command, const std::u16string& text) {
    HWND host = FindHostWindow(silent_);
    const std::u16string sent = command == kVstOpen || command == kVstLoad ? FullPathOf(text) : text;
    if (!host || !VstCommandFits(sent.size())) return 0;
    std::vector<char16_t> buffer(kVstCommandChars, u'\0');
    sent.copy(buffer.data(), sent.size());
    COPYDATASTRUCT data{static_cast<ULONG_PTR>(command), VstCommandBytes(sent.size()), buffer.data()};
    // A host loading its instrument takes no messages for a while, which Windows counts as hung:
    // SMTO_ABORTIFHUNG would drop the command then. The wait ends when the host answers, when its
    // thread ends (SMTO_ERRORONEXIT), or at the cap; the panel is not held longer than that, and a
    // host that stayed silent is passed over afterwards.
    DWORD_PTR answer = 0;
    if (!::SendMessageTimeoutW(host, WM_COPYDATA, reinterpret_cast<WPARAM>(host), reinterpret_cast<LPARAM>(&data),
                               SMTO_NORMAL | SMTO_ERRORONEXIT, kVstHostAnswerMs, &answer)) {
        if (::GetLastError() == ERROR_TIMEOUT && ::IsWindow(host)) silent_ = host;
        return 0;
    }
    return static_cast<LRESULT>(answer);
}

void VstHostLink::Start(int bits, const std::u16string& instrument, HWND playingFile, HWND status) {
    Send(kVstQuit, u"");
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
        // Its window, not a fixed second: a slow start still gets the instrument, and a host that
        // ends or never makes one costs no more than kVstHostStartMs.
        const DWORD started = ::GetTickCount();
        while (!FindHostWindow(nullptr, process.dwProcessId) && ::GetTickCount() - started < kVstHostStartMs &&
               ::WaitForSingleObject(process.hProcess, 20) == WAIT_TIMEOUT) {
        }
        ::CloseHandle(process.hProcess);
    }
    Send(kVstLoad, instrument);
}

}  // namespace vrl
