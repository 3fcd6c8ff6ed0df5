#include "log/sound_effect_player_win.h"

#include <algorithm>

#include "music/shortcut_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

// Wide path, and with one playback per sample a repeat restarts the one furthest along.
constexpr DWORD kSampleFlags = kBassUnicode | kBassSampleOverPos;

}  // namespace

SoundEffectPlayer::SoundEffectPlayer(HWND owner, int slotCount)
    : use_(owner), slotCount_(std::clamp(slotCount, 1, kMaxSlots)) {}

SoundEffectPlayer::~SoundEffectPlayer() {
    // The log window goes at shutdown only, but the library may outlive it for the music player:
    // samples left behind would stay in its memory until then.
    for (BassHandle& sample : slots_) {
        if (sample != 0) Bass().SampleFree(sample);
        sample = 0;
    }
}

bool SoundEffectPlayer::PlaySoundEffect(const std::u16string& path, float volume) {
    const std::u16string file = ResolveShortcut(path);
    BassHandle& slot = slots_[nextSlot_];
    if (slot != 0) Bass().SampleFree(slot);
    slot = Bass().SampleLoad(FALSE, W(file), 0, 0, 1, kSampleFlags);
    if (slot == 0) return false;

    const BassHandle channel = Bass().SampleGetChannel(slot, FALSE);
    nextSlot_ = (nextSlot_ + 1) % slotCount_;
    Bass().ChannelSetAttribute(channel, kBassAttribVolume, volume);
    Bass().ChannelPlay(channel, FALSE);
    return true;
}

}  // namespace vrl
