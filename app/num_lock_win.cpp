#include "app/num_lock_win.h"

#include <windows.h>

#include "app/foreground_input_win.h"

namespace vrl {
namespace {

// GetKeyState reports the keys as this thread has taken them from its queue, and the game's
// thread takes them all: the toggle is read from the foreground thread's input state.
// (GetAsyncKeyState would not do: it tells whether a key is down, not whether a lock is on.)
bool NumLockIsOn() {
    ForegroundInputAttachment shared;
    return (::GetKeyState(VK_NUMLOCK) & 1) != 0;
}

void PressNumLock() {
    INPUT keys[2] = {};
    keys[0].type = keys[1].type = INPUT_KEYBOARD;
    keys[0].ki.wVk = keys[1].ki.wVk = VK_NUMLOCK;
    keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
    ::SendInput(2, keys, sizeof(INPUT));
}

}  // namespace

void NumLockKeeper::SwitchOffAtStart() {
    wasOn_ = NumLockIsOn();
    if (wasOn_) PressNumLock();
}

void NumLockKeeper::RestoreAtExit() const {
    if (NumLockIsOn() != wasOn_) PressNumLock();
}

}  // namespace vrl
