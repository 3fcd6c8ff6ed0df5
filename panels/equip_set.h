#pragma once
// Equip sets: up to ten named sets of equipment per character, put on or saved by the in-game
// module on a request code that the equip set window writes to a frame slot. The names live in
// the character's "Vrl_EquipSet.ini". Portable: texts, keys and request codes.

#include <string>
#include <string_view>

#include "ui/lang_text.h"

namespace vrl::equip_set {

inline constexpr int kSetCount = 10;
// The names file is read into 64-unit buffers: longer names come back cut to 63 characters.
inline constexpr int kNameReadLimit = 63;
// The edit dialog hands back at most this many characters.
inline constexpr int kEditLimit = 255;

inline constexpr const char16_t* kNamesFile = u"Vrl_EquipSet.ini";
inline constexpr const char16_t* kNamesSection = u"Vorrel";

enum class Mode { kMenu = 0, kRestore = 10, kSave = 20, kEdit = 30 };

// Menu entry `selected` (0 restore, 1 save, 2 edit) leads to this mode; the menu itself otherwise.
Mode ModeForMenuChoice(int selected);

// True when `name` (the module's text in status static 1) names one folder right inside the
// save folder: not empty, not "." or "..", no path separator and no drive colon.
bool IsCharacterFolderName(std::u16string_view name);

// "EqSetName_00" ... "EqSetName_09".
std::u16string NameKey(int index);
// "Set 1" ... "Set10" in English, "装備セット 1" ... in Japanese: the name of a set without a key.
std::u16string DefaultName(int index, int language);
// The list entry of a set: "1:" ... "9:", then "0:" for the tenth, followed by its name.
std::u16string ListEntry(int index, std::u16string_view name);
// What the module is asked to do with set `index`: 11000 + index to put it on (restore),
// 12000 + index to save the current equipment as that set; 0 in the menu and the edit mode.
int RequestCode(Mode mode, int index);

namespace texts {
inline constexpr LangText kWindowTitle{u"Equip Set", u"装備セット"};
inline constexpr LangText kMenuTitle{u"Vrl [Equip set menu]", u"Vrl [装備セットメニュー]"};
inline constexpr LangText kRestore{u"Restore equip set", u"装備セットの呼出"};
inline constexpr LangText kSave{u"Save equip set", u"装備セットの保存"};
inline constexpr LangText kEdit{u"Edit equip set", u"装備セットの編集"};
inline constexpr LangText kKeysHint{u"", u"← [戻る]  Enter, → [決定]  Shift, Esc [閉じる]"};
inline constexpr LangText kNoCharacter{
    u"Error: Cannot detect character name.",
    u"セーブフォルダを検出できませんでした。\r\nMorva が起動していないか、Vrl が未対応の可能性があります。"};
inline constexpr LangText kEditTitle{u"Edit", u"Edit"};
inline constexpr LangText kOk{u"OK", u"OK"};
inline constexpr LangText kCancel{u"Cancel", u"キャンセル"};
}  // namespace texts

// The title of the window in `mode`; the menu entries are the titles of the three set modes.
const LangText& ModeTitle(Mode mode);

}  // namespace vrl::equip_set
