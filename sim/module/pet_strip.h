#pragma once
// The strip of pet pictures that the module writes for the pet panel: 48 x 48 cells side by side,
// one per pet slot, each a picture of its own (a coloured tile with a disc and a slot mark), as a
// 24-bit bottom-up BMP file. Portable.

#include <cstdint>
#include <string>

namespace vrl::sim {

inline constexpr int kPetCell = 48;

// The file's bytes for `cells` cells (0 gives a file without pixels).
std::string PetStripBmp(int cells);
// The tile colour of cell `slot`, as 0x00RRGGBB, for tests that look at the pictures.
std::uint32_t PetTileColour(int slot);

}  // namespace vrl::sim
