// The pet panel in this process: its picture list outlives the list view, so the panel alone
// destroys it, once; and after a message the cells read back through the list, and only the rows
// the message changed are left to repaint.

#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "panels/pet_extender_dlg_win.h"
#include "panels/pet_record.h"

namespace {

using vrl::PetRecord;

constexpr int kListId = vrl::CPetExtenderDlg::kListId;

void SendPets(HWND panel, const std::vector<PetRecord>& pets) {
    std::string bytes;
    for (const PetRecord& pet : pets) pet.Encode(bytes);
    COPYDATASTRUCT data{pets.size(), static_cast<DWORD>(bytes.size()), bytes.data()};
    ::SendMessageW(panel, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

std::wstring CellText(HWND list, int row, int column) {
    wchar_t text[64] = {};
    ListView_GetItemText(list, row, column, text, 64);
    return text;
}

RECT StillToPaint(HWND list) {
    RECT r{};
    ::GetUpdateRect(list, &r, FALSE);
    return r;
}

TEST(PetPanel, OwnsItsPictureListAloneAndTheListViewLeavesItAlive) {
    vrl::CPetExtenderDlg panel;
    ASSERT_TRUE(panel.Create());
    HWND list = GetDlgItem(panel.Handle(), kListId);
    EXPECT_TRUE(GetWindowLongW(list, GWL_STYLE) & LVS_SHAREIMAGELISTS);
    HIMAGELIST pictures = ListView_GetImageList(list, LVSIL_SMALL);
    ASSERT_TRUE(pictures);
    ImageList_SetImageCount(pictures, 3);

    // The frame destroys the windows before the panel object goes.
    DestroyWindow(list);
    EXPECT_EQ(ImageList_GetImageCount(pictures), 3) << "the list view destroyed the panel's pictures";
}

TEST(PetPanel, AMessageLeavesOnlyTheRowsItChangedToRepaint) {
    vrl::CPetExtenderDlg panel;
    ASSERT_TRUE(panel.Create());
    ::SetWindowPos(panel.Handle(), nullptr, 0, 0, 700, 400, SWP_NOZORDER | SWP_SHOWWINDOW | SWP_NOACTIVATE);
    HWND list = ::GetDlgItem(panel.Handle(), kListId);
    std::vector<PetRecord> pets(3, PetRecord::Make("putit", 1, 3, 10, 50, 50, 100, 5, 8, 70, 100));
    SendPets(panel.Handle(), pets);
    ::UpdateWindow(panel.Handle());
    ::UpdateWindow(list);
    RECT update = StillToPaint(list);
    EXPECT_TRUE(::IsRectEmpty(&update));

    pets[1] = PetRecord::Make("putit", 1, 3, 10, 50, 40, 100, 5, 8, 70, 100);
    SendPets(panel.Handle(), pets);
    EXPECT_EQ(CellText(list, 1, vrl::kPetColumnHp), L"40/100");
    EXPECT_EQ(CellText(list, 2, vrl::kPetColumnName), L"putit");
    EXPECT_EQ(CellText(list, 3, vrl::kPetColumnName), L"");
    RECT row{};
    ListView_GetItemRect(list, 1, &row, LVIR_BOUNDS);
    update = StillToPaint(list);
    EXPECT_TRUE(::EqualRect(&update, &row)) << update.top << ".." << update.bottom << " for " << row.top << ".." << row.bottom;

    ::UpdateWindow(list);
    SendPets(panel.Handle(), pets);  // nothing changed: nothing to paint
    update = StillToPaint(list);
    EXPECT_TRUE(::IsRectEmpty(&update));
    panel.Destroy();
}

}  // namespace
