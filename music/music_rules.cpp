#include "music/music_rules.h"

#include <algorithm>

#include "settings/decimal_text.h"
#include "settings/kcsv.h"
#include "settings/table_schema.h"

namespace vrl {
namespace {

constexpr std::size_t kEntryChars = 259;

namespace bgm = tables::bgmex;
constexpr const LangText (&kPeriodNames)[6] = bgm::kTimeOfDay;
constexpr LangText kHourMark{u"h", u"時"};

// The map conditions that fall back on a more general one when they have no rules of their own.
struct Variant {
    const char16_t* name;
    const char16_t* general;
};
constexpr Variant kVariants[] = {
    {u"mcVrlImoutoDan", u"mcVrlThieves"},   {u"mcVrlBabyDan", u"mcVrlThieves"},
    {u"mcVrlImoutoTrader", u"mcVrlTrader"}, {u"mcVrlBabyTrader", u"mcVrlTrader"},
    {u"mcVrlImoutoRaid", u"mcVrlRaid"},     {u"mcVrlBabyRaid", u"mcVrlRaid"},
};
constexpr std::u16string_view kMapConditionPrefix = u"mcVrl";

std::u16string Wrapped(std::u16string_view cell) {
    std::u16string s;
    s.reserve(cell.size() + 2);
    s += u'/';
    s += cell;
    s += u'/';
    return s;
}

std::u16string NumberKey(int n) { return Wrapped(DecimalText(n)); }

bool IsWildcard(const std::u16string& pattern) { return pattern == u"/*/" || pattern == u"//"; }

bool ContainsIgnoringCase(const std::u16string& text, const std::u16string& key) {
    return AsciiLower(text).find(AsciiLower(key)) != std::u16string::npos;
}

bool HourPieceNamesPeriod(const std::u16string& pattern, int hour) {
    const int wanted = hour / 4 + 1;
    std::size_t start = 0;
    while (start <= pattern.size()) {
        std::size_t end = pattern.find(u'/', start);
        if (end == std::u16string::npos) end = pattern.size();
        if (end > start && TimeOfDayPeriodOf(std::u16string_view(pattern).substr(start, end - start)) == wanted) {
            return true;
        }
        start = end + 1;
    }
    return false;
}

struct Keys {
    std::u16string orgfile;  // "/name:id/" in the first pass, "/name/" in the second
    std::u16string month;
    std::u16string day;
    std::u16string hour;
};

bool Matches(const MusicRule& rule, const Keys& keys, int hour) {
    if (!IsWildcard(rule.orgfile) && !ContainsIgnoringCase(rule.orgfile, keys.orgfile)) return false;
    if (!IsWildcard(rule.month) && rule.month.find(keys.month) == std::u16string::npos) return false;
    if (!IsWildcard(rule.day) && rule.day.find(keys.day) == std::u16string::npos) return false;
    if (IsWildcard(rule.hour) || rule.hour.find(keys.hour) != std::u16string::npos) return true;
    return HourPieceNamesPeriod(rule.hour, hour);
}

// Both passes for one name; true when a rule matched.
bool RunPasses(const std::vector<MusicRule>& rules, const std::u16string& name, const MusicRequest& request,
               bool variant, CandidateSearch* search) {
    Keys keys{Wrapped(name + u':' + DecimalText(request.mapObjectId)), NumberKey(request.month),
              NumberKey(request.day), NumberKey(request.hour)};
    for (int pass = 1; pass <= 2; ++pass) {
        if (pass == 2) keys.orgfile = Wrapped(name);
        for (std::size_t i = 0; i < rules.size(); ++i) {
            if (!Matches(rules[i], keys, request.hour)) continue;
            search->matched.push_back({pass, i, variant});
            for (std::u16string& entry : SplitPlaylist(rules[i].playlist)) search->entries.push_back(std::move(entry));
        }
        // A rule with an empty playlist matches and adds nothing: the next pass still runs.
        if (!search->entries.empty()) {
            search->pass = pass;
            return true;
        }
    }
    return false;
}

const char16_t* GeneralVariantOf(const std::u16string& name) {
    const std::u16string lower = AsciiLower(name);
    for (const Variant& v : kVariants) {
        if (lower == AsciiLower(v.name)) return v.general;
    }
    return nullptr;
}

}  // namespace

std::vector<MusicRule> MusicRulesOf(const KcsvFile& table) {
    const int orgfile = table.ColumnIndex(bgm::kOrgFile);
    const int month = table.ColumnIndex(bgm::kMonth);
    const int day = table.ColumnIndex(bgm::kDay);
    const int hour = table.ColumnIndex(bgm::kHour);
    const int playlist = table.ColumnIndex(bgm::kPlaylist);
    auto cell = [&table](unsigned row, int column) {
        return column < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(column), u"");
    };
    std::vector<MusicRule> rules;
    rules.reserve(table.RowCount());
    for (unsigned row = 0; row < table.RowCount(); ++row) {
        rules.push_back({Wrapped(cell(row, orgfile)), Wrapped(cell(row, month)), Wrapped(cell(row, day)),
                         Wrapped(cell(row, hour)), cell(row, playlist)});
    }
    return rules;
}

