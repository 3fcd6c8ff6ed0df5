#pragma once
// The notification-area icon: the player's only handle on the hidden frame.

#include <windows.h>
#include <shellapi.h>

namespace vrl {

class TrayIcon {
public:
    static constexpr UINT kId = 1234;
    static constexpr UINT kCallbackMessage = WM_APP + 1;

    // Adds the icon once; its icon: VrlTray.ico in the current folder, else resource 210 at 48x48,
    // else the frame's small icon. Failure is silent: hotkeys and windows still work.
    void Add(HWND frame, HINSTANCE instance);
    void Remove();
    ~TrayIcon();

private:
    HICON LoadTrayIcon(HWND frame, HINSTANCE instance);

    NOTIFYICONDATAW data_{};
    HICON ownedIcon_ = nullptr;
    bool added_ = false;
};

}  // namespace vrl
