#include "app/tray_menu_win.h"

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "app/tray_icon_win.h"
#include "ui/lang_text.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

// The VST host writes "TRUE" or nothing; a longer text cannot be it.
constexpr int kStatusStatic2Limit = 15;

}  // namespace

void AppendMenuEntries(HMENU menu, const tray_menu::MenuEntries& entries, HMENU placement, HMENU screenshot) {
    using Kind = tray_menu::MenuEntry::Kind;
    for (const tray_menu::MenuEntry& entry : entries) {
        switch (entry.kind) {
        case Kind::Command:
            ::AppendMenuW(menu, MF_STRING, entry.id, W(entry.text));
            break;
        case Kind::Separator:
            ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            break;
        case Kind::PlacementSubmenu:
            ::AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(placement), W(entry.text));
            break;
        case Kind::ScreenshotSubmenu:
            ::AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(screenshot), W(entry.text));
            break;
        }
    }
}

TrayPopupMenus::TrayPopupMenus(const tray_menu::TrayMenuModel& model)
    : main_(::CreatePopupMenu()), placement_(::CreatePopupMenu()), screenshot_(::CreatePopupMenu()) {
    AppendMenuEntries(placement_, model.placement, nullptr, nullptr);
    AppendMenuEntries(screenshot_, model.screenshot, nullptr, nullptr);
    AppendMenuEntries(main_, model.main, placement_, screenshot_);
}

TrayPopupMenus::~TrayPopupMenus() {
    // Destroying a menu destroys the popups linked into it: unlink them first, so that each of
    // the three goes exactly once whether or not it was linked.
    if (main_) {
        for (int position = ::GetMenuItemCount(main_) - 1; position >= 0; --position) {
            if (::GetSubMenu(main_, position)) ::RemoveMenu(main_, static_cast<UINT>(position), MF_BYPOSITION);
        }
        ::DestroyMenu(main_);
    }
    if (placement_) ::DestroyMenu(placement_);
    if (screenshot_) ::DestroyMenu(screenshot_);
}

POINT TrayMenuAnchor(POINT cursor) {
    if (::MonitorFromPoint(cursor, MONITOR_DEFAULTTONULL)) return cursor;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!::GetMonitorInfoW(::MonitorFromPoint(cursor, MONITOR_DEFAULTTONEAREST), &monitor)) return cursor;
    const RECT& work = monitor.rcWork;
    if (cursor.x < work.left) cursor.x = work.left;
    if (cursor.x >= work.right) cursor.x = work.right - 1;
    return cursor;
}

bool HandleTrayNotify(HWND frame, WPARAM iconId, LPARAM mouseMessage) {
    if (iconId != TrayIcon::kId) return false;
    if (mouseMessage != WM_LBUTTONDOWN && mouseMessage != WM_RBUTTONDOWN) return false;

    const std::wstring vstState = game_link::StatusStaticText(frame, game_link::kSlotStatusStatic2,
                                                              kStatusStatic2Limit);
    const int screen = static_cast<int>(game_link::ReadSlot(frame, game_link::kSlotScreen));
    const TrayPopupMenus menus(tray_menu::BuildTrayMenu(App().settings, U16(vstState), screen, LanguageIndex()));

    POINT cursor{};
    ::GetCursorPos(&cursor);
    const POINT at = TrayMenuAnchor(cursor);
    // The menu only closes on a click elsewhere while its owner is the foreground window.
    ::SetForegroundWindow(frame);
    ::TrackPopupMenu(menus.Main(), TPM_BOTTOMALIGN, at.x, at.y, 0, frame, nullptr);
    // Lets the next click on the icon open the menu again instead of closing it at once.
    ::PostMessageW(frame, WM_NULL, 0, 0);
    return true;
}

}  // namespace vrl
