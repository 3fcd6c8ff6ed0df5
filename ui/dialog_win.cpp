#include "ui/dialog_win.h"

#include <algorithm>

#include "ui/wide_win.h"

#include <commctrl.h>

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

// --- Character set repair -------------------------------------------------------------------
// Some dialog managers build the template's font with the default character set instead of the
// template's one. Installed before WM_INITDIALOG, the repair makes the dialog and its controls use
// the wanted character set when they did not get it; a dialog that got it is left alone.

constexpr UINT_PTR kFontSubclassId = 0x564C;

struct FontRepair {
    DialogFont wanted;
    HFONT original = nullptr;  // the dialog manager's font; it stays the dialog manager's
    HFONT replacement = nullptr;
};

BOOL CALLBACK RefontChild(HWND child, LPARAM lp) {
    const auto* repair = reinterpret_cast<const FontRepair*>(lp);
    if (reinterpret_cast<HFONT>(::SendMessageW(child, WM_GETFONT, 0, 0)) == repair->original)
        ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(repair->replacement), FALSE);
    return TRUE;
}

// The controls exist now: build the font with the wanted character set when the dialog's lacks it.
void RepairBeforeInit(HWND dialog, FontRepair& repair) {
    repair.original = reinterpret_cast<HFONT>(::DefSubclassProc(dialog, WM_GETFONT, 0, 0));
    LOGFONTW lf{};
    if (!repair.original || !::GetObjectW(repair.original, sizeof lf, &lf)) return;
    if (lf.lfCharSet == repair.wanted.charset) return;
    lf.lfCharSet = repair.wanted.charset;
    const std::wstring face = Wstr(repair.wanted.face);
    lstrcpynW(lf.lfFaceName, face.c_str(), LF_FACESIZE);
    repair.replacement = ::CreateFontIndirectW(&lf);
    if (repair.replacement)
        ::EnumChildWindows(dialog, RefontChild, reinterpret_cast<LPARAM>(&repair));
}

LRESULT CALLBACK FontRepairProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR data) {
    auto* repair = reinterpret_cast<FontRepair*>(data);
    switch (msg) {
    case WM_INITDIALOG:
        RepairBeforeInit(hwnd, *repair);
        break;
    case WM_GETFONT:
        if (repair->replacement) return reinterpret_cast<LRESULT>(repair->replacement);
        break;
    case WM_NCDESTROY: {
        ::RemoveWindowSubclass(hwnd, FontRepairProc, kFontSubclassId);
        const LRESULT result = ::DefSubclassProc(hwnd, msg, wp, lp);
        if (repair->replacement) ::DeleteObject(repair->replacement);
        delete repair;
        return result;
    }
    }
    return ::DefSubclassProc(hwnd, msg, wp, lp);
}

void InstallTemplateFont(HWND dialog, const DialogFont& font) {
    auto* repair = new FontRepair{font};
    if (!::SetWindowSubclass(dialog, FontRepairProc, kFontSubclassId, reinterpret_cast<DWORD_PTR>(repair)))
        delete repair;
}

// The font of the template being created on this thread, for the dialog's first message.
thread_local const DialogFont* g_pendingFont = nullptr;

const DialogFont* PendingFontOf(const DialogFont& font) { return font.face.empty() ? nullptr : &font; }

}  // namespace

HWND CDialogImplBase::CreateIndirect(const DialogTemplate& dialogTemplate, HWND owner) {
    if (!dialogTemplate.IsCreated()) return nullptr;
    const DialogFont font = dialogTemplate.Font();
    g_pendingFont = PendingFontOf(font);
    ExpectCreation(this);
    HWND hwnd = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr),
                                             static_cast<LPCDLGTEMPLATEW>(dialogTemplate.Data()), owner,
                                             &CDialogImplBase::StartDialogProc, 0);
    g_pendingFont = nullptr;
    if (!hwnd) {
        CancelCreation(this);
        Detach();
    }
    return hwnd;
}

INT_PTR CDialogImplBase::DoModalIndirect(const DialogTemplate& dialogTemplate, HWND owner) {
    if (!dialogTemplate.IsCreated()) return -1;
    const DialogFont font = dialogTemplate.Font();
    g_pendingFont = PendingFontOf(font);
    ExpectCreation(this);
    const INT_PTR result = ::DialogBoxIndirectParamW(::GetModuleHandleW(nullptr),
                                                     static_cast<LPCDLGTEMPLATEW>(dialogTemplate.Data()),
                                                     owner, &CDialogImplBase::StartDialogProc, 0);
    g_pendingFont = nullptr;
    if (result == -1) CancelCreation(this);
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
    for (UINT& slot : aheadMessages_) {
        if (slot == msg) break;
        if (slot == 0) {
            slot = msg;
            break;
        }
    }
    if (dialogManagerProc_ || !m_hWnd) return;
    dialogManagerProc_ = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CDialogImplBase::AheadProc)));
}

LRESULT CALLBACK CDialogImplBase::AheadProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = reinterpret_cast<CDialogImplBase*>(::GetWindowLongPtrW(hwnd, DWLP_USER));
    if (self && msg != 0 &&
        std::find(self->aheadMessages_.begin(), self->aheadMessages_.end(), msg) != self->aheadMessages_.end()) {
        LRESULT result = 0;
        if (self->Dispatch(hwnd, msg, wp, lp, result)) return result;
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
    const bool handled = Dispatch(hwnd, msg, wp, lp, result);
    if (msg == WM_NCDESTROY) {
        ::SetWindowLongPtrW(hwnd, DWLP_USER, 0);
        aheadMessages_ = {};
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
