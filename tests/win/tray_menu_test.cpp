#include "app/about_box_win.h"
#include "app/app_state_win.h"
#include "app/tray_menu_win.h"
#include "app/version_text.h"
#include "ui/lang_text.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

using vrl::AppSettings;
using vrl::TrayPopupMenus;

std::wstring ItemText(HMENU menu, int position) {
    wchar_t text[128] = {};
    GetMenuStringW(menu, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
    return text;
}

bool IsSeparator(HMENU menu, int position) {
    return (GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_SEPARATOR) != 0;
}

// Lets a screenshot be taken of an open menu or box: VRL_MENU_HOLD_MS keeps it open that long.
void HoldForScreenshot() {
    if (const char* ms = std::getenv("VRL_MENU_HOLD_MS")) Sleep(static_cast<DWORD>(std::atoi(ms)));
}

HWND WaitForVisibleWindow(const wchar_t* className, const wchar_t* title) {
    for (int i = 0; i < 250; ++i) {
        HWND hwnd = FindWindowW(className, title);
        if (hwnd && IsWindowVisible(hwnd)) return hwnd;
        Sleep(20);
    }
    return nullptr;
}

// The entries' order and texts are the model's (tested natively); here: the model as real menus.
TEST(TrayPopup, TheModelBecomesMenusWithTheSubmenusLinkedOnlyWhenShown) {
    AppSettings s;
    s.enLogExtender = s.enLogExtender_FullLog = s.enItemInfo = s.enQuickSearch = 1;
    s.enMusicExtender = s.enPetInfo = s.enScreenshot = 1;
    const TrayPopupMenus menus(vrl::tray_menu::BuildTrayMenu(s, u"TRUE", 9, 1));
    HMENU main = menus.Main();
    ASSERT_EQ(GetMenuItemCount(main), 14);
    EXPECT_EQ(GetMenuItemID(main, 5), 34101u);
    EXPECT_EQ(ItemText(main, 5), L"VSTi内蔵エディタを表示 (&V)");
    EXPECT_EQ(GetSubMenu(main, 7), menus.Placement());
    EXPECT_EQ(GetSubMenu(main, 8), menus.Screenshot());
    EXPECT_TRUE(IsSeparator(main, 9));
    EXPECT_EQ(GetMenuItemID(main, 13), 32776u);
    ASSERT_EQ(GetMenuItemCount(menus.Screenshot()), 14);
    EXPECT_EQ(GetMenuItemID(menus.Screenshot(), 13), 33000u);
    EXPECT_EQ(ItemText(menus.Screenshot(), 13), L"自動判定 [宝の地図] (&D)");

    const TrayPopupMenus off(vrl::tray_menu::BuildTrayMenu(AppSettings{}, u"TRUE", 3, 0));
    ASSERT_EQ(GetMenuItemCount(off.Main()), 6);
    EXPECT_EQ(GetSubMenu(off.Main(), 0), off.Placement());
    EXPECT_EQ(GetSubMenu(off.Main(), 1), nullptr);
    EXPECT_EQ(GetMenuItemCount(off.Placement()), 4);
}

TEST(TrayPopup, EachOfTheThreeMenusIsDestroyedWhetherLinkedOrNot) {
    for (int screenshots : {0, 1}) {
        AppSettings s;
        s.enScreenshot = screenshots;
        HMENU main = nullptr, placement = nullptr, shots = nullptr;
        {
            const TrayPopupMenus menus(vrl::tray_menu::BuildTrayMenu(s, u"", 0, 0));
            main = menus.Main();
            placement = menus.Placement();
            shots = menus.Screenshot();
            ASSERT_TRUE(IsMenu(main) && IsMenu(placement) && IsMenu(shots));
        }
        EXPECT_FALSE(IsMenu(main)) << screenshots;
        EXPECT_FALSE(IsMenu(placement)) << screenshots;
        EXPECT_FALSE(IsMenu(shots)) << screenshots;
    }
}

TEST(TrayPopup, ACursorOffEveryMonitorIsClampedIntoTheNearestWorkArea) {
    const POINT inside{100, 100};
    EXPECT_EQ(vrl::TrayMenuAnchor(inside).x, 100);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromPoint(inside, MONITOR_DEFAULTTONEAREST), &monitor);
    const POINT left = vrl::TrayMenuAnchor({-5000, 100});
    EXPECT_EQ(left.x, monitor.rcWork.left);
    EXPECT_EQ(left.y, 100);
    const POINT right = vrl::TrayMenuAnchor({monitor.rcMonitor.right + 5000, 200});
    EXPECT_EQ(right.x, monitor.rcWork.right - 1);
    EXPECT_EQ(right.y, 200);
}

