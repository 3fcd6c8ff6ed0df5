#pragma once
// The music rules of BGMEx.kcsv and how a music request of the game becomes a list of candidate
// files, one of which is drawn at random. Portable: the panel and the players' table tool call
// the very same code, so what the tool says is what the panel does.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "app/install_paths.h"
#include "ui/lang_text.h"

#include "music/music_request.h"

namespace vrl {

class KcsvFile;

// One data row of BGMEx.kcsv. The four patterns are the cells wrapped in slashes ("/%s/"), so a
// key such as "/1/" never matches inside "/12/".
struct MusicRule {
    std::u16string orgfile;
    std::u16string month;
    std::u16string day;
    std::u16string hour;
    std::u16string playlist;  // as written
};

std::vector<MusicRule> MusicRulesOf(const KcsvFile& table);
// Option "SoundFont", or empty.
std::u16string SoundFontOf(const KcsvFile& table);
// The MIDI back end that option "device" chooses: 1 BASS, 2 MCI, 3 the SMF library, 0 none.
int MidiDeviceCodeOf(const KcsvFile& table);

// "cmap\" + file name when the request comes from the user's custom maps (its folder holds
// "user\cmap"), else the file name with its extension.
std::u16string MusicRequestName(const std::u16string& path);

// Six four-hour periods; the name of `hour`'s period, the hour clamped to 0..23.
const LangText& TimeOfDayName(int hour);
// 1 + the period of an exact (case-sensitive) English or Japanese period name; 0 for any other text.
int TimeOfDayPeriodOf(std::u16string_view name);
// "%d/%d %d%s [%s]": month/day hour, the hour mark and the period name in `language`.
std::u16string MusicDateTimeText(const MusicRequest& request, int language);

struct RuleMatch {
    int pass;          // 1: by name and map object, 2: by name only
    std::size_t rule;  // index in the rule list
    bool variant;      // matched the general map condition, not the request's own name
};

// What the rules make of one request.
struct CandidateSearch {
    std::u16string requestName;
    std::u16string variantName;           // the map-condition name used instead, when one was
    int pass = 0;                         // 1 (name and map object), 2 (name only), 0 (none matched)
    std::vector<RuleMatch> matched;       // in the order the passes met them
    std::vector<std::u16string> entries;  // the candidates as written in the playlists
    bool ownFile = false;                 // no rule matched: the game's own file is the candidate
    bool keepPlaying = false;             // a map condition without rules: nothing changes
};

CandidateSearch FindCandidates(const std::vector<MusicRule>& rules, const MusicRequest& request);

// A playlist cut at each "/": empty pieces are dropped, each kept piece has at most 259 characters.
std::vector<std::u16string> SplitPlaylist(std::u16string_view playlist);

struct ResolvedMusicPath {
    std::u16string path;
    bool exists = false;
};
using FileExists = std::function<bool(const std::u16string&)>;

// Where a candidate lives: "cmap\..." under the game's user folder (taken as existing), else the
// entry itself, the user music, user sound and game sound folders, in that order; when none has
// it, the game sound folder's path, marked missing.
ResolvedMusicPath ResolveMusicPath(const std::u16string& entry, const GameFolders& folders,
                                   const FileExists& exists);

// An index in 0..n-1 from the generator, by multiply-and-reject (no bias). n must be at least 1.
std::uint32_t DrawCandidateIndex(std::mt19937& generator, std::uint32_t n);

// True for a path whose last four characters are ".mid", the case of letters ignored.
bool IsMidiFileName(std::u16string_view path);

}  // namespace vrl
