#include "app/game_link_win.h"

#include <vector>

#include "ui/wide_win.h"

namespace vrl::game_link {

HWND FindFrame() {
    // Another copy's frame has the same class and may carry the title for a while: a handle to it
    // would tie our reloads to a window that is about to go.
    HWND candidate = nullptr;
    while ((candidate = ::FindWindowExW(nullptr, candidate, W(kFrameClass), W(kAppName))) != nullptr) {
        DWORD processId = 0;
        ::GetWindowThreadProcessId(candidate, &processId);
        if (processId == ::GetCurrentProcessId()) return candidate;
    }
    return nullptr;
}

LONG ReadSlot(HWND frame, int byteIndex) { return frame ? ::GetWindowLongW(frame, byteIndex) : 0; }

void WriteSlot(HWND frame, int byteIndex, LONG value) {
    if (frame) ::SetWindowLongW(frame, byteIndex, value);
}

HWND ReadWindowSlot(HWND frame, int byteIndex) {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(ReadSlot(frame, byteIndex)));
}

void WriteWindowSlot(HWND frame, int byteIndex, HWND window) {
    WriteSlot(frame, byteIndex, static_cast<LONG>(reinterpret_cast<LONG_PTR>(window)));
}

bool ReloadRequested(HWND frame, unsigned bit) {
    return (static_cast<unsigned>(ReadSlot(frame, kSlotReloadFlags)) & bit) != 0;
}

HWND ClearReloadRequest(unsigned bit) {
    // Read just before writing, so a bit another writer set meanwhile survives.
    HWND frame = FindFrame();
    const unsigned flags = static_cast<unsigned>(ReadSlot(frame, kSlotReloadFlags));
    WriteSlot(frame, kSlotReloadFlags, static_cast<LONG>(flags & ~bit));
    return frame;
}

HWND GameDrawWindow(HWND frame) {
    HWND further = ReadWindowSlot(frame, kSlotFurtherWindow);
    if (further && ::IsWindow(further)) return further;
    return ReadWindowSlot(frame, kSlotGameWindow);
}

std::wstring StatusStaticText(HWND frame, int slot, int limit) {
    HWND status = ReadWindowSlot(frame, slot);
    if (!status || limit <= 0) return {};
    std::vector<wchar_t> buffer(static_cast<size_t>(limit) + 1);
    const int length = ::GetWindowTextW(status, buffer.data(), limit + 1);
    return std::wstring(buffer.data(), length > 0 ? static_cast<size_t>(length) : 0);
}

}  // namespace vrl::game_link
