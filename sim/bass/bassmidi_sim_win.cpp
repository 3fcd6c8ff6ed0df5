// Stand-in of the audio library's MIDI add-on (bassmidi.dll): soundfonts for MIDI streams. It
// reports its errors through the main stand-in's error code and asks it which handles are
// streams, as the add-on of the real library would through its host.
#include <windows.h>

#include <map>
#include <mutex>
#include <string>

#include "sim_trace_win.h"

namespace {

constexpr DWORD kUnicode = 0x80000000;
constexpr int kOk = 0, kFileOpen = 2, kHandle = 5, kFileForm = 41;
constexpr DWORD kFontKind = 5;

struct FontEntry {
    DWORD font;
    int preset;
    int bank;
};

struct AddOn {
    std::mutex lock;
    DWORD nextHandle = 0;
    std::map<DWORD, std::wstring> fonts;
};

AddOn& State() {
    static AddOn addOn;
    return addOn;
}

FARPROC HostFunction(const char* name) {
    const HMODULE host = GetModuleHandleW(L"bass.dll");
    return host ? GetProcAddress(host, name) : nullptr;
}

void SetError(int code) {
    using Fn = void(WINAPI*)(int);
    if (auto fn = reinterpret_cast<Fn>(HostFunction("VrlSimBass_SetError"))) fn(code);
}

bool IsStream(DWORD handle) {
    using Fn = BOOL(WINAPI*)(DWORD);
    auto fn = reinterpret_cast<Fn>(HostFunction("VrlSimBass_IsStream"));
    return fn && fn(handle);
}

// A soundfont is either a RIFF "sfbk" file or an .sfz text file.
int CheckFont(const std::wstring& path) {
    std::string bytes;
    if (!vrlsim::ReadWholeFile(path, &bytes)) return kFileOpen;
    const std::wstring name = vrlsim::LowerFileName(path);
    const bool sfz = name.size() > 4 && name.compare(name.size() - 4, 4, L".sfz") == 0;
    const bool sf2 = bytes.size() >= 12 && bytes.compare(0, 4, "RIFF") == 0 &&
                     bytes.compare(8, 4, "sfbk") == 0;
    return sfz || sf2 ? kOk : kFileForm;
}

}  // namespace

extern "C" {

DWORD WINAPI BASS_MIDI_FontInit(const void* file, DWORD flags) {
    std::lock_guard<std::mutex> guard(State().lock);
    const std::wstring name = vrlsim::PathArgument(file, (flags & kUnicode) != 0);
    const int error = CheckFont(name);
    DWORD handle = 0;
    if (error == kOk) {
        handle = kFontKind << 16 | ++State().nextHandle;
        State().fonts[handle] = name;
    }
    SetError(error);
    vrlsim::Trace("BASS_MIDI_FontInit file=" + vrlsim::Quoted(name) + " flags=" +
                  vrlsim::Hex(flags) + " -> " + std::to_string(handle));
    return handle;
}

BOOL WINAPI BASS_MIDI_FontFree(DWORD handle) {
    std::lock_guard<std::mutex> guard(State().lock);
    const BOOL ok = State().fonts.erase(handle) != 0;
    SetError(ok ? kOk : kHandle);
    vrlsim::Trace("BASS_MIDI_FontFree handle=" + std::to_string(handle) + " -> " +
                  std::to_string(ok));
    return ok;
}

// Handle 0 sets the default soundfonts of streams created later.
BOOL WINAPI BASS_MIDI_StreamSetFonts(DWORD handle, const void* fonts,
                                                           DWORD count) {
    std::lock_guard<std::mutex> guard(State().lock);
    const FontEntry* entries = static_cast<const FontEntry*>(fonts);
    BOOL ok = handle == 0 || IsStream(handle);
    std::string list;
    for (DWORD i = 0; entries && i < count && i < 64; ++i) {
        const FontEntry& e = entries[i];
        list += (i ? "," : "") + std::string("{font=") + std::to_string(e.font) +
                " preset=" + std::to_string(e.preset) + " bank=" + std::to_string(e.bank) + "}";
        // An entry of 0 is allowed and means no soundfont at that place.
        if (e.font != 0 && State().fonts.count(e.font) == 0) ok = FALSE;
    }
    SetError(ok ? kOk : kHandle);
    vrlsim::Trace("BASS_MIDI_StreamSetFonts handle=" + std::to_string(handle) + " fonts=[" + list +
                  "] count=" + std::to_string(count) + " -> " + std::to_string(ok));
    return ok;
}

}  // extern "C"
