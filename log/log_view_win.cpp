#include "log/log_view_win.h"

#include <richedit.h>

#include <algorithm>

#include "ui/wide_win.h"

namespace vrl {
namespace log_view {

void Append(HWND view, const std::u16string& text, Colour colour) {
    // The insertion point goes to the end before the colour is set, so the colour applies to what
    // is inserted there and not to some earlier selection. After an append it is already there,
    // and placing it by character position walks the whole text in some rich-edit versions, so it
    // is placed only when the player has moved it.
    GETTEXTLENGTHEX length{GTL_DEFAULT, 1200};
    const LONG end = static_cast<LONG>(::SendMessageW(view, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0));
    CHARRANGE range{};
    ::SendMessageW(view, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    if (range.cpMin != end || range.cpMax != end) {
        range = {end, end};
        ::SendMessageW(view, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    }
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_COLOR;
    format.crTextColor = colour;
    ::SendMessageW(view, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    ::SendMessageW(view, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(W(text)));
}

void Clear(HWND view) {
    ::SetFocus(view);
    CHARRANGE all{0, -1};
    ::SendMessageW(view, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&all));
    ::SendMessageW(view, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
}

void Prepare(HWND view, Colour background) {
    ::SendMessageW(view, EM_AUTOURLDETECT, FALSE, 0);
    ::SendMessageW(view, EM_SETREADONLY, TRUE, 0);
    ::SendMessageW(view, EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(background));
}

void LiftTextLimit(HWND view) { ::SendMessageW(view, EM_EXLIMITTEXT, 0, 0x7FFFFFFF); }

void ScrollToEnd(HWND view) { ::SendMessageW(view, WM_VSCROLL, SB_BOTTOM, 0); }

}  // namespace log_view

void LogRedrawBatch::Touched(HWND view) {
    const DWORD now = ::GetTickCount();
    const bool known = std::any_of(touched_.begin(), touched_.end(), [view](const Entry& e) { return e.view == view; });
    if (!known) {
        // Only a visible view is held: turning redraw back on may also set the visible bit, which
        // must not show a view that was hidden.
        const bool hold = ::IsWindowVisible(view) != FALSE;
        if (hold) ::SendMessageW(view, WM_SETREDRAW, FALSE, 0);
        if (touched_.empty()) heldSince_ = now;
        touched_.push_back({view, hold});
    }
    // Setting the timer again restarts it; past the longest hold it is left to run out.
    if (owner_ && now - heldSince_ + kSettleMs <= kLongestHoldMs) ::SetTimer(owner_, timerId_, kSettleMs, nullptr);
}

void LogRedrawBatch::Flush() {
    if (owner_) ::KillTimer(owner_, timerId_);
    std::vector<Entry> touched;
    touched.swap(touched_);
    for (const Entry& entry : touched) {
        if (!::IsWindow(entry.view)) continue;
        if (entry.held) ::SendMessageW(entry.view, WM_SETREDRAW, TRUE, 0);
        log_view::ScrollToEnd(entry.view);
        if (entry.held) ::InvalidateRect(entry.view, nullptr, TRUE);
    }
}

}  // namespace vrl
