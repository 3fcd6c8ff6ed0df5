#pragma once
// The player for every audio file, and for MIDI files when the audio library's MIDI add-on is the
// chosen back end: streams with the loop points of their Ogg comments, soundfonts, plug-ins.

#include <windows.h>

#include <string>

#include "music/bass_api_win.h"
#include "music/midi_player_win.h"
#include "music/vst_host_win.h"

namespace vrl {

class CBassPlayer : public CMidiPlayer {
public:
    // Joins the process-wide use count (the first user starts the library with `owner`) and loads
    // every "bass*.dll" of the current folder but bass.dll itself as a plug-in.
    explicit CBassPlayer(HWND owner);
    ~CBassPlayer() override;

    bool Open(const std::u16string& path, int playCount) override;
    void SetPosition(int position) override;
    bool Play() override;
    void Stop() override;
    void SetVolume(float volume) override;
    void GetInfoText(std::u16string& text) override;
    void GetErrorText(std::u16string& text) override;
    void Close() override;
    // A soundfont (.sf2, .sfz) for MIDI streams; a ".dll" is a VST instrument for the host.
    bool SetSoundFont(const std::u16string& path) override;

    // The windows the VST host reports to: the playing-file field and the status static.
    void SetVstWindows(HWND playingFile, HWND status) {
        playingFileWindow_ = playingFile;
        statusWindow_ = status;
    }
    // One command to the VST host; nothing is sent while no host runs.
    LRESULT SendVstHostCommand(int command, const std::u16string& text);

    BassHandle Stream() const { return stream_; }
    BassHandle SoundFont() const { return soundFont_; }
    int VstBits() const { return vstBits_; }
    bool InVstMode() const { return vstMode_; }

protected:
    HWND playingFileWindow_ = nullptr;
    HWND statusWindow_ = nullptr;

private:
    void LoadPlugins() const;

    BassUse use_;
    BassHandle stream_ = 0;
    BassHandle soundFont_ = 0;
    DWORD loopStart_ = 0;
    DWORD loopEnd_ = 0;
    int vstBits_ = 0;
    bool vstMode_ = false;
    VstHostLink vstHost_;
};

}  // namespace vrl
