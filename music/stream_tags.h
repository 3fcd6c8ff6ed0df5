#pragma once
// What the music player reads from a stream and the audio library: the loop points a file's Ogg
// comments give, and the output rate as the panel shows it. Portable.

#include <cstdint>
#include <string>

namespace vrl {

// Byte positions; an end of 0 is the file's natural end.
struct LoopPoints {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

// From comments as the library gives them (zero-terminated strings ending with an empty one; null
// for none). LOOPSTART and LOOPLENGTH count samples of 4 bytes. The number is read from the
// character after the field name as counted from the comment's start, so a name found later in
// the comment ("XLOOPSTART=10") reads its number from the wrong place, as players' files expect.
LoopPoints LoopPointsOf(const char* comments);

// "48 kHz" for 48000, "44100 Hz" for 44100.
std::u16string OutputRateText(std::uint32_t frequency);

}  // namespace vrl
