#include "panels/quick_search.h"

#include "settings/kcsv.h"

namespace vrl {

std::vector<std::u16string> QuickSearchWords(const KcsvFile& table) {
    const int column = table.ColumnIndex(kQuickSearchKeywordColumn);
    std::vector<std::u16string> words;
    words.reserve(table.RowCount());
    for (unsigned r = 0; r < table.RowCount(); ++r) {
        words.push_back(column < 0 ? std::u16string() : table.Cell(r, static_cast<unsigned>(column), u""));
    }
    return words;
}

}  // namespace vrl
