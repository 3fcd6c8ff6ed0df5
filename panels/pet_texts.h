#pragma once
// Texts of the pet information panel and its colour dialog, English and Japanese side by side.

#include "ui/lang_text.h"

namespace vrl::pet_texts {

inline constexpr LangText kPanelName{u"Pet Information", u"ペット情報"};
inline constexpr LangText kFilterLabel{u"Filter:", u"フィルター："};
inline constexpr LangText kColourButton{u"Color", u"色設定"};
inline constexpr LangText kAutoAdjust{u"Auto adjust column width", u"カラム幅 自動調整"};
inline constexpr LangText kFilters[] = {{u"Same map", u"同マップ内"}, {u"All", u"全ペット"}};

// Status codes 0 to 8; code 9 names the area the pet stays at.
inline constexpr LangText kStatus[] = {
    {u"Empty", u"空き"},     {u"Live", u"生存"},       {u"Dead", u"死亡"},
    {u"Outside", u"マップ外"}, {u"Dead", u"死亡"},       {u"----", u"----"},
    {u"Dead", u"死亡"},      {u"Standby", u"待機"},    {u"Standby", u"待機"},
};
// A status-9 pet at an area we have no name for.
inline constexpr LangText kUnknownArea{u"Standby", u"待機X"};
struct AreaName {
    int kind;
    LangText name;
};
inline constexpr AreaName kAreas[] = {
    {31, {u"Ranch", u"牧場"}},  {101, {u"Museum", u"博物館"}}, {102, {u"Shop", u"店"}},
    {103, {u"Crop", u"畑"}},    {104, {u"Storage", u"倉庫"}},
};

// The colour dialog.
inline constexpr LangText kColourDialogTitle{u"Config Color of Pet Information", u"色の設定 - ペット情報"};
inline constexpr LangText kShowHeader{u"Show", u"表示する"};
inline constexpr LangText kWidthHeader{u"Width", u"幅"};
inline constexpr LangText kBarColourHeader{u"Bar color", u"バーの色"};
inline constexpr LangText kBackgroundHeader{u"Background color", u"背景色"};
inline constexpr LangText kFrameHeader{u"Frame color", u"枠の色"};
inline constexpr LangText kBarNames[] = {
    {u"XP bar", u"EXPバー"}, {u"HP bar", u"HPバー"}, {u"MP bar", u"MPバー"}, {u"ST bar", u"STバー"}};
inline constexpr LangText kSelect{u"Select...", u"選択..."};
inline constexpr LangText kTextColour{u"Text Color", u"文字色"};
inline constexpr LangText kBkColour{u"Bk Color", u"背景色"};
inline constexpr LangText kOk{u"OK", u"OK"};
inline constexpr LangText kCancel{u"Cancel", u"キャンセル"};

}  // namespace vrl::pet_texts