// A stand-in frame that records the commands it receives.
std::vector<WPARAM> g_commands;
LRESULT CALLBACK RecordingProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COMMAND) g_commands.push_back(wp);
    return DefWindowProcW(hwnd, msg, wp, lp);
}

HWND MakeRecordingFrame() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = RecordingProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"VrlTrayTestFrame";
    RegisterClassW(&wc);
    return CreateWindowExW(0, wc.lpszClassName, L"tray test", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                           nullptr, wc.hInstance, nullptr);
}

TEST(TrayNotify, OnlyAButtonDownOnOurIconOpensTheMenuAndTheChoiceArrivesAsACommand) {
    vrl::SetLanguageIndex(0);
    vrl::App().settings = AppSettings{};
    HWND frame = MakeRecordingFrame();
    ASSERT_TRUE(frame);
    for (LPARAM ignored : {LPARAM{WM_LBUTTONUP}, LPARAM{WM_RBUTTONUP}, LPARAM{WM_LBUTTONDBLCLK},
                           LPARAM{WM_RBUTTONDBLCLK}, LPARAM{WM_MOUSEMOVE}, LPARAM{WM_CONTEXTMENU}})
        EXPECT_FALSE(vrl::HandleTrayNotify(frame, 1234, ignored)) << ignored;
    EXPECT_FALSE(vrl::HandleTrayNotify(frame, 1235, WM_RBUTTONDOWN));
    EXPECT_FALSE(vrl::HandleTrayNotify(frame, 0, WM_LBUTTONDOWN));

    for (LPARAM button : {LPARAM{WM_RBUTTONDOWN}, LPARAM{WM_LBUTTONDOWN}}) {
        g_commands.clear();
        std::thread user([] {
            HWND menu = WaitForVisibleWindow(L"#32768", nullptr);
            if (!menu) return;
            Sleep(100);
            HoldForScreenshot();
            PostMessageW(menu, WM_CHAR, L'c', 0);  // &Config...
        });
        EXPECT_TRUE(vrl::HandleTrayNotify(frame, 1234, button));
        user.join();
        MSG msg;
        while (PeekMessageW(&msg, frame, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        ASSERT_EQ(g_commands.size(), 1u) << button;
        EXPECT_EQ(LOWORD(g_commands[0]), 34107);
    }
    DestroyWindow(frame);
}

// --- The About box -------------------------------------------------------------------------

std::wstring Text(HWND window) {
    wchar_t text[512] = {};
    GetWindowTextW(window, text, 512);
    return text;
}

int CountTopLevel(const wchar_t* className, const wchar_t* title) {
    int count = 0;
    for (HWND w = FindWindowExW(nullptr, nullptr, className, title); w;
         w = FindWindowExW(nullptr, w, className, title))
        ++count;
    return count;
}

struct AboutSeen {
    std::wstring name, remarks, ok, linkClass;
    RECT okRect{}, okExpected{}, client{}, clientExpected{};
    int boxesAfterSecondRequest = 0;
    INT_PTR secondResult = -1;
    bool found = false;
};

// Opens the About box on this thread while another one reads it, asks for it again and then
// closes it with `closingKey` (VK_RETURN for OK, VK_ESCAPE for Cancel).
INT_PTR RunAbout(int language, WPARAM closingKey, AboutSeen& seen) {
    vrl::SetLanguageIndex(language);
    vrl::App().versionText = vrl::FormatVersionText(vrl::kThisRelease, language);
    const std::wstring title = reinterpret_cast<const wchar_t*>(vrl::CAboutBox::Title(language));
    std::thread user([&] {
        HWND box = WaitForVisibleWindow(L"#32770", title.c_str());
        if (!box) return;
        seen.found = true;
        seen.name = Text(GetDlgItem(box, 1000));
        seen.remarks = Text(GetDlgItem(box, 1002));
        seen.ok = Text(GetDlgItem(box, IDOK));
        wchar_t cls[64] = {};
        GetClassNameW(GetDlgItem(box, 1001), cls, 64);
        seen.linkClass = cls;
        GetWindowRect(GetDlgItem(box, IDOK), &seen.okRect);
        MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&seen.okRect), 2);
        // The dialog manager maps a control's position and size each on its own.
        seen.okExpected = {168, 6, 48, 18};
        MapDialogRect(box, &seen.okExpected);
        GetClientRect(box, &seen.client);
        seen.clientExpected = {0, 0, 222, 114};
        MapDialogRect(box, &seen.clientExpected);
        HoldForScreenshot();

        seen.secondResult = vrl::CAboutBox::Open();
        seen.boxesAfterSecondRequest = CountTopLevel(L"#32770", title.c_str());
        PostMessageW(GetDlgItem(box, IDOK), WM_KEYDOWN, closingKey, 0);
    });
    const INT_PTR result = vrl::CAboutBox::Open();
    user.join();
    vrl::SetLanguageIndex(0);
    return result;
}

