#include "settings/table_schema.h"

#include "settings/kcsv.h"

#include <cstdint>

namespace vrl {
namespace {

ValueSpec Text(std::size_t maxLength = 0) {
    ValueSpec v;
    v.maxLength = maxLength;
    return v;
}

ValueSpec Kind(ValueKind kind) {
    ValueSpec v;
    v.kind = kind;
    return v;
}

ValueSpec Int(RangeUse use = RangeUse::None, int min = 0, int max = 0, std::string_view outside = {}) {
    ValueSpec v;
    v.kind = ValueKind::Integer;
    v.range = {min, max, use};
    v.outside = outside;
    return v;
}

ValueSpec Choice(std::vector<std::u16string_view> choices, bool ignoreCase, std::string_view outside) {
    ValueSpec v;
    v.kind = ValueKind::Choice;
    v.choices = std::move(choices);
    v.choicesIgnoreCase = ignoreCase;
    v.outside = outside;
    return v;
}

ValueSpec Keyword(std::u16string_view regexSwitch, std::u16string_view exactSwitch) {
    ValueSpec v;
    v.kind = ValueKind::Keyword;
    v.regexSwitch = regexSwitch;
    v.exactSwitch = exactSwitch;
    return v;
}

TableSchema LogEx() {
    TableSchema t;
    t.fileName = u"LogEx.kcsv";
    t.columns = {
        {u"keyword", true, Keyword(u"regex", u"exact"), "every rule has an empty keyword and matches every line"},
        {u"exact", false, Kind(ValueKind::Switch), {}},
        {u"regex", false, Kind(ValueKind::Switch), {}},
        {u"talk", false, Kind(ValueKind::Switch), {}},
        {u"sound", false, Kind(ValueKind::FileName), {}},
        {u"volume", false, Int(RangeUse::ClampUnsigned, 50, 100), {}},
        {u"color", false, Kind(ValueKind::Colour), {}},
    };
    t.options = {
        {u"MasterVolume", Int(RangeUse::ClampUnsigned, 50, 100)},
        {u"EnableRemoteTalk", Int()},
        {u"bkcolor", Kind(ValueKind::Colour)},
        {u"FontFace", Text(31)},
        {u"FontSize", Int()},
        {u"FontBold", Int()},
        {u"FontItalic", Int()},
    };
    return t;
}

TableSchema BgmEx() {
    TableSchema t;
    t.fileName = u"BGMEx.kcsv";
    t.columns = {
        {u"orgfile", true, Text(), "every rule matches every music request"},
        {u"month", false, Text(), {}},
        {u"day", false, Text(), {}},
        {u"hour", false, Text(), {}},
        {u"playlist", true, Text(), "no rule adds any music"},
    };
    t.options = {
        {u"SoundFont", Kind(ValueKind::FileName)},
        {u"device", Int(RangeUse::Expect, 0, 2, "MIDI files then play on no device at all")},
    };
    return t;
}

TableSchema Volume() {
    TableSchema t;
    t.fileName = u"Volume.kcsv";
    t.columns = {
        {u"File", true, Kind(ValueKind::FileName), "no volume applies to any file"},
        {u"Volume", true, Int(RangeUse::Clamp, 50, 100), "every file plays at 100"},
    };
    t.options = {{u"MasterVolume", Int(RangeUse::Clamp, 50, 100)}};
    return t;
}

TableSchema PetInfo() {
    TableSchema t;
    t.fileName = u"PetInfo.kcsv";
    t.optionsOnly = true;
    t.options = {
        {u"iFilterIndex", Int(RangeUse::Expect, 0, 1, "the pet list then shows no pet")},
        {u"bAutoAdjustColumn", Int()},
        {u"colText", Kind(ValueKind::Colour)},
        {u"colBk", Kind(ValueKind::Colour)},
    };
    for (std::u16string_view width : {u"iChipColumnWidth", u"iNameColumnWidth", u"iStatColumnWidth",
                                      u"iLvColumnWidth", u"iToLvXpColumnWidth", u"iHpColumnWidth",
                                      u"iMpColumnWidth", u"iStColumnWidth"}) {
        t.options.push_back({width, Int()});
    }
    const std::u16string_view bars[][5] = {
        {u"bXpBarEnabled", u"iXpColumnWidthRatio", u"colXpBar", u"colXpBarBk", u"colXpBarFrame"},
        {u"bHpBarEnabled", u"iHpColumnWidthRatio", u"colHpBar", u"colHpBarBk", u"colHpBarFrame"},
        {u"bMpBarEnabled", u"iMpColumnWidthRatio", u"colMpBar", u"colMpBarBk", u"colMpBarFrame"},
        {u"bStBarEnabled", u"iStColumnWidthRatio", u"colStBar", u"colStBarBk", u"colStBarFrame"},
    };
    for (const auto& bar : bars) {
        t.options.push_back({bar[0], Int()});
        t.options.push_back({bar[1], Int(RangeUse::Clamp, 0, 9)});
        for (int i = 2; i < 5; ++i) t.options.push_back({bar[i], Kind(ValueKind::Colour)});
    }
    return t;
}

TableSchema EnchantTable() {
    TableSchema t;
    t.fileName = u"EnchantTable.kcsv";
    t.skipsNoteRows = true;
    t.columns = {
        {u"type", true,
         Choice({u"category", u"flag", u"status", u"attribute", u"weapon", u"skill", u"magic", u"special",
                 u"other", u"bullet", u"prefix", u"suffix"},
                true, "the row is ignored"),
         "every row is ignored"},
        {u"id", true, Int(), "every text is stored under the id 0"},
        {u"text_en", true, Text(), "the English texts are empty"},
        {u"text_jp", true, Text(), "the Japanese texts are empty"},
    };
    t.options = {{u"invoke", Int(), 99}};
    return t;
}

TableSchema QuickSearch() {
    TableSchema t;
    t.fileName = u"QuickSearch.kcsv";
    t.columns = {{u"keyword", true, Text(), "every saved word is empty"}};
    return t;
}

TableSchema WindowPlacement() {
    TableSchema t;
    t.fileName = u"WindowPlacement.kcsv";
    const char* sideMissing = "the windows are placed at an impossible position";
    t.columns = {
        {u"WindowID", true,
         Choice({u"Morva", u"LogEx", u"LogEx_Child", u"MusicControl", u"QuickSearch", u"PetInfo", u"ItemInfo"},
                false, "the row is skipped (window ids are case-sensitive)"),
         "no window is restored"},
        {u"rcNormalPosition.left", true, Int(), sideMissing},
        {u"rcNormalPosition.top", true, Int(), sideMissing},
        {u"rcNormalPosition.right", true, Int(), sideMissing},
        {u"rcNormalPosition.bottom", true, Int(), sideMissing},
        {u"showCmd", true, Int(), "every window is shown"},
    };
    t.options = {
        {u"LogEx_Docked", Int(RangeUse::Expect, 0, 1, "any value other than 0 docks the log windows")},
        {u"LogEx_TabPage", Int()},
    };
    return t;
}

bool SameName(std::u16string_view a, std::u16string_view b) { return AsciiLower(a) == AsciiLower(b); }

}  // namespace

const std::vector<TableSchema>& KnownTables() {
    static const std::vector<TableSchema> tables = {LogEx(),        BgmEx(),       Volume(),
                                                     PetInfo(),      EnchantTable(), QuickSearch(),
                                                     WindowPlacement()};
    return tables;
}

const TableSchema* FindTableSchema(std::u16string_view path) {
    const std::size_t slash = path.find_last_of(u"\\/");
    const std::u16string_view base = slash == std::u16string_view::npos ? path : path.substr(slash + 1);
    for (const TableSchema& table : KnownTables()) {
        if (SameName(table.fileName, base)) return &table;
    }
    return nullptr;
}

const ColumnSpec* FindColumn(const TableSchema& table, std::u16string_view name) {
    for (const ColumnSpec& column : table.columns) {
        if (SameName(column.name, name)) return &column;
    }
    return nullptr;
}

const OptionSpec* FindOption(const TableSchema& table, std::u16string_view name) {
    for (const OptionSpec& option : table.options) {
        if (option.numberedUpTo < 0) {
            if (SameName(option.name, name)) return &option;
            continue;
        }
        // name0 ... nameN: the number written plainly, as the owner formats it with "%d".
        if (name.size() <= option.name.size() || !SameName(option.name, name.substr(0, option.name.size()))) {
            continue;
        }
        const std::u16string_view digits = name.substr(option.name.size());
        if (digits.size() > 1 && digits[0] == u'0') continue;
        if (digits.find_first_not_of(u"0123456789") != std::u16string_view::npos || digits.size() > 4) continue;
        if (ReadInt(digits) <= option.numberedUpTo) return &option;
    }
    return nullptr;
}

int ApplyRange(const IntRange& range, int value) {
    switch (range.use) {
        case RangeUse::Clamp:
            return value < range.min ? range.min : value > range.max ? range.max : value;
        case RangeUse::ClampUnsigned: {
            const auto v = static_cast<std::uint32_t>(value);
            if (v < static_cast<std::uint32_t>(range.min)) return range.min;
            if (v > static_cast<std::uint32_t>(range.max)) return range.max;
            return value;
        }
        case RangeUse::None:
        case RangeUse::Expect:
            break;
    }
    return value;
}

}  // namespace vrl
