// The tray icon's menu on the running companion: picking an item with the keyboard, and the About
// box it leads to.

#include <gtest/gtest.h>

#include <memory>

#include "e2e_support.h"

namespace {

using e2e::Companion;
using e2e::Install;

constexpr UINT kTrayCallback = WM_APP + 1;
constexpr WPARAM kTrayIconId = 1234;

struct Running {
    Install install = e2e::MakeInstall();
    std::unique_ptr<Companion> companion;
    HWND frame = nullptr;
};

void Start(Running& run) {
    run.install.WriteIni("iLanguage=0\r\nenScreenshot=1\r\n");
    run.companion = std::make_unique<Companion>(run.install);
    run.frame = e2e::WaitForFrame();
    ASSERT_TRUE(run.frame);
    ASSERT_TRUE(e2e::WaitForGameWindow());
}

HWND WaitForMenu(const Running& run, DWORD ms) {
    HWND menu = nullptr;
    e2e::WaitUntil([&] { return (menu = e2e::VisibleWindowOf(run.companion->ProcessId(), L"#32768")) != nullptr; },
                   ms);
    return menu;
}

std::wstring ItemText(HWND box, int id) {
    wchar_t text[512] = {};
    ::SendMessageW(::GetDlgItem(box, id), WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
    return text;
}

// Opens the tray menu with a right button press and picks &About with the keyboard.
void PickAboutFromTheTray(const Running& run) {
    ::PostMessageW(run.frame, kTrayCallback, kTrayIconId, WM_RBUTTONDOWN);
    HWND menu = WaitForMenu(run, 5000);
    ASSERT_TRUE(menu) << "the tray menu opened";
    ::Sleep(100);
    e2e::HoldForScreenshot("tray_menu");
    ::PostMessageW(menu, WM_CHAR, L'a', 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(menu); }, 3000)) << "the menu closed";
}

// Which notifications open the menu, and a second About while one is open, are tested in-process.
TEST(TrayMenu, TheAboutItemOpensTheAboutBox) {
    Running run;
    Start(run);
    const bool screenshotKeyFree = ::RegisterHotKey(nullptr, 1, MOD_CONTROL | MOD_ALT, VK_SNAPSHOT);
    if (screenshotKeyFree) ::UnregisterHotKey(nullptr, 1);
    EXPECT_FALSE(screenshotKeyFree) << "with enScreenshot the companion holds Ctrl+Alt+Print Screen";

    PickAboutFromTheTray(run);
    HWND box = e2e::WaitForWindow(L"#32770", L"About Vorrel", 5000);
    ASSERT_TRUE(box);
    EXPECT_TRUE(e2e::WaitUntil([&] { return ::IsWindowVisible(box) != FALSE; }, 3000));
    EXPECT_EQ(ItemText(box, 1000), L"Vorrel [Dec 30, 2023]");
    ::Sleep(200);
    e2e::HoldForScreenshot("about_box");
    e2e::Press(box, IDOK);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(box); }, 3000)) << "OK closes the box";
    EXPECT_EQ(run.companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
}

}  // namespace
