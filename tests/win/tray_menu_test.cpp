#include "app/about_box_win.h"
#include "app/app_state_win.h"
#include "app/tray_menu_win.h"
#include "app/version_text.h"
#include "tests/common/window_driving_win.h"
#include "tests/win/window_probe_win.h"
#include "ui/lang_text.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using vrl::AppSettings;
using vrl::TrayPopupMenus;
using vrltest::HoldForScreenshot;
using vrltest::WaitForVisibleWindow;
using vrltest::WindowText;

bool IsSeparator(HMENU menu, int position) {
    return (GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_SEPARATOR) != 0;
}

// The entries' order and texts are the model's (tested natively); here: the model as real menus,
// the submenus linked only when shown, and each of the three destroyed whether linked or not.
TEST(TrayPopup, TheModelBecomesMenusWithTheSubmenusLinkedOnlyWhenShown) {
    AppSettings all;
    all.enLogExtender = all.enLogExtender_FullLog = all.enItemInfo = all.enQuickSearch = 1;
    all.enMusicExtender = all.enPetInfo = all.enScreenshot = 1;
    struct Case {
        AppSettings settings;
        int items, placementAt;
        bool screenshots;
    };
    for (const Case& c : {Case{all, 14, 7, true}, Case{AppSettings{}, 6, 0, false}}) {
        HMENU main = nullptr, placement = nullptr, shots = nullptr;
        {
            const TrayPopupMenus menus(vrl::tray_menu::BuildTrayMenu(c.settings, u"TRUE", 9, 1));
            main = menus.Main();
            placement = menus.Placement();
            shots = menus.Screenshot();
            ASSERT_TRUE(IsMenu(shots));
            ASSERT_EQ(GetMenuItemCount(main), c.items);
            EXPECT_EQ(GetSubMenu(main, c.placementAt), placement);
            EXPECT_EQ(GetSubMenu(main, c.placementAt + 1), c.screenshots ? shots : nullptr);
            if (c.screenshots) {
                EXPECT_EQ(vrltest::MenuItemText(main, 5), L"VSTi内蔵エディタを表示 (&V)");
                EXPECT_TRUE(IsSeparator(main, 9));
                ASSERT_EQ(GetMenuItemCount(shots), 14);
                EXPECT_EQ(GetMenuItemID(shots, 13), 33000u);
            }
        }
        EXPECT_FALSE(IsMenu(main) || IsMenu(placement) || IsMenu(shots)) << c.items;
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

// The right button on the icon, and the choice arriving as a command, are tested end to end.
TEST(TrayNotify, TheLeftButtonOpensTheMenuTooAndOtherNotificationsOrIconsDoNot) {
    vrl::SetLanguageIndex(0);
    vrl::App().settings = AppSettings{};
    HWND frame = MakeRecordingFrame();
    ASSERT_TRUE(frame);
    for (LPARAM ignored : {LPARAM{WM_RBUTTONUP}, LPARAM{WM_LBUTTONDBLCLK}, LPARAM{WM_CONTEXTMENU}})
        EXPECT_FALSE(vrl::HandleTrayNotify(frame, 1234, ignored)) << ignored;
    EXPECT_FALSE(vrl::HandleTrayNotify(frame, 1235, WM_RBUTTONDOWN)) << "another icon";

    std::thread user([] {
        HWND menu = WaitForVisibleWindow(L"#32768");
        if (!menu) return;
        Sleep(100);
        HoldForScreenshot("tray_menu_left_button");
        PostMessageW(menu, WM_CHAR, L'c', 0);  // &Config...
    });
    EXPECT_TRUE(vrl::HandleTrayNotify(frame, 1234, WM_LBUTTONDOWN));
    user.join();
    MSG msg;
    while (PeekMessageW(&msg, frame, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    EXPECT_EQ(g_commands.size(), 1u) << "the menu opened and its choice came back";
    DestroyWindow(frame);
}

// --- The About box -------------------------------------------------------------------------

int CountTopLevel(const wchar_t* className, const wchar_t* title) {
    int count = 0;
    for (HWND w = FindWindowExW(nullptr, nullptr, className, title); w;
         w = FindWindowExW(nullptr, w, className, title))
        ++count;
    return count;
}

size_t LineCount(const std::wstring& text) {
    size_t lines = 1;
    for (size_t at = text.find(L"\r\n"); at != std::wstring::npos; at = text.find(L"\r\n", at + 2)) ++lines;
    return lines;
}

// The box is opened on this thread while another one reads it, asks for it again and closes it
// with the key of OK or Cancel.
TEST(AboutBox, OpensOnceInEitherLanguageAndEndsWithOneForOkOrTwoForCancel) {
    struct Case {
        int language;
        WPARAM closingKey;
        INT_PTR result;
        const wchar_t* name;
        const wchar_t* ok;
        size_t remarkLines;
    };
    for (const Case& c : {Case{0, VK_RETURN, 1, L"Vorrel [Dec 30, 2023]", L"OK", 5},
                          Case{1, VK_ESCAPE, 2, L"Vorrel [2023/12/30]", L"わかった", 6}}) {
        vrl::SetLanguageIndex(c.language);
        vrl::App().versionText = vrl::FormatVersionText(vrl::kThisRelease, c.language);
        const std::wstring title = reinterpret_cast<const wchar_t*>(vrl::CAboutBox::Title(c.language));
        std::thread user([&] {
            HWND box = WaitForVisibleWindow(L"#32770", title.c_str());
            if (!box) return;
            EXPECT_EQ(WindowText(GetDlgItem(box, 1000)), c.name);
            EXPECT_EQ(WindowText(GetDlgItem(box, IDOK)), c.ok);
            EXPECT_EQ(vrltest::ClassName(GetDlgItem(box, 1001)), L"SysLink");
            const std::wstring remarks = WindowText(GetDlgItem(box, 1002));
            EXPECT_EQ(LineCount(remarks), c.remarkLines);
            EXPECT_EQ(remarks.rfind(L"- ", 0), 0u);
            EXPECT_EQ(remarks.find(L"\r\n- "), remarks.find(L"\r\n")) << "every line begins \"- \"";
            HoldForScreenshot("about_box");

            EXPECT_EQ(vrl::CAboutBox::Open(), 0) << "the second request raises the open box";
            EXPECT_EQ(CountTopLevel(L"#32770", title.c_str()), 1);
            PostMessageW(GetDlgItem(box, IDOK), WM_KEYDOWN, c.closingKey, 0);
        });
        EXPECT_EQ(vrl::CAboutBox::Open(), c.result);
        user.join();
        EXPECT_FALSE(FindWindowW(L"#32770", title.c_str())) << "closed";
    }
    vrl::SetLanguageIndex(0);
}

}  // namespace
