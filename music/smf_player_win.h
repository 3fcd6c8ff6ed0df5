#pragma once
// MIDI through the SMF playback library (GuruGuruSMF4.dll in the program's folder), bound at run
// time. Without the library every call fails softly ("ApiNull") after one message box.

#include <windows.h>

#include <string>

#include "music/midi_player_win.h"

namespace vrl {

class CDirectMusicPlayer : public CMidiPlayer {
public:
    // Loads the library unless it is loaded, opens its device for `owner` at full volume.
    explicit CDirectMusicPlayer(HWND owner);
    // Closes the device and unloads the library.
    ~CDirectMusicPlayer() override;

    bool Open(const std::u16string& path, int playCount) override;
    void SetPosition(int) override {}
    bool Play() override;
    void Stop() override;
    void SetVolume(float volume) override;
    void GetInfoText(std::u16string& text) override { text.clear(); }
    void GetErrorText(std::u16string& text) override;
    void Close() override;
    bool SetSoundFont(const std::u16string&) override { return false; }

private:
    int lastResult_ = 0;
};

}  // namespace vrl
