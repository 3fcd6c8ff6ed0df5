#include "app/foreground_input_win.h"

namespace vrl {

ForegroundInputAttachment::ForegroundInputAttachment() : self_(::GetCurrentThreadId()) {
    HWND foreground = ::GetForegroundWindow();
    foreground_ = foreground ? ::GetWindowThreadProcessId(foreground, nullptr) : 0;
    attached_ = foreground_ && foreground_ != self_ && ::AttachThreadInput(self_, foreground_, TRUE);
}

ForegroundInputAttachment::~ForegroundInputAttachment() {
    if (attached_) ::AttachThreadInput(self_, foreground_, FALSE);
}

void TakeForeground(HWND window) {
    // Attached, the companion counts as the thread that had the last input, so the foreground
    // lock lets SetForegroundWindow through instead of only flashing the taskbar button.
    ForegroundInputAttachment shared;
    ::BringWindowToTop(window);
    ::SetForegroundWindow(window);
}

}  // namespace vrl
