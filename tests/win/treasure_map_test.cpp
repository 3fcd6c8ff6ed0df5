// The treasure map window in this process: an order that finds no game, or a game window without
// height, captures nothing and shows nothing. The map of a real game is tested end to end.

#include <gtest/gtest.h>

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "panels/treasure_map_win.h"

namespace {

// WM_HOTKEY 1200, then the wait's end at once.
void Order(vrl::CTreasureMapDlg& map) {
    map.Send(WM_HOTKEY, 1200, 0);
    map.Send(WM_TIMER, 1, 0);
}

HWND Popup(const wchar_t* cls, int width, int height) {
    return ::CreateWindowExW(0, cls, L"", WS_POPUP, 0, 0, width, height, nullptr, nullptr, nullptr, nullptr);
}

TEST(TreasureMapWindow, ShowsNothingWithoutAGameOrWithAFlatOne) {
    WNDCLASSEXW slots{};
    slots.cbSize = sizeof slots;
    slots.lpfnWndProc = ::DefWindowProcW;
    slots.cbWndExtra = vrl::game_link::kFrameExtraBytes;
    slots.lpszClassName = L"VrlTestSlots";
    ::RegisterClassExW(&slots);
    vrl::AppState& app = vrl::App();
    const vrl::AppState saved = app;
    app.frame = Popup(L"VrlTestSlots", 10, 10);
    vrl::CTreasureMapDlg map;
    ASSERT_TRUE(map.Create());

    app.gameWindow = nullptr;
    Order(map);
    EXPECT_FALSE(map.IsVisible()) << "no game known yet";

    HWND flat = Popup(L"STATIC", 800, 0);
    app.gameWindow = flat;
    vrl::game_link::WriteWindowSlot(app.frame, vrl::game_link::kSlotGameWindow, flat);
    Order(map);
    EXPECT_FALSE(map.IsVisible()) << "a client height of 0 gives no scale";

    map.Destroy();
    for (HWND window : {flat, app.frame}) ::DestroyWindow(window);
    app = saved;
}

}  // namespace