std::u16string SoundFontOf(const KcsvFile& table) { return table.OptionValue(bgm::kSoundFont); }

int MidiDeviceCodeOf(const KcsvFile& table) {
    if (table.OptionIndex(bgm::kDevice) < 0) return 1;
    switch (ReadInt(table.OptionValue(bgm::kDevice))) {
    case 0: return 1;
    case 1: return 2;
    case 2: return 3;
    default: return 0;
    }
}

std::u16string MusicRequestName(const std::u16string& path) {
    const std::size_t cut = path.find_last_of(u"\\/:");
    const std::size_t nameAt = cut == std::u16string::npos ? 0 : cut + 1;
    const std::u16string name = path.substr(nameAt);
    if (path.substr(0, nameAt).find(u"user\\cmap") != std::u16string::npos) return u"cmap\\" + name;
    return name;
}

const LangText& TimeOfDayName(int hour) {
    const int clamped = hour < 0 ? 0 : hour > 23 ? 23 : hour;
    return kPeriodNames[clamped / 4];
}

int TimeOfDayPeriodOf(std::u16string_view name) {
    for (int period = 0; period < 6; ++period) {
        if (name == kPeriodNames[period].en || name == kPeriodNames[period].ja) return period + 1;
    }
    return 0;
}

std::u16string MusicDateTimeText(const MusicRequest& request, int language) {
    return DecimalText(request.month) + u'/' + DecimalText(request.day) + u' ' + DecimalText(request.hour) +
           kHourMark.Get(language) + u" [" + TimeOfDayName(request.hour).Get(language) + u']';
}

CandidateSearch FindCandidates(const std::vector<MusicRule>& rules, const MusicRequest& request) {
    CandidateSearch search;
    search.requestName = MusicRequestName(request.path);
    if (RunPasses(rules, search.requestName, request, false, &search)) return search;
    if (const char16_t* general = GeneralVariantOf(search.requestName)) {
        search.variantName = general;
        if (RunPasses(rules, search.variantName, request, true, &search)) return search;
        search.keepPlaying = true;  // the general name is a map condition too
        return search;
    }
    if (search.requestName.compare(0, kMapConditionPrefix.size(), kMapConditionPrefix) == 0) {
        search.keepPlaying = true;
        return search;
    }
    search.ownFile = true;
    search.entries = SplitPlaylist(search.requestName);
    return search;
}

std::vector<std::u16string> SplitPlaylist(std::u16string_view playlist) {
    std::vector<std::u16string> entries;
    std::size_t start = 0;
    while (start < playlist.size()) {
        std::size_t end = playlist.find(u'/', start);
        if (end == std::u16string_view::npos) end = playlist.size();
        if (end > start) entries.emplace_back(playlist.substr(start, std::min(end - start, kEntryChars)));
        start = end + 1;
    }
    return entries;
}

ResolvedMusicPath ResolveMusicPath(const std::u16string& entry, const GameFolders& folders, const FileExists& exists) {
    if (entry.compare(0, 5, u"cmap\\") == 0) return {JoinPath(folders.user, entry), true};
    if (exists(entry)) return {entry, true};
    for (const std::u16string* folder : {&folders.userMusic, &folders.userSound}) {
        std::u16string path = JoinPath(*folder, entry);
        if (exists(path)) return {std::move(path), true};
    }
    std::u16string path = JoinPath(folders.sound, entry);
    const bool found = exists(path);
    return {std::move(path), found};
}

std::uint32_t DrawCandidateIndex(std::mt19937& generator, std::uint32_t n) {
    std::uint64_t product = static_cast<std::uint64_t>(static_cast<std::uint32_t>(generator())) * n;
    auto low = static_cast<std::uint32_t>(product);
    if (low < n) {
        const std::uint32_t threshold = (0u - n) % n;
        while (low < threshold) {
            product = static_cast<std::uint64_t>(static_cast<std::uint32_t>(generator())) * n;
            low = static_cast<std::uint32_t>(product);
        }
    }
    return static_cast<std::uint32_t>(product >> 32);
}

bool IsMidiFileName(std::u16string_view path) {
    return path.size() >= 4 && AsciiLower(path.substr(path.size() - 4)) == u".mid";
}

}  // namespace vrl
