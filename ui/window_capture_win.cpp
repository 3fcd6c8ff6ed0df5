#include "ui/window_capture_win.h"

namespace vrl {

HBITMAP CaptureClientRegion(HWND window, const RECT& region, int width, int height) {
    HDC source = ::GetDC(window);
    if (!source) return nullptr;
    HBITMAP bitmap = ::CreateCompatibleBitmap(source, width, height);
    HDC memory = ::CreateCompatibleDC(source);
    if (bitmap && memory) {
        HGDIOBJ old = ::SelectObject(memory, bitmap);
        ::SetStretchBltMode(memory, HALFTONE);
        ::SetBrushOrgEx(memory, 0, 0, nullptr);
        ::StretchBlt(memory, 0, 0, width, height, source, region.left, region.top, region.right - region.left,
                     region.bottom - region.top, SRCCOPY);
        ::SelectObject(memory, old);
    }
    if (memory) ::DeleteDC(memory);
    ::ReleaseDC(window, source);
    return bitmap;
}

}  // namespace vrl
