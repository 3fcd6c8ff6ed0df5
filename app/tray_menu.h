#pragma once
// The tray menu as data: which items the player gets, in which order, with which texts and
// command ids. Built afresh on every click from the settings, the VST editor state and the screen
// the game shows; the Win32 side only turns it into popup menus.

#include <string>
#include <string_view>
#include <vector>

#include "app/command_ids.h"
#include "settings/app_settings.h"
#include "ui/lang_text.h"

namespace vrl::tray_menu {

inline constexpr int kScreenshotRangeCount = 12;

struct MenuEntry {
    enum class Kind {
        Command,
        Separator,
        PlacementSubmenu,   // the entry opens the placement popup
        ScreenshotSubmenu,  // the entry opens the screenshot popup
    };
    Kind kind = Kind::Command;
    unsigned id = 0;  // commands only
    std::u16string text;

    bool operator==(const MenuEntry& other) const {
        return kind == other.kind && id == other.id && text == other.text;
    }
};
using MenuEntries = std::vector<MenuEntry>;

// The three popups of one click. The screenshot popup is always built, but the main popup links
// to it only when screenshots are enabled.
struct TrayMenuModel {
    MenuEntries main;
    MenuEntries placement;
    MenuEntries screenshot;
};

// `statusStatic2` is the text of status static 2 (read with a limit of 15 characters);
// `screenSlot` the value of frame slot 4.
TrayMenuModel BuildTrayMenu(const AppSettings& settings, std::u16string_view statusStatic2, int screenSlot,
                            int language);

MenuEntries PlacementMenu(int language);
MenuEntries ScreenshotMenu(int screenSlot, int language);

// The VST instrument has an editor of its own: the host writes exactly "TRUE".
inline bool VstEditorAvailable(std::u16string_view statusStatic2) { return statusStatic2 == u"TRUE"; }

// Name of a screenshot range 0 to 11, both languages; any other value gives range 0's name.
const LangText& ScreenshotRangeName(int range);
// "Auto detect (&D)" -> "Auto detect": cut at the last "(" unless it is the first character,
// then drop trailing white space, a trailing run of "&" and a leading run of "&".
std::u16string ShortRangeName(std::u16string_view name);
// "Auto &detect [<short name of the range the game shows>]".
std::u16string AutoDetectText(int screenSlot, int language);
// "E&xit Vorrel".
std::u16string ExitText(int language);

}  // namespace vrl::tray_menu
