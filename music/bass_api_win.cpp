#include "music/bass_api_win.h"

namespace vrl {

struct BassApi::Functions {
    BOOL(WINAPI* init)(int, DWORD, DWORD, HWND, const void*) = nullptr;
    BOOL(WINAPI* free)() = nullptr;
    BOOL(WINAPI* getInfo)(BassInfo*) = nullptr;
    int(WINAPI* errorGetCode)() = nullptr;
    BassHandle(WINAPI* pluginLoad)(const void*, DWORD) = nullptr;
    BOOL(WINAPI* pluginFree)(BassHandle) = nullptr;
    BassHandle(WINAPI* sampleLoad)(BOOL, const void*, BassQword, DWORD, DWORD, DWORD) = nullptr;
    BOOL(WINAPI* sampleFree)(BassHandle) = nullptr;
    BassHandle(WINAPI* sampleGetChannel)(BassHandle, BOOL) = nullptr;
    BassHandle(WINAPI* streamCreateFile)(BOOL, const void*, BassQword, BassQword, DWORD) = nullptr;
    BOOL(WINAPI* streamFree)(BassHandle) = nullptr;
    BOOL(WINAPI* channelPlay)(BassHandle, BOOL) = nullptr;
    BOOL(WINAPI* channelStop)(BassHandle) = nullptr;
    BOOL(WINAPI* channelSetAttribute)(BassHandle, DWORD, float) = nullptr;
    BOOL(WINAPI* channelSetPosition)(BassHandle, BassQword, DWORD) = nullptr;
    const char*(WINAPI* channelGetTags)(BassHandle, DWORD) = nullptr;
    BassHandle(WINAPI* midiFontInit)(const void*, DWORD) = nullptr;
    BOOL(WINAPI* midiFontFree)(BassHandle) = nullptr;
    BOOL(WINAPI* midiStreamSetFonts)(BassHandle, const void*, DWORD) = nullptr;
};

namespace {

int g_useCount = 0;

template <typename Fn>
void Resolve(HMODULE module, const char* name, Fn& fn) {
    fn = module ? reinterpret_cast<Fn>(GetProcAddress(module, name)) : nullptr;
}

std::wstring ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n = GetModuleFileNameW(nullptr, &path[0], static_cast<DWORD>(path.size()));
        if (n == 0) return L".";
        if (n < path.size()) {
            path.resize(n);
            break;
        }
        path.resize(path.size() * 2);
    }
    const std::size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? L"." : path.substr(0, slash);
}

HMODULE LoadQuietly(const std::wstring& path) {
    // A damaged or foreign DLL must not raise the system's error box.
    DWORD previous = 0;
    const BOOL changed =
        SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &previous);
    HMODULE module = LoadLibraryW(path.c_str());
    if (changed) SetThreadErrorMode(previous, nullptr);
    return module;
}

BassApi* g_instance = nullptr;
bool g_bound = false;

}  // namespace

BassApi::BassApi() : fn_(std::make_unique<Functions>()) {}

BassApi::~BassApi() { Release(); }

BassApi& BassApi::Get() {
    // Deliberately never destroyed: users held in static objects may still call the library
    // while the process ends, and unloading it then would pull the code out from under them.
    if (!g_instance) g_instance = new BassApi();
    if (!g_bound) g_instance->Bind(ProgramFolder());
    return *g_instance;
}

bool BassApi::LoadFrom(const std::wstring& folder) {
    if (!g_instance) g_instance = new BassApi();
    g_instance->Bind(folder);
    return g_instance->HasBass();
}

void BassApi::Release() {
    *fn_ = Functions();
    // The add-on depends on the main library: unload it first.
    if (midi_) FreeLibrary(midi_);
    if (bass_) FreeLibrary(bass_);
    midi_ = nullptr;
    bass_ = nullptr;
}

void BassApi::Bind(const std::wstring& folder) {
    Release();
    g_bound = true;
    std::wstring base = folder;
    if (!base.empty() && base.back() != L'\\' && base.back() != L'/') base += L'\\';
    bass_ = LoadQuietly(base + L"bass.dll");
    // Without the main library the add-on cannot work; do not load it on its own.
    if (bass_) midi_ = LoadQuietly(base + L"bassmidi.dll");

    Functions& f = *fn_;
    Resolve(bass_, "BASS_Init", f.init);
    Resolve(bass_, "BASS_Free", f.free);
    Resolve(bass_, "BASS_GetInfo", f.getInfo);
    Resolve(bass_, "BASS_ErrorGetCode", f.errorGetCode);
    Resolve(bass_, "BASS_PluginLoad", f.pluginLoad);
    Resolve(bass_, "BASS_PluginFree", f.pluginFree);
    Resolve(bass_, "BASS_SampleLoad", f.sampleLoad);
    Resolve(bass_, "BASS_SampleFree", f.sampleFree);
    Resolve(bass_, "BASS_SampleGetChannel", f.sampleGetChannel);
    Resolve(bass_, "BASS_StreamCreateFile", f.streamCreateFile);
    Resolve(bass_, "BASS_StreamFree", f.streamFree);
    Resolve(bass_, "BASS_ChannelPlay", f.channelPlay);
    Resolve(bass_, "BASS_ChannelStop", f.channelStop);
    Resolve(bass_, "BASS_ChannelSetAttribute", f.channelSetAttribute);
    Resolve(bass_, "BASS_ChannelSetPosition", f.channelSetPosition);
    Resolve(bass_, "BASS_ChannelGetTags", f.channelGetTags);
    Resolve(midi_, "BASS_MIDI_FontInit", f.midiFontInit);
    Resolve(midi_, "BASS_MIDI_FontFree", f.midiFontFree);
    Resolve(midi_, "BASS_MIDI_StreamSetFonts", f.midiStreamSetFonts);
}

