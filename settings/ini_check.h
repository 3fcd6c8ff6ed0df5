#pragma once
// The players' checker for Vrl.ini: what the companion would read differently from what the player
// meant (a section or key it does not know, a value it reads otherwise or cannot use), with the
// physical line. The reading itself is the settings record's own (AppSettings over the file as
// the profile functions see it), so the checker and the companion agree on every key.

#include "settings/app_settings.h"
#include "settings/ini_profile.h"
#include "settings/table_check.h"

#include <string_view>
#include <vector>

namespace vrl {

struct IniCheck {
    IniText ini;
    AppSettings settings;  // as the companion holds them after loading
    std::vector<TableProblem> problems;
};

IniCheck CheckIniText(std::string_view bytes, AnsiDecoder ansi, int language);

}  // namespace vrl
