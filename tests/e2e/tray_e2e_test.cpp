// The tray icon's menu on the running companion: which notifications open it, picking an item
// with the keyboard, and the About box it leads to.

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

int CountAboutBoxes() {
    int count = 0;
    for (HWND w = ::FindWindowExW(nullptr, nullptr, L"#32770", L"About Vorrel"); w;
         w = ::FindWindowExW(nullptr, w, L"#32770", L"About Vorrel"))
        ++count;
    return count;
}

// Opens the tray menu with a right button press and picks &About with the keyboard.
void PickAboutFromTheTray(const Running& run, bool screenshot) {
    ::PostMessageW(run.frame, kTrayCallback, kTrayIconId, WM_RBUTTONDOWN);
    HWND menu = WaitForMenu(run, 5000);
    ASSERT_TRUE(menu) << "the tray menu opened";
    ::Sleep(100);
    if (screenshot) e2e::HoldForScreenshot("tray_menu");
    ::PostMessageW(menu, WM_CHAR, L'a', 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(menu); }, 3000)) << "the menu closed";
}

TEST(TrayMenu, TheAboutItemOpensTheAboutBoxAndASecondRequestRaisesIt) {
    Running run;
    Start(run);
    PickAboutFromTheTray(run, true);
    HWND box = e2e::WaitForWindow(L"#32770", L"About Vorrel", 5000);
    ASSERT_TRUE(box);
    EXPECT_TRUE(e2e::WaitUntil([&] { return ::IsWindowVisible(box) != FALSE; }, 3000));
    EXPECT_EQ(ItemText(box, 1000), L"Vorrel [Dec 30, 2023]");
    EXPECT_EQ(ItemText(box, IDOK), L"OK");
    EXPECT_EQ(ItemText(box, 1002).rfind(L"- ", 0), 0u);
    ::Sleep(200);
    e2e::HoldForScreenshot("about_box");

    // The tray keeps working while the box is open, and its About item raises the open box.
    PickAboutFromTheTray(run, false);
    ::Sleep(300);
    EXPECT_EQ(CountAboutBoxes(), 1);
    EXPECT_TRUE(::IsWindowVisible(box));

    e2e::Press(box, IDOK);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(box); }, 3000)) << "OK closes the box";
    EXPECT_EQ(run.companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
}

TEST(TrayMenu, ButtonUpDoubleClickAndOtherIconsOpenNothing) {
    Running run;
    Start(run);
    const std::pair<WPARAM, LPARAM> ignored[] = {
        {kTrayIconId, WM_LBUTTONUP},     {kTrayIconId, WM_RBUTTONUP}, {kTrayIconId, WM_LBUTTONDBLCLK},
        {kTrayIconId, WM_RBUTTONDBLCLK}, {kTrayIconId, WM_MOUSEMOVE}, {kTrayIconId + 1, WM_RBUTTONDOWN},
        {0, WM_LBUTTONDOWN},
    };
    for (const auto& [id, mouse] : ignored) {
        // A menu would hold the handler in its own loop, so a send that times out fails too.
        DWORD_PTR result = 1;
        EXPECT_TRUE(::SendMessageTimeoutW(run.frame, kTrayCallback, id, mouse, SMTO_NORMAL, 2000, &result))
            << id << " " << mouse;
        EXPECT_EQ(result, 0u);
        HWND menu = e2e::VisibleWindowOf(run.companion->ProcessId(), L"#32768");
        EXPECT_FALSE(menu) << "menu opened for " << id << " " << mouse;
        if (menu) ::PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0);
    }

    // The left button opens it too; Escape closes it without a command.
    ::PostMessageW(run.frame, kTrayCallback, kTrayIconId, WM_LBUTTONDOWN);
    HWND menu = WaitForMenu(run, 5000);
    ASSERT_TRUE(menu);
    ::PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(menu); }, 3000));
    ::Sleep(200);
    EXPECT_EQ(CountAboutBoxes(), 0);
    EXPECT_EQ(run.companion->WaitExit(0), static_cast<DWORD>(STILL_ACTIVE));
}

}  // namespace
