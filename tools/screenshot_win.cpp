#include "tools/screenshot_win.h"

#include <gdiplus.h>
#include <mmsystem.h>

#include <cwchar>
#include <vector>

#include "app/app_state_win.h"
#include "app/error_box_win.h"
#include "app/game_link_win.h"
#include "tools/screenshot.h"
#include "ui/window_capture_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

// Relative to the program folder (the current folder): the game's own sound folder.
constexpr char16_t kConfirmationSound[] = u"..\\sound\\pray1.wav";

using screenshot::OutputFile;

screenshot::LocalTime Now() {
    SYSTEMTIME t{};
    ::GetLocalTime(&t);
    return {t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond};
}

void Encode(HBITMAP bitmap, const OutputFile& out) {
    Gdiplus::Bitmap image(bitmap, nullptr);
    const bool jpeg = out.encoding == OutputFile::Encoding::Jpeg;
    CLSID encoder{};
    if (!FindImageEncoder(jpeg ? L"image/jpeg" : L"image/png", &encoder)) return;
    if (!jpeg) {
        image.Save(W(out.path), &encoder, nullptr);
        return;
    }
    ULONG quality = static_cast<ULONG>(out.jpegQuality);  // out of 0..100 the encoder decides
    Gdiplus::EncoderParameters params{};
    params.Count = 1;
    params.Parameter[0].Guid = Gdiplus::EncoderQuality;
    params.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
    params.Parameter[0].NumberOfValues = 1;
    params.Parameter[0].Value = &quality;
    image.Save(W(out.path), &encoder, &params);
}

}  // namespace

bool FindImageEncoder(const wchar_t* mimeType, CLSID* clsid, int* index) {
    UINT count = 0;
    UINT bytes = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &bytes) != Gdiplus::Ok || count == 0 || bytes == 0) return false;
    std::vector<unsigned char> buffer(bytes);
    auto* codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
    if (Gdiplus::GetImageEncoders(count, bytes, codecs) != Gdiplus::Ok) return false;
    for (UINT i = 0; i < count; ++i) {
        if (codecs[i].MimeType && wcscmp(codecs[i].MimeType, mimeType) == 0) {
            *clsid = codecs[i].Clsid;
            if (index) *index = static_cast<int>(i);
            return true;
        }
    }
    return false;
}

void ScreenshotTaker::TakeRange(int range) {
    const AppState& app = App();
    HWND game = app.gameWindow;
    if (!game || !::IsWindow(game)) return;  // a shot before the game is known does nothing
    const int screen = static_cast<int>(game_link::ReadSlot(app.frame, game_link::kSlotScreen));
    const screenshot::Capture capture =
        screenshot::CaptureForRange(range, screen, app.settings.enScreenshotIncludeFrame != 0);
    switch (capture.kind) {
    case screenshot::Capture::Kind::Nothing:
        return;
    case screenshot::Capture::Kind::WholeWindow:
        CaptureWholeWindow(game);
        return;
    case screenshot::Capture::Kind::Client:
        CaptureClient(game, capture.dx, capture.dy, capture.width, capture.height);
        return;
    }
}

void ScreenshotTaker::CaptureClient(HWND game, int dx, int dy, int width, int height) {
    HBITMAP copy = nullptr;
    {
        // The client rectangle and the device context in the game's own pixels (see WindowDpiScope).
        const WindowDpiScope scope(game);
        RECT client{};
        ::GetClientRect(game, &client);
        const PixelRect r =
            screenshot::ClientCaptureRect({screenshot::Capture::Kind::Client, dx, dy, width, height},
                                          client.right - client.left, client.bottom - client.top);
        copy = CaptureClientRegion(game, RECT{r.left, r.top, r.right, r.bottom}, r.Width(), r.Height());
    }
    Save(copy, -1);
}

void ScreenshotTaker::CaptureWholeWindow(HWND game) {
    const RECT frame = VisibleWindowFrame(game);
    HBITMAP copy = nullptr;
    {
        const WindowDpiScope scope(game);
        HDC dc = ::GetWindowDC(game);
        if (dc) {
            copy = CopyRegion(dc, frame, frame.right - frame.left, frame.bottom - frame.top);
            ::ReleaseDC(game, dc);
        }
    }
    Save(copy, -1);
}

void ScreenshotTaker::CaptureAndSave(HDC source, const RECT& rect, int format) {
    Save(CopyRegion(source, rect, rect.right - rect.left, rect.bottom - rect.top), format);
}

void ScreenshotTaker::Save(HBITMAP copy, int format) {
    const AppState& app = App();
    const OutputFile out =
        screenshot::OutputFor(format == -1 ? app.settings.iScreenshotFormat : format, app.settings.iJpegQuality,
                              Now(), U16(app.screenshotFolder), U16(app.saveBackupFolder));
    if (out.encoding == OutputFile::Encoding::Unknown) {
        WarningBox(screenshot::kUnknownFormat.Get());
    } else if (copy) {
        Encode(copy, out);
    }
    if (copy) ::DeleteObject(copy);
    // The system's player, which does not wait for the sound and lets go of the audio device
    // when it ends.
    ::PlaySoundW(W(kConfirmationSound), nullptr, SND_FILENAME | SND_ASYNC);
}

}  // namespace vrl
