#include "panels/equip_set_win.h"

#include <commctrl.h>

#include <array>

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

using equip_set::Mode;

constexpr DWORD kWindowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD kListStyle = WS_BORDER | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_TABSTOP;
constexpr DWORD kEditBoxStyle = DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr UINT_PTR kListKeysSubclassId = 0x4553;
constexpr int kStatusTextLimit = 260;

// The set names of the character last read, kept for the whole run (whichever window asks).
struct SetNames {
    std::array<std::u16string, equip_set::kSetCount> names;
    std::wstring character;  // empty until a character's folder was found
    std::wstring folder;     // its save folder

    std::wstring FilePath() const { return folder + L"\\" + W(equip_set::kNamesFile); }
};

SetNames& Sets() {
    static SetNames sets;
    return sets;
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void BuildSetTemplate(DialogTemplate& t) {
    namespace texts = equip_set::texts;
    t.Create(texts::kWindowTitle.Get(), {0, 0, 180, 108}, kWindowStyle, 0, PanelFont());
    t.AddControl(ControlAtom::kListBox, CEquipSetDlg::kListId, {6, 6, 168, 84}, kListStyle, 0, u"");
    // Outside the client area: never seen, but it keeps the id of the back command taken.
    t.AddControl(ControlAtom::kButton, CVrlListBox::kCmdBack, {187, 7, 50, 14}, BS_PUSHBUTTON, 0, u"Button1");
    t.AddControl(ControlAtom::kStatic, -1, {6, 96, 168, 12}, SS_LEFT | SS_NOPREFIX, 0, texts::kKeysHint.Get());
}

void BuildEditTemplate(DialogTemplate& t) {
    namespace texts = equip_set::texts;
    t.Create(texts::kEditTitle.Get(), {0, 0, 192, 48}, kEditBoxStyle, 0, PanelFont());
    t.AddControl(ControlAtom::kEdit, CEditStringDlg::kEditId, {6, 6, 180, 12}, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL,
                 0, u"");
    t.AddControl(ControlAtom::kButton, IDOK, {60, 24, 60, 18}, BS_DEFPUSHBUTTON | WS_TABSTOP, 0, texts::kOk.Get());
    t.AddControl(ControlAtom::kButton, IDCANCEL, {126, 24, 60, 18}, BS_PUSHBUTTON | WS_TABSTOP, 0,
                 texts::kCancel.Get());
}

}  // namespace

// --- List box keys ----------------------------------------------------------------------------

bool CVrlListBox::SubclassWindow(HWND listBox) {
    if (!listBox || !::SetWindowSubclass(listBox, &CVrlListBox::KeyProc, kListKeysSubclassId, 0)) return false;
    m_hWnd = listBox;
    return true;
}

LRESULT CALLBACK CVrlListBox::KeyProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR) {
    if (msg == WM_KEYDOWN) {
        WPARAM command = 0;
        switch (wp) {
        case VK_RETURN:
        case VK_RIGHT: command = IDOK; break;
        case VK_ESCAPE:
        case VK_SHIFT: command = IDCANCEL; break;
        case VK_LEFT: command = kCmdBack; break;
        }
        if (command != 0) {
            ::PostMessageW(::GetParent(hwnd), WM_COMMAND, command, 0);
            return 0;
        }
    } else if (msg == WM_NCDESTROY) {
        ::RemoveWindowSubclass(hwnd, &CVrlListBox::KeyProc, id);
    }
    return ::DefSubclassProc(hwnd, msg, wp, lp);
}

// --- Edit dialog ------------------------------------------------------------------------------

INT_PTR CEditStringDlg::DoModal() {
    static DialogTemplate t;
    if (!t.IsCreated()) BuildEditTemplate(t);
    return DoModalIndirect(t, ::GetActiveWindow());
}

bool CEditStringDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG: {
        HWND edit = Item(kEditId);
        ::SendMessageW(edit, EM_LIMITTEXT, equip_set::kEditLimit, 0);  // no typing what OK would drop
        ::SetWindowTextW(edit, W(text_));
        ::SendMessageW(edit, EM_SETSEL, text_.size(), static_cast<LPARAM>(text_.size()));
        ::SetFocus(edit);
        result = FALSE;  // the focus is set
        return true;
    }
    case WM_COMMAND:
        if (LOWORD(wp) == IDOK) {
            wchar_t text[equip_set::kEditLimit + 1] = {};
            ::GetDlgItemTextW(m_hWnd, kEditId, text, equip_set::kEditLimit + 1);
            text_ = U(text);
            EndDialog(IDOK);
            return true;
        }
        if (LOWORD(wp) == IDCANCEL) {
            EndDialog(IDCANCEL);
            return true;
        }
        return false;
    }
    return false;
}

// --- Equip set window -------------------------------------------------------------------------

HWND CEquipSetDlg::Create() {
    static DialogTemplate t;
    if (!t.IsCreated()) BuildSetTemplate(t);
    return CreateIndirect(t);
}

