#pragma once
// Copies of what a window shows: part of its client area into a bitmap of our own, stretched with
// halftone when the sizes differ. Under Wine, parts of another program's window that other windows
// cover come out black.

#include <windows.h>

namespace vrl {

// A bitmap compatible with `window`'s device context, `width` x `height`, holding `region` of its
// client area (client coordinates). The caller deletes it; null when nothing could be made.
HBITMAP CaptureClientRegion(HWND window, const RECT& region, int width, int height);

}  // namespace vrl
