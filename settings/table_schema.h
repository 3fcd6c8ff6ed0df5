#pragma once
// What the program knows about each of its table files: the names of their columns and options,
// the kind of value each holds, and how its owner reads it (limits, clamps, defaults). The owners
// read their values through this one copy, and the table checker explains the same rules, so the
// two cannot drift apart.
//
// An owner reads a value with one call:
//   const TableSchema& schema = SchemaOf(tables::logex::kFile);
//   int master = schema.OptionNumber(table, tables::logex::kMasterVolume);
//   int volume = schema.Column(tables::logex::kVolume).value.NumberOf(cell, columnIndex >= 0);

#include "ui/colour.h"
#include "ui/lang_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace vrl {

class KcsvFile;

// The names the owners and the checker use, table by table.
namespace tables {

namespace logex {
inline constexpr std::u16string_view kFile = u"LogEx.kcsv";
inline constexpr std::u16string_view kKeyword = u"keyword", kExact = u"exact", kRegex = u"regex", kTalk = u"talk",
                                     kSound = u"sound", kVolume = u"volume", kColor = u"color";
inline constexpr std::u16string_view kMasterVolume = u"MasterVolume", kEnableRemoteTalk = u"EnableRemoteTalk",
                                     kBkColor = u"bkcolor", kFontFace = u"FontFace", kFontSize = u"FontSize",
                                     kFontBold = u"FontBold", kFontItalic = u"FontItalic";
}  // namespace logex

namespace bgmex {
inline constexpr std::u16string_view kFile = u"BGMEx.kcsv";
inline constexpr std::u16string_view kOrgFile = u"orgfile", kMonth = u"month", kDay = u"day", kHour = u"hour",
                                     kPlaylist = u"playlist";
inline constexpr std::u16string_view kSoundFont = u"SoundFont", kDevice = u"device";
// The names of the six four-hour periods an hour cell may hold (period = hour / 4), matched exactly.
inline constexpr LangText kTimeOfDay[6] = {{u"Midnight", u"深夜"}, {u"Dawn", u"夜明け"}, {u"Morning", u"朝"},
                                           {u"Noon", u"昼"},       {u"Dusk", u"宵"},       {u"Night", u"夜"}};
}  // namespace bgmex

namespace volume {
inline constexpr std::u16string_view kFile = u"Volume.kcsv";
inline constexpr std::u16string_view kFileColumn = u"File", kVolume = u"Volume", kMasterVolume = u"MasterVolume";
}  // namespace volume

namespace petinfo {
inline constexpr std::u16string_view kFile = u"PetInfo.kcsv";
inline constexpr std::u16string_view kFilterIndex = u"iFilterIndex", kAutoAdjustColumn = u"bAutoAdjustColumn",
                                     kTextColour = u"colText", kBackColour = u"colBk";
// The list's columns, left to right.
inline constexpr std::u16string_view kColumnWidth[8] = {
    u"iChipColumnWidth", u"iNameColumnWidth", u"iStatColumnWidth", u"iLvColumnWidth",
    u"iToLvXpColumnWidth", u"iHpColumnWidth", u"iMpColumnWidth", u"iStColumnWidth"};
// The four bars in the order XP, HP, MP, ST.
inline constexpr std::u16string_view kBarEnabled[4] = {u"bXpBarEnabled", u"bHpBarEnabled", u"bMpBarEnabled",
                                                       u"bStBarEnabled"};
inline constexpr std::u16string_view kBarRatio[4] = {u"iXpColumnWidthRatio", u"iHpColumnWidthRatio",
                                                     u"iMpColumnWidthRatio", u"iStColumnWidthRatio"};
inline constexpr std::u16string_view kBarColour[4] = {u"colXpBar", u"colHpBar", u"colMpBar", u"colStBar"};
inline constexpr std::u16string_view kBarBackColour[4] = {u"colXpBarBk", u"colHpBarBk", u"colMpBarBk",
                                                          u"colStBarBk"};
inline constexpr std::u16string_view kBarFrameColour[4] = {u"colXpBarFrame", u"colHpBarFrame", u"colMpBarFrame",
                                                           u"colStBarFrame"};
}  // namespace petinfo

namespace enchant {
inline constexpr std::u16string_view kFile = u"EnchantTable.kcsv";
inline constexpr std::u16string_view kType = u"type", kId = u"id", kTextEn = u"text_en", kTextJp = u"text_jp";
inline constexpr std::u16string_view kInvokePrefix = u"invoke";  // invoke0 ... invoke99
inline constexpr int kLastInvoke = 99;
}  // namespace enchant

namespace quicksearch {
inline constexpr std::u16string_view kFile = u"QuickSearch.kcsv";
inline constexpr std::u16string_view kKeyword = u"keyword";
}  // namespace quicksearch

namespace placement {
inline constexpr std::u16string_view kFile = u"WindowPlacement.kcsv";
inline constexpr std::u16string_view kWindowId = u"WindowID", kLeft = u"rcNormalPosition.left",
                                     kTop = u"rcNormalPosition.top", kRight = u"rcNormalPosition.right",
                                     kBottom = u"rcNormalPosition.bottom", kShowCmd = u"showCmd";
inline constexpr std::u16string_view kDocked = u"LogEx_Docked", kTabPage = u"LogEx_TabPage";
// Window ids (compared case-sensitively).
inline constexpr std::u16string_view kGameId = u"Morva", kFullLogId = u"LogEx", kExtractedLogId = u"LogEx_Child",
                                     kMusicPanelId = u"MusicControl", kQuickSearchId = u"QuickSearch",
                                     kPetPanelId = u"PetInfo", kItemPanelId = u"ItemInfo";
}  // namespace placement

}  // namespace tables

