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

}  // namespace vrl
