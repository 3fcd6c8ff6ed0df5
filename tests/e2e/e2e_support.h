#pragma once
// End-to-end harness: lays out a game folder with the companion installed inside it (in a fresh
// temporary folder), starts the real VrlBoot.exe there with the stand-in module, and reads back
// what the player would see: windows, message boxes, the stand-ins' transcripts.

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/common/test_files_win.h"
#include "tests/common/window_driving_win.h"

namespace e2e {

using vrltest::Utf8;

// Folder of the running test program: the build's bin folder with VrlBoot.exe and the stand-ins.
std::wstring BinFolder();

// A game folder of its own, laid out as a player's; removed with everything in it at the end.
struct Install {
    Install() = default;
    Install(Install&& other) noexcept;
    Install(const Install&) = delete;
    Install& operator=(const Install&) = delete;
    Install& operator=(Install&&) = delete;
    ~Install();

    std::wstring root;           // the temporary folder
    std::wstring gameFolder;     // root\<game folder name>
    std::wstring programFolder;  // gameFolder\Vorrel
    std::wstring gameExe;        // gameFolder\DemoGame.exe
    std::wstring transcript;     // root\transcript.txt (module and demo game append to it)

    std::wstring ProgramFile(const std::wstring& name) const { return programFolder + L"\\" + name; }
    // Writes Vrl.ini: section Vorrel_v5 with wstrMorva = the demo game, followed by `extraLines`.
    void WriteIni(const std::string& extraLines = {}) const;
    void WriteProgramFile(const std::wstring& name, const std::string& bytes) const;
    void WriteScenario(const std::string& scenario) const { WriteProgramFile(L"VrlDLL.scenario", scenario); }
    std::string ReadTranscript() const;
    // Waits (20 s at most) until the module has played its whole scenario; the transcript, which
    // the failure names when it has not.
    std::string WaitForScenarioEnd() const;
    bool ProgramFileExists(const std::wstring& name) const;
    // The game's own folders (save, sound, user with its music and sound), as a player's game has them.
    void MakeGameFolders() const;
};

struct InstallOptions {
    std::wstring gameFolderName = L"Morva";
    bool withModule = true;      // copy the stand-in VrlDLL.dll
    bool markerlessGame = false; // a game executable without the HSP marker
};

Install MakeInstall(const InstallOptions& options = {});

// The players' package as the test fixture unpacked it into a fresh game folder (the build tree's
// package-e2e\Morva), completed as the guide tells a player: the game's own folders, the game,
// and the stand-ins for the module, the settings editor and the audio library beside the companion.
Install CompleteUnpackedPackage();

// Runs a console program with `folder` as its current folder and no arguments; what it printed
// (standard output and error together). `exitCode` receives its exit code.
std::string RunInFolder(const std::wstring& exe, const std::wstring& folder, DWORD* exitCode,
                        const std::wstring& arguments = {});

// A started VrlBoot.exe; ended (with the game it started) when this goes out of scope.
class Companion {
public:
    explicit Companion(const Install& install);
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    // Exit code, or STILL_ACTIVE when it has not ended within `ms`.
    DWORD WaitExit(DWORD ms) const;
    DWORD ProcessId() const { return process_.dwProcessId; }

private:
    PROCESS_INFORMATION process_{};
};

// Polls until a top-level window of that class (and title, when given) exists; null after `ms`.
HWND WaitForWindow(const wchar_t* className, const wchar_t* title, DWORD ms);
// The frame of the running companion.
HWND WaitForFrame(DWORD ms = 30000);
// The demo game's main window.
HWND WaitForGameWindow(DWORD ms = 30000);
// Waits until the companion's game watch (a 100 ms timer) has had time to take `game` as the game
// window: it must be visible for a few ticks. A game that goes before that counts as never found.
void LetTheCompanionSeeTheGame(HWND game);

struct MessageBoxSeen {
    HWND window = nullptr;
    std::wstring caption;
    std::wstring text;
};
// A message box (dialog class "#32770") of the given process, found by polling.
MessageBoxSeen WaitForMessageBox(DWORD processId, DWORD ms);
// A visible top-level window of the process (of that class, when given), or null.
HWND VisibleWindowOf(DWORD processId, const wchar_t* className = nullptr);
// Whether the notification area holds the companion's icon (on `frame`, which may be gone).
bool TrayIconShown(HWND frame);
// Presses a message box button (IDOK, IDYES, IDNO...).
void Press(HWND box, int buttonId);
// Ctrl+Alt+`key` as real key presses, to whatever window has the keyboard.
void PressCtrlAlt(WORD key);

// Waits until `predicate` holds or `ms` passes.
template <typename Predicate>
bool WaitUntil(Predicate predicate, DWORD ms) {
    const ULONGLONG end = ::GetTickCount64() + ms;
    for (;;) {
        if (predicate()) return true;
        if (::GetTickCount64() >= end) return false;
        ::Sleep(20);
    }
}

// What a player reads in the companion's controls, read from this (another) process.
std::string WindowText(HWND window);
// Each row of a list view, columns 0 to `columns` - 1 (through memory in the list's process).
std::vector<std::vector<std::string>> ListViewRows(HWND list, int columns);
// A cell's rectangle on the screen (LVIR_BOUNDS, or LVIR_ICON for the picture of column 0).
RECT ListViewCellRect(HWND list, int row, int column, LONG part);
// The entries of a combo box's drop-down list, in list order.
std::vector<std::string> ComboBoxEntries(HWND combo);
// The colour of a pixel of the screen, as 0x00BBGGRR.
COLORREF ScreenPixel(int x, int y);
// The pixels of a rectangle of the screen, row by row from the top, each as 0x00RRGGBB.
std::vector<DWORD> ScreenPixels(const RECT& area);

// A size the companion is given in pixels at 96 DPI, on this session's screen.
int AtScreenDpi(int pixels);

// Ends every demo game process still around (tests must not leave processes behind).
void EndDemoGames();


// What most tests start with: an install of its own and the companion on it, with its frame.
struct Session {
    Install install = MakeInstall();
    std::unique_ptr<Companion> companion;
    HWND frame = nullptr;
    HWND game = nullptr;  // after StartWithGame

    // Writes Vrl.ini with `ini` and, when given, the module's scenario; ends an earlier run (with
    // its games) and starts the companion again, up to its frame.
    void Start(const std::string& ini, const std::string& scenario = {});
    // Start, then waits for the demo game's window until the companion has taken it as the game.
    void StartWithGame(const std::string& ini, const std::string& scenario = {});
    // The window the frame publishes in that slot.
    HWND Slot(int slot) const;
    // Opens the tray icon's menu as a right click does; the menu's window, or null.
    HWND OpenTrayMenu() const;
};

// A pop-up menu (class "#32768") of the process, found by polling; null after `ms`.
HWND WaitForMenu(DWORD processId, DWORD ms);

using vrltest::HoldForScreenshot;
using vrltest::SendCopyData;

}  // namespace e2e
