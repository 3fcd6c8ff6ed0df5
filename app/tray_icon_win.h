#pragma once
// The notification-area icon: the player's only handle on the hidden frame.

#include <windows.h>
#include <shellapi.h>

namespace vrl {

class TrayIcon {
public:
    static constexpr UINT kId = 1234;
    static constexpr UINT kCallbackMessage = WM_APP + 1;

    // Adds the icon; its icon: VrlTray.ico in the current folder, else resource 210 at 48x48,
    // else the frame's small icon. Failure is silent: hotkeys and windows still work, and
    // RetryAdd puts the icon in place once the notification area takes it.
    void Add(HWND frame, HINSTANCE instance);
    void Remove();
    ~TrayIcon();

    // Called on the frame's timer: adds the icon again while an earlier add failed (the taskbar
    // was not up yet, or the shell did not answer in time).
    void RetryAdd();
    // The shell broadcasts "TaskbarCreated" whenever Explorer (re)starts; the icons it showed are
    // gone and each program adds its own again. True when `msg` was that broadcast.
    bool OnShellMessage(UINT msg);

private:
    HICON LoadTrayIcon(HWND frame, HINSTANCE instance);
    void AllowTaskbarCreatedWhenElevated(HWND frame) const;

    NOTIFYICONDATAW data_{};
    HICON ownedIcon_ = nullptr;
    UINT taskbarCreated_ = 0;
    bool wanted_ = false;  // between Add and Remove
    bool added_ = false;   // the shell holds it
};

}  // namespace vrl
