#include "panels/quick_search_win.h"

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "panels/quick_search.h"
#include "settings/kcsv.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr DWORD kBarStyle = WS_POPUP | WS_BORDER | WS_SYSMENU;
constexpr DWORD kWordBoxStyle = CBS_DROPDOWN | CBS_SORT | CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP;
constexpr COLORREF kActiveColour = RGB(0, 0, 223);
constexpr COLORREF kInactiveColour = RGB(127, 127, 127);

void BuildTemplate(DialogTemplate& t) {
    t.Create(PanelTitle(quick_search_texts::kTitle), {0, 0, 308, 15}, kBarStyle, 0, PanelFont());
    t.AddControl(ControlAtom::kStatic, CQuickSearchDlg::kStripId, {0, 0, 6, 15}, SS_OWNERDRAW, 0, u"");
    t.AddControl(ControlAtom::kStatic, -1, {6, 1, 60, 12}, SS_CENTER | SS_CENTERIMAGE, 0,
                 quick_search_texts::kLabel.Get());
    // 173: the height of the opened list.
    t.AddControl(ControlAtom::kComboBox, CQuickSearchDlg::kWordBoxId, {72, 1, 180, 173}, kWordBoxStyle, 0, u"");
    t.AddControl(ControlAtom::kButton, IDOK, {258, 1, 48, 12}, BS_DEFPUSHBUTTON | WS_TABSTOP, 0,
                 quick_search_texts::kClose.Get());
}

}  // namespace

CQuickSearchDlg::~CQuickSearchDlg() {
    Destroy();
    if (active_) ::DeleteObject(active_);
    if (inactive_) ::DeleteObject(inactive_);
}

HWND CQuickSearchDlg::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildTemplate));
}

bool CQuickSearchDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_ACTIVATE:
        OnActivate();
        return false;  // the dialog manager still keeps the focus
    case WM_NCHITTEST:
        result = HTCAPTION;  // dragged by any spot that is not a control
        return true;
    case WM_DRAWITEM:
        result = OnDrawItem(reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
        return result != 0;
    case WM_COMMAND:
        return HideOnOkOrCancel(wp);  // the word stays in the box
    }
    return false;
}

void CQuickSearchDlg::OnInitDialog() {
    strip_ = Item(kStripId);
    wordBox_ = Item(kWordBoxId);
    frame_ = App().frame;
    game_link::WriteWindowSlot(frame_, game_link::kSlotQuickSearchBox, wordBox_);
    active_ = ::CreateSolidBrush(kActiveColour);
    inactive_ = ::CreateSolidBrush(kInactiveColour);
    FillWordList();
}

void CQuickSearchDlg::OnActivate() {
    if (game_link::ReloadRequested(frame_, game_link::kReloadQuickSearch)) {
        FillWordList();
        frame_ = game_link::ClearReloadRequest(game_link::kReloadQuickSearch);
    }
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

bool CQuickSearchDlg::OnDrawItem(const DRAWITEMSTRUCT* item) const {
    if (!item || item->CtlID != kStripId) return false;
    ::FillRect(item->hDC, &item->rcItem, ::GetActiveWindow() == m_hWnd ? active_ : inactive_);
    return true;
}

void CQuickSearchDlg::FillWordList() {
    KcsvFile table;
    table.LoadFile(kQuickSearchFile);
    while (::SendMessageW(wordBox_, CB_GETCOUNT, 0, 0) > 0) {
        const LRESULT last = ::SendMessageW(wordBox_, CB_GETCOUNT, 0, 0) - 1;
        if (::SendMessageW(wordBox_, CB_DELETESTRING, static_cast<WPARAM>(last), 0) == CB_ERR) break;
    }
    for (const std::u16string& word : QuickSearchWords(table)) {
        ::SendMessageW(wordBox_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(word)));
    }
}

}  // namespace vrl
