#include "tools/window_placement_win.h"

#include "app/app_state_win.h"
#include "app/command_ids.h"
#include "app/game_link.h"
#include "log/log_window_win.h"
#include "ui/layout_win.h"

namespace vrl {
namespace {

using placement::DefaultPlace;
using placement::SavedLayout;
using placement::SavedWindow;

constexpr UINT kPlacementLength = 44;  // the record's size on either bitness

HWND Existing(const PlaceableWindow& row) {
    HWND window = row.window ? row.window() : nullptr;
    return window && ::IsWindow(window) ? window : nullptr;
}

SavedWindow ReadWindow(HWND window, std::u16string_view id) {
    WINDOWPLACEMENT record{};
    record.length = kPlacementLength;
    ::GetWindowPlacement(window, &record);
    const RECT& r = record.rcNormalPosition;
    return {std::u16string(id), {r.left, r.top, r.right, r.bottom}, ::IsWindowVisible(window) ? 1 : 0};
}

// The saved rectangle in screen coordinates, for SetWindowPos. Without this every restore (and the
// automatic one at each start) would shift the window by the taskbar's size when the taskbar is
// at the top or on the left.
PixelRect OnScreen(HWND window, const PixelRect& workspace) {
    if (::GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) return workspace;
    const RECT r{workspace.left, workspace.top, workspace.right, workspace.bottom};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!::GetMonitorInfoW(::MonitorFromRect(&r, MONITOR_DEFAULTTONEAREST), &monitor)) return workspace;
    return placement::ScreenFromWorkspace(workspace, monitor.rcWork.left - monitor.rcMonitor.left,
                                          monitor.rcWork.top - monitor.rcMonitor.top);
}

void ApplyWindow(HWND window, PlaceableWindow::Restore how, const SavedWindow& saved) {
    const PixelRect& r = saved.normal;
    const PixelRect screen = how == PlaceableWindow::Restore::FullPlacement ? r : OnScreen(window, r);
    constexpr UINT kMoveOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
    switch (how) {
    case PlaceableWindow::Restore::MoveOnly:
        ::SetWindowPos(window, nullptr, screen.left, screen.top, 0, 0, kMoveOnly);
        return;
    case PlaceableWindow::Restore::MoveAndShow:
        ::SetWindowPos(window, nullptr, screen.left, screen.top, 0, 0, kMoveOnly);
        ::ShowWindow(window, saved.showCmd ? SW_SHOW : SW_HIDE);
        return;
    case PlaceableWindow::Restore::FullPlacement: {
        WINDOWPLACEMENT record{};
        record.length = kPlacementLength;
        record.showCmd = static_cast<UINT>(saved.showCmd);
        record.rcNormalPosition = RECT{r.left, r.top, r.right, r.bottom};
        ::SetWindowPlacement(window, &record);
        return;
    }
    }
}

placement::WorkArea PrimaryWorkArea() {
    RECT r{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &r, 0);
    return {r.right - r.left, r.bottom - r.top, r.bottom};
}

void ResetWindow(HWND window, const DefaultPlace& place, const placement::WorkArea& area) {
    switch (place.kind) {
    case DefaultPlace::Kind::ScreenOrigin:
        ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
        return;
    case DefaultPlace::Kind::AboveWorkArea: {
        const PixelRect r = placement::AboveWorkAreaRect(place, area, WindowDpi(window));
        ::SetWindowPos(window, nullptr, r.left, r.top, r.Width(), r.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    case DefaultPlace::Kind::AnchoredInArea: {
        const PixelRect r = AnchoredWindowRect(window, place.units, area.width, area.height);
        ::MoveWindow(window, r.left, r.top, r.Width(), r.Height(), TRUE);
        return;
    }
    }
}

}  // namespace

WindowPlacement::WindowPlacement(std::vector<PlaceableWindow> windows, CLogExtenderDlg* logWindows)
    : windows_(std::move(windows)), logWindows_(logWindows) {}

void WindowPlacement::OnCommand(unsigned id) {
    switch (id) {
    case kCmdPlacementSave:
        Save();
        return;
    case kCmdPlacementRestore:
        Restore();
        return;
    case kCmdPlacementReset:
        Reset();
        return;
    case game_link::kCmdRestorePlacement:
        if (App().settings.enRestoreWindowPlacement) Restore();
        return;
    }
}

const PlaceableWindow* WindowPlacement::Find(std::u16string_view id) const {
    for (const PlaceableWindow& row : windows_) {
        if (row.id == id) return &row;
    }
    return nullptr;
}

void WindowPlacement::Save() const {
    SavedLayout layout;
    if (logWindows_ && logWindows_->IsWindow()) {
        logWindows_->FlushPendingLines();  // lines put aside go in before the views are read
        layout.logDocked = logWindows_->IsDocked() ? 1 : 0;
        layout.logTabPage = logWindows_->SelectedPage();
    }
    for (const PlaceableWindow& row : windows_) {
        if (HWND window = Existing(row)) layout.windows.push_back(ReadWindow(window, row.id));
    }
    placement::ToTable(layout).SaveFile(placement::kFileName);
}

void WindowPlacement::Restore() const {
    KcsvFile table;
    if (!table.LoadFile(placement::kFileName)) return;
    const SavedLayout layout = placement::FromTable(table);
    const bool fullLogEnabled = App().settings.enLogExtender_FullLog != 0;
    bool fullLogShown = false;
    for (SavedWindow saved : layout.windows) {
        const PlaceableWindow* row = Find(saved.id);
        HWND window = row ? Existing(*row) : nullptr;
        if (!window) continue;
        if (row->id == placement::kFullLogId) {
            fullLogShown = fullLogShown || saved.showCmd != 0;
            if (!fullLogEnabled) saved.showCmd = SW_HIDE;
        }
        ApplyWindow(window, row->restore, saved);
    }
    if (const PlaceableWindow* game = Find(placement::kGameId)) {
        if (HWND window = Existing(*game)) ::SetForegroundWindow(window);
    }
    ApplyLogState(layout, fullLogShown);
}

void WindowPlacement::ApplyLogState(const SavedLayout& layout, bool fullLogShown) const {
    const AppSettings& settings = App().settings;
    if (!settings.enLogExtender || !logWindows_ || !logWindows_->IsWindow()) return;
    if (settings.enLogExtender_FullLog) {
        logWindows_->SetDocked(layout.logDocked != 0);
        if (logWindows_->IsDocked()) logWindows_->SelectPage(layout.logTabPage);
    } else if (fullLogShown) {
        logWindows_->Child().Show(SW_SHOW);
    }
}

void WindowPlacement::Reset() const {
    const placement::WorkArea area = PrimaryWorkArea();
    for (const PlaceableWindow& row : windows_) {
        if (HWND window = Existing(row)) ResetWindow(window, placement::DefaultPlaceOf(row.id), area);
    }
}

}  // namespace vrl
