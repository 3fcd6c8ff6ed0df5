#pragma once
// The VST instrument host: a separate program of the instrument's bitness that loads the
// instrument and plays MIDI files through it, driven by WM_COPYDATA commands to its window.

#include <windows.h>

#include <string>

namespace vrl {

// Commands to the host; the text of each is empty unless noted.
enum VstHostCommand : int {
    kVstOpen = 1,        // the full path of the MIDI file
    kVstPlay = 2,
    kVstStop = 3,
    kVstClose = 4,
    kVstLoad = 5,        // the full path of the instrument
    kVstShowEditor = 6,
    kVstQuit = 7,
};

// How long one command waits for a host that lives but does not answer. Loading an instrument
// can keep a host from its messages for many seconds; a host silent for this long is taken for
// hung and passed over from then on.
inline constexpr UINT kVstHostAnswerMs = 20000;
// How long a new host is given to create its window while its process lives.
inline constexpr DWORD kVstHostStartMs = 5000;

// 32 or 64 from the instrument file's program header, 0 for another machine, `previous` when the
// file cannot be read or is not a program.
int ReadVstBits(const std::wstring& path, int previous);

// The running host, found by its window class (the 32-bit one first), and the commands to it.
class VstHostLink {
public:
    // Sends one command; 0 when no host window exists, when the text does not fit the host's 1023
    // characters, or when the host did not answer. Paths (the instrument, the MIDI file) are sent
    // in full: the host runs in its own folder.
    LRESULT Send(int command, const std::u16string& text);

    // Ends a running host, starts the host of `bits` from its subfolder of the current folder with
    // the two windows it reports to, waits for its window and loads the instrument.
    void Start(int bits, const std::u16string& instrument, HWND playingFile, HWND status);

private:
    HWND silent_ = nullptr;  // a host that did not answer within kVstHostAnswerMs
};

}  // namespace vrl