enum class ValueKind {
    Text,      // any text
    Switch,    // on when not empty and not exactly "0"
    Integer,   // read like _wtoi; see IntRange
    ColourText,  // "#rrggbb"; empty or "Nothing" mean no colour
    Keyword,   // text, or a regular expression when the row's `regexSwitch` column is on
    FileName,  // a file name or path
    Choice,    // one of `choices`
    DateList,  // numbers separated by "/", matched as the request writes them ("%d"); "*" or empty: any
    HourList,  // the same, for hours 0 to 23, also time-of-day names
};

enum class RangeUse {
    None,
    Clamp,          // the owner brings the value into [min, max]
    ClampUnsigned,  // the same, comparing as unsigned numbers: a negative value gives max
    Expect,         // values outside [min, max] are read but mean nothing useful
};

struct IntRange {
    int min = 0;
    int max = 0;
    RangeUse use = RangeUse::None;
};

struct ValueSpec {
    ValueKind kind = ValueKind::Text;
    IntRange range;
    std::size_t maxLength = 0;  // characters the owner keeps; 0 for no limit
    std::vector<std::u16string_view> choices;
    bool choicesIgnoreCase = false;
    std::u16string_view regexSwitch;  // Keyword: the switch column that makes it an expression
    std::u16string_view exactSwitch;  // Keyword: the switch column for whole-text comparison
    LangText outside{u"", u""};       // for Expect ranges and choices: what the owner does with others

    int whenMissing = 0;            // Integer: what the owner uses when the option or column is absent
    bool zeroMeansMissing = false;  // Integer: a value reading as 0 also gives whenMissing
    bool emptyMeansMissing = false; // Integer: an empty cell also gives whenMissing
    int lowBits = 0;                // Integer: the owner looks only at this many low bits (0: all)
    Colour fallbackColour = kNoColour;  // Colour: what an absent or unreadable colour gives
    std::u16string_view emptyText;      // Text: what an empty value gives

    // The number the owner uses; `present` is false when the table lacks the option or column.
    int NumberOf(std::u16string_view text, bool present = true) const;
    Colour ColourOf(std::u16string_view text) const;
    // At most maxLength units (a surrogate pair is not split); emptyText for an empty value.
    std::u16string TextOf(std::u16string_view text) const;
};

struct ColumnSpec {
    std::u16string_view name;
    bool required = false;
    ValueSpec value;
    LangText whenMissing{u"", u""};  // what the owner does without the column
};

struct OptionSpec {
    std::u16string_view name;  // with `numberedUpTo` >= 0, the prefix of name0 ... nameN
    ValueSpec value;
    int numberedUpTo = -1;
    LangText whenMissing{u"", u""};  // what the owner does without the option, when worth saying
};

struct TableSchema {
    std::u16string_view fileName;
    bool optionsOnly = false;    // the owner reads options only; rows and columns are ignored
    bool skipsNoteRows = false;  // rows whose first cell begins with "#" are ignored
    LangText rowMeaning{u"", u""};  // what one data row is to the owner ("a rule")
    std::vector<ColumnSpec> columns;
    std::vector<OptionSpec> options;

    // A name of this table (from tables::); an unknown name gives a plain text spec.
    const ColumnSpec& Column(std::u16string_view name) const;
    const OptionSpec& Option(std::u16string_view name) const;
    // One call per value, as the owner reads it from a loaded table.
    int OptionNumber(const KcsvFile& table, std::u16string_view name) const;
    Colour OptionColour(const KcsvFile& table, std::u16string_view name) const;
    std::u16string OptionText(const KcsvFile& table, std::u16string_view name) const;
};

// The seven table files this program reads.
const std::vector<TableSchema>& KnownTables();
// By the base name of a path ("\" or "/" separated), the case of A to Z ignored; null if unknown.
const TableSchema* FindTableSchema(std::u16string_view path);
// A known table by its file name (tables::...::kFile); an unknown name gives an empty schema.
const TableSchema& SchemaOf(std::u16string_view fileName);
// Names looked up the way KcsvFile does (case of A to Z ignored); null if none.
const ColumnSpec* FindColumn(const TableSchema& table, std::u16string_view name);
const OptionSpec* FindOption(const TableSchema& table, std::u16string_view name);

// The value the owner uses for a number read from the table.
int ApplyRange(const IntRange& range, int value);

}  // namespace vrl
