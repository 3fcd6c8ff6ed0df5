#pragma once
// The players of the music extender share one interface, in a fixed slot order that every player
// fills: the audio library, the MCI sequencer, the SMF library and the silent player.

#include <windows.h>

#include <string>

namespace vrl {

class CMidiPlayer {
public:
    explicit CMidiPlayer(HWND owner) : owner_(owner) {}
    virtual ~CMidiPlayer() = default;
    CMidiPlayer(const CMidiPlayer&) = delete;
    CMidiPlayer& operator=(const CMidiPlayer&) = delete;

    // True when the file is ready to play; a play count of 2 or more means repeat.
    virtual bool Open(const std::u16string& path, int playCount) = 0;
    // Only 0 (back to the start) is ever passed.
    virtual void SetPosition(int position) = 0;
    virtual bool Play() = 0;
    virtual void Stop() = 0;
    // 1.0 is full volume.
    virtual void SetVolume(float volume) = 0;
    virtual void GetInfoText(std::u16string& text) = 0;
    virtual void GetErrorText(std::u16string& text) = 0;
    virtual void Close() = 0;
    // True when the sound source was changed.
    virtual bool SetSoundFont(const std::u16string& path) = 0;

    int PlayCount() const { return playCount_; }

protected:
    HWND owner_;         // the music panel: completion notices go there
    int playCount_ = 0;  // set by Open
};

// Stands in when no MIDI back end is chosen: MIDI requests are accepted and stay silent.
class CNullPlayer : public CMidiPlayer {
public:
    using CMidiPlayer::CMidiPlayer;
    bool Open(const std::u16string&, int playCount) override {
        playCount_ = playCount;
        return true;
    }
    void SetPosition(int) override {}
    bool Play() override { return true; }
    void Stop() override {}
    void SetVolume(float) override {}
    void GetInfoText(std::u16string& text) override { text.clear(); }
    void GetErrorText(std::u16string& text) override { text.clear(); }
    void Close() override {}
    bool SetSoundFont(const std::u16string&) override { return false; }
};

}  // namespace vrl
