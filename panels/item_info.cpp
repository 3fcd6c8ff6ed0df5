#include "panels/item_info.h"

#include "settings/decimal_text.h"

namespace vrl {
namespace {

constexpr std::int32_t kCategoryStep = 10000;
constexpr std::int32_t kInvokeBase = 80000;
constexpr std::int32_t kBulletBase = 90000;
// Bases whose category text comes from the "category" table; any other base has none.
constexpr std::int32_t kNamedBases[] = {10000, 20000, 30000, 60000, 70000, kInvokeBase, kBulletBase};

bool HasNamedCategory(std::int32_t base) {
    for (std::int32_t named : kNamedBases) {
        if (base == named) return true;
    }
    return false;
}

}  // namespace

std::u16string EnchantmentEffectText(std::int32_t enchantId, const EnchantTables& tables) {
    // Division truncates toward zero, like the module's own arithmetic: a small negative id is a
    // negative sub-id of base 0, a larger one falls to a negative base that has no category.
    const std::int32_t base = enchantId / kCategoryStep * kCategoryStep;
    const std::int32_t sub = enchantId - base;
    if (base == 0) return std::u16string(EnchantTables::Text(tables.other, sub));

    std::u16string_view effect;
    if (base == kInvokeBase) {
        effect = EnchantTables::Text(tables.effect, tables.InvokeEffect(sub));
    } else if (base == kBulletBase) {
        effect = EnchantTables::Text(tables.bullet, sub);
    } else {
        effect = EnchantTables::Text(tables.effect, sub);
    }
    std::u16string text(HasNamedCategory(base) ? EnchantTables::Text(tables.category, base) : std::u16string_view());
    text += u'[';
    text += effect;
    text += u']';
    return text;
}

std::vector<ItemRow> BuildItemRows(const ItemInfoRecord& record, const EnchantTables& tables) {
    std::vector<ItemRow> rows;
    for (int bit : kShownPropertyBits) {
        if ((record.properties >> bit & 1u) == 0) continue;
        rows.push_back({u"1", std::u16string(EnchantTables::Text(tables.flag, bit)), u""});
    }
    for (const ItemEnchantment& slot : record.enchantments) {
        if (slot.id == 0) continue;
        rows.push_back({DecimalText(slot.id), EnchantmentEffectText(slot.id, tables), u"(" + DecimalText(slot.value) + u")"});
    }
    return rows;
}

}  // namespace vrl
