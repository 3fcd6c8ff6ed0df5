#include "app/game_launch_win.h"

#include "app/install_paths.h"
#include "app/process_with_dll_win.h"
#include "ui/wide_win.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace vrl {
namespace {

constexpr const wchar_t* kNotInstalledText = L"Vorrel is not installed correctly.";

std::wstring ModuleFileName(HMODULE module) {
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) return std::wstring();
        if (length < buffer.size()) return std::wstring(buffer.data(), length);
        buffer.resize(buffer.size() * 2);
    }
}

std::string ToAnsi(const std::wstring& text) {
    if (text.empty()) return std::string();
    const int size = WideCharToMultiByte(CP_ACP, 0, text.c_str(), static_cast<int>(text.size()), nullptr, 0,
                                         nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size > 0 ? size : 0), '\0');
    if (size > 0) {
        WideCharToMultiByte(CP_ACP, 0, text.c_str(), static_cast<int>(text.size()), &result[0], size, nullptr,
                            nullptr);
    }
    return result;
}

// In a double-byte code page a trail byte can have the value of a backslash, so step by characters.
bool AnsiHasBackslash(const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const BYTE c = static_cast<BYTE>(text[i]);
        if (IsDBCSLeadByteEx(CP_ACP, c)) {
            ++i;
        } else if (c == '\\') {
            return true;
        }
    }
    return false;
}

// SetCurrentDirectory("C:") would pick drive C's remembered folder, not its root.
std::wstring AsDirectory(const std::wstring& folder) {
    if (folder.size() == 2 && folder[1] == L':') return folder + L'\\';
    return folder;
}

class ScopedCurrentDirectory {
public:
    ScopedCurrentDirectory(const std::wstring& during, const std::wstring& after) : after_(AsDirectory(after)) {
        SetCurrentDirectoryW(AsDirectory(during).c_str());
    }
    ~ScopedCurrentDirectory() { SetCurrentDirectoryW(after_.c_str()); }
    ScopedCurrentDirectory(const ScopedCurrentDirectory&) = delete;
    ScopedCurrentDirectory& operator=(const ScopedCurrentDirectory&) = delete;

private:
    std::wstring after_;
};

}  // namespace

AppFolders ProgramFolders(HMODULE module) {
    AppFolders folders;
    folders.program = Wstr(FolderOf(U16(ModuleFileName(module))));
    folders.programAnsi = ToAnsi(folders.program);
    return folders;
}

InstallCheck DeriveInstallFolders(AppFolders* folders) {
    GameFolders game;
    if (!DeriveGameFolders(U16(folders->program), &game)) return InstallCheck::kNoBackslash;
    if (!AnsiHasBackslash(folders->programAnsi)) return InstallCheck::kNoAnsiBackslash;
    folders->game = Wstr(game.game);
    folders->gameSound = Wstr(game.sound);
    folders->gameSave = Wstr(game.save);
    folders->gameUser = Wstr(game.user);
    folders->userMusic = Wstr(game.userMusic);
    folders->userSound = Wstr(game.userSound);
    return InstallCheck::kOk;
}

void CheckInstallation(AppFolders* folders) {
    switch (DeriveInstallFolders(folders)) {
        case InstallCheck::kOk:
            return;
        case InstallCheck::kNoBackslash:
            MessageBoxW(nullptr, kNotInstalledText, nullptr, MB_OK);
            break;
        case InstallCheck::kNoAnsiBackslash:
            MessageBoxA(nullptr, "Vorrel is not installed correctly.", nullptr, MB_OK);
            break;
    }
    ExitProcess(0);
}

void PrepareMusicFiles(const std::wstring& gameFolder, bool musicExtender) {
    const std::u16string game = U16(gameFolder);
    for (const MusicFilePair& pair : kMusicFilePairs) {
        const std::wstring target = Wstr(JoinPath(game, pair.target));
        if (GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES || !musicExtender) continue;
        CopyFileW(Wstr(JoinPath(game, pair.source)).c_str(), target.c_str(), TRUE);
    }
}

bool ExecutableCarriesHspMarker(const std::wstring& path) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    bool found = false;
    // Asking for no more than the file holds matters under Wine, which touches every page of
    // the destination: a 16 MiB request for a 1 MiB game took ten times as long as a 1 MiB one.
    LARGE_INTEGER size{};
    GetFileSizeEx(file, &size);
    const DWORD wanted = static_cast<DWORD>(
        std::min<ULONGLONG>(static_cast<ULONGLONG>(size.QuadPart), static_cast<ULONGLONG>(kHspScanLimit)));
    void* buffer = wanted > 0 ? VirtualAlloc(nullptr, wanted, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE) : nullptr;
    if (buffer != nullptr) {
        DWORD read = 0;
        if (ReadFile(file, buffer, wanted, &read, nullptr)) {
            found = FindHspMarker(static_cast<const unsigned char*>(buffer), read) != kNoHspMarker;
        }
        VirtualFree(buffer, 0, MEM_RELEASE);
    }
    CloseHandle(file);
    return found;
}

std::string ModulePathAnsi(const std::string& programAnsi) {
    char buffer[kModulePathBytes];
    std::snprintf(buffer, sizeof(buffer), "%s\\%s", programAnsi.c_str(), "VrlDLL.dll");
    return buffer;
}

GameProcess LaunchGame(const AppFolders& folders, const std::wstring& gameExe, bool musicExtender) {
    GameProcess game;
    ScopedCurrentDirectory inGameFolder(folders.game, folders.program);
    PrepareMusicFiles(folders.game, musicExtender);
    // The import directory takes a narrow name; when the program folder has characters outside
    // plain ASCII, the wide path decides which narrow form the loader can open.
    const std::string dllName =
        ChooseDllImportName(folders.program + L'\\' + kModuleFileName, ModulePathAnsi(folders.programAnsi));
    if (!ExecutableCarriesHspMarker(gameExe)) return game;

    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION pi{};
    if (CreateProcessWithDllW(gameExe.c_str(), nullptr, nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE,
                              nullptr, nullptr, &startup, &pi, dllName.c_str())) {
        game.processId = pi.dwProcessId;
        game.threadId = pi.dwThreadId;
    }
    if (pi.hThread != nullptr) CloseHandle(pi.hThread);
    if (pi.hProcess != nullptr) CloseHandle(pi.hProcess);
    return game;
}

}  // namespace vrl
