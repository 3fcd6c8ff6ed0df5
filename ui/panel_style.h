#pragma once
// What every companion panel shares in its template: the font of the language in force and the
// title "<name> - Vorrel".

#include "ui/dialog_template.h"
#include "ui/lang_text.h"

#include <string>
#include <string_view>

namespace vrl {

inline constexpr std::uint8_t kAnsiCharset = 0;
inline constexpr std::uint8_t kShiftJisCharset = 128;

// "Arial" for English, "Meiryo UI" with the Shift-JIS character set for Japanese; 9 pt, weight 400.
DialogFont PanelFont(int language);
inline DialogFont PanelFont() { return PanelFont(LanguageIndex()); }

// The panel's name, " - ", and the program's name.
std::u16string PanelTitle(std::u16string_view name);
inline std::u16string PanelTitle(const LangText& name) { return PanelTitle(name.Get()); }

}  // namespace vrl
