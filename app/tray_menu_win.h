#pragma once
// The tray menu on screen: real popup menus made from the portable model, and the frame's
// handler for the tray icon's callback message.

#include <windows.h>

#include "app/tray_menu.h"

namespace vrl {

// The three popups of one click. The main popup links the placement popup and, when the model
// has an entry for it, the screenshot popup; each of the three is destroyed exactly once.
class TrayPopupMenus {
public:
    explicit TrayPopupMenus(const tray_menu::TrayMenuModel& model);
    ~TrayPopupMenus();
    TrayPopupMenus(const TrayPopupMenus&) = delete;
    TrayPopupMenus& operator=(const TrayPopupMenus&) = delete;

    HMENU Main() const { return main_; }
    HMENU Placement() const { return placement_; }
    HMENU Screenshot() const { return screenshot_; }

private:
    HMENU main_ = nullptr;
    HMENU placement_ = nullptr;
    HMENU screenshot_ = nullptr;
};

// Appends `entries` to `menu`; submenu entries link the given popups.
void AppendMenuEntries(HMENU menu, const tray_menu::MenuEntries& entries, HMENU placement, HMENU screenshot);

// Where the menu opens for a cursor at `cursor`: the cursor itself, except that a cursor that
// lies on no monitor has its x clamped into the work area of the nearest one.
POINT TrayMenuAnchor(POINT cursor);

// The frame's handler for the tray callback: a button-down on our icon opens the menu at the
// cursor, owned by `frame`; the chosen item arrives at the frame as WM_COMMAND. Any other
// notification does nothing. True when a menu was opened.
bool HandleTrayNotify(HWND frame, WPARAM iconId, LPARAM mouseMessage);

}  // namespace vrl
