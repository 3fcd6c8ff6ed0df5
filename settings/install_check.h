#pragma once
// The players' checker for the whole installation: the folders the launcher derives from the
// companion's place, the programs and libraries the companion starts or loads, and the game that
// Vrl.ini names, each judged by the rule the companion itself follows. The file system is behind
// a small interface, so the checks run on a fake as well as on the player's disk.

#include "app/install_paths.h"
#include "settings/ini_check.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vrl {

class InstallFiles {
public:
    virtual ~InstallFiles() = default;
    virtual bool FileExists(const std::u16string& path) = 0;
    virtual bool FolderExists(const std::u16string& path) = 0;
    // Whether the launcher takes the file for the game (the HSP runtime's marker in its head).
    virtual bool CarriesHspMarker(const std::u16string& path) = 0;
    // The processor type in a program's header (0 when it has none), and whether the program asks
    // Windows for administrator rights (its manifest, or "Run this program as an administrator").
    virtual std::uint16_t MachineOf(const std::u16string& path) = 0;
    virtual bool AsksForAdministrator(const std::u16string& path) = 0;
    virtual bool ReadFileBytes(const std::u16string& path, std::string& bytes) = 0;
};

struct InstallFinding {
    std::u16string subject;  // the file or folder concerned
    std::string message;     // UTF-8
};

// The game that wstrMorva names, as the launcher tries it; findings go to check->problems at the
// key's line. `gameFolder` is the game folder derived from `programFolder`.
void CheckGamePath(IniCheck* check, const std::u16string& programFolder, const std::u16string& gameFolder,
                   InstallFiles& files, int language);

// The files and folders around a companion in `programFolder` (full path, backslashes), with the
// settings it would load (null when there is no Vrl.ini yet: every feature is off).
std::vector<InstallFinding> CheckInstallFolder(const std::u16string& programFolder, const AppSettings* settings,
                                               InstallFiles& files, int language);

}  // namespace vrl
