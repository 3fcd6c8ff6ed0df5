// The running companion on the demo game: its frame and what the module reads and writes there,
// the frame's commands, the tray menu, the exit-together dialogue and the game watch.

#include <gtest/gtest.h>

#include "e2e_support.h"

namespace {

using e2e::Session;

constexpr int kSlotGameWindow = 0, kSlotScreen = 4, kSlotStatus1 = 12, kSlotStatus2 = 32, kSlotFurtherWindow = 36;

// Opens the tray menu with a right button press and picks &About with the keyboard.
void PickAboutFromTheTray(const Session& run) {
    HWND menu = run.OpenTrayMenu();
    ASSERT_TRUE(menu) << "the tray menu opened";
    ::Sleep(100);
    e2e::HoldForScreenshot("tray_menu");
    ::PostMessageW(menu, WM_CHAR, L'a', 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(menu); }, 3000)) << "the menu closed";
}

TEST(RunningCompanion, FrameSlotsCommandsTrayAboutAndTheGamesEnd) {
    Session run;
    ASSERT_NO_FATAL_FAILURE(run.StartWithGame("iLanguage=0\r\nenScreenshot=1\r\n",
                          "screen 5\nstatic1 hero_save\nrequest 9000 0\nrequest 9000 2\nreadslot 32\nwait 100\n"));
    HWND game = run.game;

    // The frame: 40 extra bytes, never visible, the two status statics in their slots.
    EXPECT_EQ(::GetClassLongW(run.frame, GCL_CBWNDEXTRA), 40u);
    EXPECT_FALSE(::IsWindowVisible(run.frame));
    for (int slot : {kSlotStatus1, kSlotStatus2}) {
        HWND status = run.Slot(slot);
        ASSERT_TRUE(::IsWindow(status)) << "slot " << slot;
        EXPECT_EQ(::GetParent(status), run.frame);
        wchar_t cls[16] = {};
        ::GetClassNameW(status, cls, 16);
        EXPECT_STREQ(cls, L"Static");
    }
    // The module, loaded before the game's own code, published the game window and wrote the slots.
    EXPECT_TRUE(e2e::WaitUntil([&] { return run.Slot(kSlotGameWindow) == game; }, 10000));
    EXPECT_TRUE(e2e::WaitUntil([&] { return ::GetWindowLongW(run.frame, kSlotScreen) == 5; }, 5000));
    EXPECT_TRUE(e2e::WaitUntil([&] { return e2e::WindowText(run.Slot(kSlotStatus1)) == "hero_save"; }, 5000));
    const std::string transcript = run.install.WaitForScenarioEnd();
    EXPECT_NE(transcript.find("game: constructor VrlDLL.dll loaded"), std::string::npos) << transcript;
    EXPECT_NE(transcript.find("request 9000 2 -> 0"), std::string::npos) << transcript;

    const bool screenshotKeyFree = ::RegisterHotKey(nullptr, 1, MOD_CONTROL | MOD_ALT, VK_SNAPSHOT);
    if (screenshotKeyFree) ::UnregisterHotKey(nullptr, 1);
    EXPECT_FALSE(screenshotKeyFree) << "with enScreenshot the companion holds Ctrl+Alt+Print Screen";

    // The settings editor command; ids, hotkeys and requests that are not the frame's change nothing.
    ::SendMessageW(run.frame, WM_COMMAND, 34107, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return run.install.ProgramFileExists(L"VrlConfig.started"); }, 5000));
    for (WPARAM id : {WPARAM{1}, WPARAM{12345}, WPARAM{34999}, WPARAM{40000}, WPARAM{65535}}) {
        ::SendMessageW(run.frame, WM_COMMAND, id, 0);
    }
    ::SendMessageW(run.frame, WM_HOTKEY, 4242, 0);
    EXPECT_EQ(::SendMessageW(run.frame, 0x9000, 2, 0), 0);
    EXPECT_EQ(::SendMessageW(run.frame, 0x9001, 0, 0), 0);
    EXPECT_EQ(::SendMessageW(run.frame, 0xA000, 0, 0), 0);
    EXPECT_EQ(::SendMessageW(run.frame, WM_COMMAND, 34099, 0), 0);
    EXPECT_EQ(run.companion->WaitExit(300), static_cast<DWORD>(STILL_ACTIVE));

    // Which notifications open the menu, and a second About while one is open, are tested in-process.
    PickAboutFromTheTray(run);
    HWND box = e2e::WaitForWindow(L"#32770", L"About Vorrel", 5000);
    ASSERT_TRUE(box);
    EXPECT_TRUE(e2e::WaitUntil([&] { return ::IsWindowVisible(box) != FALSE; }, 3000));
    EXPECT_EQ(e2e::WindowText(::GetDlgItem(box, 1000)), "Vorrel [Dec 30, 2023]");
    ::Sleep(200);
    e2e::HoldForScreenshot("about_box");
    e2e::Press(box, IDOK);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(box); }, 3000)) << "OK closes the box";

    ::PostMessageW(game, WM_CLOSE, 0, 0);
    ASSERT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(game); }, 5000));
    const ULONGLONG closed = ::GetTickCount64();
    EXPECT_EQ(run.companion->WaitExit(5000), 1u) << run.install.ReadTranscript();
    EXPECT_LT(::GetTickCount64() - closed, 1000u) << "the companion follows the game within about half a second";
    EXPECT_FALSE(::FindWindowW(L"VorrelUI", L"Vorrel"));
}

