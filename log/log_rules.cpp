#include "log/log_rules.h"

#include "settings/table_schema.h"

#include <cstdint>

namespace vrl {

namespace {

namespace names = tables::logex;

const TableSchema& Schema() { return SchemaOf(names::kFile); }

// The columns of one table, looked up once per load.
struct RuleColumns {
    explicit RuleColumns(const KcsvFile& table)
        : keyword(table.ColumnIndex(names::kKeyword)),
          exact(table.ColumnIndex(names::kExact)),
          regex(table.ColumnIndex(names::kRegex)),
          talk(table.ColumnIndex(names::kTalk)),
          sound(table.ColumnIndex(names::kSound)),
          volume(table.ColumnIndex(names::kVolume)),
          color(table.ColumnIndex(names::kColor)) {}
    int keyword, exact, regex, talk, sound, volume, color;
};

std::u16string CellOf(const KcsvFile& table, unsigned row, int column) {
    return column < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(column), u"");
}

LogRule RuleFromRow(const KcsvFile& table, unsigned row, const RuleColumns& columns) {
    LogRule rule;
    rule.keyword = CellOf(table, row, columns.keyword);
    rule.exact = ReadSwitch(CellOf(table, row, columns.exact));
    rule.regex = ReadSwitch(CellOf(table, row, columns.regex));
    rule.talk = ReadSwitch(CellOf(table, row, columns.talk));
    rule.sound = CellOf(table, row, columns.sound);
    rule.volume = Schema().Column(names::kVolume).value.NumberOf(CellOf(table, row, columns.volume), columns.volume >= 0);
    rule.color = Schema().Column(names::kColor).value.ColourOf(CellOf(table, row, columns.color));
    return rule;
}

LogFontDescription FontFrom(const KcsvFile& table) {
    const TableSchema& schema = Schema();
    LogFontDescription font;
    font.face = schema.OptionText(table, names::kFontFace);
    font.pointSize = schema.OptionNumber(table, names::kFontSize);
    font.weight = schema.OptionNumber(table, names::kFontBold) != 0 ? 700 : 400;
    font.italic = schema.OptionNumber(table, names::kFontItalic) != 0;
    return font;
}

}  // namespace

int LogFontHeight(int pointSize, int dpi) {
    const std::int64_t product = static_cast<std::int64_t>(pointSize) * dpi;
    const std::int64_t rounded = (product >= 0 ? product + 36 : product - 36) / 72;
    return -static_cast<int>(rounded);
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
    const RuleColumns columns(table);
    rules_.clear();
    compiled_.clear();
    expressionCount_ = 0;
    for (unsigned row = 0; row < table.RowCount(); ++row) {
        rules_.push_back(RuleFromRow(table, row, columns));
        const LogRule& rule = rules_.back();
        compiled_.push_back(rule.regex ? RuleRegex::Compile(rule.keyword) : std::nullopt);
        if (compiled_.back()) ++expressionCount_;
    }
    expressionShare_ = expressionCount_ == 0 ? 0 : kLineStepBudget / 2 / expressionCount_;

    masterVolume_ = Schema().OptionNumber(table, names::kMasterVolume);
    remoteTalk_ = Schema().OptionNumber(table, names::kEnableRemoteTalk) != 0;
    background_ = Schema().OptionColour(table, names::kBkColor);
    noticeColour_ = NoticeColourOn(background_);
    font_ = FontFrom(table);
}

LogRuleSet::Outcome LogRuleSet::Test(std::size_t index, std::u16string_view text) const {
    std::size_t stepsLeft = RuleRegex::kStepBudget;
    return Test(index, text, stepsLeft, 0);
}

LogRuleSet::Outcome LogRuleSet::Test(std::size_t index, std::u16string_view text, std::size_t& stepsLeft,
                                     std::size_t heldBack) const {
    const LogRule& rule = rules_[index];
    if (!rule.regex) {
        const bool match = rule.exact ? text == rule.keyword : text.find(rule.keyword) != std::u16string_view::npos;
        return match ? Outcome::Match : Outcome::NoMatch;
    }
    const std::optional<RuleRegex>& re = compiled_[index];
    if (!re) return Outcome::BadExpression;
    const std::size_t available = stepsLeft > heldBack ? stepsLeft - heldBack : 0;
    if (available == 0) return Outcome::TooComplex;
    const std::size_t budget = available < RuleRegex::kStepBudget ? available : RuleRegex::kStepBudget;
    std::size_t spent = 0;
    const RuleRegex::Result result =
        rule.exact ? re->FullMatch(text, nullptr, budget, &spent) : re->Search(text, nullptr, budget, &spent);
    stepsLeft -= spent < stepsLeft ? spent : stepsLeft;
    switch (result) {
        case RuleRegex::Result::Match: return Outcome::Match;
        case RuleRegex::Result::TooComplex: return Outcome::TooComplex;
        case RuleRegex::Result::NoMatch: break;
    }
    return Outcome::NoMatch;
}

std::optional<std::size_t> LogRuleSet::FirstMatch(std::u16string_view text, std::size_t* spent) const {
    std::size_t stepsLeft = kLineStepBudget;
    std::size_t expressionsAfter = expressionCount_;
    std::optional<std::size_t> match;
    for (std::size_t i = 0; i < rules_.size() && !match; ++i) {
        if (compiled_[i]) --expressionsAfter;
        if (Test(i, text, stepsLeft, expressionsAfter * expressionShare_) == Outcome::Match) match = i;
    }
    if (spent) *spent = kLineStepBudget - stepsLeft;
    return match;
}

}  // namespace vrl
