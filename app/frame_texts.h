#pragma once
// Texts of the main frame, English and Japanese side by side.

#include "ui/lang_text.h"

namespace vrl::frame_texts {

inline constexpr LangText kGameStillRunning{
    u"Morva is still running. Exit together?\r\n(*Game progress will NOT be saved.)",
    u"Morvaはまだ動作中です。一緒に終了しますか？\r\n（※セーブはしません。）"};
inline constexpr LangText kGameNotFound{u"Cannot find Morva Window", u"Morvaのウィンドウが見つかりません"};
inline constexpr LangText kErrorCaption{u"Vorrel Error", u"Vorrel エラー"};
inline constexpr LangText kAlreadyRunning{
    u"Vorrel is already running.\r\nUse the Vorrel icon in the notification area.",
    u"Vorrelは既に起動しています。\r\n通知領域のVorrelアイコンを使ってください。"};

}  // namespace vrl::frame_texts
