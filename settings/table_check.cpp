#include "settings/table_check.h"

#include "log/rule_regex.h"
#include "settings/table_schema.h"
#include "ui/colour.h"

#include <algorithm>
#include <map>

namespace vrl {
namespace {

// A text as the player wrote it, between double quotes; very long texts are shortened.
std::string Quoted(std::u16string_view text) {
    constexpr std::size_t kLongest = 60;
    if (text.size() > kLongest) return "\"" + Utf16ToUtf8(text.substr(0, kLongest)) + "...\"";
    return "\"" + Utf16ToUtf8(text) + "\"";
}

std::string Choices(const std::vector<std::u16string_view>& choices) {
    std::string out;
    for (std::u16string_view choice : choices) out += (out.empty() ? "" : ", ") + Utf16ToUtf8(choice);
    return out;
}

bool IsSpace(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }

std::u16string_view Trimmed(std::u16string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    return text;
}

// Texts that look like "off" to a player but are on: only an empty cell and "0" are off.
bool LooksOffButIsOn(std::u16string_view text) {
    if (!ReadSwitch(text)) return false;
    const std::u16string word = AsciiLower(Trimmed(text));
    if (word == u"false" || word == u"off" || word == u"no") return true;
    return !word.empty() && word.find_first_not_of(u'0') == std::u16string::npos;
}

std::string IntegerProblem(const ValueSpec& spec, const std::string& label, std::u16string_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsSpace(text[i])) ++i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ++i;
    const std::size_t digits = i;
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') ++i;
    const int value = ReadInt(text);
    const int used = ApplyRange(spec.range, value);
    const std::string range = std::to_string(spec.range.min) + " to " + std::to_string(spec.range.max);
    std::string problem;
    if (text.empty()) {
        problem = label + " is empty and reads as 0";
    } else if (i == digits) {
        problem = label + " " + Quoted(text) + " is not a number; it reads as 0";
    } else if (!Trimmed(text.substr(i)).empty()) {
        problem = label + " " + Quoted(text) + " is not a plain number; it reads as " + std::to_string(value);
    }
    const bool outside = spec.range.use != RangeUse::None &&
                         (used != value || (spec.range.use == RangeUse::Expect &&
                                            (value < spec.range.min || value > spec.range.max)));
    if (!outside) return problem;
    if (problem.empty()) problem = label + " " + std::to_string(value) + " is outside " + range;
    if (spec.range.use == RangeUse::Expect) return problem + "; " + std::string(spec.outside);
    return problem + "; the program uses " + std::to_string(used);
}

std::string ChoiceProblem(const ValueSpec& spec, const std::string& label, std::u16string_view text) {
    for (std::u16string_view choice : spec.choices) {
        if (spec.choicesIgnoreCase ? AsciiLower(choice) == AsciiLower(text) : choice == text) return {};
    }
    return label + " " + Quoted(text) + " is not one of " + Choices(spec.choices) + "; " + std::string(spec.outside);
}

bool Compiles(std::u16string_view pattern) {
    try {
        return RuleRegex::Compile(pattern).has_value();
    } catch (...) {
        return false;
    }
}

// What one cell or option value means to its owner, as far as it is not what the player meant.
// For keywords, `regexOn` and `exactOn` are the row's switches.
std::string ValueProblem(const ValueSpec& spec, const std::string& label, std::u16string_view text,
                         bool regexOn = false, bool exactOn = false) {
    switch (spec.kind) {
        case ValueKind::Integer:
            return IntegerProblem(spec, label, text);
        case ValueKind::Switch:
            if (LooksOffButIsOn(text)) {
                return label + " " + Quoted(text) + " counts as on (only an empty cell or 0 is off)";
            }
            return {};
        case ValueKind::Colour:
            if (text.empty() || AsciiLower(text) == u"nothing" || ParseColour(text, kNoColour) != kNoColour) return {};
            return label + " " + Quoted(text) +
                   " is not a colour (write # and six hexadecimal digits, like #ff8000); it counts as no colour";
        case ValueKind::Keyword:
            if (regexOn && !Compiles(text)) {
                return label + " " + Quoted(text) + " is not a valid regular expression; this rule never matches";
            }
            if (text.empty() && !regexOn && !exactOn) {
                return label + " is empty, so this rule matches every line and no rule after it is reached";
            }
            return {};
        case ValueKind::Choice:
            return ChoiceProblem(spec, label, text);
        case ValueKind::Text:
        case ValueKind::FileName:
            if (spec.maxLength != 0 && text.size() > spec.maxLength) {
                return label + " is longer than " + std::to_string(spec.maxLength) +
                       " characters; the program keeps the first " + std::to_string(spec.maxLength);
            }
            return {};
    }
    return {};
}

class Checker {
public:
    Checker(std::u16string_view path, std::string_view bytes) : path_(path), bytes_(bytes) {}

