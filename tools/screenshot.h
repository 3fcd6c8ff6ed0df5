#pragma once
// Screenshots as data: what each capture range takes out of the game window, and where and how a
// shot is written. The Win32 side only copies the pixels and runs the encoder.

#include <string>

#include "ui/geometry.h"
#include "ui/lang_text.h"

namespace vrl::screenshot {

inline constexpr LangText kUnknownFormat{u"Error: Unknown screenshot format.",
                                          u"エラー: 不明なスクリーンショット形式です。"};

inline constexpr int kRangeCount = 12;  // 0 auto-detect, 1 whole window, 2 client area, 3..11 screens

struct Capture {
    enum class Kind { Nothing, WholeWindow, Client };
    Kind kind = Kind::Nothing;
    // Client captures: offsets from the centred position and the size; 0 takes the client's own.
    int dx = 0, dy = 0, width = 0, height = 0;
};

// The capture a range asks for. Range 0 follows the screen the game reports (frame slot 4),
// taking the whole window for the client-area screen when `includeFrame` is set; a screen of 0 or
// outside 1..11, and any range outside 0..11, captures nothing.
Capture CaptureForRange(int range, int screen, bool includeFrame);

// A client capture's rectangle in client coordinates. The game centres its screens horizontally
// and on a 24-pixel row grid vertically, so the screens' rectangles follow the same arithmetic
// (truncating divisions). It may reach outside the client area (range 2 at 600 rows starts at -12).
PixelRect ClientCaptureRect(const Capture& capture, int clientWidth, int clientHeight);

struct LocalTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

struct OutputFile {
    enum class Encoding { Png, Jpeg, Unknown };
    Encoding encoding = Encoding::Unknown;
    int jpegQuality = 0;
    std::u16string path;  // empty for an unknown format
};

// `format` is iScreenshotFormat: 0 and 1 PNG, 2 JPEG at `jpegQuality`, 3 the one backup JPEG at
// quality 20 (overwritten by every such shot); numbered files are named after the local time.
OutputFile OutputFor(int format, int jpegQuality, const LocalTime& time, const std::u16string& screenshotFolder,
                     const std::u16string& saveBackupFolder);

}  // namespace vrl::screenshot
