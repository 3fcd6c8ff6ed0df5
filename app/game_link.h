#pragma once
// The contract with the in-game module: the frame slots (32-bit values in the frame window's extra
// bytes, by byte index), the private requests to the frame and the reload bits.
// The module finds the frame by its class and its title, which is the app name (kAppName).

#include "ui/lang_text.h"

namespace vrl::game_link {

inline constexpr const char16_t* kFrameClass = u"VorrelUI";
inline constexpr int kFrameExtraBytes = 40;

enum Slot : int {
    kSlotGameWindow = 0,       // the game's main window (module)
    kSlotScreen = 4,           // screen now open, as a screenshot range 0..11 (module)
    kSlotReloadFlags = 8,      // reload bits (outside writer sets, companion clears)
    kSlotStatusStatic1 = 12,   // static whose text is the current character's folder (companion)
    kSlotQuickSearchBox = 16,  // quick search word box (companion)
    kSlotEquipSetWindow = 20,  // equip set window (companion)
    kSlotEquipSetRequest = 24, // equip set request 11000+n / 12000+n (companion)
    kSlotItemInfo = 28,        // item information panel (companion)
    kSlotStatusStatic2 = 32,   // static whose text is "TRUE" when the VST instrument has an editor
    kSlotFurtherWindow = 36,   // a further window of the game process (module)
};

enum ReloadBit : unsigned {
    kReloadLogRules = 0x2,
    kReloadMusicRules = 0x4,
    kReloadPetOptions = 0x8,
    kReloadQuickSearch = 0x100,
};

// Requests of the module to the frame.
inline constexpr unsigned kMsgLogViewHandle = 0x9000;  // wParam page 0/1 -> view handle
inline constexpr unsigned kMsgClearLog = 0x9001;       // wParam 0 current page, 1 extracted view
// The game is in front when it asks for the equip set window, and Windows lets only the process
// that had the last input move the foreground: the module calls AllowSetForegroundWindow with the
// companion's process id before it sends this. The companion also takes the foreground itself
// (TakeForeground), so a module that does not still gets a window with the keyboard.
inline constexpr unsigned kMsgOpenEquipSet = 0xA000;
inline constexpr unsigned kCmdRestorePlacement = 34099;

// Hotkey that the treasure map takes from the module.
inline constexpr int kHotkeyTreasureMap = 1200;

}  // namespace vrl::game_link