// In Japanese on an English system: the tray's Exit asks, No keeps both running, Yes closes the game
// and then the companion, which takes its icon with it.
TEST(ExitTogether, TheTraysExitAsksInTheChosenLanguageAndTakesTheTrayIconAlong) {
    ASSERT_NE(::GetUserDefaultLCID(), 0x0411u) << "the test needs an English system";
    Session run;
    ASSERT_NO_FATAL_FAILURE(run.StartWithGame("iLanguage=1\r\n"));
    HWND game = run.game;
    EXPECT_TRUE(e2e::TrayIconShown(run.frame));

    for (int answer : {IDNO, IDYES}) {
        ::PostMessageW(run.frame, WM_COMMAND, 32776, 0);
        const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(run.companion->ProcessId(), 5000);
        ASSERT_TRUE(box.window);
        EXPECT_EQ(box.caption, L"Vorrel");
        EXPECT_EQ(box.text, L"Morvaはまだ動作中です。一緒に終了しますか？\r\n（※セーブはしません。）");
        e2e::Press(box.window, answer);
        if (answer == IDNO) {
            ::Sleep(500);
            EXPECT_EQ(run.companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
            EXPECT_TRUE(::IsWindow(game));
        }
    }
    EXPECT_EQ(run.companion->WaitExit(5000), 1u);
    EXPECT_FALSE(::IsWindow(game));
    EXPECT_FALSE(e2e::TrayIconShown(run.frame));
}

// The game drops its main window and keeps a further one open: the companion ends with it and
// terminates the lingering game, but never a process whose window merely sits in the slot.
TEST(GameWatch, TheLingeringGameIsEndedAndOnlyTheGame) {
    for (const bool strangerInTheSlot : {false, true}) {
        SCOPED_TRACE(strangerInTheSlot ? "a window of another process in the slot" : "the game's further window");
        Session run;
        // The further window comes a second later, as in play: the game watch takes the first
        // visible window of the game's thread, which must be the main one.
        ASSERT_NO_FATAL_FAILURE(run.StartWithGame({}, "wait 1000\nopen36\n"));
        HWND game = run.game;
        ASSERT_TRUE(e2e::WaitUntil([&] { return run.Slot(kSlotFurtherWindow) != nullptr; }, 5000));
        HWND stranger = nullptr;
        if (strangerInTheSlot) {
            stranger = ::CreateWindowExW(0, L"Static", L"stranger", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                         nullptr, nullptr);
            ::SetWindowLongW(run.frame, kSlotFurtherWindow, static_cast<LONG>(reinterpret_cast<LONG_PTR>(stranger)));
        }
        DWORD gamePid = 0;
        ::GetWindowThreadProcessId(game, &gamePid);
        HANDLE gameProcess = ::OpenProcess(SYNCHRONIZE, FALSE, gamePid);
        ASSERT_TRUE(gameProcess);

        ::PostMessageW(game, WM_APP + 0x37, 0, 0);  // the demo game drops its main window only
        EXPECT_EQ(run.companion->WaitExit(5000), 1u);
        if (strangerInTheSlot) {
            EXPECT_EQ(::WaitForSingleObject(gameProcess, 500), static_cast<DWORD>(WAIT_TIMEOUT));
            ::DestroyWindow(stranger);
        } else {
            EXPECT_EQ(::WaitForSingleObject(gameProcess, 5000), WAIT_OBJECT_0) << "the lingering game was terminated";
        }
        ::CloseHandle(gameProcess);
    }
}

}  // namespace
