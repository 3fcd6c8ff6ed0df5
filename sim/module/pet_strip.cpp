#include "sim/module/pet_strip.h"

namespace vrl::sim {
namespace {

void Put(std::string& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out += static_cast<char>((value >> (8 * i)) & 0xFF);
}

}  // namespace

std::uint32_t PetTileColour(int slot) {
    static const std::uint32_t kTiles[] = {0xC03030, 0x30A030, 0x3050C0, 0xC0A020, 0x9030B0, 0x20A0A0,
                                           0xE07020, 0x606060, 0xA05030, 0x50C080, 0x8080E0, 0xD04080,
                                           0x208040, 0x404090, 0xB0B040, 0x703070};
    return kTiles[static_cast<unsigned>(slot) % 16];
}

std::string PetStripBmp(int cells) {
    if (cells < 0) cells = 0;
    const int width = cells * kPetCell;
    const int rowBytes = (width * 3 + 3) / 4 * 4;
    const std::uint32_t pixelBytes = static_cast<std::uint32_t>(rowBytes * kPetCell);
    std::string out = "BM";
    Put(out, 54 + pixelBytes, 4);
    Put(out, 0, 4);
    Put(out, 54, 4);
    Put(out, 40, 4);
    Put(out, static_cast<std::uint32_t>(width), 4);
    Put(out, kPetCell, 4);
    Put(out, 1, 2);
    Put(out, 24, 2);
    Put(out, 0, 4);
    Put(out, pixelBytes, 4);
    Put(out, 2835, 4);
    Put(out, 2835, 4);
    Put(out, 0, 4);
    Put(out, 0, 4);
    for (int y = kPetCell - 1; y >= 0; --y) {  // bottom-up
        std::string row;
        for (int x = 0; x < width; ++x) {
            const int slot = x / kPetCell;
            const int cx = x % kPetCell - kPetCell / 2;
            const int cy = y - kPetCell / 2;
            std::uint32_t rgb = PetTileColour(slot);
            if (cx * cx + cy * cy < 14 * 14) rgb = 0xF0F0F0;
            // Slot mark: slot + 1 small squares along the top edge of the disc.
            const int mark = (x % kPetCell - 6) / 3;
            if (y >= 4 && y < 7 && (x % kPetCell) >= 6 && mark <= slot && (x % kPetCell - 6) % 3 < 2) rgb = 0x000000;
            Put(row, rgb, 3);  // blue, green, red
        }
        row.resize(static_cast<std::size_t>(rowBytes), '\0');
        out += row;
    }
    return out;
}

}  // namespace vrl::sim
