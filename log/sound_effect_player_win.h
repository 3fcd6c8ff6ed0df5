#pragma once
// Alert sounds of the log rules: short samples played through the audio library. The player keeps
// the last few samples loaded so that a few alerts can overlap; each new sound replaces the oldest.

#include <windows.h>

#include <string>

#include "music/bass_api_win.h"

namespace vrl {

class SoundEffectPlayer {
public:
    static constexpr int kMaxSlots = 3;

    // `owner` is the log window, handed to the library when this is its first user; `slotCount`
    // is brought into 1..3. Takes part in the process-wide use count (BassUse).
    SoundEffectPlayer(HWND owner, int slotCount);
    // Frees the samples still held (cutting them off), then leaves the use count.
    ~SoundEffectPlayer();

    SoundEffectPlayer(const SoundEffectPlayer&) = delete;
    SoundEffectPlayer& operator=(const SoundEffectPlayer&) = delete;

    // Plays the sound file at `path` (which may be a shortcut to it) at `volume`, 0 to 1. True when
    // the file was loaded and started; false when the library could not load it (or is missing),
    // so the caller can try the next folder.
    bool PlaySoundEffect(const std::u16string& path, float volume);

    int SlotCount() const { return slotCount_; }

private:
    BassUse use_;  // first member: the library stays up until the samples are freed
    int slotCount_;
    BassHandle slots_[kMaxSlots] = {};
    int nextSlot_ = 0;
};

}  // namespace vrl
