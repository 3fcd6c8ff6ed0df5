#pragma once
// Copies of what a device context or a window shows, into bitmaps of our own. Under Wine, parts of
// another program's window that other windows cover come out black.

#include <windows.h>

namespace vrl {

// A bitmap compatible with `source`, `width` x `height`, holding `region` of it (in its own
// coordinates), stretched with halftone when the sizes differ. No context holds it selected, so
// GDI+ may read it. The caller deletes it; null when nothing could be made.
HBITMAP CopyRegion(HDC source, const RECT& region, int width, int height);

// The same for `region` of `window`'s client area (client coordinates).
HBITMAP CaptureClientRegion(HWND window, const RECT& region, int width, int height);

}  // namespace vrl
