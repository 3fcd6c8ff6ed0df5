#include "ui/colour_menu_win.h"
#include "ui/lang_text.h"
#include "tests/common/window_driving_win.h"
#include "tests/win/window_probe_win.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

namespace {

using vrl::Colour;
using vrl::MakeColour;
using vrltest::HoldForScreenshot;
using vrltest::MenuItemText;
using vrltest::WaitForVisibleWindow;

// Control ids of the system colour chooser.
constexpr int kChooserRed = 706;
constexpr int kChooserGreen = 707;
constexpr int kChooserBlue = 708;
constexpr int kChooserAddCustom = 712;
constexpr UINT kGetMenuHandle = 0x01E1;  // MN_GETHMENU

constexpr Colour kCurrent = MakeColour(12, 34, 56);

int PositionOf(HMENU menu, UINT id) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        if (GetMenuItemID(menu, i) == id) return i;
    return -1;
}

void Click(POINT at) {
    SetCursorPos(at.x, at.y);
    Sleep(50);
    INPUT input[2] = {};
    input[0].type = input[1].type = INPUT_MOUSE;
    input[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    input[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(2, input, sizeof(INPUT));
}

// Clicks the menu item at `position` of the open colour menu.
void ClickMenuItem(HWND menuWindow, int position) {
    HMENU menu = reinterpret_cast<HMENU>(SendMessageW(menuWindow, kGetMenuHandle, 0, 0));
    RECT r{};
    ASSERT_TRUE(GetMenuItemRect(nullptr, menu, static_cast<UINT>(position), &r));
    Click({(r.left + r.right) / 2, (r.top + r.bottom) / 2});
}

// Opens the colour menu over a window of this thread while `act` plays the user on another.
class ColourMenuTest : public ::testing::Test {
protected:
    void SetUp() override {
        vrl::SetLanguageIndex(0);
        owner_ = CreateWindowExW(0, L"Static", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                                 300, 200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(owner_, nullptr);
        SetForegroundWindow(owner_);
        SetCursorPos(120, 120);
    }
    void TearDown() override {
        DestroyWindow(owner_);
        vrl::SetLanguageIndex(0);
    }

    Colour Run(Colour current, const std::function<void(HWND menuWindow)>& act) {
        std::thread user([&] {
            HWND menuWindow = WaitForVisibleWindow(L"#32768");
            ASSERT_NE(menuWindow, nullptr);
            Sleep(100);  // let it paint
            HoldForScreenshot("colour_menu");
            act(menuWindow);
        });
        const Colour chosen = vrl::ShowColourMenu(owner_, current);
        user.join();
        return chosen;
    }

    HWND owner_ = nullptr;
};

// The swatch of a menu item is check-mark sized, filled with its colour, with a black border.
void ExpectSwatch(HMENU menu, UINT item, BOOL byPosition, Colour colour) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_CHECKMARKS;
    ASSERT_TRUE(GetMenuItemInfoW(menu, item, byPosition, &info));
    BITMAP bm{};
    ASSERT_TRUE(GetObjectW(info.hbmpUnchecked, sizeof bm, &bm));
    const int side = GetSystemMetrics(SM_CYMENUCHECK);
    EXPECT_EQ(bm.bmWidth, side);
    EXPECT_EQ(bm.bmHeight, side);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, info.hbmpUnchecked);
    EXPECT_EQ(GetPixel(dc, side / 2, side / 2), colour);
    EXPECT_EQ(GetPixel(dc, 0, 0), 0u);
    EXPECT_EQ(GetPixel(dc, side - 1, side / 2), 0u);
    SelectObject(dc, old);
    DeleteDC(dc);
}

TEST_F(ColourMenuTest, NamedColoursAndTheCurrentOneShowTheirSwatches) {
    vrl::SetLanguageIndex(1);
    Run(kCurrent, [](HWND menuWindow) {
        HMENU menu = reinterpret_cast<HMENU>(SendMessageW(menuWindow, kGetMenuHandle, 0, 0));
        EXPECT_EQ(MenuItemText(menu, 0), L"現在の設定");
        EXPECT_EQ(MenuItemText(menu, 11), L"カスタム");
        EXPECT_EQ(MenuItemText(menu, PositionOf(menu, 19)), L"Morva 赤");
        ExpectSwatch(menu, 19, FALSE, MakeColour(255, 155, 155));
        ExpectSwatch(menu, 0, TRUE, kCurrent);
        PostMessageW(menuWindow, WM_KEYDOWN, VK_ESCAPE, 0);
    });
}

// A named colour gives its value (checked end to end); "Current setting", Escape and a cancelled
// chooser give the current one.
TEST_F(ColourMenuTest, EveryOtherWayOutOfTheMenuGivesTheCurrentColour) {
    EXPECT_EQ(Run(kCurrent, [](HWND menuWindow) { ClickMenuItem(menuWindow, 0); }), kCurrent);
    EXPECT_EQ(Run(kCurrent, [](HWND menuWindow) { PostMessageW(menuWindow, WM_KEYDOWN, VK_ESCAPE, 0); }), kCurrent);
    const Colour cancelled = Run(kCurrent, [](HWND menuWindow) {
        ClickMenuItem(menuWindow, 11);
        HWND chooser = WaitForVisibleWindow(L"#32770");
        ASSERT_NE(chooser, nullptr);
        HoldForScreenshot("colour_chooser");
        PostMessageW(chooser, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(cancelled, kCurrent);
}

TEST_F(ColourMenuTest, ChooserColourIsReturnedAndKeptAmongTheCustomColours) {
    ASSERT_EQ(vrl::CustomColours()[0], RGB(255, 255, 255));
    const Colour chosen = Run(kCurrent, [this](HWND menuWindow) {
        ClickMenuItem(menuWindow, 11);
        HWND chooser = WaitForVisibleWindow(L"#32770");
        ASSERT_NE(chooser, nullptr);
        EXPECT_EQ(GetWindow(chooser, GW_OWNER), owner_);
        // Opened on the current colour.
        EXPECT_EQ(GetDlgItemInt(chooser, kChooserRed, nullptr, FALSE), 12u);
        EXPECT_EQ(GetDlgItemInt(chooser, kChooserBlue, nullptr, FALSE), 56u);
        SetDlgItemTextW(chooser, kChooserRed, L"200");
        SetDlgItemTextW(chooser, kChooserGreen, L"100");
        SetDlgItemTextW(chooser, kChooserBlue, L"50");
        PostMessageW(chooser, WM_COMMAND, kChooserAddCustom, 0);
        PostMessageW(chooser, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(chosen, MakeColour(200, 100, 50));
    EXPECT_EQ(vrl::CustomColours()[0], MakeColour(200, 100, 50));
}

}  // namespace
