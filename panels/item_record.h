#pragma once
// The item record the in-game module sends to the item information panel: 260 bytes,
// little-endian, packed. Portable; the module stand-in builds its records with the same code.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vrl {

struct ItemEnchantment {
    std::int32_t id = 0;  // category base (a multiple of 10000) + sub-id; 0: empty slot
    std::int32_t value = 0;
};

struct ItemInfoRecord {
    static constexpr std::size_t kSize = 260;
    static constexpr std::size_t kNameUnits = 64;  // 128 bytes of UTF-16LE
    static constexpr std::size_t kChipIdOffset = 128;
    static constexpr std::size_t kItemIdOffset = 132;
    static constexpr std::size_t kPropertiesOffset = 136;
    static constexpr std::size_t kEnchantmentsOffset = 140;
    static constexpr std::size_t kEnchantmentSlots = 15;

    std::u16string name;  // up to its NUL, at most 64 units even without one
    std::int32_t chipId = 0;
    std::int32_t itemId = 0;
    std::uint32_t properties = 0;  // bits 1, 2 and 10 are shown
    std::array<ItemEnchantment, kEnchantmentSlots> enchantments{};
};

// Reads a record from `size` bytes; a shorter payload reads as zero-filled past its end, a
// longer one is read up to 260 bytes. Null data reads as an all-zero record.
ItemInfoRecord DecodeItemRecord(const void* data, std::size_t size);

// The 260 bytes of `record` (a name longer than 64 units is cut).
std::vector<unsigned char> EncodeItemRecord(const ItemInfoRecord& record);

}  // namespace vrl
