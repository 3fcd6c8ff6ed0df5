// Stand-in of the audio library (bass.dll) for the tests: keeps the library's bookkeeping of
// devices, samples, channels, streams and plug-ins, recognises WAV, Ogg and (with the MIDI plug-in)
// MIDI files, and writes every call with its arguments and result to the trace. It makes no sound:
// a channel counts as playing from its start until its file's playing time has passed.
#include <windows.h>

#include <cstring>
#include <map>
#include <mutex>
#include <string>

#include "sim_audio_format.h"
#include "sim_trace_win.h"

namespace {

using vrlsim::AudioFormat;
using vrlsim::AudioKind;

enum ErrorCode {
    kOk = 0, kFileOpen = 2, kHandle = 5, kInit = 8, kAlready = 14, kNoChan = 18, kIllType = 19,
    kIllParam = 20, kDevice = 23, kNotAvail = 37, kFileForm = 41,
};

constexpr DWORD kUnicode = 0x80000000;
constexpr DWORD kOverVol = 0x10000;
constexpr DWORD kOverPos = 0x20000;
constexpr DWORD kOverDist = 0x30000;
constexpr DWORD kLoop = 4;

struct Sample {
    DWORD max = 1;
    DWORD flags = 0;
    std::uint64_t playingMs = 0;
};

// A playback: a channel of a sample, or a stream (which is its own channel).
struct Channel {
    DWORD sample = 0;  // 0 for a stream
    bool started = false;
    ULONGLONG startTick = 0;
    std::uint64_t playingMs = 0;  // 0: until stopped
    bool loop = false;
    AudioFormat format;
};

struct Library {
    std::mutex lock;
    bool initialised = false;
    DWORD nextHandle = 0;
    std::map<DWORD, Sample> samples;
    std::map<DWORD, Channel> channels;
    std::map<DWORD, std::wstring> plugins;
};

Library& Lib() {
    static Library library;
    return library;
}

thread_local int t_error = kOk;

// Handles carry their kind in the upper half, so a trace shows at a glance what a number is.
DWORD NewHandle(DWORD kind) { return kind << 16 | ++Lib().nextHandle; }
constexpr DWORD kSampleKind = 1, kChannelKind = 2, kStreamKind = 3, kPluginKind = 4;

bool IsPlaying(const Channel& c) {
    if (!c.started) return false;
    return c.loop || c.playingMs == 0 || GetTickCount64() - c.startTick < c.playingMs;
}

template <typename T>
T Fail(int code, T result) {
    t_error = code;
    return result;
}

template <typename T>
T Succeed(T result) {
    t_error = kOk;
    return result;
}

std::string Result(DWORD value) { return " -> " + std::to_string(value); }

bool LoadFormat(BOOL mem, const void* file, std::uint64_t offset, std::uint64_t length, DWORD flags,
                AudioFormat* format, std::wstring* name) {
    std::string bytes;
    if (mem) {
        if (!file || length == 0) return Fail(kIllParam, false);
        bytes.assign(static_cast<const char*>(file) + offset, static_cast<std::size_t>(length));
    } else {
        *name = vrlsim::PathArgument(file, (flags & kUnicode) != 0);
        if (!vrlsim::ReadWholeFile(*name, &bytes)) return Fail(kFileOpen, false);
        if (offset > bytes.size()) return Fail(kFileForm, false);
        bytes = bytes.substr(static_cast<std::size_t>(offset),
                             length ? static_cast<std::size_t>(length) : std::string::npos);
    }
    *format = vrlsim::RecogniseAudio(bytes);
    return true;
}

bool MidiPluginLoaded() {
    for (const auto& plugin : Lib().plugins) {
        if (vrlsim::LowerFileName(plugin.second) == L"bassmidi.dll") return true;
    }
    return false;
}

// Stops and forgets the channels of a sample; how many were still playing.
int DropChannelsOf(DWORD sample) {
    int stopped = 0;
    auto& channels = Lib().channels;
    for (auto it = channels.begin(); it != channels.end();) {
        if (it->second.sample == sample) {
            if (IsPlaying(it->second)) ++stopped;
            it = channels.erase(it);
        } else {
            ++it;
        }
    }
    return stopped;
}

DWORD ChannelForSample(DWORD sampleHandle, const Sample& sample, BOOL onlyNew) {
    DWORD count = 0;
    DWORD furthest = 0;
    ULONGLONG earliest = ~0ULL;
    for (auto& entry : Lib().channels) {
        Channel& c = entry.second;
        if (c.sample != sampleHandle) continue;
        ++count;
        if (!IsPlaying(c)) {
            c.started = false;  // finished playbacks are free for reuse
            return entry.first;
        }
        if (c.startTick < earliest) {
            earliest = c.startTick;
            furthest = entry.first;
        }
    }
    if (count < sample.max) {
        const DWORD handle = NewHandle(kChannelKind);
        Channel& c = Lib().channels[handle];
        c.sample = sampleHandle;
        c.playingMs = sample.playingMs;
        c.loop = (sample.flags & kLoop) != 0;
        return handle;
    }
    const DWORD over = sample.flags & kOverDist;
    if (onlyNew || (over != kOverPos && over != kOverVol) || furthest == 0) return 0;
    Lib().channels[furthest].started = false;
    return furthest;
}

// A channel of a sample or a stream, or null with the handle error.
Channel* FindChannel(DWORD handle) {
    auto it = Lib().channels.find(handle);
    if (it == Lib().channels.end()) return Fail(kHandle, static_cast<Channel*>(nullptr));
    t_error = kOk;
    return &it->second;
}

}  // namespace

