#include "log/log_rules.h"

#include <cstdint>

namespace vrl {

namespace {

std::u16string CellOf(const KcsvFile& table, unsigned row, int column) {
    return column < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(column), u"");
}

bool HasOption(const KcsvFile& table, std::u16string_view name) { return table.OptionIndex(name) >= 0; }

LogRule RuleFromRow(const KcsvFile& table, unsigned row, const int (&columns)[7]) {
    LogRule rule;
    rule.keyword = CellOf(table, row, columns[0]);
    rule.exact = ReadSwitch(CellOf(table, row, columns[1]));
    rule.regex = ReadSwitch(CellOf(table, row, columns[2]));
    rule.talk = ReadSwitch(CellOf(table, row, columns[3]));
    rule.sound = CellOf(table, row, columns[4]);
    rule.volume = columns[5] < 0 ? 100 : ClampLogVolume(ReadInt(CellOf(table, row, columns[5])));
    rule.color = ParseColour(CellOf(table, row, columns[6]), kNoColour);
    return rule;
}

// LOGFONT holds 31 units and a NUL; a surrogate pair is not split.
std::u16string FontFace(std::u16string_view value) {
    if (value.empty()) return u"Meiryo UI";
    std::size_t length = value.size() < kLogFontFaceLimit ? value.size() : kLogFontFaceLimit;
    if (length < value.size() && value[length - 1] >= 0xD800 && value[length - 1] <= 0xDBFF) --length;
    return std::u16string(value.substr(0, length));
}

LogFontDescription FontFrom(const KcsvFile& table) {
    LogFontDescription font;
    font.face = FontFace(table.OptionValue(u"FontFace"));
    const int size = ReadInt(table.OptionValue(u"FontSize"));
    font.pointSize = size == 0 ? 9 : size;
    font.weight = ReadInt(table.OptionValue(u"FontBold")) != 0 ? 700 : 400;
    font.italic = (ReadInt(table.OptionValue(u"FontItalic")) & 0xFF) != 0;
    return font;
}

}  // namespace

int LogFontHeight(int pointSize, int dpi) {
    const std::int64_t product = static_cast<std::int64_t>(pointSize) * dpi;
    const std::int64_t rounded = (product >= 0 ? product + 36 : product - 36) / 72;
    return -static_cast<int>(rounded);
}

int ClampLogVolume(int value) {
    const auto u = static_cast<unsigned>(value);
    if (u < 50u) return 50;
    if (u > 100u) return 100;
    return static_cast<int>(u);
}

float LogSoundVolume(int masterVolume, int ruleVolume) {
    return static_cast<float>(masterVolume * ruleVolume) / 10000.0f;
}

Colour NoticeColourOn(Colour background) {
    const unsigned brightness = RedOf(background) * 299 + GreenOf(background) * 587 + BlueOf(background) * 114;
    return brightness < 127500 ? Colour{0xFFFFFFu} : Colour{0};
}

std::u16string SpeechText(std::u16string_view text) {
    static const std::optional<RuleRegex> numbered = RuleRegex::Compile(u"^\\[\\d+\\] (.*)");
    std::vector<std::u16string> groups;
    if (numbered && numbered->FullMatch(text, &groups) == RuleRegex::Result::Match && groups.size() > 1 &&
        !groups[1].empty())
        return groups[1];
    return std::u16string(text);
}

std::u16string LogTextFrom(std::u16string_view converted) {
    const std::size_t nul = converted.find(u'\0');
    if (nul != std::u16string_view::npos) converted = converted.substr(0, nul);
    return std::u16string(converted.substr(0, kLogTextLimit));
}

std::u16string LogLineOf(std::u16string_view text) {
    std::u16string line(text);
    line += u"\r\n";
    return line;
}

bool IsNotice(std::u16string_view text) { return !text.empty() && text.front() == u'!'; }

std::vector<std::u16string> SoundCandidates(std::u16string_view gameFolder, std::u16string_view sound) {
    std::vector<std::u16string> paths;
    for (const char16_t* folder : {u"user\\music", u"user\\sound", u"sound"}) {
        std::u16string path(gameFolder);
        if (!path.empty() && path.back() != u'\\') path += u'\\';
        path += folder;
        path += u'\\';
        path += sound;
        paths.push_back(std::move(path));
    }
    return paths;
}

void LogRuleSet::Load(const KcsvFile& table) {
    static const char16_t* const kColumns[7] = {u"keyword", u"exact", u"regex", u"talk",
                                                u"sound",   u"volume", u"color"};
    int columns[7];
    for (int i = 0; i < 7; ++i) columns[i] = table.ColumnIndex(kColumns[i]);

    rules_.clear();
    compiled_.clear();
    for (unsigned row = 0; row < table.RowCount(); ++row) {
        rules_.push_back(RuleFromRow(table, row, columns));
        const LogRule& rule = rules_.back();
        compiled_.push_back(rule.regex ? RuleRegex::Compile(rule.keyword) : std::nullopt);
    }

    masterVolume_ = HasOption(table, u"MasterVolume") ? ClampLogVolume(ReadInt(table.OptionValue(u"MasterVolume"))) : 100;
    remoteTalk_ = ReadInt(table.OptionValue(u"EnableRemoteTalk")) != 0;
    const std::u16string bkcolor = table.OptionValue(u"bkcolor");
    background_ = ParseColour(bkcolor, kNoColour);
    noticeColour_ = NoticeColourOn(ParseColour(bkcolor, 0));
    font_ = FontFrom(table);
}

bool LogRuleSet::Matches(std::size_t index, std::u16string_view text) const {
    std::size_t stepsLeft = RuleRegex::kStepBudget;
    return Matches(index, text, stepsLeft);
}

bool LogRuleSet::Matches(std::size_t index, std::u16string_view text, std::size_t& stepsLeft) const {
    const LogRule& rule = rules_[index];
    if (!rule.regex) return rule.exact ? text == rule.keyword : text.find(rule.keyword) != std::u16string_view::npos;
    const std::optional<RuleRegex>& re = compiled_[index];
    if (!re || stepsLeft == 0) return false;
    const std::size_t budget = stepsLeft < RuleRegex::kStepBudget ? stepsLeft : RuleRegex::kStepBudget;
    std::size_t spent = 0;
    const RuleRegex::Result result =
        rule.exact ? re->FullMatch(text, nullptr, budget, &spent) : re->Search(text, nullptr, budget, &spent);
    stepsLeft -= spent;
    return result == RuleRegex::Result::Match;
}

std::optional<std::size_t> LogRuleSet::FirstMatch(std::u16string_view text) const {
    std::size_t stepsLeft = kLineStepBudget;
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (Matches(i, text, stepsLeft)) return i;
    }
    return std::nullopt;
}

}  // namespace vrl
