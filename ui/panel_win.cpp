#include "ui/panel_win.h"

#include "app/resources/resource_ids.h"
#include "ui/panel_style.h"
#include "ui/wide_win.h"

#include <commctrl.h>

#include <utility>

namespace vrl {
namespace {

HICON LoadProgramIcon(int widthMetric, int heightMetric) {
    return static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr),
                                           MAKEINTRESOURCEW(IDI_VRL_PROGRAM), IMAGE_ICON,
                                           ::GetSystemMetrics(widthMetric),
                                           ::GetSystemMetrics(heightMetric), LR_SHARED));
}

// --- Character set repair -------------------------------------------------------------------

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

LRESULT CALLBACK FontRepairProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                DWORD_PTR data) {
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

// --- Creation -------------------------------------------------------------------------------

// The caller's procedure and font for the dialog being created on this thread.
struct PendingDialog {
    DLGPROC proc;
    const DialogFont* font;
};
thread_local PendingDialog* g_pending = nullptr;

// Takes the dialog's first message: installs the font repair, then hands the dialog over to the
// caller's procedure for good.
INT_PTR CALLBACK StartTemplateDialog(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    PendingDialog* pending = std::exchange(g_pending, nullptr);
    if (!pending) return FALSE;
    if (pending->font && !pending->font->face.empty()) InstallTemplateFont(hwnd, *pending->font);
    ::SetWindowLongPtrW(hwnd, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(pending->proc));
    return pending->proc ? pending->proc(hwnd, msg, wp, lp) : FALSE;
}

const DLGTEMPLATE* AsDialogTemplate(const DialogTemplate& dialogTemplate) {
    return dialogTemplate.IsCreated() ? static_cast<const DLGTEMPLATE*>(dialogTemplate.Data())
                                      : nullptr;
}

}  // namespace

void SetProgramIcons(HWND window) {
    if (HICON big = LoadProgramIcon(SM_CXICON, SM_CYICON))
        ::SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big));
    if (HICON smallIcon = LoadProgramIcon(SM_CXSMICON, SM_CYSMICON))
        ::SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon));
}

void SetPanelTitle(HWND window, const LangText& name) {
    ::SetWindowTextW(window, W(PanelTitle(name)));
}

void InstallTemplateFont(HWND dialog, const DialogFont& font) {
    auto* repair = new FontRepair{font};
    if (!::SetWindowSubclass(dialog, FontRepairProc, kFontSubclassId,
                             reinterpret_cast<DWORD_PTR>(repair)))
        delete repair;
}

HWND CreatePanelIndirect(const DialogTemplate& dialogTemplate, DLGPROC proc, LPARAM param) {
    const DLGTEMPLATE* data = AsDialogTemplate(dialogTemplate);
    if (!data) return nullptr;
    const DialogFont font = dialogTemplate.Font();
    PendingDialog pending{proc, &font};
    g_pending = &pending;
    HWND hwnd = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), data, nullptr,
                                             StartTemplateDialog, param);
    g_pending = nullptr;
    return hwnd;
}

INT_PTR RunModalIndirect(const DialogTemplate& dialogTemplate, DLGPROC proc, LPARAM param) {
    const DLGTEMPLATE* data = AsDialogTemplate(dialogTemplate);
    if (!data) return -1;
    const DialogFont font = dialogTemplate.Font();
    PendingDialog pending{proc, &font};
    g_pending = &pending;
    const INT_PTR result = ::DialogBoxIndirectParamW(
        ::GetModuleHandleW(nullptr), data, ::GetActiveWindow(), StartTemplateDialog, param);
    g_pending = nullptr;
    return result;
}

void CentreOnParent(HWND window) {
    // A hidden or minimised owner (the frame is never shown) has no place worth centring on:
    // the box then goes to the middle of the work area of its monitor.
    HWND parent = ::GetParent(window);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(parent ? parent : window, MONITOR_DEFAULTTONEAREST), &monitor);
    RECT area = monitor.rcWork;
    if (parent && ::IsWindowVisible(parent) && !::IsIconic(parent)) ::GetWindowRect(parent, &area);

    RECT box{};
    ::GetWindowRect(window, &box);
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    int x = (area.left + area.right - width) / 2;
    int y = (area.top + area.bottom - height) / 2;
    const RECT& work = monitor.rcWork;
    if (x + width > work.right) x = work.right - width;
    if (y + height > work.bottom) y = work.bottom - height;
    if (x < work.left) x = work.left;
    if (y < work.top) y = work.top;
    ::SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace vrl
