// The players' table checker on any bytes, under the name of each known table: it never crashes
// and every problem names a line that exists in the file.

#include "settings/table_check.h"
#include "settings/table_schema.h"
#include "settings/table_try.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto& tables = vrl::KnownTables();
    // The first byte picks the file name: one of the known tables, or an unknown one.
    const std::size_t pick = data[0] % (tables.size() + 1);
    const std::u16string name = pick < tables.size() ? std::u16string(tables[pick].fileName) : u"Other.kcsv";
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);

    const auto lastLine = 1 + static_cast<unsigned>(std::count(bytes.begin(), bytes.end(), '\n'));
    const int language = data[0] >> 7;  // the high bit picks the language of the messages
    for (const vrl::TableProblem& problem : vrl::CheckTableText(name, bytes, language)) {
        if (problem.line < 1 || problem.line > lastLine || problem.message.empty()) std::abort();
    }
    if (name == vrl::tables::logex::kFile) {  // a line tried against the log rules is always explained
        vrl::TrialPlace place;
        place.programFolder = u"C:\\Morva\\Vorrel";
        place.language = language;
        if (vrl::TryLogLine(bytes, u"[12] You gain ally joined.", place).empty()) std::abort();
    }
    return 0;
}
