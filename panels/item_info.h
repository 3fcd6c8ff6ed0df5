#pragma once
// What the item information panel shows for one item record: its texts in both languages and the
// list rows (properties first, then the enchantments in slot order). Portable.

#include <string>
#include <vector>

#include "panels/enchant_table.h"
#include "panels/item_record.h"
#include "ui/lang_text.h"

namespace vrl {

namespace item_texts {
inline constexpr LangText kTitle{u"Item Information", u"アイテム情報"};
inline constexpr LangText kChipId{u"ChipID", u"ChipID"};
inline constexpr LangText kItemId{u"ItemID", u"ItemID"};
// List headers, the same in both languages; columns 0 and 1 start hidden.
inline constexpr const char16_t* kHeaders[4] = {u"", u"ID", u"Effect", u"Value"};
}  // namespace item_texts

// One list row; column 0 is always empty.
struct ItemRow {
    std::u16string id;      // column 1: "1" for a property, the enchant id for an enchantment
    std::u16string effect;  // column 2
    std::u16string value;   // column 3: "(value)", empty for a property
    bool operator==(const ItemRow& other) const {
        return id == other.id && effect == other.effect && value == other.value;
    }
};

// The property bits the panel shows, in the order it shows them.
inline constexpr int kShownPropertyBits[3] = {1, 2, 10};

// Column 2 of an enchantment: the effect text alone for base 0, else "category[effect]".
std::u16string EnchantmentEffectText(std::int32_t enchantId, const EnchantTables& tables);

std::vector<ItemRow> BuildItemRows(const ItemInfoRecord& record, const EnchantTables& tables);

}  // namespace vrl
