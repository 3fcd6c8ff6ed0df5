#pragma once
// The companion's side of the frame slots. Handles travel through 32-bit slots: window handles
// are 32-bit significant on both bitnesses and are sign-extended back.

#include <windows.h>

#include <string>

#include "app/game_link.h"

namespace vrl::game_link {

// The frame of this process, by class and title; null before it has its title or once it is gone.
HWND FindFrame();

LONG ReadSlot(HWND frame, int byteIndex);
void WriteSlot(HWND frame, int byteIndex, LONG value);
HWND ReadWindowSlot(HWND frame, int byteIndex);
void WriteWindowSlot(HWND frame, int byteIndex, HWND window);

// True when `bit` is set in the frame's reload flags.
bool ReloadRequested(HWND frame, unsigned bit);
// Clears exactly `bit`, on the frame found afresh; returns that frame (null when it is gone).
HWND ClearReloadRequest(unsigned bit);

// The window the game draws in: slot 36 when it holds a window, else slot 0.
HWND GameDrawWindow(HWND frame);

// The text of a status static; `limit` characters at most.
std::wstring StatusStaticText(HWND frame, int slot, int limit);

}  // namespace vrl::game_link
