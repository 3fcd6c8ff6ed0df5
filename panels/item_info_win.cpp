#include "panels/item_info_win.h"

#include <commctrl.h>

#include <string>

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "panels/item_info.h"
#include "panels/item_record.h"
#include "settings/decimal_text.h"
#include "ui/layout_win.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr DWORD kWindowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
constexpr DWORD kValueStyle = ES_READONLY | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr DWORD kLabelStyle = SS_CENTERIMAGE;
constexpr DWORD kListStyle = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_BORDER | WS_TABSTOP;

struct ListColumn {
    int format;
    int width;
};
// Columns 0 and 1 start hidden; the player can widen them with the header divider. Widths in
// pixels at 96 DPI.
constexpr ListColumn kColumns[4] = {{LVCFMT_LEFT, 0}, {LVCFMT_RIGHT, 0}, {LVCFMT_LEFT, 150}, {LVCFMT_RIGHT, 100}};

struct Anchored {
    int id;
    UnitRect units;
};
// The ids keep their size at the right edge, the name stretches, the list fills the rest.
constexpr Anchored kLayout[] = {
    {CItemInfoDlg::kNameId, {6, 6, -6, 18}},        {CItemInfoDlg::kChipLabelId, {-120, 24, -96, 36}},
    {CItemInfoDlg::kChipId, {-90, 24, -66, 36}},    {CItemInfoDlg::kItemLabelId, {-60, 24, -36, 36}},
    {CItemInfoDlg::kItemId, {-30, 24, -6, 36}},     {CItemInfoDlg::kListId, {6, 42, -6, -6}},
};

void BuildTemplate(DialogTemplate& t) {
    t.Create(PanelTitle(item_texts::kTitle), {0, 0, 210, 240}, kWindowStyle, 0, PanelFont());
    t.AddControl(ControlAtom::kEdit, CItemInfoDlg::kNameId, {6, 6, 198, 12}, kValueStyle, 0, u"");
    t.AddControl(ControlAtom::kStatic, CItemInfoDlg::kChipLabelId, {90, 24, 24, 12}, kLabelStyle, 0,
                 item_texts::kChipId.Get());
    t.AddControl(ControlAtom::kEdit, CItemInfoDlg::kChipId, {120, 24, 24, 12}, kValueStyle, 0, u"");
    t.AddControl(ControlAtom::kStatic, CItemInfoDlg::kItemLabelId, {150, 24, 24, 12}, kLabelStyle, 0,
                 item_texts::kItemId.Get());
    t.AddControl(ControlAtom::kEdit, CItemInfoDlg::kItemId, {180, 24, 24, 12}, kValueStyle, 0, u"");
    t.AddControl(u"SysListView32", CItemInfoDlg::kListId, {6, 42, 198, 192}, kListStyle, 0, u"");
}

void SetListText(HWND list, int row, int column, const std::u16string& text) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(W(text));
    ::SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void AddColumns(HWND list) {
    for (int i = 0; i < 4; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.fmt = kColumns[i].format;
        column.cx = ScaledForWindow(list, kColumns[i].width);
        column.pszText = const_cast<wchar_t*>(W(item_texts::kHeaders[i]));
        column.iSubItem = i;
        ::SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

}  // namespace

HWND CItemInfoDlg::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildTemplate));
}

bool CItemInfoDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_COPYDATA:
        OnItemData(reinterpret_cast<const COPYDATASTRUCT*>(lp));
        result = TRUE;
        return true;
    case WM_SIZE:
        OnSize(LOWORD(lp), HIWORD(lp));
        return true;
    case WM_COMMAND:
        return HideOnOkOrCancel(wp);
    }
    return false;
}

void CItemInfoDlg::OnInitDialog() {
    SetProgramIcons(m_hWnd);
    game_link::WriteWindowSlot(App().frame, game_link::kSlotItemInfo, m_hWnd);
    LoadEnchantTables(LanguageIndex(), tables_);
    list_ = Item(kListId);
    ::SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_GRIDLINES, LVS_EX_GRIDLINES);
    AddColumns(list_);
    ::EnableWindow(list_, TRUE);
    Show(SW_SHOW);
}

void CItemInfoDlg::OnItemData(const COPYDATASTRUCT* data) {
    // dwData is not the module's to set; the size only limits what is read, and a short payload
    // reads as zeros past its end.
    if (!data) return;
    ShowItem(DecodeItemRecord(data->lpData, data->lpData ? data->cbData : 0));
}

void CItemInfoDlg::ShowItem(const ItemInfoRecord& record) {
    ::SetDlgItemTextW(m_hWnd, kNameId, W(record.name));
    ::SetDlgItemTextW(m_hWnd, kChipId, W(DecimalText(record.chipId)));
    ::SetDlgItemTextW(m_hWnd, kItemId, W(DecimalText(record.itemId)));

    ::SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(list_, LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const ItemRow& shown : BuildItemRows(record, tables_)) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = const_cast<wchar_t*>(L"");
        row = static_cast<int>(::SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
        if (row < 0) break;
        SetListText(list_, row, 1, shown.id);
        SetListText(list_, row, 2, shown.effect);
        SetListText(list_, row, 3, shown.value);
        ++row;
    }
    ::SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(list_, nullptr, TRUE);
}

void CItemInfoDlg::OnSize(int width, int height) {
    for (const Anchored& control : kLayout) MoveAnchored(m_hWnd, control.id, control.units, width, height);
    ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace vrl
