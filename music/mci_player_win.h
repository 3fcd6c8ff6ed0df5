#pragma once
// MIDI through the Windows MCI sequencer. MCI plays a sequence once; for a play count of 2 or more
// each play asks for the completion notice (MM_MCINOTIFY to the owner, the music panel), and the
// panel starts the next play.

#include <windows.h>
#include <mmsystem.h>

#include <string>

#include "music/midi_player_win.h"

namespace vrl {

class CMciPlayer : public CMidiPlayer {
public:
    explicit CMciPlayer(HWND owner);
    // Closes a device still open.
    ~CMciPlayer() override;

    bool Open(const std::u16string& path, int playCount) override;
    void SetPosition(int position) override;
    bool Play() override;
    void Stop() override;
    void SetVolume(float) override {}
    void GetInfoText(std::u16string& text) override { text.clear(); }
    void GetErrorText(std::u16string& text) override;
    void Close() override;
    bool SetSoundFont(const std::u16string&) override { return false; }

private:
    MCIDEVICEID deviceId_ = 0;
    MCI_OPEN_PARMSW open_{};
    MCI_PLAY_PARMS play_{};
    MCIERROR lastError_ = 0;
    std::wstring element_;  // the open block points into it
};

}  // namespace vrl
