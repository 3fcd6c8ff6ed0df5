// Window placement through the running companion: save, disarrange and restore every window with
// the log windows' docking and tab page, reset to the default layout, and the files a player may
// have edited by hand.

#include <gtest/gtest.h>

#include <string>

#include "app/command_ids.h"
#include "app/game_link.h"
#include "e2e_support.h"
// The tab control's messages; after windows.h, which it builds on.
#include <commctrl.h>

namespace {

constexpr WPARAM kDockUndock = 1001;  // the full-log window's system menu
constexpr int kTabId = 1003;

struct PlacementSession : e2e::Session {
    HWND fullLog = nullptr;
    HWND extractedLog = nullptr;
    HWND music = nullptr;
    HWND quickSearch = nullptr;
    HWND pet = nullptr;
    HWND item = nullptr;

    void Start(const std::string& ini) {
        ASSERT_NO_FATAL_FAILURE(StartWithGame(ini));
        extractedLog = e2e::WaitForWindow(L"#32770", L"Extracted Log - Vorrel", 20000);
        fullLog = e2e::WaitForWindow(L"#32770", L"Full Log - Vorrel", 5000);
        music = ::FindWindowW(L"#32770", L"Music Control Panel");
        quickSearch = ::FindWindowW(L"#32770", L"Quick Search - Vorrel");
        pet = ::FindWindowW(L"#32770", L"Pet Information - Vorrel");
        item = ::FindWindowW(L"#32770", L"Item Information - Vorrel");
        ASSERT_TRUE(extractedLog && fullLog);
    }

