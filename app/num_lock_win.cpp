#include "app/num_lock_win.h"

#include <windows.h>

namespace vrl {
namespace {

bool NumLockIsOn() { return (::GetKeyState(VK_NUMLOCK) & 1) != 0; }

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
