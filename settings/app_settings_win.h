#pragma once
// Reads AppSettings through the Windows profile functions (the usual INI rules: case-insensitive
// section and key names; a missing file, section or key gives the default).

#include "settings/app_settings.h"

namespace vrl {

// Loads `settings` from settings.filePath, section settings.section, with iLanguage preset to -1.
void LoadAppSettings(AppSettings& settings);

}  // namespace vrl
