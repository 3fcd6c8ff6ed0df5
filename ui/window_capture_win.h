#pragma once
// Copies of what a device context or a window shows, into bitmaps of our own. Under Wine, parts of
// another program's window that other windows cover come out black.

#include <windows.h>

namespace vrl {

// While it lives, the calling thread sees `window` in that window's own DPI awareness. Windows 10
// scales a window that is not DPI-aware on a scaled screen, and gives its rectangles in the
// caller's awareness but its device contexts in the window's own: read both in the window's, so
// that they agree (Windows 10 1607 and later; earlier systems change nothing).
class WindowDpiScope {
public:
    explicit WindowDpiScope(HWND window);
    // The thread sees every window in screen pixels (aware of each monitor's resolution).
    struct ScreenPixels {};
    explicit WindowDpiScope(ScreenPixels);
    ~WindowDpiScope();
    WindowDpiScope(const WindowDpiScope&) = delete;
    WindowDpiScope& operator=(const WindowDpiScope&) = delete;

private:
    void Enter(HANDLE context);

    HANDLE previous_ = nullptr;  // the thread's DPI awareness context before
};

// A bitmap compatible with `source`, `width` x `height`, holding `region` of it (in its own
// coordinates), stretched with halftone when the sizes differ. No context holds it selected, so
// GDI+ may read it. The caller deletes it; null when nothing could be made.
HBITMAP CopyRegion(HDC source, const RECT& region, int width, int height);

// The same for `region` of `window`'s client area (client coordinates).
HBITMAP CaptureClientRegion(HWND window, const RECT& region, int width, int height);

// The part of `window` that the player sees as the window, in the coordinates of its window device
// context as a WindowDpiScope of it sees them. Since Windows 10 the window rectangle holds
// invisible resize borders; the visible frame comes from the desktop window manager.
RECT VisibleWindowFrame(HWND window);

}  // namespace vrl
