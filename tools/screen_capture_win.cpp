#include "tools/screen_capture_win.h"

namespace vrl {

ScreenCapture::ScreenCapture(HDC source, const RECT& rect)
    : memory_(::CreateCompatibleDC(source)),
      bitmap_(::CreateCompatibleBitmap(source, rect.right - rect.left, rect.bottom - rect.top)) {
    if (!memory_ || !bitmap_) return;
    HGDIOBJ old = ::SelectObject(memory_, bitmap_);
    ::BitBlt(memory_, 0, 0, rect.right - rect.left, rect.bottom - rect.top, source, rect.left, rect.top, SRCCOPY);
    ::SelectObject(memory_, old);
}

ScreenCapture::~ScreenCapture() {
    if (memory_) ::DeleteDC(memory_);
    if (bitmap_) ::DeleteObject(bitmap_);
}

}  // namespace vrl