extern "C" {

void WINAPI VrlSimBass_SetError(int code) { t_error = code; }

BOOL WINAPI VrlSimBass_IsStream(DWORD handle) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    auto it = Lib().channels.find(handle);
    return it != Lib().channels.end() && it->second.sample == 0;
}

int WINAPI BASS_ErrorGetCode() {
    vrlsim::Trace("BASS_ErrorGetCode -> " + std::to_string(t_error));
    return t_error;
}

BOOL WINAPI BASS_Init(int device, DWORD freq, DWORD flags, HWND win,
                                            const void* clsid) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    BOOL ok = FALSE;
    if (Lib().initialised) {
        ok = Fail(kAlready, FALSE);
    } else if (device < -1 || device > 1) {
        ok = Fail(kDevice, FALSE);
    } else {
        Lib().initialised = true;
        ok = Succeed(TRUE);
    }
    vrlsim::Trace("BASS_Init device=" + std::to_string(device) + " freq=" + std::to_string(freq) +
                  " flags=" + vrlsim::Hex(flags) + " win=" + vrlsim::Pointer(win) +
                  " clsid=" + vrlsim::Pointer(clsid) + Result(ok));
    return ok;
}

BOOL WINAPI BASS_Free() {
    std::lock_guard<std::mutex> guard(Lib().lock);
    BOOL ok = FALSE;
    if (!Lib().initialised) {
        ok = Fail(kInit, FALSE);
    } else {
        Lib().initialised = false;
        Lib().samples.clear();
        Lib().channels.clear();
        ok = Succeed(TRUE);
    }
    vrlsim::Trace("BASS_Free" + Result(ok));
    return ok;
}

BOOL WINAPI BASS_GetInfo(void* info) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    BOOL ok = FALSE;
    DWORD freq = 0;
    if (!Lib().initialised) {
        ok = Fail(kInit, FALSE);
    } else if (!info) {
        ok = Fail(kIllParam, FALSE);
    } else {
        // The output rate can be changed for tests of rates other than the usual one.
        wchar_t text[16] = {};
        freq = GetEnvironmentVariableW(L"VRL_SIM_BASS_FREQ", text, 16) ? wcstoul(text, nullptr, 10)
                                                                        : 48000;
        DWORD* fields = static_cast<DWORD*>(info);
        for (int i = 0; i < 13; ++i) fields[i] = 0;
        fields[0] = 1;    // flags: the device is usable
        fields[13] = freq;
        ok = Succeed(TRUE);
    }
    vrlsim::Trace("BASS_GetInfo freq=" + std::to_string(freq) + Result(ok));
    return ok;
}

