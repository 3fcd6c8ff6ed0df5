// The running companion: the exit-together dialogue, a game that leaves a window behind, the
// frame's commands and the module's requests.

#include <gtest/gtest.h>

#include "e2e_support.h"


namespace {

using e2e::Companion;
using e2e::Install;

struct Running {
    Install install = e2e::MakeInstall();
    HWND frame = nullptr;
    HWND game = nullptr;
};

// Starts the companion on the demo game and waits until both windows are there.
void StartGame(Running& run, std::unique_ptr<Companion>& companion, const std::string& scenario = {},
               const std::string& ini = {}) {
    run.install.WriteIni(ini);
    if (!scenario.empty()) run.install.WriteScenario(scenario);
    companion = std::make_unique<Companion>(run.install);
    run.frame = e2e::WaitForFrame();
    run.game = e2e::WaitForGameWindow();
    ASSERT_TRUE(run.frame);
    ASSERT_TRUE(run.game);
    e2e::LetTheCompanionSeeTheGame(run.game);
}

bool IsProcessAlive(HWND window) {
    DWORD pid = 0;
    ::GetWindowThreadProcessId(window, &pid);
    return pid != 0;
}

// In Japanese on an English system: the tray's Exit asks, No keeps both running, Yes closes the game
// and then the companion, which takes its icon with it.
TEST(ExitTogether, TheTraysExitAsksInTheChosenLanguageAndTakesTheTrayIconAlong) {
    ASSERT_NE(::GetUserDefaultLCID(), 0x0411u) << "the test needs an English system";
    Running run;
    std::unique_ptr<Companion> companion;
    StartGame(run, companion, {}, "iLanguage=1\r\n");
    EXPECT_TRUE(e2e::TrayIconShown(run.frame));

    for (int answer : {IDNO, IDYES}) {
        ::PostMessageW(run.frame, WM_COMMAND, 32776, 0);
        const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(companion->ProcessId(), 5000);
        ASSERT_TRUE(box.window);
        EXPECT_EQ(box.caption, L"Vorrel");
        EXPECT_EQ(box.text, L"Morvaはまだ動作中です。一緒に終了しますか？\r\n（※セーブはしません。）");
        e2e::Press(box.window, answer);
        if (answer == IDNO) {
            ::Sleep(500);
            EXPECT_EQ(companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
            EXPECT_TRUE(::IsWindow(run.game));
        }
    }
    EXPECT_EQ(companion->WaitExit(5000), 1u);
    EXPECT_FALSE(::IsWindow(run.game));
    EXPECT_FALSE(e2e::TrayIconShown(run.frame));
}

TEST(GameWatch, AGameThatKeepsAFurtherWindowIsEndedWithTheCompanion) {
    Running run;
    std::unique_ptr<Companion> companion;
    // The further window comes a second later, as in play: the game watch takes the first visible
    // window of the game's thread, which must be the main one.
    StartGame(run, companion, "wait 1000\nopen36\n");
    ASSERT_TRUE(e2e::WaitUntil([&] { return ::GetWindowLongW(run.frame, 36) != 0; }, 5000));
    HWND further = reinterpret_cast<HWND>(static_cast<LONG_PTR>(::GetWindowLongW(run.frame, 36)));
    ASSERT_TRUE(::IsWindow(further));
    DWORD gamePid = 0;
    ::GetWindowThreadProcessId(run.game, &gamePid);
    HANDLE gameProcess = ::OpenProcess(SYNCHRONIZE, FALSE, gamePid);
    ASSERT_TRUE(gameProcess);

    ::PostMessageW(run.game, WM_APP + 0x37, 0, 0);  // the demo game drops its main window only
    EXPECT_EQ(companion->WaitExit(5000), 1u);
    EXPECT_EQ(::WaitForSingleObject(gameProcess, 5000), WAIT_OBJECT_0) << "the lingering game was terminated";
    ::CloseHandle(gameProcess);
    EXPECT_FALSE(IsProcessAlive(further));
}

TEST(GameWatch, AFurtherWindowOfAnotherProcessNeverEndsTheGame) {
    Running run;
    std::unique_ptr<Companion> companion;
    StartGame(run, companion, "wait 1000\nopen36\n");
    ASSERT_TRUE(e2e::WaitUntil([&] { return ::GetWindowLongW(run.frame, 36) != 0; }, 5000));
    HWND stranger = ::CreateWindowExW(0, L"Static", L"stranger", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                      nullptr, nullptr);
    ::SetWindowLongW(run.frame, 36, static_cast<LONG>(reinterpret_cast<LONG_PTR>(stranger)));
    DWORD gamePid = 0;
    ::GetWindowThreadProcessId(run.game, &gamePid);
    HANDLE gameProcess = ::OpenProcess(SYNCHRONIZE, FALSE, gamePid);
    ASSERT_TRUE(gameProcess);

    ::PostMessageW(run.game, WM_APP + 0x37, 0, 0);
    EXPECT_EQ(companion->WaitExit(5000), 1u);
    EXPECT_EQ(::WaitForSingleObject(gameProcess, 500), static_cast<DWORD>(WAIT_TIMEOUT));
    ::CloseHandle(gameProcess);
    ::DestroyWindow(stranger);
}

TEST(FrameCommands, SettingsEditorCommandAndForeignIdsAndRequests) {
    Running run;
    std::unique_ptr<Companion> companion;
    StartGame(run, companion);

    ::SendMessageW(run.frame, WM_COMMAND, 34107, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return run.install.ProgramFileExists(L"VrlConfig.started"); }, 5000));

    for (WPARAM id : {WPARAM{1}, WPARAM{12345}, WPARAM{34999}, WPARAM{40000}, WPARAM{65535}}) {
        ::SendMessageW(run.frame, WM_COMMAND, id, 0);
    }
    ::SendMessageW(run.frame, WM_HOTKEY, 4242, 0);
    EXPECT_EQ(companion->WaitExit(300), static_cast<DWORD>(STILL_ACTIVE));

    EXPECT_EQ(::SendMessageW(run.frame, 0x9000, 2, 0), 0);
    EXPECT_EQ(::SendMessageW(run.frame, 0x9001, 0, 0), 0);
    EXPECT_EQ(::SendMessageW(run.frame, 0xA000, 0, 0), 0);
    EXPECT_EQ(::SendMessageW(run.frame, WM_COMMAND, 34099, 0), 0);
    EXPECT_EQ(companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
}

TEST(GameLink, TheModuleReadsAndWritesTheFrameSlots) {
    Running run;
    std::unique_ptr<Companion> companion;
    StartGame(run, companion,
              "screen 5\nstatic1 hero_save\nrequest 9000 0\nrequest 9000 2\nreadslot 32\nwait 100\n");
    ASSERT_TRUE(e2e::WaitUntil([&] { return ::GetWindowLongW(run.frame, 4) == 5; }, 5000));
    HWND static1 = reinterpret_cast<HWND>(static_cast<LONG_PTR>(::GetWindowLongW(run.frame, 12)));
    wchar_t text[260] = {};
    EXPECT_TRUE(e2e::WaitUntil(
        [&] { return ::GetWindowTextW(static1, text, 260) > 0 && std::wstring(text) == L"hero_save"; }, 5000));
    EXPECT_TRUE(e2e::WaitUntil(
        [&] { return run.install.ReadTranscript().find("request 9000 2 -> 0") != std::string::npos; }, 5000))
        << run.install.ReadTranscript();
}

}  // namespace
