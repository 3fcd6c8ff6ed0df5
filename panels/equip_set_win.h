#pragma once
// The equip set window: a small keyboard-driven menu in the style of the game's own, opened on the
// in-game module's request. The player picks restore, save or edit and then a set; restore and save
// hand a request code back to the module through a frame slot, edit renames the set.

#include <windows.h>

#include <string>

#include "panels/equip_set.h"
#include "ui/dialog_win.h"

namespace vrl {

// The list box's keys: Enter and Right choose (OK), Escape and Shift close (Cancel), Left goes
// back (command 1001); every other key reaches the list box as usual.
class CVrlListBox : public CWindow {
public:
    static constexpr WORD kCmdBack = 1001;

    bool SubclassWindow(HWND listBox);

private:
    static LRESULT CALLBACK KeyProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR data);
};

// Modal: edits `text` in place (OK keeps at most 255 characters; Cancel leaves it alone).
class CEditStringDlg : public CDialogImplBase {
public:
    static constexpr int kEditId = 1000;

    explicit CEditStringDlg(std::u16string& text) : text_(text) {}
    // Owned by the window active now; IDOK, IDCANCEL, or -1 when it could not be shown.
    INT_PTR DoModal();

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    std::u16string& text_;
};

class CEquipSetDlg : public CDialogImplBase {
public:
    static constexpr int kListId = 1000;
    static constexpr UINT_PTR kFocusTimer = 10000;

    // Modeless, without owner, not shown; the template is built on first use.
    HWND Create();
    // Makes sure the current character's set names are in memory. False (after telling the player,
    // in a box owned by this window) when the character's save folder cannot be found.
    bool LoadSetNames();
    void SwitchMode(equip_set::Mode mode);
    equip_set::Mode CurrentMode() const { return mode_; }

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnChoose();
    void OnBack();
    void RenameSet(int index);
    int Selection() const;
    void AddEntry(const std::u16string& text) const;

    CVrlListBox list_;
    equip_set::Mode mode_ = equip_set::Mode::kMenu;
};

}  // namespace vrl
