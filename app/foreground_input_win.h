#pragma once
// Windows keeps one input state (keyboard focus, active window, key states) per thread, and gives
// the foreground to a process only under its foreground-lock rules. While the game is in front it
// owns the input that matters: its thread takes every key message, and only the thread that last
// had input may move the foreground. For the length of one call the companion shares the game
// thread's input state, which is what AttachThreadInput is documented to do.

#include <windows.h>

namespace vrl {

// Shares the input state of the thread that owns the foreground window until it goes out of
// scope. Does nothing when there is no foreground window or it is ours.
class ForegroundInputAttachment {
public:
    ForegroundInputAttachment();
    ~ForegroundInputAttachment();
    ForegroundInputAttachment(const ForegroundInputAttachment&) = delete;
    ForegroundInputAttachment& operator=(const ForegroundInputAttachment&) = delete;

private:
    DWORD self_ = 0;
    DWORD foreground_ = 0;
    bool attached_ = false;
};

// Brings `window` to the foreground with the keyboard focus, even while another process's window
// is in front and has had the last input.
void TakeForeground(HWND window);

}  // namespace vrl
