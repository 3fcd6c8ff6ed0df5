#pragma once
// Hands one log line to the speech program, which reads it aloud.

#include <string>
#include <string_view>

namespace vrl {

// Starts the speech program at `programPath` (a full path) hidden, with the command line of
// SpeechCommandLine(text), and returns at once: speeches run independently and may overlap.
// A failed start is silent. The caller checks beforehand that speech is on and the program exists.
void Speak(const std::u16string& programPath, std::u16string_view text);

}  // namespace vrl
