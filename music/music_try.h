#pragma once
// "Why does my rule not play?": what the music panel would do with one request, told in words,
// for the players' table tool. Built on the very code the panel runs. Portable.

#include <string>
#include <vector>

#include "music/music_rules.h"

namespace vrl {

class KcsvFile;

// The request name, the rules that matched in which pass (or through which map condition), the
// candidates with their resolved paths, whether each exists, and the volume each would get.
std::string MusicTryReport(const KcsvFile& rules, const KcsvFile& volumes, const MusicRequest& request,
                           const GameFolders& folders, const FileExists& exists, int language = 0);

}  // namespace vrl
