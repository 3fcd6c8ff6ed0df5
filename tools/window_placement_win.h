#pragma once
// Saving, restoring and resetting the arrangement of the game window and the companion windows.
// The frame hands over its table of placeable windows; each panel is one row of it. Where a reset
// puts each one is the default layout of tools/window_placement.h.

#include <windows.h>

#include <functional>
#include <string_view>
#include <vector>

#include "tools/window_placement.h"

namespace vrl {

class CLogExtenderDlg;

struct PlaceableWindow {
    enum class Restore {
        MoveOnly,      // another process's window: only its top-left corner is ours to set
        MoveAndShow,   // moved, keeping its size, then shown or hidden
        FullPlacement  // rectangle and show state by the placement record
    };
    std::u16string_view id;
    std::function<HWND()> window;  // null (or no longer a window) while it does not exist
    Restore restore = Restore::FullPlacement;
};

class WindowPlacement {
public:
    // `windows` in the order of the file; `logWindows` for the log windows' docking and tab page.
    WindowPlacement(std::vector<PlaceableWindow> windows, CLogExtenderDlg* logWindows);

    // Commands 34000 to 34099; ids without an operation do nothing.
    void OnCommand(unsigned id);

    void Save() const;
    void Restore() const;
    void Reset() const;

private:
    const PlaceableWindow* Find(std::u16string_view id) const;
    void ApplyLogState(const placement::SavedLayout& layout, bool fullLogShown) const;

    std::vector<PlaceableWindow> windows_;
    CLogExtenderDlg* logWindows_;
};

}  // namespace vrl
