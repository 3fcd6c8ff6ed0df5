#pragma once
// One rich-text log view (a read-only "RichEdit20W"): coloured appends, clearing, and the batch
// that lets a burst of appends repaint once.

#include <windows.h>

#include <string>
#include <vector>

#include "ui/colour.h"

namespace vrl {

namespace log_view {

// Appends `text` at the end in `colour` (only the text colour is set), without undo. The text and
// its colour are in place when this returns; repainting and scrolling are the batch's business.
void Append(HWND view, const std::u16string& text, Colour colour);
// Focuses the view and replaces all of its text with nothing.
void Clear(HWND view);
// Read-only, no automatic URL detection, the given background.
void Prepare(HWND view, Colour background);
// A rich edit takes 32,767 characters unless told otherwise (Wine raises the limit by itself, so
// nothing under Wine shows it); a log grows until the player clears it.
void LiftTextLimit(HWND view);
void ScrollToEnd(HWND view);

}  // namespace log_view

// The module sends lines one SendMessage at a time and the game waits for each. Repainting a
// visible view per line costs far more than the insertion, so during a burst the visible views
// keep their redraw off, and a short timer on `owner` turns it back on, repaints and scrolls to
// the end: kSettleMs after the last run of lines, or kLongestHoldMs after the first while lines
// keep coming. A repaint costs a view several milliseconds under Wine, in which the game's next
// line waits: in a fight it comes twice a second.
class LogRedrawBatch {
public:
    static constexpr DWORD kSettleMs = 50;
    static constexpr DWORD kLongestHoldMs = 500;

    LogRedrawBatch(UINT_PTR timerId) : timerId_(timerId) {}  // NOLINT: one owner, set later
    void SetOwner(HWND owner) { owner_ = owner; }
    UINT_PTR TimerId() const { return timerId_; }

    // Called before each append to `view`.
    void Touched(HWND view);
    // Repaints and scrolls what the burst touched; also before any view is shown, hidden or moved
    // between windows, so that no view is left with its redraw off.
    void Flush();

private:
    struct Entry {
        HWND view;
        bool held;  // redraw turned off
    };
    HWND owner_ = nullptr;
    UINT_PTR timerId_;
    std::vector<Entry> touched_;
    DWORD heldSince_ = 0;  // tick count of the batch's first append
};

}  // namespace vrl
