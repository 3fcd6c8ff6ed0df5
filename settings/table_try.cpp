#include "settings/table_try.h"

#include "app/install_paths.h"
#include "log/log_rules.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"
#include "settings/table_check_texts.h"

#include <cstdio>
#include <optional>

namespace vrl {
namespace {

namespace text = check_text;

class LogLineTrial {
public:
    LogLineTrial(std::string_view tableBytes, const TrialPlace& place) : place_(place) {
        KcsvFile table;
        table.ParseLines(TokeniseKcsv(Utf8ToUtf16(tableBytes)), &where_);
        rules_.Load(table);
    }

    std::string Run(std::u16string_view line) {
        Say(text::kTryLine, {QuotedForReport(line)});
        const std::u16string lineText = LogTextFrom(line);
        if (line.find(u'\0') == std::u16string_view::npos && lineText.size() < line.size()) {
            Say(text::kTryCut, {std::to_string(kLogTextLimit)});
        }
        if (IsNotice(lineText)) {
            Say(text::kTryNotice);
            return std::move(out_);
        }
        const std::optional<std::size_t> match = rules_.FirstMatch(lineText);
        if (match) {
            Describe(*match, lineText);
        } else {
            Say(text::kTryNoRule);
        }
        ExplainNearMisses(match.value_or(rules_.Rules().size()), lineText);
        return std::move(out_);
    }

private:
    void Say(const LangText& message, std::initializer_list<std::string> args = {}) {
        out_ += SayText(place_.language, message, args) + "\n";
    }
    std::string Text(const LangText& message, std::initializer_list<std::string> args) const {
        return SayText(place_.language, message, args);
    }
    std::string Number(std::size_t rule) const { return std::to_string(rule + 1); }
    std::string LineOf(std::size_t rule) const {
        return rule < where_.rows.size() ? std::to_string(where_.rows[rule]) : "?";
    }

    void Describe(std::size_t index, const std::u16string& lineText) {
        const LogRule& rule = rules_.Rules()[index];
        const std::string keyword = QuotedForReport(rule.keyword);
        const LangText& how = rule.regex ? (rule.exact ? text::kTryFull : text::kTrySearch)
                                         : (rule.exact ? text::kTryExact : text::kTrySubstring);
        Say(text::kTryRule, {Number(index), LineOf(index), Text(how, {keyword})});
        if (rule.color != kNoColour) {
            Say(text::kTryColour, {Utf16ToUtf8(FormatColour(rule.color))});
        } else {
            Say(text::kTryNoColour);
        }
        if (rule.talk) DescribeSpeech(lineText);
        if (!rule.sound.empty()) DescribeSound(rule);
    }

    void DescribeSpeech(const std::u16string& lineText) {
        const std::string spoken = QuotedForReport(SpeechText(lineText));
        if (!rules_.RemoteTalkRequested()) {
            Say(text::kTrySpeechOff);
        } else if (!place_.speechProgramFound) {
            Say(text::kTrySpeechMissing, {Utf16ToUtf8(JoinPath(place_.programFolder, u"RemoteTalk.exe")), spoken});
        } else {
            Say(text::kTrySpeaks, {spoken});
        }
    }

    void DescribeSound(const LogRule& rule) {
        char volume[16];
        std::snprintf(volume, sizeof volume, "%.2f", static_cast<double>(rules_.SoundVolume(rule)));
        Say(text::kTrySound, {QuotedForReport(rule.sound), volume});
        GameFolders folders;
        DeriveGameFolders(place_.programFolder, &folders);
        for (const std::u16string& path : SoundCandidates(folders.game, rule.sound)) {
            out_ += "    " + Utf16ToUtf8(path) + "\n";
        }
    }

    // Rules before the one that took the line (or all) that a player may have meant to fire.
    void ExplainNearMisses(std::size_t before, const std::u16string& lineText) {
        bool headed = false;
        for (std::size_t i = 0; i < before; ++i) {
            const std::string why = NearMiss(i, lineText);
            if (why.empty()) continue;
            if (!headed) Say(text::kTryCandidates);
            headed = true;
            Say(text::kTryCandidate, {Number(i), LineOf(i), why});
        }
    }

    std::string NearMiss(std::size_t index, const std::u16string& lineText) const {
        const LogRule& rule = rules_.Rules()[index];
        const std::string keyword = QuotedForReport(rule.keyword);
        switch (rules_.Test(index, lineText)) {
            case LogRuleSet::Outcome::BadExpression: return Text(text::kTryBadRegex, {keyword});
            case LogRuleSet::Outcome::TooComplex: return Text(text::kTryTooComplex, {keyword});
            case LogRuleSet::Outcome::Match:
            case LogRuleSet::Outcome::NoMatch: break;
        }
        if (rule.keyword.empty()) return {};
        if (rule.regex) {
            const std::optional<RuleRegex> re = RuleRegex::Compile(rule.keyword);
            const bool partly = rule.exact && re && re->Search(lineText) == RuleRegex::Result::Match;
            return partly ? Text(text::kTryWantsFull, {keyword}) : std::string();
        }
        if (rule.exact && lineText.find(rule.keyword) != std::u16string::npos) {
            return Text(text::kTryWantsExact, {keyword});
        }
        if (AsciiLower(lineText).find(AsciiLower(rule.keyword)) != std::u16string::npos &&
            lineText.find(rule.keyword) == std::u16string::npos) {
            return Text(text::kTryOtherCase, {keyword});
        }
        if (rule.keyword.find_first_of(u"\\^$.|?*+()[]{}") != std::u16string::npos) {
            const std::optional<RuleRegex> re = RuleRegex::Compile(rule.keyword);
            const bool would = re && (rule.exact ? re->FullMatch(lineText) : re->Search(lineText)) ==
                                         RuleRegex::Result::Match;
            if (would) return Text(text::kTryRegexOff, {keyword});
        }
        return {};
    }

    TrialPlace place_;
    KcsvSourceLines where_;
    LogRuleSet rules_;
    std::string out_;
};

}  // namespace

std::string TryLogLine(std::string_view tableBytes, std::u16string_view line, const TrialPlace& place) {
    return LogLineTrial(tableBytes, place).Run(line);
}

}  // namespace vrl
