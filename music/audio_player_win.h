#pragma once
// The music panel's one player: routes each file by its extension to the audio library's player
// or to the MIDI back end that the rule table's "device" option chose, and forwards every
// operation to the player the last Open selected.

#include <windows.h>

#include <string>

#include "music/bass_player_win.h"

namespace vrl {

class CAudioPlayer {
public:
    // MIDI device code: 1 the audio library itself, 2 MCI, 3 the SMF library, anything else none.
    CAudioPlayer(int midiDeviceCode, HWND owner);
    virtual ~CAudioPlayer();
    CAudioPlayer(const CAudioPlayer&) = delete;
    CAudioPlayer& operator=(const CAudioPlayer&) = delete;

    // Follows a shortcut, closes the previous player, selects the MIDI player for ".mid".
    bool Open(const std::u16string& path, int playCount);
    bool Play() { return Current()->Play(); }
    void Stop() { Current()->Stop(); }
    void Close() { Current()->Close(); }
    void SetPosition(int position) { Current()->SetPosition(position); }
    void SetVolume(float volume) { Current()->SetVolume(volume); }
    void GetInfoText(std::u16string& text) { Current()->GetInfoText(text); }
    void GetErrorText(std::u16string& text) { Current()->GetErrorText(text); }

    CBassPlayer* GetBassPlayer() const { return bass_; }
    CMidiPlayer* MidiPlayer() const { return midi_; }
    bool MidiSelected() const { return midiSelected_; }

private:
    CMidiPlayer* Current() const { return midiSelected_ ? midi_ : bass_; }

    bool midiSelected_ = false;
    CBassPlayer* bass_;
    CMidiPlayer* midi_;
};

}  // namespace vrl
