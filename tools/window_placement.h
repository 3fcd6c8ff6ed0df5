#pragma once
// The saved arrangement of the game and the companion windows (WindowPlacement.kcsv) as data, and
// the default layout that a reset puts them in. The Win32 side reads and moves the windows.

#include <string>
#include <string_view>
#include <vector>

#include "settings/kcsv.h"
#include "settings/table_schema.h"
#include "ui/geometry.h"

namespace vrl::placement {

inline constexpr const char16_t* kFileName = tables::placement::kFile.data();

// Window ids in the file (compared case-sensitively).
using tables::placement::kGameId, tables::placement::kFullLogId, tables::placement::kExtractedLogId,
    tables::placement::kMusicPanelId, tables::placement::kQuickSearchId, tables::placement::kPetPanelId,
    tables::placement::kItemPanelId;

struct SavedWindow {
    std::u16string id;
    PixelRect normal;  // the window's normal (restored) rectangle
    int showCmd = 0;   // 1 when it was visible, 0 when hidden
};

struct SavedLayout {
    int logDocked = 0;   // the log windows' docked flag
    int logTabPage = 0;  // the full-log window's tab page
    std::vector<SavedWindow> windows;
};

// A fresh table: the two options, then (when there are windows) the six columns and one row each.
KcsvFile ToTable(const SavedLayout& layout);
// Whatever the file holds: a missing column reads as an empty id, sides of 2147483647 and a show
// value of 5; numbers are read like every table number. Options absent read as 0.
SavedLayout FromTable(const KcsvFile& table);

// Where a reset puts a window.
struct DefaultPlace {
    enum class Kind {
        ScreenOrigin,    // moved to (0, 0) keeping its size, on top of the others
        AboveWorkArea,   // `rect`: left, distance of its top above the work area's bottom, width, height
        AnchoredInArea,  // `units`: an anchor rectangle in the window's dialog units on the work area
    };
    Kind kind = Kind::ScreenOrigin;
    PixelRect rect;
    UnitRect units{0, 0, 0, 0};
};

inline DefaultPlace AtScreenOrigin() { return {DefaultPlace::Kind::ScreenOrigin, {}, {0, 0, 0, 0}}; }
inline DefaultPlace AboveWorkArea(int left, int above, int width, int height) {
    return {DefaultPlace::Kind::AboveWorkArea, {left, above, width, height}, {0, 0, 0, 0}};
}
inline DefaultPlace AnchoredInArea(const UnitRect& units) { return {DefaultPlace::Kind::AnchoredInArea, {}, units}; }

// The default layout: where a reset puts the window with this id (the game at the screen origin,
// the logs side by side above the work area's bottom, the panels in its far corners).
DefaultPlace DefaultPlaceOf(std::u16string_view id);

struct WorkArea {
    int width = 0, height = 0, bottom = 0;
};

// The rectangle of an AboveWorkArea place for a window drawn at `dpi`: the place's numbers are
// pixels at 96 DPI.
PixelRect AboveWorkAreaRect(const DefaultPlace& place, const WorkArea& area, int dpi);

// A normal rectangle of a placement record is in workspace coordinates, counted from the top-left
// corner of its monitor's work area (unless the window is a tool window); SetWindowPos takes screen
// coordinates. `workLeft` and `workTop` are the work area's offset from the monitor's corner: a
// taskbar on the left or at the top makes them nonzero.
PixelRect ScreenFromWorkspace(const PixelRect& workspace, int workLeft, int workTop);

}  // namespace vrl::placement
