#pragma once
// Dialog base for the companion's panels and modal boxes: created from an in-memory template, with
// one message-map dispatch per class. Modeless panels are never passed through the dialog manager
// by the message loop, so Tab, Enter and Escape do nothing there unless a panel handles them.

#include <array>
#include <cstddef>

#include "ui/dialog_template.h"
#include "ui/window_win.h"

namespace vrl {

class CDialogImplBase : public CWindowImplBase {
public:
    // Modeless, from a built template; nullptr when the template is empty or the dialog cannot be
    // created. The dialog and its controls get the template font's character set even where the
    // dialog manager builds the font with the default one.
    HWND CreateIndirect(const DialogTemplate& dialogTemplate, HWND owner = nullptr);
    // Modal, owned by `owner`, with the same font; returns what EndDialog was given, or -1 when it
    // could not be shown.
    INT_PTR DoModalIndirect(const DialogTemplate& dialogTemplate, HWND owner);
    void EndDialog(INT_PTR result) const { ::EndDialog(m_hWnd, result); }

protected:
    // A modeless panel's OK and Cancel (the close box, Alt+F4) only hide it: true when `wp` of a
    // WM_COMMAND was one of them and the panel is now hidden.
    bool HideOnOkOrCancel(WPARAM wp) const {
        if (LOWORD(wp) != IDOK && LOWORD(wp) != IDCANCEL) return false;
        Show(SW_HIDE);
        return true;
    }

    // From the next message on, `msg` goes to ProcessWindowMessage straight from the window
    // procedure, ahead of the dialog manager, and its result is the answer; what the handler
    // declines still goes to the dialog manager. For a message that another program sends often
    // and waits for (a line of the game's log), or that a control sends many times per paint (a
    // list's text callbacks): under Wine the dialog manager costs several round trips to the
    // server on every message. Only for messages whose answer is the window procedure's result
    // (not DWLP_MSGRESULT); call from WM_INITDIALOG or later, up to kAheadMessages messages.
    static constexpr std::size_t kAheadMessages = 4;
    void AnswerAheadOfDialogManager(UINT msg);

private:
    static INT_PTR CALLBACK StartDialogProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    static LRESULT CALLBACK AheadProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    INT_PTR Route(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);

    std::array<UINT, kAheadMessages> aheadMessages_{};  // 0: unused
    WNDPROC dialogManagerProc_ = nullptr;
};

}  // namespace vrl
