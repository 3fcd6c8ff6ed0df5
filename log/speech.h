#pragma once
// The command line that hands one log line to the speech program. Portable.

#include <cstddef>
#include <string>
#include <string_view>

namespace vrl {

// The speech program reads a command line of at most this many characters, NUL included.
inline constexpr std::size_t kSpeechCommandLineCapacity = 2048;

// " /Talk \"<text>\"": a leading space and no program name (the program path goes separately as
// the application name). The text is inserted as it is; a double quote in it is not escaped, so
// the speech program sees the quoting end there. A text too long for the buffer is cut short
// (never split inside a surrogate pair) so that the closing quote still fits.
std::u16string SpeechCommandLine(std::u16string_view text);

}  // namespace vrl