DWORD WINAPI BASS_PluginLoad(const void* file, DWORD flags) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    const std::wstring name = vrlsim::PathArgument(file, (flags & kUnicode) != 0);
    std::string bytes;
    DWORD handle = 0;
    if (!vrlsim::ReadWholeFile(name, &bytes)) {
        handle = Fail(kFileOpen, 0UL);
    } else if (bytes.compare(0, 2, "MZ") != 0) {
        handle = Fail(kFileForm, 0UL);
    } else {
        for (const auto& plugin : Lib().plugins) {
            if (lstrcmpiW(plugin.second.c_str(), name.c_str()) == 0) handle = plugin.first;
        }
        if (handle) {
            handle = Fail(kAlready, 0UL);
        } else {
            handle = NewHandle(kPluginKind);
            Lib().plugins[handle] = name;
            t_error = kOk;
        }
    }
    vrlsim::Trace("BASS_PluginLoad file=" + vrlsim::Quoted(name) + " flags=" + vrlsim::Hex(flags) +
                  Result(handle));
    return handle;
}

BOOL WINAPI BASS_PluginFree(DWORD handle) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    BOOL ok = TRUE;
    if (handle == 0) {
        Lib().plugins.clear();
    } else if (Lib().plugins.erase(handle) == 0) {
        ok = FALSE;
    }
    ok = ok ? Succeed(TRUE) : Fail(kHandle, FALSE);
    vrlsim::Trace("BASS_PluginFree handle=" + std::to_string(handle) + Result(ok));
    return ok;
}

DWORD WINAPI BASS_SampleLoad(BOOL mem, const void* file, std::uint64_t offset,
                                                   DWORD length, DWORD max, DWORD flags) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    std::wstring name;
    AudioFormat format;
    DWORD handle = 0;
    if (!Lib().initialised) {
        handle = Fail(kInit, 0UL);
    } else if (max < 1 || max > 65535) {
        handle = Fail(kIllParam, 0UL);
    } else if (LoadFormat(mem, file, offset, length, flags, &format, &name)) {
        if (format.kind != AudioKind::Wav) {
            handle = Fail(kFileForm, 0UL);
        } else {
            handle = NewHandle(kSampleKind);
            Lib().samples[handle] = Sample{max, flags, vrlsim::PlayingMilliseconds(format)};
            t_error = kOk;
        }
    }
    const std::string source = mem ? vrlsim::Pointer(file) : vrlsim::Quoted(name);
    vrlsim::Trace("BASS_SampleLoad mem=" + std::to_string(mem) + " file=" + source +
                  " offset=" + std::to_string(offset) + " length=" + std::to_string(length) +
                  " max=" + std::to_string(max) + " flags=" + vrlsim::Hex(flags) + Result(handle));
    return handle;
}

BOOL WINAPI BASS_SampleFree(DWORD handle) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    int stopped = 0;
    BOOL ok = FALSE;
    if (Lib().samples.erase(handle) == 0) {
        ok = Fail(kHandle, FALSE);
    } else {
        stopped = DropChannelsOf(handle);
        ok = Succeed(TRUE);
    }
    vrlsim::Trace("BASS_SampleFree handle=" + std::to_string(handle) +
                  " stopped=" + std::to_string(stopped) + Result(ok));
    return ok;
}

DWORD WINAPI BASS_SampleGetChannel(DWORD handle, BOOL onlyNew) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    DWORD channel = 0;
    auto it = Lib().samples.find(handle);
    if (it == Lib().samples.end()) {
        channel = Fail(kHandle, 0UL);
    } else {
        channel = ChannelForSample(handle, it->second, onlyNew);
        channel = channel ? Succeed(channel) : Fail(kNoChan, 0UL);
    }
    vrlsim::Trace("BASS_SampleGetChannel handle=" + std::to_string(handle) +
                  " onlynew=" + std::to_string(onlyNew) + Result(channel));
    return channel;
}

