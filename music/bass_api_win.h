#pragma once
// Run-time binding of the audio library (bass.dll) and its MIDI add-on (bassmidi.dll), and the
// process-wide use count shared by the music player and the log's alert sounds.
//
// Both libraries are optional: they are loaded from the program folder when first needed, and when
// a library or one of its functions is missing every call fails softly (0 / FALSE / null, and
// ErrorGetCode gives kBassNotLoaded). Nothing here shows a message box.
//
// Everything runs on the user-interface thread; the binding has no locks.

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

namespace vrl {

using BassHandle = DWORD;   // samples, channels, streams, plug-ins, soundfonts: 32-bit handles
using BassQword = std::uint64_t;

// ErrorGetCode when bass.dll (or its BASS_ErrorGetCode) is missing; the error table names it
// "BASS_ERROR_UNKNOWN".
inline constexpr int kBassNotLoaded = -1;

// Flags and values of the calls this program makes.
inline constexpr DWORD kBassUnicode = 0x80000000;      // the path argument is a wide string
inline constexpr DWORD kBassSampleOverPos = 0x20000;   // a new playback takes over the furthest along
inline constexpr DWORD kBassSampleLoop = 4;            // streams: loop at the end position
inline constexpr DWORD kBassAttribVolume = 2;
inline constexpr DWORD kBassPosByte = 0;
inline constexpr DWORD kBassPosEnd = 0x10;
inline constexpr DWORD kBassPosLoop = 0x11;
inline constexpr DWORD kBassTagOgg = 2;

// The library's output information. Its record is larger than what this program reads: only the
// output rate is used, after thirteen 32-bit fields; the rest is room for the library to fill.
// Zero it before the call.
struct BassInfo {
    DWORD leading[13];
    DWORD freq;
    DWORD room[18];
};

// One soundfont assignment for BASS_MIDI_StreamSetFonts.
struct BassMidiFont {
    BassHandle font;
    int preset;   // -1: every preset
    int bank;
};

class BassApi {
public:
    // The process-wide binding. The first call loads the libraries from the program folder (the
    // folder of the running executable) unless LoadFrom chose another folder before.
    static BassApi& Get();

    // Binds (again) to bass.dll and bassmidi.dll in the given folder, releasing any earlier
    // binding. Meant for start-up and for tests; call it while no BassUse exists. True when
    // bass.dll was loaded.
    static bool LoadFrom(const std::wstring& folder);

    bool HasBass() const;
    bool HasMidi() const;

    BOOL Init(int device, DWORD freq, DWORD flags, HWND window, const void* clsid) const;
    BOOL Free() const;
    BOOL GetInfo(BassInfo* info) const;
    int ErrorGetCode() const;

    BassHandle PluginLoad(const wchar_t* path, DWORD flags) const;
    BOOL PluginFree(BassHandle plugin) const;

    BassHandle SampleLoad(BOOL mem, const void* file, BassQword offset, DWORD length, DWORD max,
                          DWORD flags) const;
    BOOL SampleFree(BassHandle sample) const;
    BassHandle SampleGetChannel(BassHandle sample, BOOL onlyNew) const;

    BassHandle StreamCreateFile(BOOL mem, const void* file, BassQword offset, BassQword length,
                                DWORD flags) const;
    BOOL StreamFree(BassHandle stream) const;

    BOOL ChannelPlay(BassHandle channel, BOOL restart) const;
    BOOL ChannelStop(BassHandle channel) const;
    BOOL ChannelSetAttribute(BassHandle channel, DWORD attrib, float value) const;
    BOOL ChannelSetPosition(BassHandle channel, BassQword pos, DWORD mode) const;
    // Ogg comments (kBassTagOgg): zero-terminated strings ending with an empty one, or null.
    const char* ChannelGetTags(BassHandle channel, DWORD tags) const;

    BassHandle MidiFontInit(const wchar_t* path, DWORD flags) const;
    BOOL MidiFontFree(BassHandle font) const;
    BOOL MidiStreamSetFonts(BassHandle stream, const BassMidiFont* fonts, DWORD count) const;

    BassApi(const BassApi&) = delete;
    BassApi& operator=(const BassApi&) = delete;
    ~BassApi();

    struct Functions;  // the resolved entry points (private to the implementation)

private:
    BassApi();
    void Bind(const std::wstring& folder);
    void Release();

    HMODULE bass_ = nullptr;
    HMODULE midi_ = nullptr;
    std::unique_ptr<Functions> fn_;
};

// Shorthand for BassApi::Get().
inline BassApi& Bass() { return BassApi::Get(); }

// One user of the library. The first user alive initialises it (default device, 48000 Hz, flags
// 0, the owner window); the last one to go frees the plug-ins and then the library. Hold one as
// the first member of any class that calls the library, so it outlives that class's own clean-up.
class BassUse {
public:
    explicit BassUse(HWND owner);
    ~BassUse();
    BassUse(const BassUse&) = delete;
    BassUse& operator=(const BassUse&) = delete;

    // Users alive in this process.
    static int Count();
};

}  // namespace vrl
