#pragma once
// How the module finds the companion windows whose handles the companion does not publish: among
// the top-level dialogs ("#32770") of the companion's process, by title in either language.

#include "sim/module/scenario.h"

#include <windows.h>

namespace vrl::sim {

// The first visible or hidden dialog of `companionProcessId` whose title belongs to `target`.
HWND FindCompanionWindow(DWORD companionProcessId, Target target);

// The game's main window (class "hspwnd0") in this process, or null.
HWND FindOwnGameWindow();

}  // namespace vrl::sim