    void Command(WPARAM id) const { ::SendMessageW(frame, WM_COMMAND, id, 0); }
    std::string File() const { return vrltest::ReadFileBytes(install.ProgramFile(L"WindowPlacement.kcsv")); }
    int TabPage() const { return static_cast<int>(::SendMessageW(::GetDlgItem(fullLog, kTabId), TCM_GETCURSEL, 0, 0)); }
};

RECT RectOf(HWND window) {
    RECT r{};
    ::GetWindowRect(window, &r);
    return r;
}

std::string Text(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

void Put(HWND window, int x, int y, int width, int height, bool visible) {
    ::SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    ::ShowWindow(window, visible ? SW_SHOWNOACTIVATE : SW_HIDE);
}

RECT WorkArea() {
    RECT r{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &r, 0);
    return r;
}

const char kEverything[] =
    "enLogExtender=1\r\nenLogExtender_FullLog=1\r\nenMusicExtender=1\r\nenQuickSearch=1\r\nenPetInfo=1\r\n"
    "enItemInfo=1\r\n";

TEST(WindowPlacement, RestoreBringsBackWhatSaveKeptAndResetLaysOutTheDefaults) {
    PlacementSession s;
    s.Start(kEverything);
    ASSERT_TRUE(s.music && s.quickSearch && s.pet && s.item);
    HWND const windows[] = {s.game, s.fullLog, s.extractedLog, s.music, s.quickSearch, s.pet, s.item};
    constexpr int kCount = 7;
    constexpr int kQuickSearch = 4;

    ::SetWindowPos(s.game, nullptr, 30, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Put(s.fullLog, 600, 40, 500, 300, true);
    Put(s.music, 400, 420, 350, 260, false);
    Put(s.quickSearch, 100, 700, 400, 40, false);
    Put(s.pet, 700, 500, 300, 250, true);
    Put(s.item, 50, 650, 280, 200, false);
    Put(s.extractedLog, 620, 360, 420, 220, true);
    ::SendMessageW(s.fullLog, WM_SYSCOMMAND, kDockUndock, 0);
    s.Command(vrl::kCmdShowExtractedLog);  // docked: the extracted page in front
    ASSERT_EQ(e2e::WindowText(s.fullLog), "Log - Vorrel");
    ASSERT_EQ(s.TabPage(), 1);
    RECT saved[kCount];
    bool shown[kCount];
    for (int i = 0; i < kCount; ++i) {
        saved[i] = RectOf(windows[i]);
        shown[i] = ::IsWindowVisible(windows[i]) != FALSE;
    }
    EXPECT_FALSE(shown[2]) << "docked, the extracted-log window hides";
    s.Command(vrl::kCmdPlacementSave);
    const std::string file = s.File();
    std::string rows;  // in the file's order, each window's rectangle and visibility
    const char* const ids[] = {"Morva", "LogEx", "LogEx_Child", "MusicControl", "QuickSearch", "PetInfo", "ItemInfo"};
    for (int i = 0; i < kCount; ++i) {
        rows += std::string(ids[i]) + "," + Text(saved[i]) + "," + (shown[i] ? "1" : "0") + "\r\n";
    }
    EXPECT_EQ(file, "#format,kcsv\r\n#option,LogEx_Docked:1\r\n#option,LogEx_TabPage:1\r\n"
                    "#column,WindowID,rcNormalPosition.left,rcNormalPosition.top,rcNormalPosition.right,"
                    "rcNormalPosition.bottom,showCmd\r\n" + rows);

    // Everything elsewhere, the hidden shown and the shown hidden, undocked on the other page.
    ::SendMessageW(s.fullLog, WM_SYSCOMMAND, kDockUndock, 0);
    ::SendMessageW(::GetDlgItem(s.fullLog, kTabId), TCM_SETCURSEL, 0, 0);
    for (int i = 0; i < kCount; ++i) Put(windows[i], 5 + 10 * i, 15 + 10 * i, 200, 150, i == 0 || !shown[i]);
    s.Command(vrl::game_link::kCmdRestorePlacement);  // not asked for in the settings
    EXPECT_EQ(Text(RectOf(s.pet)), "55,65,255,215");

    s.Command(vrl::kCmdPlacementRestore);
    EXPECT_EQ(e2e::WindowText(s.fullLog), "Log - Vorrel");
    EXPECT_EQ(s.TabPage(), 1);
    for (int i = 0; i < kCount; ++i) {
        // The game and the quick search bar only move.
        const bool moved = i == 0 || i == kQuickSearch;
        const RECT want = moved ? RECT{saved[i].left, saved[i].top, saved[i].left + 200, saved[i].top + 150} : saved[i];
        EXPECT_EQ(Text(RectOf(windows[i])), Text(want)) << "window " << i;
        if (i != 2) {
            EXPECT_EQ(::IsWindowVisible(windows[i]) != FALSE, shown[i]) << "window " << i;
        }
    }
    EXPECT_EQ(s.File(), file) << "only a save writes the file";

    s.Command(vrl::kCmdPlacementReset);
    const RECT area = WorkArea();
    EXPECT_EQ(Text(RectOf(s.game)), "0,0,200,150");
    // Pixels at 96 DPI, on the screen's resolution.
    const auto px = e2e::AtScreenDpi;
    EXPECT_EQ(Text(RectOf(s.fullLog)), Text({0, area.bottom - px(360), px(640), area.bottom}));
    EXPECT_EQ(Text(RectOf(s.extractedLog)), Text({px(640), area.bottom - px(360), 2 * px(640), area.bottom}));
    EXPECT_EQ(Text(RectOf(s.quickSearch)),
              Text({0, area.bottom - px(390), px(541), area.bottom - px(390) + px(30)}));
    // The panels hang from the work area's right edge, the item panel left of the pet panel, the
    // music panel in its bottom-right corner.
    const RECT music = RectOf(s.music);
    EXPECT_EQ(music.right, area.right - area.left);
    EXPECT_EQ(music.bottom, area.bottom - area.top);
    EXPECT_GT(music.right - music.left, 0);
    const RECT pet = RectOf(s.pet);
    const RECT item = RectOf(s.item);
    EXPECT_EQ(pet.top, 0);
    EXPECT_EQ(pet.right, area.right - area.left);
    EXPECT_EQ(item.top, 0);
    EXPECT_EQ(item.right, pet.left);
    EXPECT_GT(item.right - item.left, 0);
}

TEST(WindowPlacement, HandEditedFilesNeitherCrashNorGetRewritten) {
    PlacementSession s;
    s.Start("enLogExtender=1\r\nenLogExtender_FullLog=0\r\nenRestoreWindowPlacement=1\r\n");
    const RECT game = RectOf(s.game);
    ::ShowWindow(s.extractedLog, SW_HIDE);
    const std::string file =
        "#format,kcsv\r\n#option,LogEx_Docked:1,LogEx_TabPage:7\r\n"
        "#column,WindowID,rcNormalPosition.left,rcNormalPosition.top,rcNormalPosition.right,"
        "rcNormalPosition.bottom,showCmd\r\n"
        "morva,500,400,900,700,1\r\n"
        "LogEx,100,100,500,400,1\r\n"
        "Nobody,1,2,3,4,1\r\n"
        "LogEx_Child,-90000,x,,99999999999,\r\n"
        "LogEx\r\n";
    s.install.WriteProgramFile(L"WindowPlacement.kcsv", file);
    s.Command(vrl::game_link::kCmdRestorePlacement);
    EXPECT_EQ(Text(RectOf(s.game)), Text(game)) << "ids are case-sensitive";
    EXPECT_FALSE(::IsWindowVisible(s.fullLog)) << "the full log stays off";
    EXPECT_TRUE(::IsWindowVisible(s.extractedLog)) << "the extracted log stands in for it";
    EXPECT_EQ(e2e::WindowText(s.fullLog), "Full Log - Vorrel") << "no docking without the full log";
    EXPECT_EQ(s.File(), file);

    const std::string idsOnly = "#format,kcsv\r\n#column,WindowID\r\nLogEx_Child\r\nMorva\r\n";
    s.install.WriteProgramFile(L"WindowPlacement.kcsv", idsOnly);
    s.Command(vrl::kCmdPlacementRestore);
    s.install.WriteProgramFile(L"WindowPlacement.kcsv", "\xEF\xBB\xBFnot a table at all\r\n");
    s.Command(vrl::kCmdPlacementRestore);
    ::DeleteFileW(s.install.ProgramFile(L"WindowPlacement.kcsv").c_str());
    s.Command(vrl::kCmdPlacementRestore);
    EXPECT_TRUE(::IsWindow(s.frame));
    EXPECT_EQ(s.companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
    EXPECT_FALSE(s.install.ProgramFileExists(L"WindowPlacement.kcsv"));
}

}  // namespace
