// The music panel in this process: its minimum size, the shared list width, and the file volume
// before any file plays.

#include "music/music_player_dlg_win.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include "app/app_state_win.h"
#include "tests/common/test_files_win.h"

namespace {

TEST(MusicPanelWindow, MinimumSizeListColumnsAndTheFirstFileVolume) {
    vrltest::ScratchFolder folder;
    wchar_t previous[MAX_PATH] = {};
    ::GetCurrentDirectoryW(MAX_PATH, previous);
    ::SetCurrentDirectoryW(folder.Path().c_str());
    vrl::App().folders.program = folder.Path();
    {
        vrl::CMusicPlayerDlg panel;
        ASSERT_TRUE(panel.Create());
        panel.Show(SW_SHOW);
        HDC screen = ::GetDC(nullptr);
        const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
        ::ReleaseDC(nullptr, screen);

        // Dragging the left edge inward stops at the minimum; the right edge stays put.
        RECT drag{300, 100, 400, 150};
        panel.Send(WM_SIZING, WMSZ_LEFT, reinterpret_cast<LPARAM>(&drag));
        EXPECT_EQ(drag.right, 400);
        EXPECT_EQ(drag.right - drag.left, ::MulDiv(499, dpi, 96));
        EXPECT_EQ(drag.bottom, 150) << "the height moves only with a top or bottom edge";
        drag = {300, 100, 400, 150};
        panel.Send(WM_SIZING, WMSZ_TOPRIGHT, reinterpret_cast<LPARAM>(&drag));
        EXPECT_EQ(drag.left, 300);
        EXPECT_EQ(drag.top, 150 - ::MulDiv(455, dpi, 96));

        // The file column takes three quarters of what the list can show.
        HWND list = panel.Item(vrl::CMusicPlayerDlg::kCandidateList);
        ::SetWindowPos(panel.Handle(), nullptr, 0, 0, 900, 600, SWP_NOMOVE | SWP_NOZORDER);
        RECT box{};
        ::GetWindowRect(list, &box);
        const int usable = box.right - box.left - 2 * ::GetSystemMetrics(SM_CXEDGE) - ::GetSystemMetrics(SM_CXVSCROLL);
        EXPECT_EQ(::SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0), 3 * usable / 4);
        EXPECT_EQ(::SendMessageW(list, LVM_GETCOLUMNWIDTH, 1, 0), usable / 4);

        // Right after start the file volume reads 0 until a file plays.
        wchar_t text[8] = {};
        ::GetDlgItemTextW(panel.Handle(), vrl::CMusicPlayerDlg::kFileVolumeValue, text, 8);
        EXPECT_STREQ(text, L"0");
    }
    ::SetCurrentDirectoryW(previous);
}

}  // namespace
