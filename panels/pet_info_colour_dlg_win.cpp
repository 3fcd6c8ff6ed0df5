#include "panels/pet_info_colour_dlg_win.h"

#include <algorithm>
#include <string>
#include <utility>

#include "panels/pet_texts.h"
#include "ui/colour_menu_win.h"
#include "ui/panel_style.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
constexpr DWORD kLabelStyle = SS_CENTER | SS_CENTERIMAGE;
constexpr DWORD kColourEditStyle = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr DWORD kRatioEditStyle = ES_NUMBER | WS_BORDER | WS_TABSTOP;
constexpr DWORD kButtonStyle = BS_PUSHBUTTON | WS_TABSTOP;
constexpr int kRowY[kPetBarCount] = {24, 42, 60, 78};
constexpr int kGroupX[3] = {90, 222, 354};  // bar, background, frame: edit, swatch +42, button +84

enum Part { kEdit, kSwatch, kButton, kNotColour };

// Which part of a colour group a control is, and the group's number (text 0, background 1, then
// 2 + 3 * bar + colour in the order bar, background, frame).
struct ColourControl {
    Part part = kNotColour;
    int group = 0;
};

ColourControl ColourControlOf(int id) {
    if (id >= CPetInfoColorDlg::kTextEditId && id < CPetInfoColorDlg::kFirstRowId) {
        const int n = id - CPetInfoColorDlg::kTextEditId;
        return {static_cast<Part>(n % 3), n / 3};
    }
    const int n = id - CPetInfoColorDlg::kFirstRowId;
    if (n < 0 || n >= CPetInfoColorDlg::kRowControls * kPetBarCount) return {};
    const int bar = n / CPetInfoColorDlg::kRowControls;
    const int offset = n % CPetInfoColorDlg::kRowControls;
    if (offset < 2) return {};
    return {static_cast<Part>((offset - 2) % 3), 2 + 3 * bar + (offset - 2) / 3};
}

int RowId(int bar, int offset) { return CPetInfoColorDlg::kFirstRowId + CPetInfoColorDlg::kRowControls * bar + offset; }

void AddColourGroup(DialogTemplate& t, int editId, int x, int y) {
    t.AddControl(ControlAtom::kEdit, editId, {x, y, 36, 12}, kColourEditStyle, 0, u"");
    t.AddControl(u"Static", editId + 1, {x + 42, y, 36, 12}, SS_OWNERDRAW, 0, u"");
    t.AddControl(ControlAtom::kButton, editId + 2, {x + 84, y, 36, 12}, kButtonStyle, 0, pet_texts::kSelect.Get());
}

void BuildTemplate(DialogTemplate& t) {
    using namespace pet_texts;
    t.Create(kColourDialogTitle.Get(), {0, 0, 480, 168}, kDialogStyle, 0, PanelFont());
    const std::pair<const LangText*, DialogRect> headers[] = {
        {&kShowHeader, {6, 6, 48, 12}},         {&kWidthHeader, {60, 6, 24, 12}},
        {&kBarColourHeader, {90, 6, 120, 12}}, {&kBackgroundHeader, {222, 6, 120, 12}},
        {&kFrameHeader, {354, 6, 120, 12}},
    };
    for (const auto& [text, box] : headers) t.AddControl(ControlAtom::kStatic, -1, box, kLabelStyle, 0, text->Get());
    for (int bar = 0; bar < kPetBarCount; ++bar) {
        const int y = kRowY[bar];
        t.AddControl(ControlAtom::kButton, RowId(bar, 0), {6, y, 48, 12}, BS_AUTOCHECKBOX | WS_TABSTOP, 0,
                     kBarNames[bar].Get());
        t.AddControl(ControlAtom::kEdit, RowId(bar, 1), {60, y, 24, 12}, kRatioEditStyle, 0, u"");
        for (int group = 0; group < 3; ++group) AddColourGroup(t, RowId(bar, 2 + 3 * group), kGroupX[group], y);
    }
    t.AddControl(ControlAtom::kStatic, -1, {6, 96, 438, 1}, SS_SUNKEN, 0, u"");
    t.AddControl(ControlAtom::kStatic, -1, {6, 102, 48, 12}, SS_CENTERIMAGE, 0, kTextColour.Get());
    t.AddControl(ControlAtom::kEdit, CPetInfoColorDlg::kTextEditId, {60, 102, 36, 12}, kColourEditStyle, 0, u"");
    t.AddControl(u"Static", CPetInfoColorDlg::kTextEditId + 1, {102, 102, 36, 12}, SS_OWNERDRAW, 0, u"");
    t.AddControl(ControlAtom::kButton, CPetInfoColorDlg::kTextEditId + 2, {144, 102, 36, 12}, kButtonStyle, 0,
                 kSelect.Get());
    t.AddControl(ControlAtom::kStatic, -1, {6, 120, 48, 12}, SS_CENTERIMAGE, 0, kBkColour.Get());
    t.AddControl(ControlAtom::kEdit, CPetInfoColorDlg::kBkEditId, {60, 120, 36, 12}, kColourEditStyle, 0, u"");
    t.AddControl(u"Static", CPetInfoColorDlg::kBkEditId + 1, {102, 120, 36, 12}, SS_OWNERDRAW, 0, u"");
    t.AddControl(ControlAtom::kButton, CPetInfoColorDlg::kBkEditId + 2, {144, 120, 36, 12}, kButtonStyle, 0,
                 kSelect.Get());
    t.AddControl(ControlAtom::kButton, IDOK, {348, 144, 60, 18}, BS_DEFPUSHBUTTON | WS_TABSTOP, 0, kOk.Get());
    t.AddControl(ControlAtom::kButton, IDCANCEL, {414, 144, 60, 18}, kButtonStyle, 0, kCancel.Get());
}

