// Any item payload and any enchant table text: the record decodes in bounds, survives a second
// encoding unchanged, and gives one row per shown property and per filled enchantment slot.

#include "panels/enchant_table.h"
#include "panels/item_info.h"
#include "panels/item_record.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The first 260 bytes (or fewer) are the payload; what follows is the table text.
    const std::size_t payload = size < vrl::ItemInfoRecord::kSize ? size : vrl::ItemInfoRecord::kSize;
    const vrl::ItemInfoRecord record = vrl::DecodeItemRecord(size ? data : nullptr, payload);

    const std::vector<unsigned char> bytes = vrl::EncodeItemRecord(record);
    const vrl::ItemInfoRecord again = vrl::DecodeItemRecord(bytes.data(), bytes.size());
    if (again.name != record.name || again.chipId != record.chipId || again.itemId != record.itemId ||
        again.properties != record.properties) {
        std::abort();
    }

    vrl::EnchantTables tables;
    const std::string_view text(reinterpret_cast<const char*>(data) + payload, size - payload);
    vrl::FillEnchantTablesFromUtf8(text, payload % 2, tables);

    std::size_t expected = 0;
    for (int bit : vrl::kShownPropertyBits) expected += (record.properties >> bit) & 1u;
    for (const vrl::ItemEnchantment& slot : record.enchantments) expected += slot.id != 0;
    if (vrl::BuildItemRows(record, tables).size() != expected) std::abort();
    return 0;
}
