#pragma once
// KcsvFile: the in-memory form of a KCSV table file (options, named columns, rows of text cells).
// Text is UTF-16 (char16_t) in memory and UTF-8 on disk. The parsing, writing and conversion are
// portable; LoadFile and SaveFile (file access and the two message boxes) live in the Win32 layer.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vrl {

// Reads a decimal integer the way the C run-time's _wtoi does: leading white space, an optional
// sign, the digits that follow; no digits gives 0. Out-of-range values wrap like a 32-bit int.
int ReadInt(std::u16string_view text);

// A switch cell is on when it is not empty and not exactly "0".
bool ReadSwitch(std::u16string_view cell);

// Lower-cases A to Z only (the key form of the option and column maps).
std::u16string AsciiLower(std::u16string_view text);

// UTF-8 to UTF-16: invalid sequences become U+FFFD; a byte-order mark stays as U+FEFF.
std::u16string Utf8ToUtf16(std::string_view bytes);
// UTF-16 to UTF-8: unpaired surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);

// One line of KCSV text as the tokeniser cuts it. `line` is the physical line (from 1, counted by
// LF characters, as a text editor numbers them) on which it starts; a quoted cell may carry it
// over several physical lines.
struct KcsvLine {
    std::vector<std::u16string> cells;
    unsigned line = 1;
    bool unclosedQuote = false;  // a quoted cell never closed and ran to the end of the text
};
// Cuts text (up to its first NUL) into lines of cells. Always succeeds.
std::vector<KcsvLine> TokeniseKcsv(std::u16string_view text);

// Where the parsed options and rows came from, for reports that name physical lines.
struct KcsvSourceLines {
    std::vector<unsigned> options;  // one per option, in list order
    std::vector<unsigned> rows;     // one per row
    unsigned formatLine = 0;        // the "#format" line, 0 when the text is not KCSV
    unsigned columnLine = 0;        // the "#column" line, 0 when there is none
    unsigned stopLine = 0;          // a second "#format"/"#column" line that stopped the parse
};

class KcsvFile {
public:
    using Row = std::vector<std::u16string>;
    using Option = std::pair<std::u16string, std::u16string>;

    // File access (Win32 layer). LoadFile: false for a missing, unopenable (warning box), empty or
    // unreadable file, and then the table keeps what it held; otherwise the result of Parse.
    // SaveFile: false, with the error box, when the table cannot be written (folder missing, target
    // read-only or held open by another program for longer than a second, disk full). The new
    // content goes to a temporary file beside the target and replaces it only once completely
    // written, so a failed save leaves the previous file as it was.
    bool LoadFile(const std::u16string& path);
    bool SaveFile(const std::u16string& path) const;

    // Parses UTF-16 text up to its first NUL. Always starts from an empty table.
    bool Parse(std::u16string_view text);
    // The second stage of Parse on lines already cut; `where` (optional) receives the source lines.
    bool ParseLines(const std::vector<KcsvLine>& lines, KcsvSourceLines* where = nullptr);
    // LoadFile's conversion and parse of a file's bytes (the bytes must not be empty).
    bool ParseUtf8(std::string_view bytes);
    // The exact bytes SaveFile writes.
    std::string ToUtf8() const;

    unsigned RowCount() const { return static_cast<unsigned>(rows_.size()); }
    int ColumnIndex(std::u16string_view name) const;
    int OptionIndex(std::u16string_view name) const;
    std::u16string OptionValue(std::u16string_view name) const;
    std::u16string Cell(unsigned row, unsigned column, std::u16string_view fallback) const;
    int CellInt(unsigned row, std::u16string_view column, int fallback) const;

    void AddColumn(std::u16string_view name);
    void SetOption(std::u16string_view name, std::u16string_view value);
    void SetCell(unsigned row, unsigned column, std::u16string_view text);
    void InsertRow(unsigned row);
    // Removes every row; options and columns stay.
    void ClearRows() { rows_.clear(); }

    const std::vector<Option>& Options() const { return options_; }
    const std::vector<std::u16string>& Columns() const { return columns_; }
    const std::vector<Row>& Rows() const { return rows_; }

private:
    void Clear();
    void AddOptionCells(const KcsvLine& line, unsigned lineNumber, KcsvSourceLines* where);
    void AddRow(const Row& cells);
    void AddParsedColumn(std::u16string_view name);

    std::vector<Option> options_;
    std::vector<std::u16string> columns_;
    std::vector<Row> rows_;
    std::unordered_map<std::u16string, unsigned> optionIndex_;
    std::unordered_map<std::u16string, unsigned> columnIndex_;
    bool formatSeen_ = false;
    bool columnSeen_ = false;
};

}  // namespace vrl
