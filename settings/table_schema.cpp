#include "settings/table_schema.h"

#include "settings/kcsv.h"

#include <cstdint>

namespace vrl {
namespace {

namespace logex = tables::logex;
namespace bgmex = tables::bgmex;
namespace volume = tables::volume;
namespace petinfo = tables::petinfo;
namespace enchant = tables::enchant;
namespace quicksearch = tables::quicksearch;
namespace placement = tables::placement;

ValueSpec Text(std::size_t maxLength = 0, std::u16string_view emptyText = {}) {
    ValueSpec v;
    v.maxLength = maxLength;
    v.emptyText = emptyText;
    return v;
}

ValueSpec Kind(ValueKind kind) {
    ValueSpec v;
    v.kind = kind;
    return v;
}

ValueSpec Int(RangeUse use = RangeUse::None, int min = 0, int max = 0, LangText outside = {u"", u""}) {
    ValueSpec v;
    v.kind = ValueKind::Integer;
    v.range = {min, max, use};
    v.outside = outside;
    return v;
}

ValueSpec IntOr(int whenMissing, ValueSpec v = Int()) {
    v.whenMissing = whenMissing;
    return v;
}

ValueSpec ColourOr(Colour fallback) {
    ValueSpec v = Kind(ValueKind::ColourText);
    v.fallbackColour = fallback;
    return v;
}

ValueSpec Choice(std::vector<std::u16string_view> choices, bool ignoreCase, LangText outside) {
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
    t.fileName = logex::kFile;
    t.rowMeaning = {u"a rule", u"ルール"};
    const ValueSpec volume = IntOr(100, Int(RangeUse::ClampUnsigned, 50, 100));
    t.columns = {
        {logex::kKeyword, true, Keyword(logex::kRegex, logex::kExact),
         {u"every rule has an empty keyword and matches every line",
          u"どのルールもキーワードが空になり、すべての行に一致します"}},
        {logex::kExact, false, Kind(ValueKind::Switch)},
        {logex::kRegex, false, Kind(ValueKind::Switch)},
        {logex::kTalk, false, Kind(ValueKind::Switch)},
        {logex::kSound, false, Kind(ValueKind::FileName)},
        {logex::kVolume, false, volume},
        {logex::kColor, true, Kind(ValueKind::ColourText),
         {u"no line is ever copied to the extracted log", u"抽出ログには一行も写されません"}},
    };
    ValueSpec fontSize = IntOr(9);
    fontSize.zeroMeansMissing = true;
    ValueSpec italic = Int();
    italic.lowBits = 8;
    t.options = {
        {logex::kMasterVolume, volume},
        {logex::kEnableRemoteTalk, Int()},
        // Without a colour the views would be given "no colour", which Windows may paint as the
        // window colour (white) under the white full-log lines; black is what the notices assume.
        {logex::kBkColor, ColourOr(MakeColour(0, 0, 0)), -1,
         {u"both log views are black", u"両方のログの背景は黒になります"}},
        {logex::kFontFace, Text(31, u"Meiryo UI")},
        {logex::kFontSize, fontSize},
        {logex::kFontBold, Int()},
        {logex::kFontItalic, italic},
    };
    return t;
}

TableSchema BgmEx() {
    TableSchema t;
    t.fileName = bgmex::kFile;
    t.rowMeaning = {u"a music rule", u"音楽のルール"};
    ValueSpec hours = Kind(ValueKind::HourList);
    hours.range = {0, 23, RangeUse::Expect};
    t.columns = {
        {bgmex::kOrgFile, true, Text(),
         {u"every rule matches every music request", u"どのルールもすべての曲の要求に一致します"}},
        {bgmex::kMonth, false, Kind(ValueKind::DateList)},
        {bgmex::kDay, false, Kind(ValueKind::DateList)},
        {bgmex::kHour, false, hours},
        {bgmex::kPlaylist, true, Text(), {u"no rule adds any music", u"どのルールも曲を加えません"}},
    };
    t.options = {
        {bgmex::kSoundFont, Kind(ValueKind::FileName)},
        {bgmex::kDevice, Int(RangeUse::Expect, 0, 2,
                             {u"MIDI files then play on no device at all", u"MIDI ファイルはどの装置でも鳴りません"})},
    };
    return t;
}

TableSchema Volume() {
    TableSchema t;
    t.fileName = volume::kFile;
    t.rowMeaning = {u"a file's volume", u"ファイルの音量"};
    const ValueSpec level = IntOr(100, Int(RangeUse::Clamp, 50, 100));
    ValueSpec fileLevel = level;
    fileLevel.emptyMeansMissing = true;
    t.columns = {
        {volume::kFileColumn, true, Kind(ValueKind::FileName),
         {u"no volume applies to any file", u"どのファイルにも音量が当たりません"}},
        {volume::kVolume, true, fileLevel, {u"every file plays at 100", u"どのファイルも 100 で鳴ります"}},
    };
    t.options = {{volume::kMasterVolume, level}};
    return t;
}

TableSchema PetInfo() {
    TableSchema t;
    t.fileName = petinfo::kFile;
    t.optionsOnly = true;
    t.options = {
        {petinfo::kFilterIndex,
         Int(RangeUse::Expect, 0, 1, {u"the pet list then shows no pet", u"ペット一覧には何も表示されません"})},
        {petinfo::kAutoAdjustColumn, IntOr(1)},
        {petinfo::kTextColour, ColourOr(MakeColour(0, 0, 0))},
        {petinfo::kBackColour, ColourOr(MakeColour(255, 255, 255))},
    };
    const int widths[8] = {50, 160, 80, 80, 120, 120, 120, 120};
    for (int i = 0; i < 8; ++i) t.options.push_back({petinfo::kColumnWidth[i], IntOr(widths[i])});
    const Colour bars[4] = {MakeColour(255, 255, 255), MakeColour(255, 155, 155), MakeColour(0, 0, 255),
                            MakeColour(175, 255, 175)};
    for (int i = 0; i < 4; ++i) {
        t.options.push_back({petinfo::kBarEnabled[i], IntOr(1)});
        t.options.push_back({petinfo::kBarRatio[i], IntOr(1, Int(RangeUse::Clamp, 0, 9))});
        t.options.push_back({petinfo::kBarColour[i], ColourOr(bars[i])});
        t.options.push_back({petinfo::kBarBackColour[i], ColourOr(MakeColour(0, 0, 0))});
        t.options.push_back({petinfo::kBarFrameColour[i], ColourOr(MakeColour(0, 0, 0))});
    }
    return t;
}

TableSchema EnchantTable() {
    TableSchema t;
    t.fileName = enchant::kFile;
    t.skipsNoteRows = true;
    t.rowMeaning = {u"an enchantment text", u"エンチャントの文"};
    t.columns = {
        {enchant::kType, true,
         Choice({u"category", u"flag", u"status", u"attribute", u"weapon", u"skill", u"magic", u"special",
                 u"other", u"bullet", u"prefix", u"suffix"},
                true, {u"the row is ignored", u"この行は読み飛ばされます"}),
         {u"every row is ignored", u"すべての行が読み飛ばされます"}},
        {enchant::kId, true, Int(), {u"every text is stored under the id 0", u"すべての文が ID 0 に入ります"}},
        {enchant::kTextEn, true, Text(), {u"the English texts are empty", u"英語の文が空になります"}},
        {enchant::kTextJp, true, Text(), {u"the Japanese texts are empty", u"日本語の文が空になります"}},
    };
    t.options = {{enchant::kInvokePrefix, Int(), enchant::kLastInvoke}};
    return t;
}

TableSchema QuickSearch() {
    TableSchema t;
    t.fileName = quicksearch::kFile;
    t.rowMeaning = {u"a saved search word", u"保存された検索語"};
    t.columns = {{quicksearch::kKeyword, true, Text(), {u"every saved word is empty", u"保存された語がすべて空になります"}}};
    return t;
}

TableSchema WindowPlacement() {
    TableSchema t;
    t.fileName = placement::kFile;
    t.rowMeaning = {u"a window's place", u"ウィンドウの位置"};
    const LangText sideMissing = {u"the windows are placed at an impossible position",
                                  u"ウィンドウがありえない位置に置かれます"};
    t.columns = {
        {placement::kWindowId, true,
         Choice({placement::kGameId, placement::kFullLogId, placement::kExtractedLogId, placement::kMusicPanelId,
                 placement::kQuickSearchId, placement::kPetPanelId, placement::kItemPanelId},
                false,
                {u"the row is skipped (window ids are case-sensitive)",
                 u"この行は読み飛ばされます (ウィンドウ ID は大文字と小文字を区別します)"}),
         {u"no window is restored", u"どのウィンドウも復元されません"}},
        {placement::kLeft, true, Int(), sideMissing},
        {placement::kTop, true, Int(), sideMissing},
        {placement::kRight, true, Int(), sideMissing},
        {placement::kBottom, true, Int(), sideMissing},
        {placement::kShowCmd, true, Int(), {u"every window is shown", u"すべてのウィンドウが表示されます"}},
    };
    t.options = {
        {placement::kDocked, Int(RangeUse::Expect, 0, 1,
                                 {u"any value other than 0 docks the log windows",
                                  u"0 以外の値はどれもログウィンドウを結合します"})},
        {placement::kTabPage, Int()},
    };
    return t;
}

bool SameName(std::u16string_view a, std::u16string_view b) { return AsciiLower(a) == AsciiLower(b); }

}  // namespace

int ValueSpec::NumberOf(std::u16string_view text, bool present) const {
    if (!present || (emptyMeansMissing && text.empty())) return whenMissing;
    int value = ReadInt(text);
    if (lowBits > 0 && lowBits < 32) value &= static_cast<int>((1u << lowBits) - 1);
    if (zeroMeansMissing && value == 0) return whenMissing;
    return ApplyRange(range, value);
}

Colour ValueSpec::ColourOf(std::u16string_view text) const { return ParseColour(text, fallbackColour); }

std::u16string ValueSpec::TextOf(std::u16string_view text) const {
    if (text.empty()) return std::u16string(emptyText);
    std::size_t length = maxLength != 0 && text.size() > maxLength ? maxLength : text.size();
    if (length < text.size() && text[length - 1] >= 0xD800 && text[length - 1] <= 0xDBFF) --length;
    return std::u16string(text.substr(0, length));
}

const ColumnSpec& TableSchema::Column(std::u16string_view name) const {
    static const ColumnSpec unknown;
    const ColumnSpec* column = FindColumn(*this, name);
    return column ? *column : unknown;
}

const OptionSpec& TableSchema::Option(std::u16string_view name) const {
    static const OptionSpec unknown;
    const OptionSpec* option = FindOption(*this, name);
    return option ? *option : unknown;
}

int TableSchema::OptionNumber(const KcsvFile& table, std::u16string_view name) const {
    return Option(name).value.NumberOf(table.OptionValue(name), table.OptionIndex(name) >= 0);
}

Colour TableSchema::OptionColour(const KcsvFile& table, std::u16string_view name) const {
    return Option(name).value.ColourOf(table.OptionValue(name));
}

std::u16string TableSchema::OptionText(const KcsvFile& table, std::u16string_view name) const {
    return Option(name).value.TextOf(table.OptionValue(name));
}

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

const TableSchema& SchemaOf(std::u16string_view fileName) {
    static const TableSchema unknown;
    const TableSchema* schema = FindTableSchema(fileName);
    return schema ? *schema : unknown;
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
