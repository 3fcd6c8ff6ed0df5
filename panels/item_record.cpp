#include "panels/item_record.h"

#include <algorithm>
#include <cstring>

namespace vrl {
namespace {

std::uint32_t Read32(const unsigned char* bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(bytes[offset]) | static_cast<std::uint32_t>(bytes[offset + 1]) << 8 |
           static_cast<std::uint32_t>(bytes[offset + 2]) << 16 | static_cast<std::uint32_t>(bytes[offset + 3]) << 24;
}

void Write32(std::vector<unsigned char>& bytes, std::size_t offset, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes[offset + i] = static_cast<unsigned char>(value >> (8 * i));
}

}  // namespace

ItemInfoRecord DecodeItemRecord(const void* data, std::size_t size) {
    unsigned char bytes[ItemInfoRecord::kSize] = {};
    if (data) std::memcpy(bytes, data, std::min(size, ItemInfoRecord::kSize));

    ItemInfoRecord record;
    for (std::size_t i = 0; i < ItemInfoRecord::kNameUnits; ++i) {
        const char16_t unit = static_cast<char16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
        if (unit == 0) break;
        record.name += unit;
    }
    record.chipId = static_cast<std::int32_t>(Read32(bytes, ItemInfoRecord::kChipIdOffset));
    record.itemId = static_cast<std::int32_t>(Read32(bytes, ItemInfoRecord::kItemIdOffset));
    record.properties = Read32(bytes, ItemInfoRecord::kPropertiesOffset);
    for (std::size_t slot = 0; slot < ItemInfoRecord::kEnchantmentSlots; ++slot) {
        const std::size_t at = ItemInfoRecord::kEnchantmentsOffset + 8 * slot;
        record.enchantments[slot].id = static_cast<std::int32_t>(Read32(bytes, at));
        record.enchantments[slot].value = static_cast<std::int32_t>(Read32(bytes, at + 4));
    }
    return record;
}

std::vector<unsigned char> EncodeItemRecord(const ItemInfoRecord& record) {
    std::vector<unsigned char> bytes(ItemInfoRecord::kSize, 0);
    const std::size_t units = std::min(record.name.size(), ItemInfoRecord::kNameUnits);
    for (std::size_t i = 0; i < units; ++i) {
        bytes[2 * i] = static_cast<unsigned char>(record.name[i] & 0xFF);
        bytes[2 * i + 1] = static_cast<unsigned char>(record.name[i] >> 8);
    }
    Write32(bytes, ItemInfoRecord::kChipIdOffset, static_cast<std::uint32_t>(record.chipId));
    Write32(bytes, ItemInfoRecord::kItemIdOffset, static_cast<std::uint32_t>(record.itemId));
    Write32(bytes, ItemInfoRecord::kPropertiesOffset, record.properties);
    for (std::size_t slot = 0; slot < ItemInfoRecord::kEnchantmentSlots; ++slot) {
        const std::size_t at = ItemInfoRecord::kEnchantmentsOffset + 8 * slot;
        Write32(bytes, at, static_cast<std::uint32_t>(record.enchantments[slot].id));
        Write32(bytes, at + 4, static_cast<std::uint32_t>(record.enchantments[slot].value));
    }
    return bytes;
}

}  // namespace vrl
