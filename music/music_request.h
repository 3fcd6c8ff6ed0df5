#pragma once
// The record of a music request as the in-game module sends it, read and written here only: the
// companion's panel, the module stand-in, tests and benchmarks share it. Portable.

#include <cstddef>
#include <string>

namespace vrl {

// The record of a music request, as the module sends it.
inline constexpr std::size_t kMusicRequestBytes = 552;
inline constexpr std::size_t kMusicPathChars = 260;

// WM_COPYDATA codes of the module; every other code is a music request.
inline constexpr unsigned long kMusicCodeStop = 2;
inline constexpr unsigned long kMusicCodeClose = 3;

struct MusicRequest {
    std::u16string path;  // up to its first NUL, at most 260 characters
    int month = 0;
    int day = 0;
    int hour = 0;
    int mapObjectId = 0;
    int playCount = 0;
};

// Reads the record from `size` received bytes: a shorter payload reads as if zero-filled past its
// end, bytes past the record are ignored. Never reads outside [data, data + size).
MusicRequest ReadMusicRequest(const void* data, std::size_t size);
// The bytes of a record (for the module stand-in, tests and benchmarks).
std::string MusicRequestBytes(const MusicRequest& request);

}  // namespace vrl
