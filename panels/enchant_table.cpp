#include "panels/enchant_table.h"

#include "settings/decimal_text.h"
#include "settings/kcsv.h"

#include <string>

namespace vrl {
namespace {

EnchantTextMap* TableOfKind(std::u16string_view type, EnchantTables& tables) {
    const std::u16string kind = AsciiLower(type);
    if (kind == u"category") return &tables.category;
    if (kind == u"flag") return &tables.flag;
    if (kind == u"status" || kind == u"attribute" || kind == u"weapon" || kind == u"skill" || kind == u"magic" ||
        kind == u"special") {
        return &tables.effect;
    }
    if (kind == u"other") return &tables.other;
    if (kind == u"bullet") return &tables.bullet;
    if (kind == u"prefix") return &tables.prefix;
    if (kind == u"suffix") return &tables.suffix;
    return nullptr;
}

std::u16string InvokeOptionName(int index) {
    return std::u16string(enchant_columns::kInvokePrefix) + DecimalText(index);
}

}  // namespace

std::u16string_view EnchantTables::Text(const EnchantTextMap& table, std::int32_t id) {
    const auto found = table.find(id);
    return found == table.end() ? std::u16string_view() : std::u16string_view(found->second);
}

std::int32_t EnchantTables::InvokeEffect(std::int32_t index) const {
    const auto found = invoke.find(index);
    return found == invoke.end() ? 0 : found->second;
}

void FillEnchantTables(const KcsvFile& table, int language, EnchantTables& tables) {
    for (int index = 0; index <= enchant_columns::kLastInvokeIndex; ++index) {
        const std::u16string name = InvokeOptionName(index);
        if (table.OptionIndex(name) < 0) continue;
        // 0 and below mean "not set here": they never clear what the built-in copy gave.
        const int effect = ReadInt(table.OptionValue(name));
        if (effect >= 1) tables.invoke[index] = effect;
    }

    const int typeColumn = table.ColumnIndex(enchant_columns::kType);
    const int textColumn = table.ColumnIndex(language == 1 ? enchant_columns::kTextJp : enchant_columns::kTextEn);
    const auto& rows = table.Rows();
    for (unsigned r = 0; r < rows.size(); ++r) {
        if (rows[r].empty() || (!rows[r][0].empty() && rows[r][0][0] == u'#')) continue;  // note rows
        const std::u16string type = typeColumn < 0 ? std::u16string() : table.Cell(r, typeColumn, u"");
        EnchantTextMap* kind = TableOfKind(type, tables);
        if (!kind) continue;
        // No "id" column: every row under 0; a row too short for it: under 2147483647.
        const std::int32_t id = table.CellInt(r, enchant_columns::kId, 0);
        (*kind)[id] = textColumn < 0 ? std::u16string() : table.Cell(r, textColumn, u"");
    }
}

bool FillEnchantTablesFromUtf8(std::string_view bytes, int language, EnchantTables& tables) {
    if (bytes.empty()) return false;
    KcsvFile table;
    if (!table.ParseUtf8(bytes)) return false;
    FillEnchantTables(table, language, tables);
    return true;
}

}  // namespace vrl
