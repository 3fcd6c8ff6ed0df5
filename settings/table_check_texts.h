#pragma once
// The table checker's texts, English and Japanese side by side. %1, %2, ... stand for the values
// filled in (names and cell texts already in double quotes where the English shows them so).

#include "ui/lang_text.h"

namespace vrl::check_text {

// Joins a consequence to what was found: "A; B" / "A。B".
inline constexpr LangText kThen = {u"%1; %2", u"%1。%2"};
inline constexpr LangText kOptionLabel = {u"option %1", u"オプション %1"};

// Encoding and structure.
inline constexpr LangText kUtf16 = {u"the file is saved as UTF-16; save it as UTF-8 (without a byte-order mark)",
                                    u"ファイルが UTF-16 で保存されています。UTF-8 (BOM なし) で保存してください"};
inline constexpr LangText kNotUtf8 = {u"bytes that are not UTF-8; they read as the replacement character \uFFFD",
                                      u"UTF-8 ではないバイトがあります。置換文字 \uFFFD として読まれます"};
inline constexpr LangText kNul = {u"a NUL character; the program reads nothing after it",
                                  u"NUL 文字があります。プログラムはそれより後を読みません"};
inline constexpr LangText kNotKcsv = {u"not a KCSV table: %1", u"KCSV の表ではありません: %1"};
inline constexpr LangText kBom = {u"the file begins with a byte-order mark; save it as UTF-8 without one",
                                  u"ファイルが BOM で始まっています。BOM なしの UTF-8 で保存してください"};
inline constexpr LangText kEmptyFile = {u"the file is empty", u"ファイルが空です"};
inline constexpr LangText kBareLineEnds = {u"its lines end with LF or CR alone; every line must end with CR LF",
                                           u"行末が LF か CR だけです。どの行も CR LF で終わる必要があります"};
inline constexpr LangText kFormatCase = {u"the first line must be #format,kcsv exactly, in these small letters",
                                         u"1 行目はこのとおり小文字で #format,kcsv と書く必要があります"};
inline constexpr LangText kNoFormatLine = {u"the first line must begin with #format,kcsv",
                                           u"1 行目は #format,kcsv で始まる必要があります"};
inline constexpr LangText kUnclosedQuote = {
    u"a quoted cell that starts here is never closed; the rest of the file is read as part of it",
    u"ここで始まる引用符付きのセルが閉じていません。ファイルの残りがすべてそのセルとして読まれます"};
inline constexpr LangText kKeywordCase = {
    u"%1 is not %2 (keywords are case-sensitive); this line is read as a data row",
    u"%1 は %2 ではありません (大文字と小文字は区別されます)。この行はデータ行として読まれます"};
inline constexpr LangText kSecondLine = {
    u"a second %1 line (the first is on line %2); the program stops reading here and ignores this line and all "
    u"after it",
    u"2 つ目の %1 行です (1 つ目は %2 行目)。プログラムはここで読むのをやめ、この行から後をすべて無視します"};
inline constexpr LangText kOptionNoName = {u"option %1 has no name before its colon and is ignored",
                                           u"オプション %1 はコロンの前に名前がないので無視されます"};
inline constexpr LangText kOptionNoColon = {u"option %1 has no colon; it is read as the option %1 with an empty value",
                                            u"オプション %1 にコロンがありません。値が空のオプション %1 として読まれます"};
inline constexpr LangText kColumnTwice = {
    u"column %1 is named twice (first as %2); the program reads only the first of them by name",
    u"列 %1 の名前が 2 回あります (1 つ目は %2)。プログラムが名前で読むのは 1 つ目だけです"};

// Known tables.
inline constexpr LangText kOptionAgain = {u"option %1 is set again (first on line %2); the program uses the last one",
                                          u"オプション %1 がもう一度設定されています (最初は %2 行目)。プログラムは最後のものを使います"};
inline constexpr LangText kUnknownOption = {u"unknown option %1; the program ignores it",
                                            u"知らないオプション %1 です。プログラムは無視します"};
inline constexpr LangText kUnknownColumn = {u"unknown column %1; the program ignores it",
                                            u"知らない列 %1 です。プログラムは無視します"};
inline constexpr LangText kDidYouMean = {u"%1 (did you mean %2?)", u"%1 (%2 のことですか?)"};
inline constexpr LangText kMissingColumn = {u"missing column %1", u"列 %1 がありません"};
inline constexpr LangText kMissingOption = {u"missing option %1", u"オプション %1 がありません"};
inline constexpr LangText kOptionsOnlyColumns = {u"%1 holds options only; its columns are ignored",
                                                 u"%1 はオプションだけを持つファイルです。列は無視されます"};
inline constexpr LangText kOptionsOnlyRows = {u"%1 holds options only; its rows are ignored",
                                              u"%1 はオプションだけを持つファイルです。行は無視されます"};
inline constexpr LangText kRowBeforeColumns = {u"this row comes before the #column line",
                                               u"この行は #column 行より前にあります"};
inline constexpr LangText kExtraCells = {
    u"this row has %1 cells but there are %2 columns; the extra cells are ignored (a cell that holds a comma "
    u"must be written in double quotes)",
    u"この行のセルは %1 個ですが列は %2 個です。余分なセルは無視されます (コンマを含むセルはダブルクォートで"
    u"囲んでください)"};
inline constexpr LangText kNoCommentRows = {
    u"this row begins with \"#\", but %1 has no comment rows; the program reads it as %2",
    u"この行は \"#\" で始まっていますが、%1 にコメント行はありません。プログラムは%2として読みます"};

// Values.
inline constexpr LangText kEmptyReadsZero = {u"%1 is empty and reads as 0", u"%1 が空なので 0 と読まれます"};
inline constexpr LangText kNotANumber = {u"%1 %2 is not a number; it reads as 0",
                                         u"%1 の %2 は数ではないので 0 と読まれます"};
inline constexpr LangText kNotPlainNumber = {u"%1 %2 is not a plain number; it reads as %3",
                                             u"%1 の %2 は数だけではないので %3 と読まれます"};
inline constexpr LangText kOutside = {u"%1 %2 is outside %3 to %4", u"%1 の %2 は %3 から %4 の範囲外です"};
inline constexpr LangText kProgramUses = {u"the program uses %1", u"プログラムは %1 を使います"};
inline constexpr LangText kLowBits = {u"%1 %2: only the low %3 bits count, so it reads as %4",
                                      u"%1 の %2 は下位 %3 ビットだけが意味を持つので %4 と読まれます"};
inline constexpr LangText kZeroIsDefault = {u"%1 0 means the default, %2", u"%1 の 0 は既定値 %2 を意味します"};
inline constexpr LangText kLooksOff = {u"%1 %2 counts as on (only an empty cell or 0 is off)",
                                       u"%1 の %2 はオンと読まれます (オフは空のセルか 0 だけです)"};
inline constexpr LangText kNotAColour = {u"%1 %2 is not a colour (write # and six hexadecimal digits, like #ff8000)",
                                         u"%1 の %2 は色ではありません (#ff8000 のように # と 16 進数 6 桁で書いてください)"};
inline constexpr LangText kCountsAsNoColour = {u"it counts as no colour", u"色なしとして扱われます"};
inline constexpr LangText kNoColourNotTaken = {u"%1 %2 asks for no colour, which this value cannot be",
                                                u"%1 の %2 は色なしの指定ですが、この値は色なしにできません"};
inline constexpr LangText kUsesDefaultColour = {u"the program uses the default colour %1",
                                                u"プログラムは既定の色 %1 を使います"};
inline constexpr LangText kBadRegex = {u"%1 %2 is not a valid regular expression; this rule never matches",
                                       u"%1 の %2 は正しい正規表現ではないので、このルールは一致しません"};
inline constexpr LangText kEmptyKeyword = {
    u"%1 is empty, so this rule matches every line and no rule after it is reached",
    u"%1 が空なので、このルールはすべての行に一致し、後のルールには届きません"};
inline constexpr LangText kNotAChoice = {u"%1 %2 is not one of %3", u"%1 の %2 は %3 のどれでもありません"};
inline constexpr LangText kTooLong = {u"%1 is longer than %2 characters; the program keeps the first %2",
                                      u"%1 が %2 文字より長いので、プログラムは最初の %2 文字を使います"};

// Month, day and hour cells of the music rules.
inline constexpr LangText kSpacesAroundSlash = {
    u"%1 %2: the spaces around \"/\" belong to the numbers, so %3 never matches; write them without spaces",
    u"%1 の %2: \"/\" の前後の空白も値の一部なので %3 は一致しません。空白なしで書いてください"};
inline constexpr LangText kStarInList = {u"%1 %2: \"*\" means any only when it stands alone",
                                         u"%1 の %2: \"*\" は単独で書いたときだけ「すべて」を意味します"};
inline constexpr LangText kLeadingZero = {u"%1 %2: %3 never matches; numbers are compared as written without "
                                          u"leading zeros (%4)",
                                          u"%1 の %2: %3 は一致しません。数は先頭の 0 なしで比べられます (%4)"};
inline constexpr LangText kNotANumberNeverMatches = {u"%1 %2: %3 is not a number, so it never matches",
                                                     u"%1 の %2: %3 は数ではないので一致しません"};
inline constexpr LangText kNotAnHour = {u"%1 %2: %3 is neither an hour nor a time of day, so it never matches",
                                        u"%1 の %2: %3 は時刻でも時間帯の名前でもないので一致しません"};
inline constexpr LangText kTimeOfDayCase = {
    u"%1 %2: %3 never matches; time-of-day names are case-sensitive (write %4)",
    u"%1 の %2: %3 は一致しません。時間帯の名前は大文字と小文字を区別します (%4 と書いてください)"};
inline constexpr LangText kHourOutside = {u"%1 %2: hour %3 never comes; hours run from 0 to 23",
                                          u"%1 の %2: %3 時は来ません。時刻は 0 から 23 です"};

// What the log window would do with one line ("vrltables try LogEx.kcsv LINE").
inline constexpr LangText kTryLine = {u"line: %1", u"行: %1"};
inline constexpr LangText kTryCut = {u"the line is longer than %1 characters; the program keeps the first %1",
                                     u"行が %1 文字より長いので、プログラムは最初の %1 文字を使います"};
inline constexpr LangText kTryNotice = {
    u"the line begins with \"!\": it is a notice, written without the \"!\" to both logs; no rule is tested",
    u"行が \"!\" で始まっているのでお知らせです。\"!\" を除いて両方のログに書かれ、ルールは試されません"};
inline constexpr LangText kTryNoRule = {u"no rule takes the line; it appears in the full log only",
                                        u"この行に一致するルールはありません。全ログにだけ表示されます"};
inline constexpr LangText kTryRule = {u"rule %1 (line %2) takes the line: %3", u"ルール %1 (%2 行目) がこの行に一致します: %3"};
inline constexpr LangText kTrySubstring = {u"%1 occurs in the line", u"%1 が行の中にあります"};
inline constexpr LangText kTryExact = {u"the line is exactly %1", u"行がちょうど %1 です"};
inline constexpr LangText kTrySearch = {u"the expression %1 matches part of the line",
                                        u"正規表現 %1 が行の一部に一致します"};
inline constexpr LangText kTryFull = {u"the expression %1 matches the whole line", u"正規表現 %1 が行全体に一致します"};
inline constexpr LangText kTryColour = {u"  colour %1: the line is copied to the extracted log in it",
                                        u"  色 %1: 行はこの色で抽出ログに写されます"};
inline constexpr LangText kTryNoColour = {u"  no colour: the line is not copied to the extracted log",
                                          u"  色なし: 行は抽出ログに写されません"};
inline constexpr LangText kTrySpeaks = {u"  speech: %1", u"  読み上げ: %1"};
inline constexpr LangText kTrySpeechOff = {u"  talk is on, but EnableRemoteTalk is not: nothing is spoken",
                                           u"  talk はオンですが EnableRemoteTalk がオフなので読み上げません"};
inline constexpr LangText kTrySpeechMissing = {
    u"  talk is on, but %1 is missing: nothing is spoken (it would say %2)",
    u"  talk はオンですが %1 がないので読み上げません (読み上げる文は %2)"};
inline constexpr LangText kTrySound = {u"  sound %1 at volume %2, tried in this order until one plays:",
                                       u"  効果音 %1 を音量 %2 で、鳴るまでこの順に試します:"};
inline constexpr LangText kTryCandidates = {u"rules before it that came close:", u"その前のルールで惜しかったもの:"};
inline constexpr LangText kTryCandidate = {u"  rule %1 (line %2): %3", u"  ルール %1 (%2 行目): %3"};
inline constexpr LangText kTryWantsExact = {
    u"exact is on, so the line must be exactly %1; the keyword only occurs in it",
    u"exact がオンなので行がちょうど %1 である必要があります。キーワードは行の中にあるだけです"};
inline constexpr LangText kTryWantsFull = {
    u"exact is on, so the expression %1 must match the whole line; it matches only part of it",
    u"exact がオンなので正規表現 %1 は行全体に一致する必要があります。一致するのは一部だけです"};
inline constexpr LangText kTryOtherCase = {u"%1 occurs in the line only in other capitals; keywords are case-sensitive",
                                           u"%1 は大文字と小文字の違う形でだけ行の中にあります。キーワードは区別します"};
inline constexpr LangText kTryRegexOff = {
    u"regex is off, so %1 is looked for as plain text; as an expression it would match",
    u"regex がオフなので %1 はそのままの文字として探されます。正規表現としてなら一致します"};
inline constexpr LangText kTryBadRegex = {u"%1 is not a valid regular expression, so the rule never matches",
                                          u"%1 は正しい正規表現ではないので、このルールは一致しません"};
inline constexpr LangText kTryTooComplex = {
    u"the expression %1 is too complex to match on this line; it counts as no match",
    u"正規表現 %1 はこの行に対して複雑すぎるので、一致しないものとして扱われます"};

}  // namespace vrl::check_text
