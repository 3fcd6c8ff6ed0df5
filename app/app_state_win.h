#pragma once
// Process-wide values: set while the main frame is created, read-only afterwards (the game window
// handle excepted, which the game watch sets once).

#include <windows.h>

#include <string>

#include "app/game_launch_win.h"
#include "settings/app_settings.h"

namespace vrl {

struct AppState {
    HINSTANCE instance = nullptr;
    AppFolders folders;             // program folder (also the current folder) and the game's folders
    std::wstring saveBackupFolder;  // programFolder\save.bak
    std::wstring screenshotFolder;  // programFolder\screenshot
    std::wstring settingsPath;      // programFolder\Vrl.ini
    HWND frame = nullptr;           // found by class and title
    HWND gameWindow = nullptr;      // null until the game watch finds it
    std::u16string versionText;
    AppSettings settings;
};

AppState& App();

}  // namespace vrl
