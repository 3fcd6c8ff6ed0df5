#include "music/smf_player_win.h"

#include <cwchar>

#include "music/midi_back_ends.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

// The library's functions as this program calls them.
struct SmfLibrary {
    HMODULE module = nullptr;
    int(WINAPI* openDevice)(int device, HWND window) = nullptr;
    void(WINAPI* closeDevice)() = nullptr;
    void(WINAPI* setMasterVolume)(int volume) = nullptr;
    int(WINAPI* addListFromFile)(const wchar_t* path, int option, int id) = nullptr;
    int(WINAPI* play)(int option, int id, int skip, int fadeIn, int keyShift) = nullptr;
    void(WINAPI* stop)(int fadeOut) = nullptr;
    void(WINAPI* clearList)() = nullptr;
};

SmfLibrary g_smf;
bool g_missingReported = false;

constexpr int kSmfDevice = -1100;  // the library's own software synthesizer

template <typename Fn>
void Bind(const char* name, Fn& fn) {
    fn = reinterpret_cast<Fn>(::GetProcAddress(g_smf.module, name));
}

bool LoadSmfLibrary() {
    if (g_smf.module) return true;
    wchar_t program[MAX_PATH] = {};
    const DWORD length = ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return false;
    wchar_t* name = std::wcsrchr(program, L'\\');
    const std::wstring path = std::wstring(program, name ? name + 1 - program : 0) + L"GuruGuruSMF4.dll";
    if (path.size() > MAX_PATH) return false;
    DWORD previous = 0;
    const BOOL quiet = ::SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &previous);
    g_smf.module = ::LoadLibraryW(path.c_str());
    if (quiet) ::SetThreadErrorMode(previous, nullptr);
    if (!g_smf.module) return false;
    Bind("GGS4OpenDevice", g_smf.openDevice);
    Bind("GGS4CloseDevice", g_smf.closeDevice);
    Bind("GGS4SetMasterVolume", g_smf.setMasterVolume);
    Bind("GGS4AddListFromFileW", g_smf.addListFromFile);
    Bind("GGS4Play", g_smf.play);
    Bind("GGS4Stop", g_smf.stop);
    Bind("GGS4ClearList", g_smf.clearList);
    return true;
}

// Each call through a wrapper: a missing function gives "ApiNull" or does nothing.
int OpenDevice(int device, HWND window) { return g_smf.openDevice ? g_smf.openDevice(device, window) : kSmfApiNull; }
void CloseDevice() { if (g_smf.closeDevice) g_smf.closeDevice(); }
void SetMasterVolume(int volume) { if (g_smf.setMasterVolume) g_smf.setMasterVolume(volume); }
int AddListFromFile(const wchar_t* path) { return g_smf.addListFromFile ? g_smf.addListFromFile(path, 0, 0) : kSmfApiNull; }
int PlayList(int option) { return g_smf.play ? g_smf.play(option, 0, 0, 0, 0) : kSmfApiNull; }
void StopList() { if (g_smf.stop) g_smf.stop(0); }
void ClearList() { if (g_smf.clearList) g_smf.clearList(); }

}  // namespace

CDirectMusicPlayer::CDirectMusicPlayer(HWND owner) : CMidiPlayer(owner) {
    if (!LoadSmfLibrary()) {
        if (!g_missingReported) {
            g_missingReported = true;
            ::MessageBoxW(owner, L"BGM拡張：GuruGuruSMF4.dll を読み込めないため、MIDI ファイルは演奏できません。", nullptr, MB_OK);
        }
        return;
    }
    OpenDevice(kSmfDevice, owner);
    SetMasterVolume(0);
}

CDirectMusicPlayer::~CDirectMusicPlayer() {
    if (!g_smf.module) return;
    CloseDevice();
    ::FreeLibrary(g_smf.module);
    g_smf = SmfLibrary{};
}

bool CDirectMusicPlayer::Open(const std::u16string& path, int playCount) {
    playCount_ = playCount;
    lastResult_ = AddListFromFile(W(path));
    return lastResult_ == 0;
}

bool CDirectMusicPlayer::Play() {
    lastResult_ = PlayList(SmfPlayOption(playCount_));
    return lastResult_ == 0;
}

void CDirectMusicPlayer::Stop() { StopList(); }

void CDirectMusicPlayer::SetVolume(float volume) { SetMasterVolume(SmfMasterVolume(volume)); }

void CDirectMusicPlayer::GetErrorText(std::u16string& text) { text = SmfResultName(lastResult_); }

void CDirectMusicPlayer::Close() { ClearList(); }

}  // namespace vrl
