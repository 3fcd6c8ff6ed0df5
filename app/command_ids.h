#pragma once
// Command and hotkey ids: one id space, owned by the main frame. The tray menu's items carry them,
// the hotkeys use some of them, and any sender may post them to the frame.

namespace vrl {

enum CommandId : unsigned {
    kCmdExit = 32776,
    kCmdScreenshotFirst = 33000,  // range = id - 33000; 33000 is auto-detection
    kCmdScreenshotLast = 33099,
    kCmdPlacementFirst = 34000,
    kCmdPlacementSave = 34000,
    kCmdPlacementRestore = 34001,
    kCmdPlacementReset = 34004,
    kCmdPlacementLast = 34099,  // 34099: restore, when the settings ask for it
    kCmdShowMusicPanel = 34100,
    kCmdShowVstEditor = 34101,
    kCmdShowQuickSearch = 34102,
    kCmdShowFullLog = 34103,
    kCmdShowExtractedLog = 34104,
    kCmdShowPetInfo = 34105,
    kCmdShowItemInfo = 34106,
    kCmdStartSettingsEditor = 34107,
    kCmdAbout = 34108,
    kCmdAboutFrameBase = 57664,
    kCmdExitFrameBase = 57665,
};

}  // namespace vrl
