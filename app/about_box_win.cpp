#include "app/about_box_win.h"

#include <commctrl.h>
#include <shellapi.h>

#include "app/app_state_win.h"
#include "app/resources/resource_ids.h"
#include "ui/lang_text.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

// --- Texts of the About box, English and Japanese side by side --------------------------------

const LangText kTitle{u"About Vorrel", u"Vorrelのバージョン情報"};
const LangText kOk{u"OK", u"わかった"};
const LangText kCredit{u"Morva is a game by its author. Thanks!", u"Morvaはその作者によるゲームです。感謝！"};
const LangText kRemarks{
    u"- Made with MinGW-w64; tested under Wine.\r\n"
    u"- An unofficial tool.\r\n"
    u"- Free of charge, and without any warranty.\r\n"
    u"- Shows values that the game keeps hidden.\r\n"
    u"- Do not report its bugs to Morva's author.",
    u"- MinGW-w64で作成し、Wineで動作を確認しています。\r\n"
    u"- 非公式のツールです。\r\n"
    u"- 無料です。動作の保証はありません。\r\n"
    u"- ゲームが隠している値を表示できます。\r\n"
    u"- 公式へのお問い合わせはお断りしています。\r\n"
    u"- 不具合をMorvaの作者に報告しないでください。"};

constexpr const char16_t* kPageAddress = u"https://vorrel.example.org/";

// ----------------------------------------------------------------------------------------------

constexpr DWORD kBoxStyle = DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD kLinkLikeStaticStyle = SS_NOTIFY | SS_NOPREFIX;

// The link control lives in the newer common controls; ask for it once per opening.
bool LinkControlAvailable() {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LINK_CLASS};
    ::InitCommonControlsEx(&controls);
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    return ::GetClassInfoExW(nullptr, WC_LINK, &info) != FALSE;
}

std::u16string LinkMarkup() { return std::u16string(u"<a>") + kPageAddress + u"</a>"; }

void OpenPage() { ::ShellExecuteW(nullptr, L"open", W(kPageAddress), nullptr, nullptr, SW_SHOWNORMAL); }

}  // namespace

const char16_t* CAboutBox::Title(int language) { return kTitle.Get(language); }

const char16_t* CAboutBox::PageAddress() { return kPageAddress; }

DialogTemplate CAboutBox::BuildTemplate(int language, bool withLinkControl) {
    DialogTemplate t;
    t.Create(kTitle.Get(language), {0, 0, 222, 114}, kBoxStyle, 0, PanelFont(language));
    t.AddControl(ControlAtom::kButton, IDOK, {168, 6, 48, 18}, BS_DEFPUSHBUTTON | WS_TABSTOP, 0, kOk.Get(language));
    // Scaled into its 18 by 18 units instead of growing to the icon's own size.
    t.AddControl(ControlAtom::kStatic, -1, {6, 6, 18, 18}, SS_ICON | SS_REALSIZECONTROL, 0,
                 ControlText::Resource(IDI_VRL_TRAY));
    t.AddControl(ControlAtom::kStatic, kIdName, {30, 6, 131, 8}, SS_LEFT | SS_NOPREFIX, 0, u"");
    if (withLinkControl) {
        t.AddControl(u"SysLink", kIdLink, {30, 18, 120, 8}, WS_TABSTOP, 0, LinkMarkup());
    } else {
        t.AddControl(ControlAtom::kStatic, kIdLink, {30, 18, 120, 8}, kLinkLikeStaticStyle, 0, kPageAddress);
    }
    t.AddControl(ControlAtom::kStatic, kIdRemarks, {6, 36, 210, 60}, SS_LEFT | SS_SUNKEN | SS_NOPREFIX, 0, u"");
    t.AddControl(ControlAtom::kStatic, -1, {36, 102, 180, 8}, SS_LEFT | SS_NOPREFIX, 0, kCredit.Get(language));
    return t;
}

INT_PTR CAboutBox::Open() {
    const int language = LanguageIndex();
    if (HWND open = ::FindWindowW(L"#32770", W(Title(language)))) {
        CWindow(open).ShowInFront();
        ::SetForegroundWindow(open);
        return 0;
    }
    const DialogTemplate dialogTemplate = BuildTemplate(language, LinkControlAvailable());
    CAboutBox box;
    return box.DoModalIndirect(dialogTemplate, ::GetActiveWindow());
}

bool CAboutBox::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_NOTIFY:
        OnLinkNotify(reinterpret_cast<const NMHDR*>(lp));
        return true;
    case WM_COMMAND:
        switch (LOWORD(wp)) {
        case IDOK: EndDialog(1); return true;
        case IDCANCEL: EndDialog(2); return true;
        case kIdLink:
            if (HIWORD(wp) == STN_CLICKED) OpenPage();
            return true;
        }
        return false;
    }
    return false;
}

void CAboutBox::OnInitDialog() {
    const std::u16string name = std::u16string(kAppName) + u" " + App().versionText;
    ::SetDlgItemTextW(m_hWnd, kIdName, W(name));
    ::SetDlgItemTextW(m_hWnd, kIdRemarks, W(kRemarks.Get()));
    CentreOnParent(m_hWnd);
}

void CAboutBox::OnLinkNotify(const NMHDR* header) {
    if (!header || header->idFrom != static_cast<UINT_PTR>(kIdLink)) return;
    if (header->code == NM_CLICK || header->code == NM_RETURN) OpenPage();
}

}  // namespace vrl
