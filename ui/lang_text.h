#pragma once
// Every text the player sees exists in English and Japanese; the process-wide language index
// (0 English, 1 Japanese) picks one. Portable: texts are UTF-16 literals.

#include <string>

namespace vrl {

struct LangText {
    const char16_t* en;
    const char16_t* ja;

    // The text of the language now in force.
    const char16_t* Get() const;
    const char16_t* Get(int language) const { return language == 1 ? ja : en; }
};

// 0 English, 1 Japanese. Set once while the main frame is created; read everywhere after.
int LanguageIndex();
// Any value other than 1 selects English: the table of every text has two entries only.
void SetLanguageIndex(int language);

// The app name, the same in both languages; also the tray tip and the frame title, by which the
// in-game module finds the frame: changing it breaks the link.
inline constexpr const char16_t* kAppName = u"Vorrel";

}  // namespace vrl
