#pragma once
// A copy of a rectangle of a device context (a window's client area, its whole window, the
// screen) in a bitmap compatible with that context, taken at once; the bitmap lives as long as
// the copy.

#include <windows.h>

namespace vrl {

class ScreenCapture {
public:
    // `rect` in the coordinates of `source`; parts outside what the context holds copy as it
    // gives them.
    ScreenCapture(HDC source, const RECT& rect);
    ~ScreenCapture();
    ScreenCapture(const ScreenCapture&) = delete;
    ScreenCapture& operator=(const ScreenCapture&) = delete;

    // Null when the bitmap could not be made. No context holds it selected, so GDI+ may read it.
    HBITMAP Bitmap() const { return bitmap_; }

private:
    HDC memory_;
    HBITMAP bitmap_;
};

}  // namespace vrl
