// Any bytes: the reader stays in bounds, and every table the writer can express survives a
// write and a second read unchanged.

#include "settings/kcsv.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using vrl::KcsvFile;

// Written as it stands, a text with CR LF and neither comma nor quote would end its line early.
bool BreaksLineWhenWritten(const std::u16string& text) {
    return text.find(u"\r\n") != std::u16string::npos && text.find_first_of(u",\"") == std::u16string::npos;
}

// What the writer cannot give back as read:
// - an option value with a comma or a double quote: it is quoted after the colon, where a quote
//   is literal and a comma splits the cell;
// - any text that breaks its line when written unquoted;
// - a note row (first cell begins with "#"): only its first cell is written, unquoted;
// - a row shorter than the column list: it came before the column line, unpadded, and is padded
//   once it is read back after it.
bool Expressible(const KcsvFile& table) {
    for (const auto& [name, value] : table.Options()) {
        if (BreaksLineWhenWritten(name) || BreaksLineWhenWritten(value) ||
            value.find_first_of(u",\"") != std::u16string::npos) {
            return false;
        }
    }
    for (const auto& column : table.Columns()) {
        if (BreaksLineWhenWritten(column)) return false;
    }
    for (const auto& row : table.Rows()) {
        if (row.size() < table.Columns().size()) return false;
        if (!row.empty() && !row[0].empty() && row[0][0] == u'#') return false;
        for (const auto& cell : row) {
            if (BreaksLineWhenWritten(cell)) return false;
        }
    }
    return true;
}

void Check(bool condition) {
    if (!condition) std::abort();
}

void CheckLookups(const KcsvFile& table) {
    // A name written twice finds its first place.
    for (std::size_t i = 0; i < table.Columns().size(); ++i) {
        const int index = table.ColumnIndex(table.Columns()[i]);
        Check(index >= 0 && static_cast<std::size_t>(index) <= i &&
              vrl::AsciiLower(table.Columns()[static_cast<unsigned>(index)]) ==
                  vrl::AsciiLower(table.Columns()[i]));
    }
    for (const auto& option : table.Options()) {
        const int index = table.OptionIndex(option.first);
        Check(index >= 0 && vrl::AsciiLower(table.Options()[static_cast<unsigned>(index)].first) ==
                                vrl::AsciiLower(option.first));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);

    // The same bytes read as UTF-16 text exercise Parse on unpaired surrogates and stray NULs.
    std::u16string units(size / 2, u'\0');
    std::memcpy(units.data(), data, units.size() * sizeof(char16_t));
    KcsvFile wide;
    wide.Parse(units);
    (void)wide.ToUtf8();

    const auto lines = vrl::TokeniseKcsv(vrl::Utf8ToUtf16(bytes));
    for (std::size_t i = 1; i < lines.size(); ++i) Check(lines[i].line > lines[i - 1].line);

    KcsvFile table;
    if (!table.ParseUtf8(bytes)) return 0;
    CheckLookups(table);
    if (!Expressible(table)) return 0;

    const std::string written = table.ToUtf8();
    KcsvFile back;
    Check(back.ParseUtf8(written));
    Check(back.Options() == table.Options());
    Check(back.Columns() == table.Columns());
    Check(back.Rows() == table.Rows());
    Check(back.ToUtf8() == written);
    return 0;
}