void ExpectLayout(const AboutSeen& seen) {
    EXPECT_EQ(seen.okRect.left, seen.okExpected.left);
    EXPECT_EQ(seen.okRect.top, seen.okExpected.top);
    EXPECT_EQ(seen.okRect.right - seen.okRect.left, seen.okExpected.right);
    EXPECT_EQ(seen.okRect.bottom - seen.okRect.top, seen.okExpected.bottom);
    EXPECT_EQ(seen.client.right, seen.clientExpected.right);
    EXPECT_EQ(seen.client.bottom, seen.clientExpected.bottom);
}

size_t LineCount(const std::wstring& text) {
    size_t lines = 1;
    for (size_t at = text.find(L"\r\n"); at != std::wstring::npos; at = text.find(L"\r\n", at + 2)) ++lines;
    return lines;
}

TEST(AboutBox, OpensOnceShowsNameAndRemarksAndOkEndsWithOne) {
    AboutSeen seen;
    EXPECT_EQ(RunAbout(0, VK_RETURN, seen), 1);
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.name, L"Vorrel [Dec 30, 2023]");
    EXPECT_EQ(seen.ok, L"OK");
    EXPECT_EQ(seen.remarks.rfind(L"- ", 0), 0u);
    EXPECT_EQ(LineCount(seen.remarks), 5u);
    EXPECT_EQ(seen.remarks.find(L"\r\n- "), seen.remarks.find(L"\r\n")) << "every line begins \"- \"";
    EXPECT_EQ(seen.secondResult, 0) << "the second request raises the open box";
    EXPECT_EQ(seen.boxesAfterSecondRequest, 1);
    ExpectLayout(seen);
    EXPECT_EQ(seen.linkClass, L"SysLink");
    EXPECT_FALSE(FindWindowW(L"#32770", L"About Vorrel")) << "closed after OK";
}

TEST(AboutBox, JapaneseTextsAndEscapeEndsWithTwo) {
    AboutSeen seen;
    EXPECT_EQ(RunAbout(1, VK_ESCAPE, seen), 2);
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.name, L"Vorrel [2023/12/30]");
    EXPECT_EQ(seen.ok, L"わかった");
    EXPECT_EQ(LineCount(seen.remarks), 6u);
    EXPECT_EQ(seen.boxesAfterSecondRequest, 1);
    ExpectLayout(seen);
}

}  // namespace
