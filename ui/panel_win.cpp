#include "ui/panel_win.h"

#include "app/resources/resource_ids.h"
#include "ui/panel_style.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

HICON LoadProgramIcon(int widthMetric, int heightMetric) {
    return static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr),
                                           MAKEINTRESOURCEW(IDI_VRL_PROGRAM), IMAGE_ICON,
                                           ::GetSystemMetrics(widthMetric),
                                           ::GetSystemMetrics(heightMetric), LR_SHARED));
}

}  // namespace

void SetProgramIcons(HWND window) {
    if (HICON big = LoadProgramIcon(SM_CXICON, SM_CYICON))
        ::SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big));
    if (HICON smallIcon = LoadProgramIcon(SM_CXSMICON, SM_CYSMICON))
        ::SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon));
}

void SetPanelTitle(HWND window, const LangText& name) {
    ::SetWindowTextW(window, W(PanelTitle(name)));
}

void CentreOnParent(HWND window) {
    // A hidden or minimised owner (the frame is never shown) has no place worth centring on:
    // the window then goes to the middle of the work area of its monitor.
    HWND parent = ::GetParent(window);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(parent ? parent : window, MONITOR_DEFAULTTONEAREST), &monitor);
    RECT area = monitor.rcWork;
    if (parent && ::IsWindowVisible(parent) && !::IsIconic(parent)) ::GetWindowRect(parent, &area);

    RECT box{};
    ::GetWindowRect(window, &box);
    const int width = box.right - box.left;
    const int height = box.bottom - box.top;
    int x = (area.left + area.right - width) / 2;
    int y = (area.top + area.bottom - height) / 2;
    const RECT& work = monitor.rcWork;
    if (x + width > work.right) x = work.right - width;
    if (y + height > work.bottom) y = work.bottom - height;
    if (x < work.left) x = work.left;
    if (y < work.top) y = work.top;
    ::SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace vrl
