#pragma once
// The quick search bar's texts and its word list from QuickSearch.kcsv. Portable.

#include <string>
#include <vector>

#include "settings/table_schema.h"
#include "ui/lang_text.h"

namespace vrl {

class KcsvFile;

inline constexpr const char16_t* kQuickSearchFile = tables::quicksearch::kFile.data();
inline constexpr const char16_t* kQuickSearchKeywordColumn = tables::quicksearch::kKeyword.data();

namespace quick_search_texts {
inline constexpr LangText kTitle{u"Quick Search", u"クイックサーチ"};
inline constexpr LangText kLabel{u"Morva Search:", u"Morva Search:"};
inline constexpr LangText kClose{u"Close", u"閉じる"};
}  // namespace quick_search_texts

// The saved words in file order: one per row, its "keyword" cell (empty without that column).
std::vector<std::u16string> QuickSearchWords(const KcsvFile& table);

}  // namespace vrl
