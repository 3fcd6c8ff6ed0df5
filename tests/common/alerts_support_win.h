#pragma once
// Helpers of the alert and audio library tests: the stand-ins copied into a scratch folder,
// sound files, shortcuts and the stand-ins' trace files.

#include <windows.h>

#include <string>
#include <vector>

#include "tests/common/test_files_win.h"

namespace vrltest {

// Copies a stand-in built into <bin>\<subfolder> (simbass, simtalk) into `folder`.
bool CopyStandIn(const std::wstring& subfolder, const std::wstring& name, const std::wstring& folder);

// An 8 kHz mono 8-bit PCM WAV file playing for `milliseconds`.
void WriteWav(const std::wstring& path, unsigned milliseconds);

// An Ogg Vorbis file's first two pages: the identification header (48000 Hz stereo) and the
// comment header with these comments ("LOOPSTART=1000"). Enough for the audio library stand-in,
// which reads the comments and does not decode.
void WriteOgg(const std::wstring& path, const std::vector<std::string>& comments);

// A format-0 MIDI file of `notes` quarter notes at 120 beats a minute (half a second each).
void WriteMidi(const std::wstring& path, unsigned notes);

// The lines of a UTF-8 text file, without their CR LF or LF; empty when it does not exist.
std::vector<std::string> ReadLines(const std::wstring& path);
// The lines that begin with `call` followed by a space.
std::vector<std::string> Calls(const std::vector<std::string>& lines, const std::string& call);
// The value of `key=` in a trace line (up to the next space; a quoted value whole).
std::string Field(const std::string& line, const std::string& key);
// The number after " -> " at the end of a trace line.
unsigned long ResultOf(const std::string& line);

// Saves a shell shortcut at `lnkPath` pointing to `target`. COM must be initialised.
bool MakeShortcut(const std::wstring& lnkPath, const std::wstring& target);

}  // namespace vrltest
