#pragma once
// The arithmetic and texts of the MIDI back ends that do not need Windows: the bitness of a VST
// instrument from its file header, the VST host's command line and command size, the SMF
// library's volume scale, loop option and result names. Portable.

#include <cstddef>
#include <cstdint>
#include <string>

namespace vrl {

// Bytes read from the start of an instrument file; the 32-bit value at byte 60 is where the
// program header starts, and 6 bytes are read there.
inline constexpr std::size_t kDosHeaderBytes = 64;
inline constexpr std::size_t kPeSignatureBytes = 6;

// Where the program header starts, from the first 64 bytes.
std::uint32_t PeHeaderOffset(const unsigned char (&dosHeader)[kDosHeaderBytes]);
// 32 or 64 for an x86 or x64 program, 0 for any other machine; `previous` when the 6 bytes are not
// a program signature.
int VstBitsOf(const unsigned char (&signature)[kPeSignatureBytes], int previous);

// A command text fills a zeroed buffer of this many characters, its terminating zero included.
inline constexpr std::size_t kVstCommandChars = 1024;
// Bytes the command message says it carries: the text and its terminating zero.
std::uint32_t VstCommandBytes(std::size_t characters);
bool VstCommandFits(std::size_t characters);

// "<current>\vst<bits>": the host's folder and working folder.
std::u16string VstHostFolder(const std::u16string& currentFolder, int bits);
// "<folder>\VrlVstHost<bits>.exe v=3 pid=<pid> hwndpf=<playing file> hwndee=<status>".
std::u16string VstHostCommandLine(const std::u16string& folder, int bits, std::uint32_t processId,
                                  std::uint32_t playingFileWindow, std::uint32_t statusWindow);

// The SMF library's master volume runs from -127 (silent) to 0 (full): sqrt(v) x 127 - 127,
// truncated toward zero.
int SmfMasterVolume(float volume);
// Play option: bit 1 repeats the file until it is stopped.
int SmfPlayOption(int playCount);
// The name of a result of the library, or an empty text for a code it does not define.
const char16_t* SmfResultName(int code);
inline constexpr int kSmfApiNull = 15;  // the function is missing from the library

}  // namespace vrl
