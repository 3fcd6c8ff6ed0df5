#pragma once
// What the program knows about each of its table files: the columns and options that their owners
// read and the kind of value each holds. The table checker and the panels share this one copy.

#include <string_view>
#include <vector>

namespace vrl {

enum class ValueKind {
    Text,      // any text
    Switch,    // on when not empty and not exactly "0"
    Integer,   // read like _wtoi; see IntRange
    Colour,    // "#rrggbb"; empty or "Nothing" mean no colour
    Keyword,   // text, or a regular expression when the row's `regexSwitch` column is on
    FileName,  // a file name or path
    Choice,    // one of `choices`
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
    std::string_view outside;  // for Expect ranges and choices: what the owner does with others
};

struct ColumnSpec {
    std::u16string_view name;
    bool required = false;
    ValueSpec value;
    std::string_view whenMissing;  // what the owner does without the column
};

struct OptionSpec {
    std::u16string_view name;  // with `numberedUpTo` >= 0, the prefix of name0 ... nameN
    ValueSpec value;
    int numberedUpTo = -1;
};

struct TableSchema {
    std::u16string_view fileName;
    bool optionsOnly = false;    // the owner reads options only; rows and columns are ignored
    bool skipsNoteRows = false;  // rows whose first cell begins with "#" are ignored
    std::vector<ColumnSpec> columns;
    std::vector<OptionSpec> options;
};

// The seven table files this program reads.
const std::vector<TableSchema>& KnownTables();
// By the base name of a path ("\" or "/" separated), the case of A to Z ignored; null if unknown.
const TableSchema* FindTableSchema(std::u16string_view path);
// Names looked up the way KcsvFile does (case of A to Z ignored); null if none.
const ColumnSpec* FindColumn(const TableSchema& table, std::u16string_view name);
const OptionSpec* FindOption(const TableSchema& table, std::u16string_view name);

// The value the owner uses for a number read from the table.
int ApplyRange(const IntRange& range, int value);

}  // namespace vrl
