#include "music/audio_player_win.h"

#include "music/mci_player_win.h"
#include "music/music_rules.h"
#include "music/shortcut_win.h"
#include "music/smf_player_win.h"

namespace vrl {
namespace {

CMidiPlayer* CreateMidiPlayer(int midiDeviceCode, CBassPlayer* bass, HWND owner) {
    switch (midiDeviceCode) {
    case 1: return bass;
    case 2: return new CMciPlayer(owner);
    case 3: return new CDirectMusicPlayer(owner);
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
