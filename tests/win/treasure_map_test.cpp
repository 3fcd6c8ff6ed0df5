// The treasure map window in this process: an order that finds no game, or a game window without
// height, captures nothing and shows nothing; a picture the static hands back is not leaked. The
// map of a real game is tested end to end.

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

TEST(TreasureMapWindow, ShowsNothingWithoutAGameOrWithAFlatOneAndLeaksNoPicture) {
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

    // The static may answer a new picture with a copy it made of the last one (as version 6 of the
    // common controls does): the window deletes it. Here the static holds a picture of the test's.
    HWND game = Popup(L"STATIC", 800, 600);
    app.gameWindow = game;
    vrl::game_link::WriteWindowSlot(app.frame, vrl::game_link::kSlotGameWindow, game);
    HDC screen = ::GetDC(nullptr);
    HBITMAP copy = ::CreateCompatibleBitmap(screen, 8, 8);
    ::ReleaseDC(nullptr, screen);
    const WPARAM bitmap = IMAGE_BITMAP;
    ::SendDlgItemMessageW(map.Handle(), vrl::CTreasureMapDlg::kPictureId, STM_SETIMAGE, bitmap,
                          reinterpret_cast<LPARAM>(copy));
    Order(map);
    EXPECT_TRUE(map.IsVisible());
    EXPECT_EQ(::GetObjectType(copy), 0u) << "the picture the static handed back leaked";
    BITMAP shown{};
    ::GetObjectW(reinterpret_cast<HBITMAP>(::SendDlgItemMessageW(map.Handle(), vrl::CTreasureMapDlg::kPictureId,
                                                                 STM_GETIMAGE, bitmap, 0)),
                 sizeof shown, &shown);
    EXPECT_EQ(shown.bmWidth, 408);

    map.Destroy();
    for (HWND window : {flat, game, app.frame}) ::DestroyWindow(window);
    app = saved;
}

}  // namespace
