#include "ui/window_capture_win.h"

namespace vrl {

HBITMAP CopyRegion(HDC source, const RECT& region, int width, int height) {
    HBITMAP bitmap = ::CreateCompatibleBitmap(source, width, height);
    HDC memory = ::CreateCompatibleDC(source);
    if (bitmap && memory) {
        HGDIOBJ old = ::SelectObject(memory, bitmap);
        const int regionWidth = region.right - region.left;
        const int regionHeight = region.bottom - region.top;
        if (regionWidth == width && regionHeight == height) {
            ::BitBlt(memory, 0, 0, width, height, source, region.left, region.top, SRCCOPY);
        } else {
            ::SetStretchBltMode(memory, HALFTONE);
            ::SetBrushOrgEx(memory, 0, 0, nullptr);
            ::StretchBlt(memory, 0, 0, width, height, source, region.left, region.top, regionWidth, regionHeight,
                         SRCCOPY);
        }
        ::SelectObject(memory, old);
    }
    if (memory) ::DeleteDC(memory);
    return bitmap;
}

HBITMAP CaptureClientRegion(HWND window, const RECT& region, int width, int height) {
    HDC source = ::GetDC(window);
    if (!source) return nullptr;
    HBITMAP bitmap = CopyRegion(source, region, width, height);
    ::ReleaseDC(window, source);
    return bitmap;
}

}  // namespace vrl
