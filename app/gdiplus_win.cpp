#include "app/gdiplus_win.h"

#include <gdiplus.h>

namespace vrl {

ULONG_PTR StartGdiplus() {
    Gdiplus::GdiplusStartupInput input;  // version 1, everything else off
    ULONG_PTR token = 0;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
    return token;
}

void StopGdiplus(ULONG_PTR token) {
    if (token) Gdiplus::GdiplusShutdown(token);
}

}  // namespace vrl