DWORD WINAPI BASS_StreamCreateFile(BOOL mem, const void* file,
                                                         std::uint64_t offset,
                                                         std::uint64_t length, DWORD flags) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    std::wstring name;
    AudioFormat format;
    DWORD handle = 0;
    if (!Lib().initialised) {
        handle = Fail(kInit, 0UL);
    } else if (LoadFormat(mem, file, offset, length, flags, &format, &name)) {
        const bool playable = format.kind == AudioKind::Wav || format.kind == AudioKind::Ogg ||
                              (format.kind == AudioKind::Midi && MidiPluginLoaded());
        if (!playable) {
            handle = Fail(kFileForm, 0UL);
        } else {
            handle = NewHandle(kStreamKind);
            Channel& stream = Lib().channels[handle];
            stream.playingMs = vrlsim::PlayingMilliseconds(format);
            stream.loop = (flags & kLoop) != 0;
            stream.format = format;
            t_error = kOk;
        }
    }
    const std::string source = mem ? vrlsim::Pointer(file) : vrlsim::Quoted(name);
    vrlsim::Trace("BASS_StreamCreateFile mem=" + std::to_string(mem) + " file=" + source +
                  " offset=" + std::to_string(offset) + " length=" + std::to_string(length) +
                  " flags=" + vrlsim::Hex(flags) + Result(handle));
    return handle;
}

BOOL WINAPI BASS_StreamFree(DWORD handle) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    auto it = Lib().channels.find(handle);
    BOOL ok = FALSE;
    bool stopped = false;
    if (it == Lib().channels.end() || it->second.sample != 0) {
        ok = Fail(kHandle, FALSE);
    } else {
        stopped = IsPlaying(it->second);
        Lib().channels.erase(it);
        ok = Succeed(TRUE);
    }
    vrlsim::Trace("BASS_StreamFree handle=" + std::to_string(handle) +
                  " stopped=" + std::to_string(stopped) + Result(ok));
    return ok;
}

BOOL WINAPI BASS_ChannelPlay(DWORD handle, BOOL restart) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    Channel* channel = FindChannel(handle);
    if (channel && (restart || !IsPlaying(*channel))) {
        channel->started = true;
        channel->startTick = GetTickCount64();
    }
    vrlsim::Trace("BASS_ChannelPlay handle=" + std::to_string(handle) +
                  " restart=" + std::to_string(restart) + Result(channel != nullptr));
    return channel != nullptr;
}

BOOL WINAPI BASS_ChannelStop(DWORD handle) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    Channel* channel = FindChannel(handle);
    bool stopped = false;
    if (channel) {
        stopped = IsPlaying(*channel);
        channel->started = false;
    }
    vrlsim::Trace("BASS_ChannelStop handle=" + std::to_string(handle) +
                  " stopped=" + std::to_string(stopped) + Result(channel != nullptr));
    return channel != nullptr;
}

BOOL WINAPI BASS_ChannelSetAttribute(DWORD handle, DWORD attrib,
                                                           float value) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    BOOL ok = FindChannel(handle) != nullptr;
    // Volume (2), pan (3) and the rest of the common attributes; the stand-in keeps none of them.
    if (ok && (attrib < 1 || attrib > 16)) ok = Fail(kIllType, FALSE);
    vrlsim::Trace("BASS_ChannelSetAttribute handle=" + std::to_string(handle) +
                  " attrib=" + std::to_string(attrib) + " value=" + vrlsim::FloatText(value) +
                  Result(ok));
    return ok;
}

BOOL WINAPI BASS_ChannelSetPosition(DWORD handle, std::uint64_t pos,
                                                          DWORD mode) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    BOOL ok = FindChannel(handle) != nullptr;
    vrlsim::Trace("BASS_ChannelSetPosition handle=" + std::to_string(handle) +
                  " pos=" + std::to_string(static_cast<long long>(pos)) +
                  " mode=" + vrlsim::Hex(mode) + Result(ok));
    return ok;
}

const char* WINAPI BASS_ChannelGetTags(DWORD handle, DWORD tags) {
    std::lock_guard<std::mutex> guard(Lib().lock);
    const Channel* channel = FindChannel(handle);
    const char* result = nullptr;
    int count = 0;
    if (channel) {
        if (tags == 2 && channel->format.hasComments) {
            result = channel->format.comments.c_str();
            for (const char* p = result; *p; p += strlen(p) + 1) ++count;
        } else {
            t_error = kNotAvail;
        }
    }
    vrlsim::Trace("BASS_ChannelGetTags handle=" + std::to_string(handle) +
                  " tags=" + std::to_string(tags) +
                  (result ? " -> comments=" + std::to_string(count) : std::string(" -> null")));
    return result;
}

}  // extern "C"
