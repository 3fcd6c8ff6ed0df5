// The log windows themselves: templates, set-up, tabs, docking, clearing and the copy menu. The
// handling of the lines and of the rules is in log_line_win.cpp.

#include "log/log_window_win.h"

#include <commctrl.h>
#include <windowsx.h>

#include "app/app_state_win.h"
#include "log/log_texts.h"
#include "log/sound_effect_player_win.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr DWORD kWindowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX;
// Multi-line, automatic horizontal scrolling, vertical scroll bar, border, tab stop.
constexpr DWORD kViewStyle = 0x00A10084;
constexpr DialogRect kWindowBox{0, 0, 309, 176};
constexpr DialogRect kViewBox{7, 7, 295, 162};
constexpr DialogRect kTabBox{86, 0, 50, 30};
constexpr UINT_PTR kRedrawTimer = 1;
constexpr UINT kCmdCopy = 1;

void BuildFullLogTemplate(DialogTemplate& t) {
    t.Create(PanelTitle(log_texts::kFullLog), kWindowBox, kWindowStyle, 0, PanelFont());
    t.AddControl(u"SysTabControl32", CLogExtenderDlg::kTabId, kTabBox, 0, 0, u"");
    t.AddControl(u"RichEdit20W", CLogExtenderDlg::kViewId, kViewBox, kViewStyle, 0, u"");
}

void BuildExtractedLogTemplate(DialogTemplate& t) {
    t.Create(PanelTitle(log_texts::kExtractedLog), kWindowBox, kWindowStyle, 0, PanelFont());
    t.AddControl(u"RichEdit20W", CLogExtenderDlg_Child::kViewId, kViewBox, kViewStyle, 0, u"");
}

// The system menu reset to the platform's, then our items after a separator each.
void ResetSystemMenu(HWND window, std::initializer_list<std::pair<UINT, const LangText*>> items) {
    ::GetSystemMenu(window, TRUE);
    HMENU menu = ::GetSystemMenu(window, FALSE);
    if (!menu) return;
    for (const auto& [id, text] : items) {
        ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(menu, MF_STRING, id, W(text->Get()));
    }
}

void InsertTab(HWND tab, int index, const LangText& text) {
    std::wstring label = W(text.Get());
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = label.data();
    ::SendMessageW(tab, TCM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

}  // namespace

void ShowLogViewMenu(HWND owner, HWND view, LPARAM screenPoint) {
    POINT at{GET_X_LPARAM(screenPoint), GET_Y_LPARAM(screenPoint)};
    // From the keyboard both coordinates are -1. The whole LPARAM is not -1 on 64-bit Windows (the
    // two words are not sign-extended), so the coordinates are what tells.
    if (at.x == -1 && at.y == -1) {  // the view's corner
        RECT rect{};
        ::GetWindowRect(view, &rect);
        at = {rect.left, rect.top};
    }
    HMENU menu = ::CreatePopupMenu();
    if (!menu) return;
    ::AppendMenuW(menu, MF_STRING, kCmdCopy, W(log_texts::kCopyText.Get()));
    const BOOL chosen = ::TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY, at.x, at.y, 0, owner, nullptr);
    if (chosen == static_cast<BOOL>(kCmdCopy)) ::SendMessageW(view, WM_COPY, 0, 0);
    ::DestroyMenu(menu);
}

// --- Extracted-log window --------------------------------------------------------------------

HWND CLogExtenderDlg_Child::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildExtractedLogTemplate));
}

void CLogExtenderDlg_Child::ClearView() const {
    if (view_) log_view::Clear(view_);
}

bool CLogExtenderDlg_Child::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_SIZE:
        OnSize(LOWORD(lp), HIWORD(lp));
        return true;
    case WM_CONTEXTMENU:
        if (reinterpret_cast<HWND>(wp) != view_) return false;
        ShowLogViewMenu(m_hWnd, view_, lp);
        return true;
    case WM_SYSCOMMAND:
        if (wp != kCmdClearLog) return false;
        ClearView();
        return true;
    case WM_COMMAND:
        return HideOnOkOrCancel(wp);
    }
    return false;
}

void CLogExtenderDlg_Child::OnInitDialog() {
    SetProgramIcons(m_hWnd);
    ResetSystemMenu(m_hWnd, {{kCmdClearLog, &log_texts::kClearLog}});
    view_ = Item(kViewId);
    // The one WM_SIZE of the creation came before the view existed: lay it out now.
    RECT client{};
    ::GetClientRect(m_hWnd, &client);
    OnSize(client.right, client.bottom);
}

