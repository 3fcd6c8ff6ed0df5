// Num Lock as the game sees it. A second thread stands for the game: it owns the foreground window
// and takes every key message, so this thread's own key state never sees a toggle. (Across
// processes Wine gives the lock keys back the X server's state at once, so the game is a thread.)

#include "app/num_lock_win.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <thread>

namespace {

class GameThread {
public:
    GameThread() : thread_([this] { Run(); }) {
        while (!id_) Sleep(10);
    }
    ~GameThread() {
        PostThreadMessageW(id_, WM_QUIT, 0, 0);
        thread_.join();
    }
    // Waits until the game reads Num Lock as `on`, or a second has passed.
    bool SettlesAt(bool on) const {
        for (int i = 0; i < 50 && numLock_ != on; ++i) Sleep(20);
        return numLock_ == on;
    }

private:
    void Run() {
        HWND window = CreateWindowExW(0, L"STATIC", L"game", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                      nullptr, nullptr, nullptr, nullptr);
        SetForegroundWindow(window);
        MSG msg{};
        PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE);  // the queue exists before anyone posts
        id_ = GetCurrentThreadId();
        while (msg.message != WM_QUIT) {
            while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE) && msg.message != WM_QUIT) DispatchMessageW(&msg);
            numLock_ = (GetKeyState(VK_NUMLOCK) & 1) != 0;
            Sleep(10);
        }
        DestroyWindow(window);
    }

    std::atomic<DWORD> id_{0};
    std::atomic<bool> numLock_{false};
    std::thread thread_;
};

void SetNumLock(const GameThread& game, bool on) {
    if (!game.SettlesAt(on)) {
        INPUT keys[2] = {};
        keys[0].type = keys[1].type = INPUT_KEYBOARD;
        keys[0].ki.wVk = keys[1].ki.wVk = VK_NUMLOCK;
        keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, keys, sizeof(INPUT));
    }
    ASSERT_TRUE(game.SettlesAt(on));
}

TEST(NumLock, OffWhileRunningAndAtExitAsItWasUnlessThePlayerChangedIt) {
    GameThread game;
    for (bool onAtStart : {true, false}) {
        SetNumLock(game, onAtStart);
        vrl::NumLockKeeper keeper;
        keeper.SwitchOffAtStart();
        EXPECT_TRUE(game.SettlesAt(false)) << onAtStart;
        keeper.RestoreAtExit();
        Sleep(100);
        EXPECT_TRUE(game.SettlesAt(onAtStart)) << onAtStart;
    }
    // Off at start, switched on meanwhile: off again at exit.
    vrl::NumLockKeeper keeper;
    keeper.SwitchOffAtStart();
    SetNumLock(game, true);
    keeper.RestoreAtExit();
    EXPECT_TRUE(game.SettlesAt(false));
}

}  // namespace
