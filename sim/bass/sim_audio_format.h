#pragma once
// What the audio library stand-in recognises in a file: a RIFF/WAVE file with its fmt and data
// chunks, an Ogg file (with its Vorbis comments), a standard MIDI file. Portable.

#include <cstdint>
#include <string>

namespace vrlsim {

enum class AudioKind { Unknown, Wav, Ogg, Midi };

struct AudioFormat {
    AudioKind kind = AudioKind::Unknown;
    std::uint32_t byteRate = 0;       // WAV: bytes per second of playback
    std::uint64_t dataBytes = 0;      // WAV: size of the data chunk
    bool hasComments = false;         // Ogg: a Vorbis comment header was found
    std::string comments;             // Ogg: each comment NUL-terminated, then one more NUL
};

AudioFormat RecogniseAudio(const std::string& bytes);

// Playing time of a WAV file in milliseconds; 0 when unknown (then it plays until stopped).
std::uint64_t PlayingMilliseconds(const AudioFormat& format);

}  // namespace vrlsim
