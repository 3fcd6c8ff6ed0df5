// Stand-in of the SMF playback library for the tests: writes every call with its arguments and
// result to "smf_trace.txt" beside it. A file that does not exist gives 2 ("FileNotFound"), one
// that is not a MIDI file 6 ("NoSmf"), playing with no file in the list 13 ("NotReady"); a line "GGS4Play=<code>" in "smf_results.txt" beside it
// sets the result of a call by its name. It makes no sound.
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "sim/common/sim_io_win.h"

namespace {

HMODULE g_self = nullptr;
int g_listed = 0;  // files in the play list

std::wstring Beside(const wchar_t* name) { return vrl::sim::ModuleFolder(g_self) + L"\\" + name; }

void Trace(const std::string& line) { vrl::sim::AppendLine(Beside(L"smf_trace.txt"), line); }

// The scripted result of `call`, or `fallback`.
int Result(const char* call, int fallback) {
    HANDLE file = ::CreateFileW(Beside(L"smf_results.txt").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return fallback;
    char text[1024] = {};
    DWORD read = 0;
    ::ReadFile(file, text, sizeof text - 1, &read, nullptr);
    ::CloseHandle(file);
    const std::string lines(text, read);
    const std::size_t at = lines.find(std::string(call) + "=");
    return at == std::string::npos ? fallback : std::atoi(lines.c_str() + at + std::strlen(call) + 1);
}

int Traced(const char* call, const std::string& arguments, int result) {
    Trace(std::string(call) + " " + arguments + " -> " + std::to_string(result));
    return result;
}

}  // namespace

extern "C" {

__declspec(dllexport) int WINAPI GGS4OpenDevice(int device, HWND window) {
    return Traced("GGS4OpenDevice", "device=" + std::to_string(device) + " window=" +
                                        std::to_string(reinterpret_cast<ULONG_PTR>(window)), Result("GGS4OpenDevice", 0));
}

__declspec(dllexport) void WINAPI GGS4CloseDevice() { Trace("GGS4CloseDevice"); }

__declspec(dllexport) void WINAPI GGS4SetMasterVolume(int volume) {
    Trace("GGS4SetMasterVolume volume=" + std::to_string(volume));
}

__declspec(dllexport) int WINAPI GGS4AddListFromFileW(const wchar_t* path, int option, int id) {
    int result = 0;
    HANDLE file = ::CreateFileW(path ? path : L"", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        result = 2;
    } else {
        char magic[4] = {};
        DWORD read = 0;
        ::ReadFile(file, magic, sizeof magic, &read, nullptr);
        ::CloseHandle(file);
        if (read != 4 || std::string(magic, 4) != "MThd") result = 6;
    }
    if (result == 0) ++g_listed;
    return Traced("GGS4AddListFromFileW", "path=\"" + vrl::sim::Utf8(path ? path : L"") + "\" option=" +
                                              std::to_string(option) + " id=" + std::to_string(id),
                  Result("GGS4AddListFromFileW", result));
}

__declspec(dllexport) int WINAPI GGS4Play(int option, int id, int skip, int fadeIn, int keyShift) {
    return Traced("GGS4Play", "option=" + std::to_string(option) + " rest=" + std::to_string(id) + "," +
                                  std::to_string(skip) + "," + std::to_string(fadeIn) + "," + std::to_string(keyShift),
                  Result("GGS4Play", g_listed ? 0 : 13));
}

__declspec(dllexport) void WINAPI GGS4Stop(int fadeOut) { Trace("GGS4Stop fadeOut=" + std::to_string(fadeOut)); }

__declspec(dllexport) void WINAPI GGS4ClearList() {
    g_listed = 0;
    Trace("GGS4ClearList");
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) g_self = instance;
    return TRUE;
}

}  // extern "C"