    std::vector<TableProblem> Run() {
        if (CheckEncoding()) {
            text_ = Utf8ToUtf16(bytes_);
            lines_ = TokeniseKcsv(text_);
            if (!table_.ParseLines(lines_, &where_) && where_.formatLine == 0) {
                ExplainNotKcsv();
            } else {
                CheckLines();
                if (const TableSchema* schema = FindTableSchema(path_)) CheckKnownTable(*schema);
            }
        }
        std::stable_sort(problems_.begin(), problems_.end(),
                         [](const TableProblem& a, const TableProblem& b) { return a.line < b.line; });
        return std::move(problems_);
    }

private:
    void Report(unsigned line, std::string message) { problems_.push_back({line, std::move(message)}); }

    unsigned LineOfByte(std::size_t offset) const {
        return 1 + static_cast<unsigned>(std::count(bytes_.begin(), bytes_.begin() + offset, '\n'));
    }

    // False when the text cannot be a table at all (UTF-16).
    bool CheckEncoding() {
        if (bytes_.size() >= 2 && (bytes_.substr(0, 2) == "\xFF\xFE" || bytes_.substr(0, 2) == "\xFE\xFF")) {
            Report(1, "the file is saved as UTF-16; save it as UTF-8 (without a byte-order mark)");
            return false;
        }
        const std::string again = Utf16ToUtf8(Utf8ToUtf16(bytes_));
        if (again != bytes_) {
            const auto differ = std::mismatch(again.begin(), again.end(), bytes_.begin(), bytes_.end());
            Report(LineOfByte(static_cast<std::size_t>(differ.second - bytes_.begin())),
                   "bytes that are not UTF-8; they read as the replacement character \xEF\xBF\xBD");
        }
        const std::size_t nul = bytes_.find('\0');
        if (nul != std::string_view::npos) {
            Report(LineOfByte(nul), "a NUL character; the program reads nothing after it");
        }
        return true;
    }

    void ExplainNotKcsv() {
        const std::string_view bom = "\xEF\xBB\xBF";
        std::string why;
        if (bytes_.substr(0, bom.size()) == bom) {
            why = "the file begins with a byte-order mark; save it as UTF-8 without one";
        } else if (lines_.empty()) {
            why = "the file is empty";
        } else if (text_.find(u"\r\n") == std::u16string::npos && text_.find_first_of(u"\r\n") != std::u16string::npos) {
            why = "its lines end with LF or CR alone; every line must end with CR LF";
        } else if (lines_[0].cells.size() >= 2 && AsciiLower(lines_[0].cells[0]) == u"#format" &&
                   AsciiLower(lines_[0].cells[1]) == u"kcsv") {
            why = "the first line must be #format,kcsv exactly, in these small letters";
        } else {
            why = "the first line must begin with #format,kcsv";
        }
        Report(1, "not a KCSV table: " + why);
    }

