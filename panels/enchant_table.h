#pragma once
// The enchant table: texts for the ids of an item's enchantments and special properties, in the
// language in force when it was loaded. Two sources fill the same tables one after the other: the
// built-in copy that the settings editor carries, then the player's EnchantTable.kcsv on top.
// Filling from a parsed table is portable; reading the two sources is enchant_table_win.cpp.

#include "settings/table_schema.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vrl {

class KcsvFile;

inline constexpr const char16_t* kEnchantTableFile = tables::enchant::kFile.data();

using EnchantTextMap = std::map<std::int32_t, std::u16string>;

struct EnchantTables {
    EnchantTextMap category;  // "category": the text before the brackets, by category base
    EnchantTextMap flag;      // "flag": property rows, by bit number
    EnchantTextMap effect;    // "status", "attribute", "weapon", "skill", "magic", "special"
    EnchantTextMap other;     // "other": enchantments of base 0
    EnchantTextMap bullet;    // "bullet": enchantments of base 90000
    EnchantTextMap prefix;    // "prefix": kept, shown nowhere
    EnchantTextMap suffix;    // "suffix": kept, shown nowhere
    std::map<std::int32_t, std::int32_t> invoke;  // invoke index 0..99 -> effect id

    // Empty text for an id the table does not hold.
    static std::u16string_view Text(const EnchantTextMap& table, std::int32_t id);
    // 0 for an index the invoke table does not hold.
    std::int32_t InvokeEffect(std::int32_t index) const;
};

// Column names of the table file, as the table schema knows them.
namespace enchant_columns {
using tables::enchant::kId;
using tables::enchant::kInvokePrefix;  // options invoke0 ... invoke99
using tables::enchant::kTextEn;
using tables::enchant::kTextJp;
using tables::enchant::kType;
inline constexpr int kLastInvokeIndex = tables::enchant::kLastInvoke;
}  // namespace enchant_columns

// Stores the rows and invoke options of one parsed table over what `tables` already holds: later
// texts replace earlier ones of the same id, nothing is removed. `language` 1 takes the Japanese
// texts, anything else the English ones.
void FillEnchantTables(const KcsvFile& table, int language, EnchantTables& tables);

// The built-in copy: UTF-8 KCSV text. Bytes that are not a KCSV text leave the tables alone.
bool FillEnchantTablesFromUtf8(std::string_view bytes, int language, EnchantTables& tables);

// Both sources, in order (Win32 layer): the resource "FILE_ENCHANTTABLE" of type "FILE" in
// VrlConfig.exe, found by the library search, then EnchantTable.kcsv in the current folder. A
// source that is missing or unreadable is skipped; only a file that exists but cannot be opened
// shows the table reader's warning.
void LoadEnchantTables(int language, EnchantTables& tables);

}  // namespace vrl
