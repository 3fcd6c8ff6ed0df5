#include "music/audio_player_win.h"

#include "music/music_rules.h"
#include "music/shortcut_win.h"

namespace vrl {
namespace {

CMidiPlayer* CreateMidiPlayer(int midiDeviceCode, CBassPlayer* bass, HWND owner) {
    switch (midiDeviceCode) {
    case 1: return bass;
    // 2 (the MCI sequencer) and 3 (the SMF library) stay silent until their players exist.
    default: return new CNullPlayer(owner);
    }
}

}  // namespace

CAudioPlayer::CAudioPlayer(int midiDeviceCode, HWND owner)
    : bass_(new CBassPlayer(owner)), midi_(CreateMidiPlayer(midiDeviceCode, bass_, owner)) {}

CAudioPlayer::~CAudioPlayer() {
    if (midi_ != bass_) delete midi_;
    delete bass_;
}

bool CAudioPlayer::Open(const std::u16string& path, int playCount) {
    const std::u16string file = ResolveShortcut(path);
    Current()->Close();
    midiSelected_ = IsMidiFileName(file);
    return Current()->Open(file, playCount);
}

}  // namespace vrl