    bool Reached(const KcsvLine& line) const { return where_.stopLine == 0 || line.line < where_.stopLine; }

    void CheckLines() {
        for (const KcsvLine& line : lines_) {
            if (!Reached(line)) break;
            if (line.unclosedQuote) {
                Report(line.line, "a quoted cell that starts here is never closed; the rest of the file is read "
                                  "as part of it");
            }
            const std::u16string& first = line.cells[0];
            for (std::u16string_view keyword : {u"#format", u"#option", u"#column"}) {
                if (first != keyword && AsciiLower(first) == keyword) {
                    Report(line.line, Quoted(first) + " is not " + Utf16ToUtf8(keyword) +
                                          " (keywords are case-sensitive); this line is read as a data row");
                }
            }
            if (first == u"#option") CheckOptionCells(line);
            if (first == u"#column" && line.line == where_.columnLine) CheckColumnNames(line);
        }
        if (where_.stopLine != 0) ExplainStop();
    }

    void ExplainStop() {
        for (const KcsvLine& line : lines_) {
            if (line.line != where_.stopLine) continue;
            const bool column = line.cells[0] == u"#column";
            const unsigned first = column ? where_.columnLine : where_.formatLine;
            Report(line.line, std::string("a second ") + (column ? "#column" : "#format") + " line (the first is on line " +
                                  std::to_string(first) +
                                  "); the program stops reading here and ignores this line and all after it");
        }
    }

    void CheckOptionCells(const KcsvLine& line) {
        for (std::size_t i = 1; i < line.cells.size(); ++i) {
            const std::u16string& cell = line.cells[i];
            const std::size_t colon = cell.find(u':');
            if (cell.empty()) continue;
            if (colon == 0) {
                Report(line.line, "option " + Quoted(cell) + " has no name before its colon and is ignored");
            } else if (colon == std::u16string::npos) {
                Report(line.line, "option " + Quoted(cell) + " has no colon; it is read as the option " +
                                      Quoted(cell) + " with an empty value");
            }
        }
    }

    void CheckColumnNames(const KcsvLine& line) {
        std::map<std::u16string, std::u16string> seen;
        for (std::size_t i = 1; i < line.cells.size(); ++i) {
            const auto [it, added] = seen.emplace(AsciiLower(line.cells[i]), line.cells[i]);
            if (!added) {
                Report(line.line, "column " + Quoted(line.cells[i]) + " is named twice (first as " +
                                      Quoted(it->second) + "); the program reads only the first of them by name");
            }
        }
    }

    void CheckKnownTable(const TableSchema& schema) {
        CheckOptions(schema);
        if (schema.optionsOnly) {
            const std::string name = Utf16ToUtf8(schema.fileName);
            if (!table_.Columns().empty()) {
                Report(where_.columnLine, name + " holds options only; its columns are ignored");
            }
            if (!where_.rows.empty()) Report(where_.rows[0], name + " holds options only; its rows are ignored");
            return;
        }
        CheckColumns(schema);
        for (unsigned r = 0; r < table_.RowCount(); ++r) CheckRow(schema, r);
    }

    void CheckOptions(const TableSchema& schema) {
        std::map<std::u16string, unsigned> firstLine;
        for (std::size_t i = 0; i < table_.Options().size(); ++i) {
            const auto& [name, value] = table_.Options()[i];
            const unsigned line = where_.options[i];
            const auto [it, added] = firstLine.emplace(AsciiLower(name), line);
            if (!added) {
                Report(line, "option " + Quoted(name) + " is set again (first on line " +
                                 std::to_string(it->second) + "); the program uses the last one");
            }
            if (const OptionSpec* spec = FindOption(schema, name)) {
                std::string problem = ValueProblem(spec->value, "option " + Utf16ToUtf8(name), value);
                if (!problem.empty()) Report(line, std::move(problem));
            }
        }
    }