std::u16string WindowText(HWND window) {
    const int length = ::GetWindowTextLengthW(window);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), length + 1)));
    return U16(text);
}

// Centred on the owner, but wholly on the owner's screen: a panel at the edge of the screen must
// not push its dialog off it.
void CentreOn(HWND window, HWND owner) {
    RECT box{}, area{};
    ::GetWindowRect(window, &box);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(owner ? owner : window, MONITOR_DEFAULTTONEAREST), &monitor);
    if (owner) {
        ::GetWindowRect(owner, &area);
    } else {
        area = monitor.rcWork;
    }
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    const RECT& work = monitor.rcWork;
    const int x = std::max<int>(work.left, std::min<int>((area.left + area.right - width) / 2, work.right - width));
    const int y = std::max<int>(work.top, std::min<int>((area.top + area.bottom - height) / 2, work.bottom - height));
    ::SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void CPetInfoColorDlg::Load() {
    file_.Load();
    look_ = PetListLook::Read(file_.Table());
}

INT_PTR CPetInfoColorDlg::DoModal() {
    Load();
    static DialogTemplate t;  // built once, in the language in force at the first run
    if (!t.IsCreated()) BuildTemplate(t);
    editsLive_ = false;
    return DoModalIndirect(t, ::GetActiveWindow());
}

Colour* CPetInfoColorDlg::ColourOf(int id) {
    const ColourControl control = ColourControlOf(id);
    if (control.part == kNotColour) return nullptr;
    if (control.group == 0) return &look_.text;
    if (control.group == 1) return &look_.background;
    PetBarLook& bar = look_.bars[static_cast<std::size_t>((control.group - 2) / 3)];
    Colour* colours[] = {&bar.bar, &bar.background, &bar.frame};
    return colours[(control.group - 2) % 3];
}

bool CPetInfoColorDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_COMMAND:
        OnCommand(LOWORD(wp), HIWORD(wp));
        return true;
    case WM_DRAWITEM:
        DrawSwatch(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
        result = TRUE;
        return true;
    }
    return false;
}

void CPetInfoColorDlg::ShowColour(int editId, Colour colour) {
    ::SetDlgItemTextW(m_hWnd, editId, colour == kNoColour ? L"" : W(FormatColour(colour)));
}

void CPetInfoColorDlg::OnInitDialog() {
    ShowColour(kTextEditId, look_.text);
    ShowColour(kBkEditId, look_.background);
    for (int bar = 0; bar < kPetBarCount; ++bar) {
        const PetBarLook& look = look_.bars[static_cast<std::size_t>(bar)];
        ::CheckDlgButton(m_hWnd, RowId(bar, 0), look.drawn ? BST_CHECKED : BST_UNCHECKED);
        ::SendDlgItemMessageW(m_hWnd, RowId(bar, 1), EM_LIMITTEXT, 1, 0);
        ::SetDlgItemInt(m_hWnd, RowId(bar, 1), static_cast<UINT>(look.ratio), TRUE);
        ShowColour(RowId(bar, 2), look.bar);
        ShowColour(RowId(bar, 5), look.background);
        ShowColour(RowId(bar, 8), look.frame);
    }
    CentreOn(m_hWnd, ::GetWindow(m_hWnd, GW_OWNER));
    editsLive_ = true;
}

void CPetInfoColorDlg::OnCommand(int id, int code) {
    switch (id) {
    case IDOK:
        OnOk();
        return;
    case IDCANCEL:
        EndDialog(IDCANCEL);
        return;
    }
    const ColourControl control = ColourControlOf(id);
    if (control.part == kEdit && code == EN_CHANGE) OnColourEdited(id);
    if (control.part == kButton && code == BN_CLICKED) OnSelect(id);
}

void CPetInfoColorDlg::OnColourEdited(int editId) {
    if (!editsLive_) return;
    Colour* colour = ColourOf(editId);
    const Colour typed = ParseColour(WindowText(Item(editId)), kNoColour);
    // The text colours take whatever the text reads as; a bar colour only a real colour.
    if (ColourControlOf(editId).group >= 2 && typed == kNoColour) return;
    *colour = typed;
    ::InvalidateRect(Item(editId + 1), nullptr, TRUE);
}

void CPetInfoColorDlg::OnSelect(int buttonId) {
    const int editId = buttonId - 2;
    const Colour current = ParseColour(WindowText(Item(editId)), kNoColour);
    const Colour chosen = ShowColourMenu(m_hWnd, current);
    *ColourOf(editId) = chosen;
    // The edit's change notice agrees with the chosen colour, but must not keep the previous
    // bar colour when the choice is no colour.
    const bool live = std::exchange(editsLive_, false);
    ShowColour(editId, chosen);
    editsLive_ = live;
    ::InvalidateRect(Item(editId + 1), nullptr, TRUE);
}

void CPetInfoColorDlg::OnOk() {
    for (int bar = 0; bar < kPetBarCount; ++bar) {
        PetBarLook& look = look_.bars[static_cast<std::size_t>(bar)];
        look.drawn = ::IsDlgButtonChecked(m_hWnd, RowId(bar, 0)) == BST_CHECKED;
        look.ratio = ClampBarRatio(ReadInt(WindowText(Item(RowId(bar, 1)))));
    }
    look_.Write(file_.Table());
    file_.Save();
    EndDialog(IDOK);
}

void CPetInfoColorDlg::DrawSwatch(const DRAWITEMSTRUCT& item) {
    const Colour* colour = ColourOf(static_cast<int>(item.CtlID));
    if (colour) PaintSwatch(item.hDC, item.rcItem, *colour);
}

}  // namespace vrl
