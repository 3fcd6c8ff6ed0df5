#include "settings/table_check.h"

#include "log/rule_regex.h"
#include "settings/table_check_texts.h"
#include "settings/table_schema.h"
#include "ui/colour.h"

#include <algorithm>
#include <map>

namespace vrl {
namespace {

namespace text = check_text;

std::string Quoted(std::u16string_view value) { return QuotedForReport(value); }

std::string Choices(const std::vector<std::u16string_view>& choices) {
    std::string out;
    for (std::u16string_view choice : choices) out += (out.empty() ? "" : ", ") + Utf16ToUtf8(choice);
    return out;
}

bool IsSpace(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }

std::u16string_view Trimmed(std::u16string_view value) {
    while (!value.empty() && IsSpace(value.front())) value.remove_prefix(1);
    while (!value.empty() && IsSpace(value.back())) value.remove_suffix(1);
    return value;
}

bool AllDigits(std::u16string_view value) {
    return !value.empty() && value.find_first_not_of(u"0123456789") == std::u16string_view::npos;
}

// Texts that look like "off" to a player but are on: only an empty cell and "0" are off.
bool LooksOffButIsOn(std::u16string_view value) {
    if (!ReadSwitch(value)) return false;
    const std::u16string word = AsciiLower(Trimmed(value));
    if (word == u"false" || word == u"off" || word == u"no") return true;
    return !word.empty() && word.find_first_not_of(u'0') == std::u16string::npos;
}

std::size_t EditDistance(std::u16string_view a, std::u16string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

}  // namespace

std::u16string NearestName(std::u16string_view name, const std::vector<std::u16string>& known) {
    const std::u16string lower = AsciiLower(name);
    std::u16string best;
    std::size_t bestDistance = std::max<std::size_t>(2, name.size() / 3) + 1;
    for (const std::u16string& candidate : known) {
        const std::size_t distance = EditDistance(lower, AsciiLower(candidate));
        if (distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

namespace {

// What a misspelt option was probably meant to be. Numbered options (invoke0 ... invoke99) are
// compared with the number the player wrote, written plainly: invoke05 is invoke5, invoce3 is
// invoke3, and invoke100 is past the last one.
std::u16string NearestOption(const TableSchema& schema, std::u16string_view name) {
    const std::size_t numberStart = name.find_last_not_of(u"0123456789") + 1;
    const std::u16string_view digits = name.substr(std::min(numberStart, name.size()));
    const std::size_t nonZero = digits.empty() ? 0 : std::min(digits.find_first_not_of(u'0'), digits.size() - 1);
    std::vector<std::u16string> known;
    for (const OptionSpec& option : schema.options) {
        if (option.numberedUpTo < 0) {
            known.emplace_back(option.name);
        } else if (!digits.empty() && digits.size() - nonZero <= 4 &&
                   ReadInt(digits.substr(nonZero)) <= option.numberedUpTo) {
            known.push_back(std::u16string(option.name) + std::u16string(digits.substr(nonZero)));
        } else {
            const std::u16string last = Utf8ToUtf16(std::to_string(option.numberedUpTo));
            const std::u16string range = std::u16string(option.name) + u"0 ... " + std::u16string(option.name) + last;
            if (AsciiLower(name.substr(0, numberStart)) == AsciiLower(option.name)) return range;
        }
    }
    return NearestName(name, known);
}

std::u16string NearestColumn(const TableSchema& schema, std::u16string_view name) {
    std::vector<std::u16string> known;
    for (const ColumnSpec& column : schema.columns) known.emplace_back(column.name);
    return NearestName(name, known);
}

bool Compiles(std::u16string_view pattern) {
    try {
        return RuleRegex::Compile(pattern).has_value();
    } catch (...) {
        return false;
    }
}

// What one cell or option value means to its owner, as far as it is not what the player meant.
class ValueCheck {
public:
    ValueCheck(int language, const ValueSpec& spec, std::string label)
        : language_(language), spec_(spec), label_(std::move(label)) {}

    // For keywords, `regexOn` and `exactOn` are the row's switches. Each problem is one message.
    std::vector<std::string> Problems(std::u16string_view value, bool regexOn = false, bool exactOn = false) {
        switch (spec_.kind) {
            case ValueKind::Integer: IntegerProblem(value); break;
            case ValueKind::Switch:
                if (LooksOffButIsOn(value)) Add(text::kLooksOff, {label_, Quoted(value)});
                break;
            case ValueKind::ColourText: ColourProblem(value); break;
            case ValueKind::Keyword:
                if (regexOn && !Compiles(value)) {
                    Add(text::kBadRegex, {label_, Quoted(value)});
                } else if (value.empty() && !exactOn) {
                    Add(text::kEmptyKeyword, {label_});
                }
                break;
            case ValueKind::Choice: ChoiceProblem(value); break;
            case ValueKind::DateList:
            case ValueKind::HourList: ListProblems(value); break;
            case ValueKind::Text:
            case ValueKind::FileName:
                if (spec_.maxLength != 0 && value.size() > spec_.maxLength) {
                    Add(text::kTooLong, {label_, std::to_string(spec_.maxLength)});
                }
                break;
        }
        return std::move(problems_);
    }

private:
    std::string Say(const LangText& message, std::initializer_list<std::string> args) const {
        return SayText(language_, message, args);
    }
    void Add(const LangText& message, std::initializer_list<std::string> args) {
        problems_.push_back(Say(message, args));
    }
    std::string Then(const std::string& found, const std::string& consequence) const {
        return Say(text::kThen, {found, consequence});
    }

    void IntegerProblem(std::u16string_view value) {
        if (value.empty() && spec_.emptyMeansMissing) return;
        std::size_t i = 0;
        while (i < value.size() && IsSpace(value[i])) ++i;
        if (i < value.size() && (value[i] == u'+' || value[i] == u'-')) ++i;
        const std::size_t digits = i;
        while (i < value.size() && value[i] >= u'0' && value[i] <= u'9') ++i;
        const int read = ReadInt(value);
        const int used = spec_.NumberOf(value);
        std::string problem;
        if (value.empty()) {
            problem = Say(text::kEmptyReadsZero, {label_});
        } else if (i == digits) {
            problem = Say(text::kNotANumber, {label_, Quoted(value)});
        } else if (!Trimmed(value.substr(i)).empty()) {
            problem = Say(text::kNotPlainNumber, {label_, Quoted(value), std::to_string(read)});
        }
        const IntRange& range = spec_.range;
        const bool outside = range.use != RangeUse::None && (read < range.min || read > range.max);
        if (outside && (used != read || range.use == RangeUse::Expect)) {
            if (problem.empty()) {
                problem = Say(text::kOutside,
                              {label_, std::to_string(read), std::to_string(range.min), std::to_string(range.max)});
            }
            problem = Then(problem, range.use == RangeUse::Expect ? Utf16ToUtf8(spec_.outside.Get(language_))
                                                                  : Say(text::kProgramUses, {std::to_string(used)}));
        } else if (used != read && spec_.lowBits != 0 && read != 0) {
            const std::string bits = Say(text::kLowBits, {label_, std::to_string(read), std::to_string(spec_.lowBits),
                                                          std::to_string(used)});
            problem = problem.empty() ? bits : Then(problem, bits);
        } else if (used != read && spec_.zeroMeansMissing && problem.empty()) {
            problem = Say(text::kZeroIsDefault, {label_, std::to_string(used)});
        } else if (used != read) {
            problem = Then(problem, Say(text::kProgramUses, {std::to_string(used)}));
        }
        if (!problem.empty()) problems_.push_back(std::move(problem));
    }

    void ColourProblem(std::u16string_view value) {
        if (ParseColour(value, kNoColour) != kNoColour) return;
        const bool noColour = value.empty() || AsciiLower(value) == u"nothing";
        if (noColour && spec_.fallbackColour == kNoColour) return;
        const std::string found = Say(noColour ? text::kNoColourNotTaken : text::kNotAColour, {label_, Quoted(value)});
        if (spec_.fallbackColour == kNoColour) {
            problems_.push_back(Then(found, Say(text::kCountsAsNoColour, {})));
        } else {
            problems_.push_back(
                Then(found, Say(text::kUsesDefaultColour, {Utf16ToUtf8(FormatColour(spec_.fallbackColour))})));
        }
    }

    void ChoiceProblem(std::u16string_view value) {
        for (std::u16string_view choice : spec_.choices) {
            if (spec_.choicesIgnoreCase ? AsciiLower(choice) == AsciiLower(value) : choice == value) return;
        }
        problems_.push_back(Then(Say(text::kNotAChoice, {label_, Quoted(value), Choices(spec_.choices)}),
                                 Utf16ToUtf8(spec_.outside.Get(language_))));
    }

    // A rule's "/"-separated list, as the music rules test it: each piece is compared with the
    // request's number written plainly ("/%d/"), hour pieces also with the names of its period.
    void ListProblems(std::u16string_view value) {
        if (value == u"*" || value.empty()) return;
        std::size_t start = 0;
        while (start <= value.size()) {
            std::size_t end = value.find(u'/', start);
            if (end == std::u16string_view::npos) end = value.size();
            PieceProblem(value, value.substr(start, end - start));
            start = end + 1;
        }
    }

    void PieceProblem(std::u16string_view cell, std::u16string_view piece) {
        if (piece.empty()) return;
        const std::string where = Quoted(cell);
        const std::u16string_view bare = Trimmed(piece);
        if (bare.size() != piece.size() && !bare.empty()) {
            if (!spacesReported_) Add(text::kSpacesAroundSlash, {label_, where, Quoted(piece)});
            spacesReported_ = true;
            return;
        }
        if (piece == u"*") {
            Add(text::kStarInList, {label_, where});
            return;
        }
        if (AllDigits(piece)) {
            const int number = ReadInt(piece);
            const std::string plain = std::to_string(number);
            if (piece.size() > 1 && piece[0] == u'0') {
                Add(text::kLeadingZero, {label_, where, Quoted(piece), plain});
            } else if (spec_.range.use != RangeUse::None && (piece.size() > 9 || number > spec_.range.max)) {
                Add(text::kHourOutside, {label_, where, Utf16ToUtf8(piece)});
            }
            return;
        }
        if (spec_.kind == ValueKind::HourList) {
            for (const LangText& name : tables::bgmex::kTimeOfDay) {
                for (std::u16string_view known : {std::u16string_view(name.en), std::u16string_view(name.ja)}) {
                    if (piece == known) return;
                    if (AsciiLower(piece) == AsciiLower(known)) {
                        Add(text::kTimeOfDayCase, {label_, where, Quoted(piece), Utf16ToUtf8(known)});
                        return;
                    }
                }
            }
            Add(text::kNotAnHour, {label_, where, Quoted(piece)});
            return;
        }
        Add(text::kNotANumberNeverMatches, {label_, where, Quoted(piece)});
    }

    int language_;
    const ValueSpec& spec_;
    std::string label_;
    std::vector<std::string> problems_;
    bool spacesReported_ = false;  // once per cell is enough
};

class Checker {
public:
    Checker(std::u16string_view path, std::string_view bytes, int language)
        : path_(path), bytes_(bytes), language_(language) {}

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
    std::string Say(const LangText& message, std::initializer_list<std::string> args = {}) const {
        return SayText(language_, message, args);
    }
    void Report(unsigned line, std::string message) { problems_.push_back({line, std::move(message)}); }
    void Report(unsigned line, const LangText& message, std::initializer_list<std::string> args = {}) {
        Report(line, Say(message, args));
    }
    void ReportValue(unsigned line, const ValueSpec& spec, std::string label, std::u16string_view value,
                     bool regexOn = false, bool exactOn = false) {
        for (std::string& problem : ValueCheck(language_, spec, std::move(label)).Problems(value, regexOn, exactOn)) {
            Report(line, std::move(problem));
        }
    }

    unsigned LineOfByte(std::size_t offset) const {
        return 1 + static_cast<unsigned>(std::count(bytes_.begin(), bytes_.begin() + offset, '\n'));
    }

    // False when the text cannot be a table at all (UTF-16).
    bool CheckEncoding() {
        if (bytes_.size() >= 2 && (bytes_.substr(0, 2) == "\xFF\xFE" || bytes_.substr(0, 2) == "\xFE\xFF")) {
            Report(1, text::kUtf16);
            return false;
        }
        const std::string again = Utf16ToUtf8(Utf8ToUtf16(bytes_));
        if (again != bytes_) {
            const auto differ = std::mismatch(again.begin(), again.end(), bytes_.begin(), bytes_.end());
            Report(LineOfByte(static_cast<std::size_t>(differ.second - bytes_.begin())), text::kNotUtf8);
        }
        const std::size_t nul = bytes_.find('\0');
        if (nul != std::string_view::npos) Report(LineOfByte(nul), text::kNul);
        return true;
    }

    void ExplainNotKcsv() {
        const std::string_view bom = "\xEF\xBB\xBF";
        const LangText* why = &text::kNoFormatLine;
        if (bytes_.substr(0, bom.size()) == bom) {
            why = &text::kBom;
        } else if (lines_.empty()) {
            why = &text::kEmptyFile;
        } else if (text_.find(u"\r\n") == std::u16string::npos && text_.find_first_of(u"\r\n") != std::u16string::npos) {
            why = &text::kBareLineEnds;
        } else if (lines_[0].cells.size() >= 2 && AsciiLower(lines_[0].cells[0]) == u"#format" &&
                   AsciiLower(lines_[0].cells[1]) == u"kcsv") {
            why = &text::kFormatCase;
        }
        Report(1, text::kNotKcsv, {Say(*why)});
    }

    bool Reached(const KcsvLine& line) const { return where_.stopLine == 0 || line.line < where_.stopLine; }

    void CheckLines() {
        for (const KcsvLine& line : lines_) {
            if (!Reached(line)) break;
            if (line.unclosedQuote) Report(line.line, text::kUnclosedQuote);
            const std::u16string& first = line.cells[0];
            for (std::u16string_view keyword : {u"#format", u"#option", u"#column"}) {
                if (first != keyword && AsciiLower(first) == keyword) {
                    Report(line.line, text::kKeywordCase, {Quoted(first), Utf16ToUtf8(keyword)});
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
            Report(line.line, text::kSecondLine, {column ? "#column" : "#format", std::to_string(first)});
        }
    }

    void CheckOptionCells(const KcsvLine& line) {
        for (std::size_t i = 1; i < line.cells.size(); ++i) {
            const std::u16string& cell = line.cells[i];
            const std::size_t colon = cell.find(u':');
            if (cell.empty()) continue;
            if (colon == 0) {
                Report(line.line, text::kOptionNoName, {Quoted(cell)});
            } else if (colon == std::u16string::npos) {
                Report(line.line, text::kOptionNoColon, {Quoted(cell)});
            }
        }
    }

    void CheckColumnNames(const KcsvLine& line) {
        std::map<std::u16string, std::u16string> seen;
        for (std::size_t i = 1; i < line.cells.size(); ++i) {
            const auto [it, added] = seen.emplace(AsciiLower(line.cells[i]), line.cells[i]);
            if (!added) Report(line.line, text::kColumnTwice, {Quoted(line.cells[i]), Quoted(it->second)});
        }
    }

    void CheckKnownTable(const TableSchema& schema) {
        CheckOptions(schema);
        if (schema.optionsOnly) {
            const std::string name = Utf16ToUtf8(schema.fileName);
            if (!table_.Columns().empty()) Report(where_.columnLine, text::kOptionsOnlyColumns, {name});
            if (!where_.rows.empty()) Report(where_.rows[0], text::kOptionsOnlyRows, {name});
            return;
        }
        CheckColumns(schema);
        for (unsigned r = 0; r < table_.RowCount(); ++r) CheckRow(schema, r);
    }

    std::string Unknown(const LangText& message, std::u16string_view name, const std::u16string& nearest) const {
        const std::string found = Say(message, {Quoted(name)});
        return nearest.empty() ? found : Say(text::kDidYouMean, {found, Utf16ToUtf8(nearest)});
    }

    void CheckOptions(const TableSchema& schema) {
        std::map<std::u16string, unsigned> firstLine;
        for (std::size_t i = 0; i < table_.Options().size(); ++i) {
            const auto& [name, value] = table_.Options()[i];
            const unsigned line = where_.options[i];
            const auto [it, added] = firstLine.emplace(AsciiLower(name), line);
            if (!added) Report(line, text::kOptionAgain, {Quoted(name), std::to_string(it->second)});
            if (const OptionSpec* spec = FindOption(schema, name)) {
                ReportValue(line, spec->value, Say(text::kOptionLabel, {Utf16ToUtf8(name)}), value);
            } else if (added) {
                Report(line, Unknown(text::kUnknownOption, name, NearestOption(schema, name)));
            }
        }
        for (const OptionSpec& option : schema.options) {
            if (*option.whenMissing.en == u'\0' || table_.OptionIndex(option.name) >= 0) continue;
            Report(where_.formatLine, Say(text::kThen, {Say(text::kMissingOption, {Utf16ToUtf8(option.name)}),
                                                        Utf16ToUtf8(option.whenMissing.Get(language_))}));
        }
    }

    void CheckColumns(const TableSchema& schema) {
        const unsigned line = where_.columnLine != 0 ? where_.columnLine : where_.formatLine;
        for (const ColumnSpec& column : schema.columns) {
            if (column.required && table_.ColumnIndex(column.name) < 0) {
                Report(line, Say(text::kThen, {Say(text::kMissingColumn, {Quoted(column.name)}),
                                               Utf16ToUtf8(column.whenMissing.Get(language_))}));
            }
        }
        for (const std::u16string& name : table_.Columns()) {
            if (!FindColumn(schema, name)) Report(line, Unknown(text::kUnknownColumn, name, NearestColumn(schema, name)));
        }
    }

    bool SwitchOn(unsigned row, std::u16string_view column) const {
        const int index = column.empty() ? -1 : table_.ColumnIndex(column);
        return index >= 0 && ReadSwitch(table_.Cell(row, static_cast<unsigned>(index), u""));
    }

    void CheckRow(const TableSchema& schema, unsigned r) {
        const KcsvFile::Row& row = table_.Rows()[r];
        const unsigned line = where_.rows[r];
        if (!row[0].empty() && row[0][0] == u'#') {
            if (!schema.skipsNoteRows) {
                Report(line, text::kNoCommentRows,
                       {Utf16ToUtf8(schema.fileName), Utf16ToUtf8(schema.rowMeaning.Get(language_))});
            }
            return;
        }
        const std::size_t columns = table_.Columns().size();
        if (where_.columnLine != 0 && line < where_.columnLine) {
            Report(line, text::kRowBeforeColumns);
        } else if (columns != 0 && row.size() > columns) {
            Report(line, text::kExtraCells, {std::to_string(row.size()), std::to_string(columns)});
        }
        for (const ColumnSpec& column : schema.columns) {
            const int index = table_.ColumnIndex(column.name);
            if (index < 0 || static_cast<std::size_t>(index) >= row.size()) continue;
            ReportValue(line, column.value, Utf16ToUtf8(column.name), row[static_cast<std::size_t>(index)],
                        SwitchOn(r, column.value.regexSwitch), SwitchOn(r, column.value.exactSwitch));
        }
    }

    std::u16string_view path_;
    std::string_view bytes_;
    int language_;
    std::u16string text_;
    std::vector<KcsvLine> lines_;
    KcsvFile table_;
    KcsvSourceLines where_;
    std::vector<TableProblem> problems_;
};

}  // namespace

std::string QuotedForReport(std::u16string_view text) {
    constexpr std::size_t kLongest = 60;
    if (text.size() > kLongest) return "\"" + Utf16ToUtf8(text.substr(0, kLongest)) + "...\"";
    return "\"" + Utf16ToUtf8(text) + "\"";
}

std::string SayText(int language, const LangText& message, std::initializer_list<std::string> args) {
    const std::string pattern = Utf16ToUtf8(message.Get(language));
    std::string out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::size_t slot = i + 1 < pattern.size() ? static_cast<std::size_t>(pattern[i + 1] - '1') : args.size();
        if (pattern[i] == '%' && slot < args.size()) {
            out += args.begin()[slot];
            ++i;
        } else {
            out += pattern[i];
        }
    }
    return out;
}

std::vector<TableProblem> CheckTableText(std::u16string_view path, std::string_view bytes, int language) {
    return Checker(path, bytes, language).Run();
}

}  // namespace vrl
