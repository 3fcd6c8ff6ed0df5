#pragma once
// Names of the audio library's error codes, as the music panel shows them after every start.
// Portable: the table is plain data.

namespace vrl {

// The name of a code returned by BASS_ErrorGetCode: "BASS_OK" for 0, "BASS_ERROR_UNKNOWN" for -1
// (also what the binding reports when the library is missing), "BASS_ERROR_UNDEFINED" for every
// code the library does not define.
const char16_t* BassErrorName(int code);

}  // namespace vrl
