// Starting VrlBoot.exe as a player does: without settings, with a broken game, with a good game.

#include <gtest/gtest.h>

#include "e2e_support.h"

namespace {

using e2e::Companion;
using e2e::Install;

// Whether the companion showed any window before it ended.
bool WindowShownWhileRunning(const Companion& companion, DWORD ms) {
    bool seen = false;
    e2e::WaitUntil(
        [&] {
            seen = seen || e2e::VisibleWindowOf(companion.ProcessId()) != nullptr;
            return companion.WaitExit(0) != STILL_ACTIVE;
        },
        ms);
    return seen;
}

TEST(Startup, WithoutSettingsTheSettingsEditorStartsInstead) {
    const Install install = e2e::MakeInstall();
    Companion companion(install);
    EXPECT_FALSE(WindowShownWhileRunning(companion, 30000));
    EXPECT_EQ(companion.WaitExit(0), 0u);
    EXPECT_TRUE(e2e::WaitUntil([&] { return install.ProgramFileExists(L"VrlConfig.started"); }, 5000));
}

TEST(Startup, WithNoGameConfiguredTheSettingsEditorStartsInstead) {
    const Install install = e2e::MakeInstall();
    install.WriteProgramFile(L"Vrl.ini", "[Vorrel_v5]\r\nwstrMorva=\r\nenLogExtender=1\r\n");
    Companion companion(install);
    EXPECT_FALSE(WindowShownWhileRunning(companion, 30000));
    EXPECT_EQ(companion.WaitExit(0), 0u);
    EXPECT_TRUE(e2e::WaitUntil([&] { return install.ProgramFileExists(L"VrlConfig.started"); }, 5000));
}

// A game executable without the marker is never started, so no game window ever shows.
struct WithoutAGame {
    static Install MakeMarkerlessInstall() {
        e2e::InstallOptions options;
        options.markerlessGame = true;
        Install install = e2e::MakeInstall(options);
        install.WriteIni();
        return install;
    }
    Install install = MakeMarkerlessInstall();
    Companion companion{install};
};

TEST(Startup, AGameWithoutTheMarkerIsReportedAfterAboutThreeSeconds) {
    WithoutAGame run;
    ASSERT_TRUE(e2e::WaitForFrame());
    const ULONGLONG start = ::GetTickCount64();
    const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(run.companion.ProcessId(), 10000);
    ASSERT_TRUE(box.window);
    const ULONGLONG elapsed = ::GetTickCount64() - start;
    EXPECT_EQ(box.text, L"Cannot find Morva Window");
    EXPECT_EQ(box.caption, L"Vorrel Error");
    EXPECT_GE(elapsed, 2000u);
    EXPECT_EQ(::FindWindowW(L"hspwnd0", nullptr), nullptr) << "a game without the marker is never started";
    e2e::Press(box.window, IDOK);
    EXPECT_EQ(run.companion.WaitExit(5000), 0u);
}

// The frame base's Exit (57665) before any game window was found closes at once, without asking,
// and takes the tray icon along.
TEST(Startup, ExitWithoutAGameWindowEndsAtOnce) {
    WithoutAGame run;
    HWND frame = e2e::WaitForFrame();
    ASSERT_TRUE(frame);
    EXPECT_TRUE(e2e::TrayIconShown(frame));
    ::PostMessageW(frame, WM_COMMAND, 57665, 0);
    EXPECT_EQ(run.companion.WaitExit(2000), 1u);
    EXPECT_FALSE(e2e::TrayIconShown(frame));
}

TEST(Startup, AGoodGameStartsWithTheModuleLoadedFirstAndEndsTheCompanion) {
    const Install install = e2e::MakeInstall();
    install.WriteIni();
    Companion companion(install);
    HWND frame = e2e::WaitForFrame();
    ASSERT_TRUE(frame);
    HWND game = e2e::WaitForGameWindow();
    ASSERT_TRUE(game) << install.ReadTranscript() << e2e::Utf8(e2e::WaitForMessageBox(companion.ProcessId(), 0).text);

    // The frame: class, title, 40 extra bytes, never visible, the two status statics in their slots.
    EXPECT_EQ(::GetClassLongW(frame, GCL_CBWNDEXTRA), 40u);
    EXPECT_FALSE(::IsWindowVisible(frame));
    for (int slot : {12, 32}) {
        HWND status = reinterpret_cast<HWND>(static_cast<LONG_PTR>(::GetWindowLongW(frame, slot)));
        ASSERT_TRUE(::IsWindow(status)) << "slot " << slot;
        EXPECT_EQ(::GetParent(status), frame);
        wchar_t cls[16] = {};
        ::GetClassNameW(status, cls, 16);
        EXPECT_STREQ(cls, L"Static");
    }
    // The module saw the companion and published the game window.
    ASSERT_TRUE(e2e::WaitUntil([&] { return ::GetWindowLongW(frame, 0) != 0; }, 10000));
    EXPECT_EQ(reinterpret_cast<HWND>(static_cast<LONG_PTR>(::GetWindowLongW(frame, 0))), game);

    const std::string transcript = install.ReadTranscript();
    EXPECT_NE(transcript.find("game: constructor VrlDLL.dll loaded"), std::string::npos) << transcript;
    EXPECT_EQ(transcript.find("VrlDLL.dll absent"), std::string::npos) << transcript;

    e2e::LetTheCompanionSeeTheGame(game);
    ::PostMessageW(game, WM_CLOSE, 0, 0);
    ASSERT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(game); }, 5000));
    const ULONGLONG closed = ::GetTickCount64();
    EXPECT_EQ(companion.WaitExit(5000), 1u) << install.ReadTranscript();
    EXPECT_LT(::GetTickCount64() - closed, 1000u) << "the companion follows the game within about half a second";
    EXPECT_FALSE(::FindWindowW(L"VorrelUI", L"Vorrel"));
}

}  // namespace