void CLogExtenderDlg_Child::OnSize(int width, int height) {
    clientWidth_ = width;
    clientHeight_ = height;
    // While docked the view lives in the full-log window, which lays it out.
    if (view_ && ::GetParent(view_) == m_hWnd) ::MoveWindow(view_, 0, 0, width, height, FALSE);
    ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// --- Full-log window -------------------------------------------------------------------------

CLogExtenderDlg::CLogExtenderDlg() : redraw_(kRedrawTimer) {}

CLogExtenderDlg::~CLogExtenderDlg() {
    DestroyWindows();
    if (logFont_) ::DeleteObject(logFont_);
}

HWND CLogExtenderDlg::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildFullLogTemplate));
}

void CLogExtenderDlg::DestroyWindows() {
    Destroy();
    child_.Destroy();
}

HWND CLogExtenderDlg::PageView(int page) const { return page == 0 || page == 1 ? pages_[page] : nullptr; }

int CLogExtenderDlg::SelectedPage() const {
    return tab_ ? static_cast<int>(::SendMessageW(tab_, TCM_GETCURSEL, 0, 0)) : 0;
}

bool CLogExtenderDlg::FullLogEnabled() const { return App().settings.enLogExtender_FullLog != 0; }

bool CLogExtenderDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_COPYDATA:
        ProcessLogLine(reinterpret_cast<const COPYDATASTRUCT*>(lp));
        result = 1;
        return true;
    case WM_SIZE:
        OnSize(LOWORD(lp), HIWORD(lp));
        return true;
    case WM_TIMER:
        if (wp != redraw_.TimerId()) return false;
        redraw_.Flush();
        return true;
    case WM_CONTEXTMENU: {
        HWND clicked = reinterpret_cast<HWND>(wp);
        if (!clicked || (clicked != pages_[0] && clicked != pages_[1])) return false;
        ShowLogViewMenu(m_hWnd, clicked, lp);
        return true;
    }
    case WM_SYSCOMMAND:
        return OnSysCommand(wp);
    case WM_COMMAND:
        return HideOnOkOrCancel(wp);
    case WM_NOTIFY: {
        const auto* header = reinterpret_cast<const NMHDR*>(lp);
        if (header->idFrom != kTabId || (header->code != NM_CLICK && header->code != TCN_SELCHANGE)) return false;
        ShowSelectedPage();
        return true;
    }
    case WM_DESTROY:
        OnDestroy();
        return false;
    }
    return false;
}

void CLogExtenderDlg::OnInitDialog() {
    redraw_.SetOwner(m_hWnd);
    frame_ = App().frame;
    SetProgramIcons(m_hWnd);
    child_.Create();
    ResetSystemMenu(m_hWnd, {{kCmdClearLog, &log_texts::kClearLog}, {kCmdDockUndock, &log_texts::kDockUndock}});
    tab_ = Item(kTabId);
    fullView_ = Item(kViewId);
    pages_[0] = fullView_;
    pages_[1] = child_.View();
    for (HWND view : pages_) log_view::LiftTextLimit(view);  // both, whatever the full-log setting
    InsertTab(tab_, 0, log_texts::kFullLog);
    InsertTab(tab_, 1, log_texts::kExtractedLog);
    LoadLogRules();
    sounds_ = std::make_unique<SoundEffectPlayer>(m_hWnd, 3);
    // The one WM_SIZE of the creation came before the controls existed: without a layout now the
    // tab control would sit over the full log and the views keep the template's margins.
    RECT client{};
    ::GetClientRect(m_hWnd, &client);
    OnSize(client.right, client.bottom);
    // The game waits for every line; the dialog manager has nothing to do with them.
    AnswerAheadOfDialogManager(WM_COPYDATA);
    for (HWND window : {m_hWnd, child_.Handle(), pages_[0], pages_[1]})
        if (window) ::SetWindowSubclass(window, &CLogExtenderDlg::FlushFirstProc, kFlushFirstSubclassId,
                                        reinterpret_cast<DWORD_PTR>(this));
}

void CLogExtenderDlg::OnDestroy() {
    FlushPendingLines();
    redraw_.Flush();
    redraw_.SetOwner(nullptr);
    sounds_.reset();  // the library was given this window as its owner
}

