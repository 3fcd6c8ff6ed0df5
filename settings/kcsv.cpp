#include "settings/kcsv.h"

#include <cstdint>

namespace vrl {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool IsReadIntSpace(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }

void AppendCodePoint(std::u16string& out, std::uint32_t cp) {
    if (cp < 0x10000) {
        out.push_back(static_cast<char16_t>(cp));
    } else {
        cp -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
    }
}

void AppendUtf8(std::string& out, std::uint32_t cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

// The lead byte's payload, how many continuation bytes follow, and the allowed range of the first
// of them (narrowed so that overlong forms, surrogates and values past U+10FFFF are rejected).
struct Utf8Lead {
    int follow;
    std::uint32_t bits;
    unsigned char low;
    unsigned char high;
};

bool ReadLead(unsigned char b, Utf8Lead& lead) {
    if (b >= 0xC2 && b <= 0xDF) {
        lead = {1, b & 0x1Fu, 0x80, 0xBF};
    } else if (b >= 0xE0 && b <= 0xEF) {
        lead = {2, b & 0x0Fu, static_cast<unsigned char>(b == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(b == 0xED ? 0x9F : 0xBF)};
    } else if (b >= 0xF0 && b <= 0xF4) {
        lead = {3, b & 0x07u, static_cast<unsigned char>(b == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(b == 0xF4 ? 0x8F : 0xBF)};
    } else {
        return false;
    }
    return true;
}

// A cell is written between double quotes only when it holds a comma or a double quote; line
// breaks and spaces are written as they are.
void AppendQuoted(std::u16string& out, std::u16string_view text) {
    if (text.find_first_of(u",\"") == std::u16string_view::npos) {
        out.append(text);
        return;
    }
    out.push_back(u'"');
    for (char16_t c : text) {
        if (c == u'"') out.push_back(u'"');
        out.push_back(c);
    }
    out.push_back(u'"');
}

// Cuts text into lines of cells; keeps the physical line number as it goes.
class Tokeniser {
public:
    explicit Tokeniser(std::u16string_view text) : text_(text.substr(0, text.find(u'\0'))) {}

    std::vector<KcsvLine> Run() {
        bool lineOpen = false;  // a cell ended with a comma: the line goes on
        while (true) {
            if (pos_ == text_.size()) {
                if (lineOpen) EndLine(std::u16string());
                break;
            }
            if (!lineOpen) StartLine();
            std::u16string cell = ReadCell();
            if (pos_ == text_.size()) {
                EndLine(std::move(cell));
                break;
            }
            if (text_[pos_] == u',') {
                ++pos_;
                current_.cells.push_back(std::move(cell));
                lineOpen = true;
            } else {  // CR LF
                pos_ += 2;
                ++physical_;
                EndLine(std::move(cell));
                lineOpen = false;
            }
        }
        return std::move(lines_);
    }

private:
    void StartLine() {
        current_ = KcsvLine();
        current_.line = physical_;
    }

    void EndLine(std::u16string cell) {
        current_.cells.push_back(std::move(cell));
        lines_.push_back(std::move(current_));
        current_ = KcsvLine();
    }

    void Take(std::u16string& cell) {
        if (text_[pos_] == u'\n') ++physical_;
        cell.push_back(text_[pos_++]);
    }

    // Stops at the end of the text, at a comma or at CR LF (none of them consumed).
    std::u16string ReadCell() {
        std::u16string cell;
        if (text_[pos_] == u'"') ReadQuotedPart(cell);
        while (pos_ < text_.size()) {
            const char16_t c = text_[pos_];
            if (c == u',') break;
            if (c == u'\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == u'\n') break;
            Take(cell);
        }
        return cell;
    }

    void ReadQuotedPart(std::u16string& cell) {
        ++pos_;
        while (pos_ < text_.size()) {
            if (text_[pos_] != u'"') {
                Take(cell);
            } else if (pos_ + 1 < text_.size() && text_[pos_ + 1] == u'"') {
                cell.push_back(u'"');
                pos_ += 2;
            } else {
                ++pos_;
                return;
            }
        }
        // No closing quote: the cell runs to the end of the text.
        current_.unclosedQuote = true;
    }

    std::u16string_view text_;
    std::size_t pos_ = 0;
    unsigned physical_ = 1;
    KcsvLine current_;
    std::vector<KcsvLine> lines_;
};

}  // namespace

int ReadInt(std::u16string_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsReadIntSpace(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
    std::uint32_t value = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        value = value * 10u + static_cast<std::uint32_t>(text[i] - u'0');
    }
    if (negative) value = 0u - value;
    return static_cast<int>(value);
}

bool ReadSwitch(std::u16string_view cell) { return !cell.empty() && cell != u"0"; }

std::u16string AsciiLower(std::u16string_view text) {
    std::u16string out(text);
    for (char16_t& c : out) {
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
    }
    return out;
}

std::u16string Utf8ToUtf16(std::string_view bytes) {
    std::u16string out;
    out.reserve(bytes.size());
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto b = static_cast<unsigned char>(bytes[i++]);
        Utf8Lead lead{};
        if (b < 0x80) {
            out.push_back(b);
            continue;
        }
        if (!ReadLead(b, lead)) {
            out.push_back(kReplacement);
            continue;
        }
        // A broken sequence gives one U+FFFD for the bytes read so far; the offending byte
        // starts afresh.
        std::uint32_t cp = lead.bits;
        bool complete = true;
        for (int k = 0; k < lead.follow; ++k) {
            const auto c = i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
            if (i >= bytes.size() || c < lead.low || c > lead.high) {
                complete = false;
                break;
            }
            cp = (cp << 6) | (c & 0x3Fu);
            ++i;
            lead.low = 0x80;
            lead.high = 0xBF;
        }
        if (complete) {
            AppendCodePoint(out, cp);
        } else {
            out.push_back(kReplacement);
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size() * 3);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            AppendUtf8(out, 0x10000 + ((static_cast<std::uint32_t>(c) - 0xD800) << 10) +
                                (static_cast<std::uint32_t>(text[i + 1]) - 0xDC00));
            ++i;
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            AppendUtf8(out, kReplacement);
        } else {
            AppendUtf8(out, c);
        }
    }
    return out;
}

std::vector<KcsvLine> TokeniseKcsv(std::u16string_view text) { return Tokeniser(text).Run(); }

void KcsvFile::Clear() {
    options_.clear();
    columns_.clear();
    rows_.clear();
    optionIndex_.clear();
    columnIndex_.clear();
    formatSeen_ = false;
    columnSeen_ = false;
}

bool KcsvFile::Parse(std::u16string_view text) { return ParseLines(TokeniseKcsv(text)); }

bool KcsvFile::ParseUtf8(std::string_view bytes) { return Parse(Utf8ToUtf16(bytes)); }

bool KcsvFile::ParseLines(const std::vector<KcsvLine>& lines, KcsvSourceLines* where) {
    Clear();
    if (where) *where = KcsvSourceLines();
    if (lines.empty() || lines[0].cells.size() < 2 || lines[0].cells[0] != u"#format" ||
        lines[0].cells[1] != u"kcsv") {
        return false;
    }
    for (const KcsvLine& line : lines) {
        const std::u16string& first = line.cells[0];
        if (first == u"#format") {
            if (formatSeen_) {
                if (where) where->stopLine = line.line;
                return false;
            }
            formatSeen_ = true;
            if (where) where->formatLine = line.line;
        } else if (first == u"#option") {
            AddOptionCells(line, line.line, where);
        } else if (first == u"#column") {
            if (columnSeen_) {
                if (where) where->stopLine = line.line;
                return false;
            }
            for (std::size_t i = 1; i < line.cells.size(); ++i) AddParsedColumn(line.cells[i]);
            columnSeen_ = true;
            if (where) where->columnLine = line.line;
        } else {
            AddRow(line.cells);
            if (where) where->rows.push_back(line.line);
        }
    }
    return true;
}

// A cell without a colon is read as an option of that name with an empty value: the writer then
// gives it back as "name:" instead of dropping what the player wrote. An empty name is skipped.
void KcsvFile::AddOptionCells(const KcsvLine& line, unsigned lineNumber, KcsvSourceLines* where) {
    for (std::size_t i = 1; i < line.cells.size(); ++i) {
        const std::u16string& cell = line.cells[i];
        const std::size_t colon = cell.find(u':');
        std::u16string name = cell.substr(0, colon);
        if (name.empty()) continue;
        std::u16string value = colon == std::u16string::npos ? std::u16string() : cell.substr(colon + 1);
        optionIndex_[AsciiLower(name)] = static_cast<unsigned>(options_.size());
        options_.emplace_back(std::move(name), std::move(value));
        if (where) where->options.push_back(lineNumber);
    }
}

// Rows before the column line meet an empty column list, so they stay as they were written.
void KcsvFile::AddRow(const Row& cells) {
    Row row = cells;
    if (row.size() < columns_.size()) row.resize(columns_.size());
    rows_.push_back(std::move(row));
}

std::string KcsvFile::ToUtf8() const {
    std::u16string text = u"#format,kcsv\r\n";
    for (const Option& option : options_) {
        text += u"#option,";
        AppendQuoted(text, option.first);
        text += u':';
        AppendQuoted(text, option.second);
        text += u"\r\n";
    }
    text += u"#column";
    for (const std::u16string& column : columns_) {
        text += u',';
        AppendQuoted(text, column);
    }
    text += u"\r\n";
    for (const Row& row : rows_) {
        if (!row.empty() && !row[0].empty() && row[0][0] == u'#') {
            // A note row keeps only its first cell, written as it stands.
            text += row[0];
        } else {
            for (std::size_t i = 0; i < row.size(); ++i) {
                if (i > 0) text += u',';
                AppendQuoted(text, row[i]);
            }
        }
        text += u"\r\n";
    }
    return Utf16ToUtf8(text);
}

int KcsvFile::ColumnIndex(std::u16string_view name) const {
    const auto it = columnIndex_.find(AsciiLower(name));
    return it == columnIndex_.end() ? -1 : static_cast<int>(it->second);
}

int KcsvFile::OptionIndex(std::u16string_view name) const {
    const auto it = optionIndex_.find(AsciiLower(name));
    return it == optionIndex_.end() ? -1 : static_cast<int>(it->second);
}

std::u16string KcsvFile::OptionValue(std::u16string_view name) const {
    const int index = OptionIndex(name);
    return index < 0 ? std::u16string() : options_[static_cast<unsigned>(index)].second;
}

std::u16string KcsvFile::Cell(unsigned row, unsigned column, std::u16string_view fallback) const {
    if (row >= rows_.size() || column >= rows_[row].size()) return std::u16string(fallback);
    return rows_[row][column];
}

int KcsvFile::CellInt(unsigned row, std::u16string_view column, int fallback) const {
    const int index = ColumnIndex(column);
    if (index < 0) return fallback;
    if (row >= rows_.size() || static_cast<unsigned>(index) >= rows_[row].size()) return 2147483647;
    return ReadInt(rows_[row][static_cast<unsigned>(index)]);
}

void KcsvFile::AddColumn(std::u16string_view name) {
    if (ColumnIndex(name) < 0) AddParsedColumn(name);
}

// Cells stay positional, so a name written twice keeps its place in the list (and is written back);
// a lookup finds the first of the two.
void KcsvFile::AddParsedColumn(std::u16string_view name) {
    columnIndex_.emplace(AsciiLower(name), static_cast<unsigned>(columns_.size()));
    columns_.emplace_back(name);
}

void KcsvFile::SetOption(std::u16string_view name, std::u16string_view value) {
    const int index = OptionIndex(name);
    if (index >= 0) {
        options_[static_cast<unsigned>(index)].second = std::u16string(value);
        return;
    }
    optionIndex_[AsciiLower(name)] = static_cast<unsigned>(options_.size());
    options_.emplace_back(std::u16string(name), std::u16string(value));
}

void KcsvFile::SetCell(unsigned row, unsigned column, std::u16string_view text) {
    if (row == rows_.size()) rows_.emplace_back(columns_.size());
    if (row < rows_.size() && column < rows_[row].size()) rows_[row][column] = std::u16string(text);
}

// A row number past the end appends, so a caller's row is never dropped.
void KcsvFile::InsertRow(unsigned row) {
    const auto at = row < rows_.size() ? rows_.begin() + row : rows_.end();
    rows_.insert(at, Row(columns_.size()));
}

}  // namespace vrl
