#include "music/music_try.h"

#include <string_view>

#include "music/volume_table.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"
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
}  // namespace text

// A rule's cell as the player wrote it (the pattern without its slashes).
std::string Cell(const std::u16string& pattern) { return Utf8(pattern.substr(1, pattern.size() - 2)); }

std::string RuleText(const MusicRule& rule) {
    return "orgfile \"" + Cell(rule.orgfile) + "\", month \"" + Cell(rule.month) + "\", day \"" + Cell(rule.day) +
           "\", hour \"" + Cell(rule.hour) + "\", playlist \"" + Utf8(rule.playlist) + "\"";
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

}  // namespace vrl
