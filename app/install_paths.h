#pragma once
// Where the game lives, derived from where the companion lives: the companion is installed in a
// folder of its own inside the game's folder. Portable: folders are UTF-16 strings with
// backslashes, as Windows writes them.

#include <cstddef>
#include <string>

namespace vrl {

// The game folder and the subfolders the log, music and equip-set features read.
struct GameFolders {
    std::u16string game;
    std::u16string sound;      // game\sound
    std::u16string save;       // game\save
    std::u16string user;       // game\user
    std::u16string userMusic;  // game\user\music
    std::u16string userSound;  // game\user\sound
};

// Joins a folder and a relative name with one backslash between them. An empty folder gives the
// name unchanged; a folder that already ends in a separator gets none added.
std::u16string JoinPath(const std::u16string& folder, const std::u16string& name);

// The folder part of a full file name (everything before the last backslash), or empty when
// there is no backslash.
std::u16string FolderOf(const std::u16string& path);

// Derives the game folders from the program folder: the game folder is the program folder up to,
// not including, its last backslash ("C:\Morva\Vorrel" -> "C:\Morva"; "C:\Vorrel" -> "C:").
// False, with *out untouched, when the program folder holds no backslash.
bool DeriveGameFolders(const std::u16string& programFolder, GameFolders* out);

// A music file the music extender expects under the game's user folder, and the file of the game
// it is copied from. Both are relative to the game folder.
struct MusicFilePair {
    const char16_t* source;
    const char16_t* target;
};
inline constexpr MusicFilePair kMusicFilePairs[] = {
    {u"sound\\orc04.mid", u"user\\music\\orc04_March3.mid"},
    {u"sound\\PSML514.MID", u"user\\music\\PSML514_Unrest.MID"},
    {u"sound\\morning_breeze.mid", u"user\\music\\morning_breeze_Town6.mid"},
};

// The HSP runtime's main-window class name with its terminating zero: every HSP executable carries
// these 8 bytes as text, so their presence tells an HSP game from any other program.
inline constexpr unsigned char kHspMarker[8] = {'h', 's', 'p', 'w', 'n', 'd', '0', 0};
// How much of the game executable is searched for the marker.
inline constexpr std::size_t kHspScanLimit = 16u * 1024u * 1024u;
inline constexpr std::size_t kNoHspMarker = static_cast<std::size_t>(-1);

// Offset of the first marker whose 8 bytes lie within data[0, size), or kNoHspMarker.
std::size_t FindHspMarker(const unsigned char* data, std::size_t size);

}  // namespace vrl
