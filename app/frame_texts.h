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

// Why the game could not be started, and what the player can do; %s is the game executable.
inline constexpr LangText kGameNeedsElevation{
    u"Vorrel cannot start Morva: the game is set to run as administrator.\r\n%s\r\n"
    u"Turn off \"Run this program as an administrator\" (the game file's Properties, Compatibility tab), "
    u"or start VrlBoot.exe as administrator too.",
    u"Morva が管理者として実行する設定になっているため、Vorrel から起動できません。\r\n%s\r\n"
    u"ゲームのファイルのプロパティ（互換性タブ）で「管理者としてこのプログラムを実行する」を外すか、"
    u"VrlBoot.exe も管理者として実行してください。"};
inline constexpr LangText kGameOtherMachine{
    u"Vorrel cannot start this game file: it is built for another processor type than Vorrel "
    u"(a 64-bit program, while Vorrel and Morva are 32-bit).\r\n%s\r\n"
    u"Choose the game's own executable in the settings (VrlConfig.exe).",
    u"このゲームのファイルは Vorrel と異なるプロセッサ向けのプログラムのため、起動できません"
    u"（Vorrel と Morva は 32 ビット、このファイルは 64 ビットなど）。\r\n%s\r\n"
    u"設定（VrlConfig.exe）で Morva 本体の実行ファイルを選んでください。"};

}  // namespace vrl::frame_texts
