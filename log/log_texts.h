#pragma once
// Texts of the two log windows, English and Japanese side by side.

#include "ui/lang_text.h"

namespace vrl::log_texts {

inline constexpr LangText kFullLog{u"Full Log", u"全ログ"};
inline constexpr LangText kDockedLog{u"Log", u"ログ"};
inline constexpr LangText kExtractedLog{u"Extracted Log", u"抽出ログ"};
inline constexpr LangText kClearLog{u"C&lear log", u"ログを消去(&L)"};
inline constexpr LangText kDockUndock{u"&Dock/Undock", u"ドッキング切り替え(&D)"};
// The copy item reads the same in both languages.
inline constexpr LangText kCopyText{u"テキストをコピー", u"テキストをコピー"};
inline constexpr LangText kRulesReloaded{u"Config file has been reloaded.\r\n", u"設定を再読み込みしました。\r\n"};

}  // namespace vrl::log_texts
