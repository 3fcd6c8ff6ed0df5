#include "ui/lang_text.h"

namespace vrl {
namespace {
int g_language = 0;
}

const char16_t* LangText::Get() const { return Get(g_language); }

int LanguageIndex() { return g_language; }

void SetLanguageIndex(int language) { g_language = language == 1 ? 1 : 0; }

}  // namespace vrl
