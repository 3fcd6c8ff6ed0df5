#pragma once
// Win32 side of the panel conventions: the program icon as a panel's window icons and the title
// rule applied to a window. Panels themselves are CDialogImplBase objects (ui/dialog_win.h).

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

}  // namespace vrl