bool CEquipSetDlg::LoadSetNames() {
    SetNames& sets = Sets();
    if (!sets.character.empty()) return true;

    const std::wstring character = game_link::StatusStaticText(App().frame, game_link::kSlotStatusStatic1,
                                                              kStatusTextLimit);
    const std::wstring folder = App().folders.gameSave + L"\\" + character;
    // Only a folder right inside the save folder is a character's. A failed check is not
    // remembered, so the next request looks again (the game may not have loaded a character yet).
    if (!equip_set::IsCharacterFolderName(U16(character)) || !IsFolder(folder)) {
        ::MessageBoxW(m_hWnd, W(equip_set::texts::kNoCharacter.Get()), L"", MB_OK);
        return false;
    }
    sets.character = character;
    sets.folder = folder;
    const std::wstring path = sets.FilePath();
    for (int i = 0; i < equip_set::kSetCount; ++i) {
        wchar_t name[equip_set::kNameReadLimit + 1] = {};
        ::GetPrivateProfileStringW(W(equip_set::kNamesSection), W(equip_set::NameKey(i)),
                                   W(equip_set::DefaultName(i, LanguageIndex())), name,
                                   equip_set::kNameReadLimit + 1, path.c_str());
        sets.names[static_cast<size_t>(i)] = U(name);
    }
    return true;
}

void CEquipSetDlg::AddEntry(const std::u16string& text) const {
    ::SendDlgItemMessageW(m_hWnd, kListId, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(text)));
}

int CEquipSetDlg::Selection() const {
    return static_cast<int>(::SendDlgItemMessageW(m_hWnd, kListId, LB_GETCURSEL, 0, 0));
}

void CEquipSetDlg::SwitchMode(Mode mode) {
    mode_ = mode;
    SetText(W(equip_set::ModeTitle(mode).Get()));
    ::SendDlgItemMessageW(m_hWnd, kListId, LB_RESETCONTENT, 0, 0);
    if (mode == Mode::kMenu) {
        for (Mode entry : {Mode::kRestore, Mode::kSave, Mode::kEdit}) AddEntry(equip_set::ModeTitle(entry).Get());
    } else {
        const SetNames& sets = Sets();
        for (int i = 0; i < equip_set::kSetCount; ++i) AddEntry(equip_set::ListEntry(i, sets.names[static_cast<size_t>(i)]));
    }
    ::SendDlgItemMessageW(m_hWnd, kListId, LB_SETCURSEL, 0, 0);
}

bool CEquipSetDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_TIMER:
        if (wp != kFocusTimer) return false;
        ::SetFocus(list_.Handle());
        ::KillTimer(m_hWnd, kFocusTimer);
        return true;
    case WM_KEYDOWN:
        return true;
    case WM_COMMAND:
        switch (LOWORD(wp)) {
        case IDOK: OnChoose(); return true;
        case IDCANCEL: Show(SW_HIDE); return true;
        case CVrlListBox::kCmdBack: OnBack(); return true;
        }
        return false;
    }
    return false;
}

void CEquipSetDlg::OnInitDialog() {
    SetProgramIcons(m_hWnd);
    list_.SubclassWindow(Item(kListId));
    game_link::WriteWindowSlot(App().frame, game_link::kSlotEquipSetWindow, m_hWnd);
    SwitchMode(Mode::kMenu);
}

void CEquipSetDlg::OnBack() {
    if (mode_ == Mode::kMenu) {
        Show(SW_HIDE);
    } else {
        SwitchMode(Mode::kMenu);
    }
}

void CEquipSetDlg::OnChoose() {
    const int selected = Selection();
    if (selected < 0) return;  // an emptied list after a request: nothing to choose
    switch (mode_) {
    case Mode::kMenu:
        SwitchMode(equip_set::ModeForMenuChoice(selected));
        return;
    case Mode::kRestore:
    case Mode::kSave: {
        HWND frame = App().frame;
        if (HWND game = game_link::GameDrawWindow(frame)) ::SetForegroundWindow(game);
        ::Sleep(0);
        ::SendDlgItemMessageW(m_hWnd, kListId, LB_RESETCONTENT, 0, 0);
        game_link::WriteSlot(frame, game_link::kSlotEquipSetRequest, equip_set::RequestCode(mode_, selected));
        return;
    }
    case Mode::kEdit:
        RenameSet(selected);
        return;
    }
}

void CEquipSetDlg::RenameSet(int index) {
    if (index >= equip_set::kSetCount) return;
    SetNames& sets = Sets();
    std::u16string name = sets.names[static_cast<size_t>(index)];
    CEditStringDlg edit(name);
    if (edit.DoModal() != IDOK) return;
    sets.names[static_cast<size_t>(index)] = name;
    // A file that cannot be written loses the new name at the end of the run; the list has it now.
    ::WritePrivateProfileStringW(W(equip_set::kNamesSection), W(equip_set::NameKey(index)), W(name),
                                 sets.FilePath().c_str());
    const std::u16string entry = equip_set::ListEntry(index, name);
    ::SendDlgItemMessageW(m_hWnd, kListId, LB_DELETESTRING, static_cast<WPARAM>(index), 0);
    ::SendDlgItemMessageW(m_hWnd, kListId, LB_INSERTSTRING, static_cast<WPARAM>(index),
                          reinterpret_cast<LPARAM>(W(entry)));
    ::SendDlgItemMessageW(m_hWnd, kListId, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

}  // namespace vrl
