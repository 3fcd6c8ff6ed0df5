#pragma once
// The texts of vrltables itself, English and Japanese side by side (messages about the tables
// are in settings/table_check_texts.h).

#include "ui/lang_text.h"

namespace vrl::vrltables::text {

inline constexpr LangText kUsage = {
    u"usage: vrltables [check] FILE...           report what the program would read differently from what "
    u"was meant\n"
    u"       vrltables Vrl.ini                   check the settings, the game they name and the installation\n"
    u"       vrltables                           check Vrl.ini, the installation and the known tables in the "
    u"current folder\n"
    u"       vrltables dump FILE                 show the table as the program reads it (JSON)\n"
    u"       vrltables try LogEx.kcsv \"LINE\"     show what the log window does with a line of the game's log\n"
    u"       vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ\n"
    u"                                           show what the music panel plays for a music request\n"
    u"check exits with 1 when it finds anything.\n",
    u"使い方: vrltables [check] ファイル...      プログラムの読み方が意図と違うところを報告します\n"
    u"        vrltables Vrl.ini                  設定、設定が指すゲーム、インストールを調べます\n"
    u"        vrltables                          現在のフォルダーの Vrl.ini、インストール、既知の表を調べます\n"
    u"        vrltables dump ファイル            プログラムが読むとおりに表を表示します (JSON)\n"
    u"        vrltables try LogEx.kcsv \"行\"      ゲームのログの一行をログウィンドウがどう扱うかを表示します\n"
    u"        vrltables try BGMEx.kcsv ファイル 月 日 時 マップ\n"
    u"                                           音楽の要求に音楽パネルが何を再生するかを表示します\n"
    u"check は何か見つけると 1 で終わります。\n"};
inline constexpr LangText kCannotRead = {u"%1: cannot read the file\n", u"%1: ファイルを読めません\n"};
inline constexpr LangText kEmptyFile = {u"%1: the file is empty; the program does not read it\n",
                                        u"%1: ファイルが空なので、プログラムは読みません\n"};
inline constexpr LangText kNotKcsv = {u"%1: not a KCSV table (vrltables check %1 says why)\n",
                                      u"%1: KCSV の表ではありません (理由は vrltables check %1 で分かります)\n"};
inline constexpr LangText kStopsHere = {
    u"%1:%2: the program stops reading at this line; the table above is all it reads\n",
    u"%1:%2: プログラムはこの行で読むのをやめます。上の表が読まれるすべてです\n"};
inline constexpr LangText kProblem = {u"%1:%2: %3\n", u"%1:%2: %3\n"};
inline constexpr LangText kNoProblems = {u"%1: no problems found\n", u"%1: 問題は見つかりませんでした\n"};
inline constexpr LangText kNoTablesHere = {u"no table files of the program in this folder (%1)\n",
                                           u"このフォルダーにプログラムの表ファイルはありません (%1)\n"};
inline constexpr LangText kCannotTry = {u"%1: try knows these tables: %2\n", u"%1: try で試せる表: %2\n"};
inline constexpr LangText kTryMusicUsage = {
    u"usage: vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ\n"
    u"shows what the music panel does with that request: the rules that match, the candidates,\n"
    u"where each is looked for and the volume it gets from Volume.kcsv beside the rules.\n",
    u"使い方: vrltables try BGMEx.kcsv ファイル 月 日 時 マップ\n"
    u"その要求に音楽パネルが何をするかを表示します: 一致する規則、演奏候補、\n"
    u"それぞれを探す場所と、規則の隣の Volume.kcsv から決まるボリューム。\n"};
inline constexpr LangText kNoMusicRules = {u"%1: cannot read the rule table (the panel then has no rules)\n",
                                           u"%1: 規則の表を読めません (このときパネルには規則がありません)\n"};
inline constexpr LangText kPressEnter = {u"Press Enter to close.", u"Enter キーを押すと閉じます。"};

}  // namespace vrl::vrltables::text
