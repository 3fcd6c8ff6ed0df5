#include "tools/screenshot.h"

#include <cstdio>

namespace vrl::screenshot {
namespace {

using Kind = Capture::Kind;

// Ranges 2 to 11: dx, dy, width, height of each of the game's screens.
constexpr Capture kClientRanges[] = {
    {Kind::Client, 0, 0, 0, 0},       // 2 client area
    {Kind::Client, 0, -2, 700, 400},  // 3 character info
    {Kind::Client, 0, 0, 638, 432},   // 4 inventory
    {Kind::Client, -2, 0, 688, 428},  // 5 wear
    {Kind::Client, -4, 0, 724, 424},  // 6 feat
    {Kind::Client, -2, -2, 720, 432}, // 7 magic
    {Kind::Client, -2, -2, 600, 432}, // 8 ability
    {Kind::Client, 0, 8, 408, 312},   // 9 treasure map
    {Kind::Client, 0, 0, 604, 408},   // 10 material
    {Kind::Client, 4, -8, 600, 376},  // 11 dialogue
};

constexpr int kClientRange = 2;
constexpr int kBackupJpegQuality = 20;

Capture FixedRange(int range) {
    if (range == 1) return Capture{Kind::WholeWindow};
    if (range >= kClientRange && range < kRangeCount) return kClientRanges[range - kClientRange];
    return Capture{};
}

std::u16string Widen(const char* ascii) {
    std::u16string text;
    for (const char* c = ascii; *c; ++c) text.push_back(static_cast<char16_t>(*c));
    return text;
}

}  // namespace

Capture CaptureForRange(int range, int screen, bool includeFrame) {
    if (range != 0) return FixedRange(range);
    if (screen == kClientRange && includeFrame) return FixedRange(1);
    return FixedRange(screen);  // 0 gives nothing here: no further auto-detection
}

PixelRect ClientCaptureRect(const Capture& capture, int clientWidth, int clientHeight) {
    const int w = capture.width ? capture.width : clientWidth;
    const int h = capture.height ? capture.height : clientHeight;
    PixelRect r;
    r.left = (clientWidth - w) / 2 + capture.dx;
    r.top = ((clientHeight + 4) / 48) * 24 - h / 2 + capture.dy;
    r.right = r.left + w;
    r.bottom = r.top + h;
    return r;
}

OutputFile OutputFor(int format, int jpegQuality, const LocalTime& time, const std::u16string& screenshotFolder,
                     const std::u16string& saveBackupFolder) {
    OutputFile out;
    if (format == 3) {
        out.encoding = OutputFile::Encoding::Jpeg;
        out.jpegQuality = kBackupJpegQuality;
        out.path = saveBackupFolder + u"\\MorvaBackupSS.jpg";
        return out;
    }
    if (format < 0 || format > 2) return out;
    out.encoding = format == 2 ? OutputFile::Encoding::Jpeg : OutputFile::Encoding::Png;
    out.jpegQuality = jpegQuality;
    char name[64];
    std::snprintf(name, sizeof name, "\\%02d-%02d-%02d %02d_%02d_%02d.%s", time.year % 100, time.month, time.day,
                  time.hour, time.minute, time.second, format == 2 ? "jpg" : "png");
    out.path = screenshotFolder + Widen(name);
    return out;
}

}  // namespace vrl::screenshot
