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
#include "settings/table_check.h"
#include "settings/table_schema.h"
#include "ui/lang_text.h"

namespace vrl {
namespace {

std::string Utf8(std::u16string_view text) { return Utf16ToUtf8(text); }

// The report's texts; %1, %2... are filled in order.
namespace text {
constexpr LangText kRequest = {u"request name: %1  (map object %2, %3)\n", u"要求名: %1  (マップオブジェクト %2、%3)\n"};
constexpr LangText kVariant = {u"no rule for %1 itself: the rules of %2 were tried instead\n",
                               u"%1 そのものの規則がないため、%2 の規則を試しました\n"};
constexpr LangText kFirstPass = {u"first pass (name and map object): rule %1 matched: %2\n",
                                 u"1 回目 (名前とマップオブジェクト): 規則 %1 が一致: %2\n"};
constexpr LangText kSecondPass = {u"second pass (name only): rule %1 matched: %2\n",
                                  u"2 回目 (名前のみ): 規則 %1 が一致: %2\n"};
constexpr LangText kKeepPlaying = {u"no rule matched this map condition: the music now playing goes on\n",
                                   u"このマップ状態に一致する規則はありません: 今の音楽がそのまま続きます\n"};
constexpr LangText kOwnFile = {u"no rule matched: the game's own file is the only candidate\n",
                               u"一致する規則はありません: ゲーム本来のファイルだけが候補です\n"};
constexpr LangText kCandidates = {u"candidates (%1, one is drawn at random):\n", u"演奏候補 (%1 個、1 つを乱数で選びます):\n"};
constexpr LangText kCandidate = {u"  %1 -> %2%3  volume %4\n", u"  %1 -> %2%3  ボリューム %4\n"};
constexpr LangText kNotFound = {u"  NOT FOUND (the panel shows \"File not found.\")",
                                u"  見つかりません (パネルには \"File not found.\" と出ます)"};
constexpr LangText kUsage = {
    u"usage: vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ\n"
    u"shows what the music panel does with that request: the rules that match, the candidates,\n"
    u"where each is looked for and the volume it gets from Volume.kcsv beside the rules.\n",
    u"使い方: vrltables try BGMEx.kcsv ファイル 月 日 時 マップ\n"
    u"その要求に音楽パネルが何をするかを表示します: 一致する規則、演奏候補、\n"
    u"それぞれを探す場所と、規則の隣の Volume.kcsv から決まるボリューム。\n"};
constexpr LangText kCannotRead = {u"%1: cannot read the rule table (the panel then has no rules)\n",
                                  u"%1: 規則の表を読めません (このときパネルには規則がありません)\n"};
}  // namespace text

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
                           const GameFolders& folders, const FileExists& exists, int language) {
    const std::vector<MusicRule> rules = MusicRulesOf(rulesTable);
    VolumeTable volumes;
    volumes.Load(volumeTable);
    const CandidateSearch search = FindCandidates(rules, request);
    auto say = [language](const LangText& message, std::initializer_list<std::string> args) {
        return SayText(language, message, args);
    };

    std::string report = say(text::kRequest, {Utf8(search.requestName), std::to_string(request.mapObjectId),
                                              Utf8(MusicDateTimeText(request, language))});
    if (!search.variantName.empty()) report += say(text::kVariant, {Utf8(search.requestName), Utf8(search.variantName)});
    for (const RuleMatch& match : search.matched) {
        report += say(match.pass == 1 ? text::kFirstPass : text::kSecondPass,
                      {std::to_string(match.rule + 1), RuleText(rules[match.rule])});
    }
    if (search.keepPlaying) return report + say(text::kKeepPlaying, {});
    if (search.ownFile) report += say(text::kOwnFile, {});
    report += say(text::kCandidates, {std::to_string(search.entries.size())});
    for (const std::u16string& entry : search.entries) {
        const ResolvedMusicPath resolved = ResolveMusicPath(entry, folders, exists);
        report += say(text::kCandidate, {Utf8(entry), Utf8(resolved.path), resolved.exists ? "" : say(text::kNotFound, {}),
                                         std::to_string(volumes.VolumeOf(resolved.path))});
    }
    return report;
}

int RunMusicTry(const std::vector<std::u16string>& args, int language, std::string* out, std::string* err) {
    MusicRequest request;
    if (args.size() != 7 || !ParseInt(args[3], &request.month) || !ParseInt(args[4], &request.day) ||
        !ParseInt(args[5], &request.hour) || !ParseInt(args[6], &request.mapObjectId)) {
        *err = SayText(language, text::kUsage, {});
        return 2;
    }
    std::u16string rulesPath = Slashed(args[1]);
    if (!IsAbsolute(rulesPath)) rulesPath = JoinPath(CurrentFolder(), rulesPath);
    const std::u16string program = FolderOf(rulesPath);
    request.path = Slashed(args[2]);

    std::string bytes;
    KcsvFile rules;
    if (!ReadWhole(rulesPath, &bytes) || bytes.empty() || !rules.ParseUtf8(bytes)) {
        *err = SayText(language, text::kCannotRead, {Utf8(args[1])});
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
    *out = MusicTryReport(rules, volumes, request, folders, exists, language);
    return 0;
}

}  // namespace vrl
