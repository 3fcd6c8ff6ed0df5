#pragma once
// Win32 side of the panel conventions: the program icon as a panel's window icons, the title
// rule applied to a window, and creation of dialogs from in-memory templates.

#include "ui/dialog_template.h"
#include "ui/lang_text.h"

#include <windows.h>

namespace vrl {

// Icon 204 at the system's big and small icon sizes, as the window's big and small icon. Shared
// icons: nothing to free. Without the resource (a test program) the window keeps its icons.
void SetProgramIcons(HWND window);

// "<name in the language in force> - Vorrel".
void SetPanelTitle(HWND window, const LangText& name);

// Centres `window` on its parent, or on the work area of its monitor when it has no parent worth
// centring on (none, hidden or minimised); kept inside the work area.
void CentreOnParent(HWND window);

// Modeless panel: owned by nobody, with the program's instance. nullptr when it cannot be created.
// `proc` receives every message from the first one on, and `param` with WM_INITDIALOG, exactly as
// if it had been given to the dialog creator itself.
HWND CreatePanelIndirect(const DialogTemplate& dialogTemplate, DLGPROC proc, LPARAM param);
// Modal dialog owned by the window that is active now; EndDialog's value, or -1 on failure.
INT_PTR RunModalIndirect(const DialogTemplate& dialogTemplate, DLGPROC proc, LPARAM param);

// Some dialog managers build the template's font with the default character set instead of the
// template's one. Called before WM_INITDIALOG (the helpers above do it on the first message), this
// makes the dialog and its controls use `font`'s character set when they did not get it; a
// dialog that got it is left alone.
void InstallTemplateFont(HWND dialog, const DialogFont& font);

}  // namespace vrl
