#pragma once
// The colour menu: a three-column popup of the named colours with swatches, the current colour
// and the system colour chooser.

#include "ui/colour.h"

#include <windows.h>

#include <array>

namespace vrl {

// Opens at the cursor, owned by `owner`, and returns the chosen colour; the current colour when
// the menu is dismissed, "Current setting" is chosen, or the chooser is cancelled.
Colour ShowColourMenu(HWND owner, Colour current);

// A colour sample filling `r` with a one-pixel black frame; no colour is white crossed by a diagonal.
void PaintSwatch(HDC dc, const RECT& r, Colour colour);

// The chooser's 16 custom colours, shared by every chooser of the process; white at start.
std::array<COLORREF, 16>& CustomColours();

}  // namespace vrl
