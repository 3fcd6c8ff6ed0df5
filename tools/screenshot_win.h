#pragma once
// Screenshots of the game window: the capture ranges of the tray menu and the hotkey, written as
// PNG or JPEG through GDI+, each shot confirmed by a sound.

#include <windows.h>

namespace vrl {

// The installed GDI+ image encoder for `mimeType` (compared case-sensitively): its class id and
// its index in the encoder list. False when there is none (or no list at all).
bool FindImageEncoder(const wchar_t* mimeType, CLSID* clsid, int* index = nullptr);

class ScreenshotTaker {
public:
    // Range 0 to 11 of the game window the game watch found; nothing before it is known, and
    // nothing for other ranges.
    void TakeRange(int range);
    // Copies `rect` of `source`, writes it in `format` (-1: the settings' format) and plays the
    // confirmation sound, whatever the encoder made of it.
    void CaptureAndSave(HDC source, const RECT& rect, int format);

private:
    void CaptureClient(HWND game, int dx, int dy, int width, int height);
    void CaptureWholeWindow(HWND game);
    // Writes `copy` (null when the capture failed) in `format`, deletes it and plays the sound.
    void Save(HBITMAP copy, int format);
};

}  // namespace vrl