bool BassApi::HasBass() const { return bass_ != nullptr; }
bool BassApi::HasMidi() const { return midi_ != nullptr; }

BOOL BassApi::Init(int device, DWORD freq, DWORD flags, HWND window, const void* clsid) const {
    return fn_->init ? fn_->init(device, freq, flags, window, clsid) : FALSE;
}

BOOL BassApi::Free() const { return fn_->free ? fn_->free() : FALSE; }

BOOL BassApi::GetInfo(BassInfo* info) const {
    return fn_->getInfo && info ? fn_->getInfo(info) : FALSE;
}

int BassApi::ErrorGetCode() const {
    return fn_->errorGetCode ? fn_->errorGetCode() : kBassNotLoaded;
}

BassHandle BassApi::PluginLoad(const wchar_t* path, DWORD flags) const {
    return fn_->pluginLoad ? fn_->pluginLoad(path, flags) : 0;
}

BOOL BassApi::PluginFree(BassHandle plugin) const {
    return fn_->pluginFree ? fn_->pluginFree(plugin) : FALSE;
}

BassHandle BassApi::SampleLoad(BOOL mem, const void* file, BassQword offset, DWORD length,
                               DWORD max, DWORD flags) const {
    return fn_->sampleLoad ? fn_->sampleLoad(mem, file, offset, length, max, flags) : 0;
}

BOOL BassApi::SampleFree(BassHandle sample) const {
    return fn_->sampleFree ? fn_->sampleFree(sample) : FALSE;
}

BassHandle BassApi::SampleGetChannel(BassHandle sample, BOOL onlyNew) const {
    return fn_->sampleGetChannel ? fn_->sampleGetChannel(sample, onlyNew) : 0;
}

BassHandle BassApi::StreamCreateFile(BOOL mem, const void* file, BassQword offset,
                                     BassQword length, DWORD flags) const {
    return fn_->streamCreateFile ? fn_->streamCreateFile(mem, file, offset, length, flags) : 0;
}

BOOL BassApi::StreamFree(BassHandle stream) const {
    return fn_->streamFree ? fn_->streamFree(stream) : FALSE;
}

BOOL BassApi::ChannelPlay(BassHandle channel, BOOL restart) const {
    return fn_->channelPlay ? fn_->channelPlay(channel, restart) : FALSE;
}

BOOL BassApi::ChannelStop(BassHandle channel) const {
    return fn_->channelStop ? fn_->channelStop(channel) : FALSE;
}

BOOL BassApi::ChannelSetAttribute(BassHandle channel, DWORD attrib, float value) const {
    return fn_->channelSetAttribute ? fn_->channelSetAttribute(channel, attrib, value) : FALSE;
}

BOOL BassApi::ChannelSetPosition(BassHandle channel, BassQword pos, DWORD mode) const {
    return fn_->channelSetPosition ? fn_->channelSetPosition(channel, pos, mode) : FALSE;
}

const char* BassApi::ChannelGetTags(BassHandle channel, DWORD tags) const {
    return fn_->channelGetTags ? fn_->channelGetTags(channel, tags) : nullptr;
}

BassHandle BassApi::MidiFontInit(const wchar_t* path, DWORD flags) const {
    return fn_->midiFontInit ? fn_->midiFontInit(path, flags) : 0;
}

BOOL BassApi::MidiFontFree(BassHandle font) const {
    return fn_->midiFontFree ? fn_->midiFontFree(font) : FALSE;
}

BOOL BassApi::MidiStreamSetFonts(BassHandle stream, const BassMidiFont* fonts, DWORD count) const {
    return fn_->midiStreamSetFonts ? fn_->midiStreamSetFonts(stream, fonts, count) : FALSE;
}

BassUse::BassUse(HWND owner) {
    // The result is not checked: a failed start shows up later as the library's error name.
    if (g_useCount == 0) Bass().Init(-1, 48000, 0, owner, nullptr);
    ++g_useCount;
}

BassUse::~BassUse() {
    if (--g_useCount == 0) {
        Bass().PluginFree(0);
        Bass().Free();
    }
}

int BassUse::Count() { return g_useCount; }

}  // namespace vrl