    void CheckColumns(const TableSchema& schema) {
        const unsigned line = where_.columnLine != 0 ? where_.columnLine : where_.formatLine;
        for (const ColumnSpec& column : schema.columns) {
            if (column.required && table_.ColumnIndex(column.name) < 0) {
                Report(line, "missing column " + Quoted(column.name) + "; " + std::string(column.whenMissing));
            }
        }
        for (const std::u16string& name : table_.Columns()) {
            if (!FindColumn(schema, name)) Report(line, "unknown column " + Quoted(name) + "; the program ignores it");
        }
    }

    bool SwitchOn(unsigned row, std::u16string_view column) const {
        const int index = column.empty() ? -1 : table_.ColumnIndex(column);
        return index >= 0 && ReadSwitch(table_.Cell(row, static_cast<unsigned>(index), u""));
    }

    void CheckRow(const TableSchema& schema, unsigned r) {
        const KcsvFile::Row& row = table_.Rows()[r];
        const unsigned line = where_.rows[r];
        if (schema.skipsNoteRows && !row[0].empty() && row[0][0] == u'#') return;
        const std::size_t columns = table_.Columns().size();
        if (where_.columnLine != 0 && line < where_.columnLine) {
            Report(line, "this row comes before the #column line");
        } else if (columns != 0 && row.size() > columns) {
            Report(line, "this row has " + std::to_string(row.size()) + " cells but there are " +
                             std::to_string(columns) +
                             " columns; the extra cells are ignored (a cell that holds a comma must be written "
                             "in double quotes)");
        }
        for (const ColumnSpec& column : schema.columns) {
            const int index = table_.ColumnIndex(column.name);
            if (index < 0 || static_cast<std::size_t>(index) >= row.size()) continue;
            std::string problem =
                ValueProblem(column.value, Utf16ToUtf8(column.name), row[static_cast<std::size_t>(index)],
                             SwitchOn(r, column.value.regexSwitch), SwitchOn(r, column.value.exactSwitch));
            if (!problem.empty()) Report(line, std::move(problem));
        }
    }

    std::u16string_view path_;
    std::string_view bytes_;
    std::u16string text_;
    std::vector<KcsvLine> lines_;
    KcsvFile table_;
    KcsvSourceLines where_;
    std::vector<TableProblem> problems_;
};

std::string JsonString(std::u16string_view text) {
    std::string out = "\"";
    for (char c : Utf16ToUtf8(text)) {
        switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    static const char kHex[] = "0123456789abcdef";
                    out += "\\u00";
                    out += kHex[(c >> 4) & 0xF];
                    out += kHex[c & 0xF];
                } else {
                    out += c;
                }
        }
    }
    return out + "\"";
}

std::string JsonList(const std::vector<std::u16string>& texts) {
    std::string out = "[";
    for (std::size_t i = 0; i < texts.size(); ++i) out += (i ? ", " : "") + JsonString(texts[i]);
    return out + "]";
}

}  // namespace

std::vector<TableProblem> CheckTableText(std::u16string_view path, std::string_view bytes) {
    return Checker(path, bytes).Run();
}

std::string TableToJson(const KcsvFile& table) {
    std::string out = "{\n  \"options\": [";
    for (std::size_t i = 0; i < table.Options().size(); ++i) {
        const auto& [name, value] = table.Options()[i];
        out += std::string(i ? "," : "") + "\n    {\"name\": " + JsonString(name) + ", \"value\": " + JsonString(value) + "}";
    }
    out += table.Options().empty() ? "],\n" : "\n  ],\n";
    out += "  \"columns\": " + JsonList(table.Columns()) + ",\n  \"rows\": [";
    for (std::size_t i = 0; i < table.Rows().size(); ++i) out += std::string(i ? "," : "") + "\n    " + JsonList(table.Rows()[i]);
    out += table.Rows().empty() ? "]\n}\n" : "\n  ]\n}\n";
    return out;
}

}  // namespace vrl
