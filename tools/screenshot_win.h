#pragma once
// Screenshots of the game window: the capture ranges of the tray menu and the hotkey, written as
// PNG or JPEG through GDI+, each shot confirmed by a sound.

#include <windows.h>

#include <memory>
#include <string>

namespace vrl {

class SoundEffectPlayer;

// The installed GDI+ image encoder for `mimeType` (compared case-sensitively): its class id and
// its index in the encoder list. False when there is none (or no list at all).
bool FindImageEncoder(const wchar_t* mimeType, CLSID* clsid, int* index = nullptr);

class ScreenshotTaker {
public:
    // `owner` is handed to the audio library when the confirmation sound is its first use.
    explicit ScreenshotTaker(HWND owner = nullptr);
    ~ScreenshotTaker();
    ScreenshotTaker(const ScreenshotTaker&) = delete;
    ScreenshotTaker& operator=(const ScreenshotTaker&) = delete;

    void SetOwner(HWND owner) { owner_ = owner; }
    // Lets go of the audio library while its owner window still exists.
    void ReleaseSound();

    // Range 0 to 11 of the game window the game watch found; nothing before it is known, and
    // nothing for other ranges.
    void TakeRange(int range);
    // Copies `rect` of `source`, writes it in `format` (-1: the settings' format) and plays the
    // confirmation sound, whatever the encoder made of it.
    void CaptureAndSave(HDC source, const RECT& rect, int format);

private:
    void CaptureClient(HWND game, int dx, int dy, int width, int height);
    void CaptureWholeWindow(HWND game);
    void PlayConfirmation();

    HWND owner_;
    std::unique_ptr<SoundEffectPlayer> sound_;  // made on the first shot
};

}  // namespace vrl
