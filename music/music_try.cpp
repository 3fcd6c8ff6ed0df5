#include "music/music_try.h"

#include <cstdio>
#include <string_view>

#ifdef _WIN32
#include <direct.h>
#else
#include <unistd.h>
#endif

#include "music/volume_table.h"
#include "settings/kcsv.h"
#include "settings/table_schema.h"

namespace vrl {
namespace {

std::string Utf8(std::u16string_view text) { return Utf16ToUtf8(text); }

// A rule's cell as the player wrote it (the pattern without its slashes).
std::string Cell(const std::u16string& pattern) { return Utf8(pattern.substr(1, pattern.size() - 2)); }

std::string RuleText(const MusicRule& rule) {
    return "orgfile \"" + Cell(rule.orgfile) + "\", month \"" + Cell(rule.month) + "\", day \"" + Cell(rule.day) +
           "\", hour \"" + Cell(rule.hour) + "\", playlist \"" + Utf8(rule.playlist) + "\"";
}

std::u16string Slashed(std::u16string text) {
    for (char16_t& c : text) {
        if (c == u'/') c = u'\\';
    }
    return text;
}

FILE* Open(const std::u16string& path) {
#ifdef _WIN32
    return _wfopen(reinterpret_cast<const wchar_t*>(path.c_str()), L"rb");
#else
    std::u16string native = path;
    for (char16_t& c : native) {
        if (c == u'\\') c = u'/';
    }
    return std::fopen(Utf16ToUtf8(native).c_str(), "rb");
#endif
}

bool ReadWhole(const std::u16string& path, std::string* bytes) {
    FILE* file = Open(path);
    if (!file) return false;
    char buffer[65536];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) bytes->append(buffer, got);
    std::fclose(file);
    return true;
}

std::u16string CurrentFolder() {
#ifdef _WIN32
    wchar_t folder[1024] = {};
    if (!_wgetcwd(folder, 1024)) return u".";
    return reinterpret_cast<const char16_t*>(folder);
#else
    char folder[4096] = {};
    if (!getcwd(folder, sizeof folder)) return u".";
    return Slashed(Utf8ToUtf16(folder));
#endif
}

bool IsAbsolute(const std::u16string& path) {
    return (path.size() >= 2 && path[1] == u':') || (!path.empty() && path[0] == u'\\');
}

bool ParseInt(const std::u16string& text, int* value) {
    if (text.empty()) return false;
    std::size_t i = text[0] == u'-' ? 1 : 0;
    if (i == text.size()) return false;
    for (std::size_t k = i; k < text.size(); ++k) {
        if (text[k] < u'0' || text[k] > u'9') return false;
    }
    *value = ReadInt(text);
    return true;
}

}  // namespace

std::string MusicTryReport(const KcsvFile& rulesTable, const KcsvFile& volumeTable, const MusicRequest& request,
                           const GameFolders& folders, const FileExists& exists) {
    const std::vector<MusicRule> rules = MusicRulesOf(rulesTable);
    VolumeTable volumes;
    volumes.Load(volumeTable);
    const CandidateSearch search = FindCandidates(rules, request);

    std::string report = "request name: " + Utf8(search.requestName) + "  (map object " +
                         std::to_string(request.mapObjectId) + ", " + Utf8(MusicDateTimeText(request, 0)) + ")\n";
    if (!search.variantName.empty()) {
        report += "no rule for " + Utf8(search.requestName) + " itself: the rules of " + Utf8(search.variantName) +
                  " were tried instead\n";
    }
    for (const RuleMatch& match : search.matched) {
        report += std::string(match.pass == 1 ? "first pass (name and map object)" : "second pass (name only)") +
                  ": rule " + std::to_string(match.rule + 1) + " matched: " + RuleText(rules[match.rule]) + "\n";
    }
    if (search.keepPlaying) {
        report += "no rule matched this map condition: the music now playing goes on\n";
        return report;
    }
    if (search.ownFile) report += "no rule matched: the game's own file is the only candidate\n";
    report += "candidates (" + std::to_string(search.entries.size()) + ", one is drawn at random):\n";
    for (const std::u16string& entry : search.entries) {
        const ResolvedMusicPath resolved = ResolveMusicPath(entry, folders, exists);
        report += "  " + Utf8(entry) + " -> " + Utf8(resolved.path) +
                  (resolved.exists ? "" : "  NOT FOUND (the panel shows \"File not found.\")") + "  volume " +
                  std::to_string(volumes.VolumeOf(resolved.path)) + "\n";
    }
    return report;
}

int RunMusicTry(const std::vector<std::u16string>& args, std::string* out, std::string* err) {
    MusicRequest request;
    if (args.size() != 7 || !ParseInt(args[3], &request.month) || !ParseInt(args[4], &request.day) ||
        !ParseInt(args[5], &request.hour) || !ParseInt(args[6], &request.mapObjectId)) {
        *err = "usage: vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ\n"
               "shows what the music panel does with that request: the rules that match, the candidates,\n"
               "where each is looked for and the volume it gets from Volume.kcsv beside the rules.\n";
        return 2;
    }
    std::u16string rulesPath = Slashed(args[1]);
    if (!IsAbsolute(rulesPath)) rulesPath = JoinPath(CurrentFolder(), rulesPath);
    const std::u16string program = FolderOf(rulesPath);
    request.path = Slashed(args[2]);

    std::string bytes;
    KcsvFile rules;
    if (!ReadWhole(rulesPath, &bytes) || bytes.empty() || !rules.ParseUtf8(bytes)) {
        *err = Utf8(args[1]) + ": cannot read the rule table (the panel then has no rules)\n";
        return 1;
    }
    KcsvFile volumes;
    bytes.clear();
    if (ReadWhole(JoinPath(program, std::u16string(tables::volume::kFile)), &bytes) && !bytes.empty()) volumes.ParseUtf8(bytes);

    GameFolders folders;
    DeriveGameFolders(program, &folders);
    // The panel's current folder is the program folder: relative entries are found there.
    const FileExists exists = [&program](const std::u16string& path) {
        FILE* file = Open(IsAbsolute(path) ? path : JoinPath(program, path));
        if (file) std::fclose(file);
        return file != nullptr;
    };
    *out = MusicTryReport(rules, volumes, request, folders, exists);
    return 0;
}

}  // namespace vrl