void CLogExtenderDlg::OnSize(int width, int height) {
    clientWidth_ = width;
    clientHeight_ = height;
    Layout();
}

bool CLogExtenderDlg::OnSysCommand(WPARAM command) {
    switch (command) {
    case kCmdClearLog:
        ClearCurrentPage();
        return true;
    case kCmdDockUndock:
        ToggleDock();
        return true;
    }
    return false;
}

int CLogExtenderDlg::StripHeight() const {
    if (!docked_ || !tab_) return 0;
    // The row of tabs and a little room below it.
    RECT item{};
    if (::SendMessageW(tab_, TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&item)) && item.bottom > 0)
        return item.bottom + 2;
    RECT display{0, 0, 0, 0};
    ::SendMessageW(tab_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&display));
    return display.top + 2;
}

void CLogExtenderDlg::Layout() {
    if (!m_hWnd) return;
    const int strip = StripHeight();
    ::MoveWindow(tab_, 0, 0, clientWidth_, strip, FALSE);
    const int height = clientHeight_ > strip ? clientHeight_ - strip : 0;
    if (FullLogEnabled()) ::MoveWindow(fullView_, 0, strip, clientWidth_, height, FALSE);
    if (docked_) ::MoveWindow(pages_[1], 0, strip, clientWidth_, height, FALSE);
    ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void CLogExtenderDlg::ShowSelectedPage() {
    const int page = SelectedPage();
    if (page != 0 && page != 1) return;
    FlushPendingLines();
    redraw_.Flush();
    ::SetFocus(pages_[page]);
    ::ShowWindow(pages_[1 - page], SW_HIDE);
    if (page == 1 || FullLogEnabled()) ::ShowWindow(pages_[page], SW_SHOW);
}

void CLogExtenderDlg::SelectPage(int page) {
    if ((page != 0 && page != 1) || !tab_) return;
    ::SendMessageW(tab_, TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
    // Undocked, each view has a window of its own and stays shown; the selection still decides
    // what "clear log" clears and which page shows when the pair is docked.
    if (docked_) ShowSelectedPage();
}

void CLogExtenderDlg::ToggleDock() {
    if (!m_hWnd || !child_.IsWindow()) return;
    FlushPendingLines();
    redraw_.Flush();
    docked_ = !docked_;
    HWND extracted = pages_[1];
    if (docked_) {
        SetPanelTitle(m_hWnd, log_texts::kDockedLog);
        ::ShowWindow(tab_, SW_SHOW);
        child_.Show(SW_HIDE);
        ::SetParent(extracted, m_hWnd);
        const int page = SelectedPage() == 1 ? 1 : 0;
        ::ShowWindow(pages_[1 - page], SW_HIDE);
        if (page == 1 || FullLogEnabled()) ::ShowWindow(pages_[page], SW_SHOW);
    } else {
        SetPanelTitle(m_hWnd, log_texts::kFullLog);
        ::ShowWindow(tab_, SW_HIDE);
        child_.Show(SW_SHOW);
        if (FullLogEnabled()) ::ShowWindow(fullView_, SW_SHOW);
        ::SetParent(extracted, child_.Handle());
        ::ShowWindow(extracted, SW_SHOW);
    }
    ::MoveWindow(extracted, 0, 0, child_.ClientWidth(), child_.ClientHeight(), FALSE);
    ::RedrawWindow(child_.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    Layout();
}

void CLogExtenderDlg::ClearCurrentPage() {
    const int page = SelectedPage();
    if (page != 0 && page != 1) return;
    if (!FullLogEnabled() && page != 1) return;
    FlushPendingLines();
    redraw_.Flush();
    log_view::Clear(pages_[page]);
}

void CLogExtenderDlg::AppendLine(HWND view, const std::u16string& text, Colour colour) {
    if (!view) return;
    const int page = view == pages_[0] ? 0 : view == pages_[1] ? 1 : -1;
    if (page < 0 || flushing_) {
        redraw_.Touched(view);
        log_view::Append(view, text, colour);
        return;
    }
    std::vector<PendingRun>& runs = pending_[page];
    if (runs.empty() || runs.back().colour != colour)
        runs.push_back({colour, text});
    else
        runs.back().text += text;
    if (lineDepth_ == 0) FlushPendingLines();
}

}  // namespace vrl
