// Num Lock as this thread sees it. (Across processes Wine gives the lock keys back the X server's
// state at once, so only presses this thread receives itself can be read back.)

#include "app/num_lock_win.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

bool NumLockOn() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    return (GetKeyState(VK_NUMLOCK) & 1) != 0;
}

// Waits until Num Lock reads `on`, or a second has passed.
bool SettlesAt(bool on) {
    for (int i = 0; i < 50 && NumLockOn() != on; ++i) Sleep(20);
    return NumLockOn() == on;
}

void Press() {
    INPUT keys[2] = {};
    keys[0].type = keys[1].type = INPUT_KEYBOARD;
    keys[0].ki.wVk = keys[1].ki.wVk = VK_NUMLOCK;
    keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, keys, sizeof(INPUT));
}

void SetNumLock(bool on) {
    if (NumLockOn() != on) Press();
    ASSERT_TRUE(SettlesAt(on));
}

TEST(NumLock, OffWhileRunningAndAtExitAsItWasUnlessThePlayerChangedIt) {
    for (bool onAtStart : {true, false}) {
        SetNumLock(onAtStart);
        vrl::NumLockKeeper keeper;
        keeper.SwitchOffAtStart();
        EXPECT_TRUE(SettlesAt(false)) << onAtStart;
        keeper.RestoreAtExit();
        Sleep(100);
        EXPECT_TRUE(SettlesAt(onAtStart)) << onAtStart;
    }
    // Off at start, switched on meanwhile: off again at exit.
    vrl::NumLockKeeper keeper;
    keeper.SwitchOffAtStart();
    SetNumLock(true);
    keeper.RestoreAtExit();
    EXPECT_TRUE(SettlesAt(false));
}

}  // namespace
