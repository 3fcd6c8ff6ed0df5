#pragma once
// The installation check (where the game lives, derived from where the companion lives) and the
// game launch with the in-game module loaded from the game's first instruction.

#include <windows.h>

#include <string>

namespace vrl {

// Process-wide folder values. The main frame owns one, fills the program folder at creation,
// lets CheckInstallation fill the rest, and reads it unchanged afterwards.
struct AppFolders {
    std::wstring program;     // folder of the running executable
    std::string programAnsi;  // the same in the ANSI code page (characters it lacks become '?')
    std::wstring game;        // program folder without its last component
    std::wstring gameSound;
    std::wstring gameSave;
    std::wstring gameUser;
    std::wstring userMusic;
    std::wstring userSound;
};

// The program folder of `module` (null: the running executable), wide and ANSI; the game folders
// are left empty.
AppFolders ProgramFolders(HMODULE module = nullptr);

enum class InstallCheck { kOk, kNoBackslash, kNoAnsiBackslash };

// Derives the game folders from folders->program and folders->programAnsi; on anything but kOk
// the game folders are left as they were.
InstallCheck DeriveInstallFolders(AppFolders* folders);

// DeriveInstallFolders, and on failure the message "Vorrel is not installed correctly." (wide or
// ANSI box, as the failing form) and ExitProcess(0). Runs before the settings, so it is English.
void CheckInstallation(AppFolders* folders);

// Ids of the launched game, for the game watch; 0 when no game was started. No handle is kept.
struct GameProcess {
    DWORD processId = 0;
    DWORD threadId = 0;
};

// Starts `gameExe` with the module "VrlDLL.dll" of the program folder loaded first, when the file
// is an HSP-runtime executable. The game folder is the current folder during the launch (so the
// game starts there) and the program folder again afterwards. Nothing is shown on failure: the
// ids stay 0 and the game watch reports the missing window.
// The module's name in the game's import directory is narrow text (ChooseDllImportName). A program
// folder with characters outside the ANSI code page works while its short form is plain ASCII
// (8.3 names on, and always under Wine); otherwise the module file cannot be named, no game is
// started, and the game watch reports it like any other failed launch.
GameProcess LaunchGame(const AppFolders& folders, const std::wstring& gameExe, bool musicExtender);

// The steps of the launch, for tests.
inline constexpr const wchar_t* kModuleFileName = L"VrlDLL.dll";
inline constexpr std::size_t kModulePathBytes = 260;

// With the music extender on, copies each missing music target from its source under the game
// folder; an existing target is never overwritten, and a failed copy is ignored.
void PrepareMusicFiles(const std::wstring& gameFolder, bool musicExtender);

// True when the first 16 MiB of the file carry the HSP marker. One shared read of an existing file.
bool ExecutableCarriesHspMarker(const std::wstring& path);

// "%s\%s" of the ANSI program folder and the module name, cut to the 259 bytes a 260-byte buffer holds.
std::string ModulePathAnsi(const std::string& programAnsi);

}  // namespace vrl
