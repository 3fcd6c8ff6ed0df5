// The pet panel in this process: its picture list outlives the list view, so the panel alone
// destroys it, once.

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "panels/pet_extender_dlg_win.h"

namespace {

TEST(PetPanel, OwnsItsPictureListAloneAndTheListViewLeavesItAlive) {
    vrl::CPetExtenderDlg panel;
    ASSERT_TRUE(panel.Create());
    HWND list = GetDlgItem(panel.Handle(), vrl::CPetExtenderDlg::kListId);
    EXPECT_TRUE(GetWindowLongW(list, GWL_STYLE) & LVS_SHAREIMAGELISTS);
    HIMAGELIST pictures = ListView_GetImageList(list, LVSIL_SMALL);
    ASSERT_TRUE(pictures);
    ImageList_SetImageCount(pictures, 3);

    // The frame destroys the windows before the panel object goes.
    DestroyWindow(list);
    EXPECT_EQ(ImageList_GetImageCount(pictures), 3) << "the list view destroyed the panel's pictures";
}

}  // namespace
