#pragma once
// Num Lock switched off while the companion runs (enNumlockOff) and given back at exit.

namespace vrl {

class NumLockKeeper {
public:
    // Remembers whether Num Lock is on, and switches it off when it is.
    void SwitchOffAtStart();
    // Presses Num Lock once more when its state differs from the one found at start.
    void RestoreAtExit() const;

private:
    bool wasOn_ = false;
};

}  // namespace vrl
