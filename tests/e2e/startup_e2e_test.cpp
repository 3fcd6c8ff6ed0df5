// Starting VrlBoot.exe as a player does, without a game it can start: no settings, no game in
// them, a game executable it refuses. The start on a good game is tested with the running companion.

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

// Without settings, or with no game in them, the companion shows nothing and hands over to the
// settings editor.
TEST(Startup, WithoutAGameToStartTheSettingsEditorStartsInstead) {
    for (const char* ini : {"", "[Vorrel_v5]\r\nwstrMorva=\r\nenLogExtender=1\r\n"}) {
        SCOPED_TRACE(*ini ? "no game configured" : "no Vrl.ini");
        const Install install = e2e::MakeInstall();
        if (*ini) install.WriteProgramFile(L"Vrl.ini", ini);
        Companion companion(install);
        EXPECT_FALSE(WindowShownWhileRunning(companion, 30000));
        EXPECT_EQ(companion.WaitExit(0), 0u);
        EXPECT_TRUE(e2e::WaitUntil([&] { return install.ProgramFileExists(L"VrlConfig.started"); }, 5000));
    }
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

}  // namespace
