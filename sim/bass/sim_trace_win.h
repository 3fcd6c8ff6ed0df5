#pragma once
// Shared by the audio library stand-ins: the call trace the tests read back, and small text helpers.
//
// Each call appends one UTF-8 line (CR LF) to the trace file: the path in VRL_SIM_BASS_TRACE, or
// "bass_trace.txt" next to the stand-in DLL. The file is opened and closed per line so that a test
// can read it at any time.

#include <windows.h>

#include <string>

#include "sim/common/sim_io_win.h"

namespace vrlsim {

// Appends one line (CR LF is added).
void Trace(const std::string& line);

using vrl::sim::Utf8;
// A path argument as the caller passed it: wide when `wide`, else in the ANSI code page.
std::wstring PathArgument(const void* file, bool wide);
// `text` quoted, for the trace.
std::string Quoted(const std::wstring& text);
std::string Hex(unsigned long value);
std::string Pointer(const void* value);
std::string FloatText(float value);  // "0.56 bits=0x3f0f5c29": readable and exact

// The file name part of a path, lower-cased.
std::wstring LowerFileName(const std::wstring& path);

// The whole file, or false when it cannot be opened or read.
bool ReadWholeFile(const std::wstring& path, std::string* bytes);

}  // namespace vrlsim
