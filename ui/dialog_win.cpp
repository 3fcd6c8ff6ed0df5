#include "ui/dialog_win.h"

#include "ui/panel_win.h"

#include <utility>

namespace vrl {
namespace {

// Messages whose answer a dialog procedure returns directly instead of through DWLP_MSGRESULT.
bool AnswersDirectly(UINT msg) {
    switch (msg) {
    case WM_INITDIALOG:
    case WM_CHARTOITEM:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_QUERYDRAGICON:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return true;
    }
    return false;
}

// The font of the template being created on this thread, for the dialog's first message.
thread_local const DialogFont* g_pendingFont = nullptr;

}  // namespace

HWND CDialogImplBase::CreateIndirect(const void* dialogTemplate, HWND owner) {
    ExpectCreation(this);
    HWND hwnd = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr),
                                             static_cast<LPCDLGTEMPLATEW>(dialogTemplate), owner,
                                             &CDialogImplBase::StartDialogProc, 0);
    if (!hwnd) {
        CancelCreation(this);
        Detach();
    }
    return hwnd;
}

HWND CDialogImplBase::CreateIndirect(const DialogTemplate& dialogTemplate, HWND owner) {
    if (!dialogTemplate.IsCreated()) return nullptr;
    const DialogFont font = dialogTemplate.Font();
    g_pendingFont = font.face.empty() ? nullptr : &font;
    HWND hwnd = CreateIndirect(dialogTemplate.Data(), owner);
    g_pendingFont = nullptr;
    return hwnd;
}

INT_PTR CDialogImplBase::DoModalIndirect(const void* dialogTemplate, HWND owner) {
    ExpectCreation(this);
    const INT_PTR result = ::DialogBoxIndirectParamW(::GetModuleHandleW(nullptr),
                                                     static_cast<LPCDLGTEMPLATEW>(dialogTemplate), owner,
                                                     &CDialogImplBase::StartDialogProc, 0);
    if (result == -1) CancelCreation(this);
    return result;
}

INT_PTR CDialogImplBase::DoModalIndirect(const DialogTemplate& dialogTemplate, HWND owner) {
    if (!dialogTemplate.IsCreated()) return -1;
    const DialogFont font = dialogTemplate.Font();
    g_pendingFont = font.face.empty() ? nullptr : &font;
    const INT_PTR result = DoModalIndirect(dialogTemplate.Data(), owner);
    g_pendingFont = nullptr;
    return result;
}

INT_PTR CALLBACK CDialogImplBase::StartDialogProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = static_cast<CDialogImplBase*>(TakeCreation());
    if (!self) return FALSE;
    if (const DialogFont* font = std::exchange(g_pendingFont, nullptr)) InstallTemplateFont(hwnd, *font);
    self->Attach(hwnd);
    ::SetWindowLongPtrW(hwnd, DWLP_USER, reinterpret_cast<LONG_PTR>(self));
    ::SetWindowLongPtrW(hwnd, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(&CDialogImplBase::DialogProc));
    return self->Route(hwnd, msg, wp, lp);
}

INT_PTR CALLBACK CDialogImplBase::DialogProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = reinterpret_cast<CDialogImplBase*>(::GetWindowLongPtrW(hwnd, DWLP_USER));
    if (!self) return FALSE;
    return self->Route(hwnd, msg, wp, lp);
}

void CDialogImplBase::AnswerAheadOfDialogManager(UINT msg) {
    aheadMessage_ = msg;
    if (dialogManagerProc_ || !m_hWnd) return;
    dialogManagerProc_ = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CDialogImplBase::AheadProc)));
}

LRESULT CALLBACK CDialogImplBase::AheadProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = reinterpret_cast<CDialogImplBase*>(::GetWindowLongPtrW(hwnd, DWLP_USER));
    if (self && msg == self->aheadMessage_) {
        LRESULT result = 0;
        if (self->ProcessWindowMessage(hwnd, msg, wp, lp, result)) return result;
    }
    // Once WM_NCDESTROY has been handled the window has no object any more: the class procedure
    // is the dialog manager's.
    WNDPROC next = self && self->dialogManagerProc_
                       ? self->dialogManagerProc_
                       : reinterpret_cast<WNDPROC>(::GetClassLongPtrW(hwnd, GCLP_WNDPROC));
    return ::CallWindowProcW(next, hwnd, msg, wp, lp);
}

INT_PTR CDialogImplBase::Route(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    LRESULT result = 0;
    const bool handled = ProcessWindowMessage(hwnd, msg, wp, lp, result);
    if (msg == WM_NCDESTROY) {
        ::SetWindowLongPtrW(hwnd, DWLP_USER, 0);
        aheadMessage_ = 0;
        dialogManagerProc_ = nullptr;
        Detach();
        OnFinalMessage(hwnd);
        return handled ? TRUE : FALSE;
    }
    if (!handled) return FALSE;
    if (AnswersDirectly(msg)) return static_cast<INT_PTR>(result);
    // Reading is local; writing asks the Wine server every time.
    if (::GetWindowLongPtrW(hwnd, DWLP_MSGRESULT) != result) ::SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
    return TRUE;
}

}  // namespace vrl
