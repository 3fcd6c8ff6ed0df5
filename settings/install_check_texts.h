#pragma once
// The installation checker's texts (Vrl.ini and the files around the companion), English and
// Japanese side by side. Each says what the player will see and what to do. %1, %2, ... stand for
// the values filled in.

#include "ui/lang_text.h"

#include <string_view>

namespace vrl::install_text {

// Vrl.ini as a file.
inline constexpr LangText kUtf8Mark = {
    u"the file begins with a UTF-8 byte-order mark, which hides the section header on this line: the companion "
    u"reads none of its settings and starts the settings editor instead of the game; save the file as ANSI or as "
    u"Unicode (UTF-16)",
    u"ファイルが UTF-8 の BOM で始まっているため、この行のセクション見出しが読まれません。コンパニオンは設定を何も"
    u"読まず、ゲームの代わりに設定エディターを起動します。ANSI か Unicode (UTF-16) で保存してください"};
inline constexpr LangText kUtf8Text = {
    u"the file is saved as UTF-8 without a byte-order mark; the companion reads it in the system's code page, so the "
    u"characters beyond plain ASCII on this line read as other characters; save it as Unicode (UTF-16)",
    u"ファイルが BOM なしの UTF-8 で保存されています。コンパニオンはシステムのコードページで読むので、この行の "
    u"ASCII 以外の文字は別の文字として読まれます。Unicode (UTF-16) で保存してください"};
inline constexpr LangText kNoSection = {
    u"no section [Vorrel_v5]: the companion reads no setting from this file and starts the settings editor "
    u"instead of the game; choose the game there (VrlConfig.exe) or name the section [Vorrel_v5]",
    u"セクション [Vorrel_v5] がありません。コンパニオンはこのファイルから設定を何も読まず、ゲームの代わりに設定"
    u"エディターを起動します。そこでゲームを選ぶか (VrlConfig.exe)、セクション名を [Vorrel_v5] にしてください"};
inline constexpr LangText kSectionNotRead = {u"section [%1] is not read (did you mean [Vorrel_v5]?)",
                                             u"セクション [%1] は読まれません ([Vorrel_v5] のことですか?)"};
inline constexpr LangText kSectionAgain = {
    u"section [Vorrel_v5] again (the first is on line %1); the companion reads only the first, so it ignores "
    u"the keys here",
    u"セクション [Vorrel_v5] が 2 つ目です (1 つ目は %1 行目)。コンパニオンは 1 つ目だけを読むので、ここのキーは"
    u"無視されます"};
inline constexpr LangText kBeforeSection = {
    u"%1 stands before any section header; the companion does not read it (move it below [Vorrel_v5])",
    u"%1 はセクション見出しより前にあるので、コンパニオンは読みません ([Vorrel_v5] の下に移してください)"};

// Keys and values.
inline constexpr LangText kUnknownKey = {u"unknown key \"%1\"; the companion ignores it",
                                         u"知らないキー \"%1\" です。コンパニオンは無視します"};
inline constexpr LangText kStaysAt = {u"%1 stays at %2", u"%1 は %2 のままです"};
inline constexpr LangText kNoEquals = {u"\"%1\" has no '='; the companion reads no value from this line",
                                       u"\"%1\" に '=' がありません。コンパニオンはこの行から値を読みません"};
inline constexpr LangText kKeyAgain = {u"%1 is set again (first on line %2); the companion uses the first",
                                       u"%1 がもう一度設定されています (最初は %2 行目)。コンパニオンは最初のものを使います"};
inline constexpr LangText kNoValue = {u"%1 has no value; the companion uses %2",
                                      u"%1 に値がありません。コンパニオンは %2 を使います"};
inline constexpr LangText kNotWholeNumber = {u"%1 = \"%2\" is not a whole number; the companion reads %3",
                                             u"%1 = \"%2\" は整数ではありません。コンパニオンは %3 と読みます"};
inline constexpr LangText kOutOfRange = {u"%1 = %2 is outside %3 to %4; %5",
                                         u"%1 = %2 は %3 から %4 の範囲外です。%5"};
inline constexpr LangText kTooLong = {
    u"%1 is %2 characters long; the companion keeps only the first 255, so it names another file",
    u"%1 は %2 文字あります。コンパニオンは先頭の 255 文字だけを使うので、別のファイルを指すことになります"};

// What an out-of-range value does, by key.
struct RangeConsequence {
    std::u16string_view key;
    LangText consequence;
};
inline constexpr RangeConsequence kRangeConsequences[] = {
    {u"iLanguage", {u"the companion shows English (-1 follows Windows, 0 English, 1 Japanese)",
                    u"コンパニオンは英語で表示します (-1 は Windows に従う、0 は英語、1 は日本語)"}},
    {u"iScreenshotRange", {u"the screenshot hotkey takes no picture", u"スクリーンショットのホットキーで何も撮れません"}},
    {u"iScreenshotFormat", {u"no screenshot file is written (0 or 1 PNG, 2 JPEG, 3 the backup JPEG)",
                            u"スクリーンショットのファイルが書かれません (0 か 1 は PNG、2 は JPEG、3 はバックアップ用 JPEG)"}},
    {u"iJpegQuality", {u"JPEG screenshots may not be saved", u"JPEG のスクリーンショットが保存されないことがあります"}},
};
inline constexpr LangText kUsedAsItIs = {u"the companion uses it as it is", u"コンパニオンはそのまま使います"};

// The game.
inline constexpr LangText kNoGame = {
    u"wstrMorva is empty: the companion starts the settings editor instead of the game; choose the game's program "
    u"there (VrlConfig.exe)",
    u"wstrMorva が空です。コンパニオンはゲームの代わりに設定エディターを起動します。そこでゲームのプログラムを選んで"
    u"ください (VrlConfig.exe)"};
inline constexpr LangText kGameMissing = {
    u"wstrMorva names %1, which does not exist: the game does not start and after a few seconds the companion "
    u"says \"Cannot find Morva Window\"; choose the game's program in the settings editor (VrlConfig.exe)",
    u"wstrMorva の %1 はありません。ゲームは起動せず、数秒後にコンパニオンが「Morvaのウィンドウが見つかりません」と"
    u"表示します。設定エディター (VrlConfig.exe) でゲームのプログラムを選んでください"};
inline constexpr LangText kGameIsFolder = {
    u"wstrMorva names the folder %1, not a program: the game does not start and after a few seconds the "
    u"companion says \"Cannot find Morva Window\"; choose the game's program in the settings editor (VrlConfig.exe)",
    u"wstrMorva の %1 はフォルダーで、プログラムではありません。ゲームは起動せず、数秒後にコンパニオンが「Morvaの"
    u"ウィンドウが見つかりません」と表示します。設定エディター (VrlConfig.exe) でゲームのプログラムを選んでください"};
inline constexpr LangText kGameNotMorva = {
    u"wstrMorva names %1, which is not the game (it lacks the mark of the game's runtime): the companion does not "
    u"start it and after a few seconds says \"Cannot find Morva Window\"; choose the game's program in the settings "
    u"editor (VrlConfig.exe)",
    u"wstrMorva の %1 はゲームではありません (ゲームのランタイムの印がありません)。コンパニオンは起動せず、数秒後に"
    u"「Morvaのウィンドウが見つかりません」と表示します。設定エディター (VrlConfig.exe) でゲームのプログラムを選んで"
    u"ください"};
inline constexpr LangText kGameOtherMachine = {
    u"wstrMorva names %1, a program for another processor type than VrlBoot.exe (a 64-bit program, while the "
    u"companion and the game are 32-bit): the module cannot be loaded into it, so the game does not start and after "
    u"a few seconds the companion says \"Cannot find Morva Window\"; choose the game's own program in the settings "
    u"editor (VrlConfig.exe)",
    u"wstrMorva の %1 は VrlBoot.exe と異なるプロセッサ向けのプログラムです (コンパニオンとゲームは 32 ビット、"
    u"こちらは 64 ビットなど)。モジュールを読み込めないためゲームは起動せず、数秒後にコンパニオンが「Morvaの"
    u"ウィンドウが見つかりません」と表示します。設定エディター (VrlConfig.exe) でゲーム本体のプログラムを選んでください"};
inline constexpr LangText kGameNeedsAdministrator = {
    u"wstrMorva names %1, which asks Windows for administrator rights (in the program itself, or by \"Run this "
    u"program as an administrator\" on the Compatibility tab of its Properties): Windows does not let the "
    u"companion start it, and after a few seconds the companion says \"Cannot find Morva Window\"; turn that "
    u"setting off, or start VrlBoot.exe as administrator too",
    u"wstrMorva の %1 は管理者の権限を求めるプログラムです (プログラム自体の設定、またはプロパティの互換性タブの"
    u"「管理者としてこのプログラムを実行する」)。Windows はコンパニオンからの起動を許さず、数秒後にコンパニオンが"
    u"「Morvaのウィンドウが見つかりません」と表示します。その設定を外すか、VrlBoot.exe も管理者として実行してください"};
inline constexpr LangText kGameElsewhere = {
    u"wstrMorva names a game outside the folder Vorrel is in (%1): the game runs from there while the companion "
    u"reads music, sounds and saves under %1; put the Vorrel folder inside the folder of the game you play",
    u"wstrMorva のゲームは Vorrel のあるフォルダー (%1) の外にあります。ゲームはそこから動きますが、コンパニオンは"
    u"音楽・効果音・セーブを %1 から読みます。Vorrel フォルダーを遊ぶゲームのフォルダーの中に置いてください"};

// The files and folders around the companion.
inline constexpr LangText kNoCompanion = {
    u"VrlBoot.exe is not in this folder; the companion reads Vrl.ini and the tables from its own folder only, so "
    u"put them beside VrlBoot.exe",
    u"このフォルダーに VrlBoot.exe がありません。コンパニオンは Vrl.ini と表を自分のフォルダーからしか読まないので、"
    u"VrlBoot.exe と同じフォルダーに置いてください"};
inline constexpr LangText kNoModule = {
    u"the in-game module VrlDLL.dll is missing: the game does not start and after a few seconds the companion says "
    u"\"Cannot find Morva Window\"; put VrlDLL.dll from the Vorrel add-on beside VrlBoot.exe",
    u"ゲーム内モジュール VrlDLL.dll がありません。ゲームは起動せず、数秒後にコンパニオンが「Morvaのウィンドウが"
    u"見つかりません」と表示します。Vorrel アドオンの VrlDLL.dll を VrlBoot.exe と同じフォルダーに置いてください"};
inline constexpr LangText kNoEditor = {
    u"the settings editor VrlConfig.exe is missing: while no game is chosen, starting VrlBoot.exe seems to do "
    u"nothing, and the tray menu's settings item does nothing; put VrlConfig.exe from the Vorrel add-on beside "
    u"VrlBoot.exe",
    u"設定エディター VrlConfig.exe がありません。ゲームが選ばれていない間は VrlBoot.exe を起動しても何も起きない"
    u"ように見え、トレイメニューの設定も動きません。Vorrel アドオンの VrlConfig.exe を VrlBoot.exe と同じフォルダーに"
    u"置いてください"};
inline constexpr LangText kNotInGameFolder = {
    u"this is not the game's folder (it has no sound, save or user folder): the companion looks for the game's "
    u"music, sounds and saves here; put the Vorrel folder inside the game's folder",
    u"ここはゲームのフォルダーではありません (sound、save、user フォルダーがありません)。コンパニオンはゲームの音楽・"
    u"効果音・セーブをここで探します。Vorrel フォルダーをゲームのフォルダーの中に置いてください"};
inline constexpr LangText kNoSoundFolder = {
    u"the game's sound folder is missing: alert sounds and music named there are not found, and the music "
    u"extender cannot copy the three music files it needs; check that Vorrel is inside the right game folder",
    u"ゲームの sound フォルダーがありません。そこにある効果音や音楽が見つからず、音楽拡張が必要な 3 つの音楽ファイル"
    u"をコピーできません。Vorrel が正しいゲームフォルダーの中にあるか確かめてください"};
inline constexpr LangText kNoSaveFolder = {
    u"the game's save folder is missing: the equip set window finds no character's set names; check that Vorrel "
    u"is inside the right game folder",
    u"ゲームの save フォルダーがありません。装備セットのウィンドウがキャラクターのセット名を見つけられません。Vorrel "
    u"が正しいゲームフォルダーの中にあるか確かめてください"};
inline constexpr LangText kNoUserMusicFolder = {
    u"the game's user\\music folder is missing: music files put there are not played, and the music extender "
    u"cannot copy the three music files it needs; create the folder",
    u"ゲームの user\\music フォルダーがありません。そこに置いた音楽は再生されず、音楽拡張が必要な 3 つの音楽ファイル"
    u"をコピーできません。フォルダーを作ってください"};
inline constexpr LangText kNoUserSoundFolder = {
    u"the game's user\\sound folder is missing: alert sounds put there are not played; create the folder",
    u"ゲームの user\\sound フォルダーがありません。そこに置いた効果音は鳴りません。フォルダーを作ってください"};
inline constexpr LangText kNoAudioLibraryMusic = {
    u"the audio library bass.dll is missing while the music extender is on: no music plays and the music panel "
    u"shows an error; put bass.dll (and bassmidi.dll for MIDI) beside VrlBoot.exe",
    u"音楽拡張がオンなのにオーディオライブラリ bass.dll がありません。音楽は鳴らず、音楽パネルにエラーが出ます。"
    u"bass.dll (MIDI には bassmidi.dll も) を VrlBoot.exe と同じフォルダーに置いてください"};
inline constexpr LangText kNoAudioLibraryAlerts = {
    u"the audio library bass.dll is missing while LogEx.kcsv plays sounds: the alert sounds are silent; put "
    u"bass.dll beside VrlBoot.exe",
    u"LogEx.kcsv が効果音を鳴らすのにオーディオライブラリ bass.dll がありません。効果音は鳴りません。bass.dll を "
    u"VrlBoot.exe と同じフォルダーに置いてください"};
inline constexpr LangText kNoSpeechProgram = {
    u"LogEx.kcsv switches speech on (EnableRemoteTalk), but the speech program RemoteTalk.exe is missing: "
    u"nothing is spoken; put RemoteTalk.exe beside VrlBoot.exe",
    u"LogEx.kcsv で読み上げがオン (EnableRemoteTalk) ですが、読み上げプログラム RemoteTalk.exe がありません。何も"
    u"読み上げられません。RemoteTalk.exe を VrlBoot.exe と同じフォルダーに置いてください"};

// The report.
inline constexpr LangText kNoIniYet = {
    u"%1: not there yet; VrlBoot.exe starts the settings editor at its first start, and the editor writes it\n",
    u"%1: まだありません。VrlBoot.exe は最初の起動で設定エディターを起動し、エディターがこのファイルを書きます\n"};
inline constexpr LangText kInstallationClean = {u"installation (%1): no problems found\n",
                                                u"インストール (%1): 問題は見つかりませんでした\n"};
inline constexpr LangText kFinding = {u"%1: %2\n", u"%1: %2\n"};

}  // namespace vrl::install_text
