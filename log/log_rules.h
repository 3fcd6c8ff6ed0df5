#pragma once
// The keyword rules of LogEx.kcsv and what they decide for one line of the game's message log:
// which rule takes the line, what is spoken, which sound plays how loud, in which colour the line
// is copied, and how notices and the log font look. Portable; the log window does the drawing,
// the speaking and the playing.

#include "log/rule_regex.h"
#include "settings/kcsv.h"
#include "ui/colour.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vrl {

// The longest log line kept, in UTF-16 units; the rest of a longer line is dropped.
inline constexpr std::size_t kLogTextLimit = 2045;

struct LogRule {
    std::u16string keyword;
    bool exact = false;
    bool regex = false;
    bool talk = false;
    std::u16string sound;  // a file name, looked for in the game's sound folders
    int volume = 100;      // 50 to 100
    Colour color = kNoColour;
};

// What the log font is built from. Two descriptions compare equal when the font need not be made
// again.
struct LogFontDescription {
    std::u16string face = u"Meiryo UI";  // at most 31 units, the platform's limit
    int pointSize = 9;
    int weight = 400;  // 700 when bold
    bool italic = false;

    bool operator==(const LogFontDescription& o) const {
        return face == o.face && pointSize == o.pointSize && weight == o.weight && italic == o.italic;
    }
    bool operator!=(const LogFontDescription& o) const { return !(*this == o); }
};

// Character height in device units for a font of pointSize points on a screen of `dpi` pixels per
// logical inch: negative (the em height), rounded to nearest like MulDiv.
int LogFontHeight(int pointSize, int dpi);

// Master volume times rule volume, as the fraction the sound player takes (0.25 to 1.0).
float LogSoundVolume(int masterVolume, int ruleVolume);

// White on dark backgrounds, black on light ones.
Colour NoticeColourOn(Colour background);

// What is spoken for a line: the text after a leading "[number] ", or the whole text when that
// leaves nothing.
std::u16string SpeechText(std::u16string_view text);

// The text of a received line: up to its first NUL, at most kLogTextLimit units.
std::u16string LogTextFrom(std::u16string_view converted);
// The text as it is appended to a log view.
std::u16string LogLineOf(std::u16string_view text);
// Lines beginning with '!' are notices from the module, shown without the '!'.
bool IsNotice(std::u16string_view text);

// The three places a rule's sound is tried, in order: user\music, user\sound and sound under the
// game folder.
std::vector<std::u16string> SoundCandidates(std::u16string_view gameFolder, std::u16string_view sound);

class LogRuleSet {
public:
    // Replaces the rules and options with those of the table. Each regular expression is
    // compiled here, once; one that does not compile never matches.
    void Load(const KcsvFile& table);

    const std::vector<LogRule>& Rules() const { return rules_; }
    // Steps all the rules' expressions together may take on one line (some 20 to 50 ms), so
    // the game is not kept waiting however the table is written. Half of it is held back in equal
    // shares for the expressions not yet tried, so that one costly rule cannot leave a cheap one
    // such as ^You further down without a single step.
    static constexpr std::size_t kLineStepBudget = RuleRegex::kStepBudget * 3 / 2;

    // The first rule that takes the text, if any. An expression too costly to match within what it
    // may spend counts as not matching and the next rule is tried; plain keywords cost no steps.
    // With `spent`, stores the steps all the expressions took together.
    std::optional<std::size_t> FirstMatch(std::u16string_view text, std::size_t* spent = nullptr) const;
    bool Matches(std::size_t rule, std::u16string_view text) const { return Test(rule, text) == Outcome::Match; }
    // Why a rule does or does not take the text.
    enum class Outcome { Match, NoMatch, BadExpression, TooComplex };
    Outcome Test(std::size_t rule, std::u16string_view text) const;

    int MasterVolume() const { return masterVolume_; }
    // The EnableRemoteTalk switch alone; speech also needs the speech program to exist.
    bool RemoteTalkRequested() const { return remoteTalk_; }
    // bkcolor, or black when it is missing or not a colour: the views always get a real colour.
    Colour Background() const { return background_; }
    // The colour of notices: chosen against the background.
    Colour NoticeColour() const { return noticeColour_; }
    const LogFontDescription& Font() const { return font_; }
    float SoundVolume(const LogRule& rule) const { return LogSoundVolume(masterVolume_, rule.volume); }

private:
    // The same, taking its steps from what the line has left, less what is held back for later rules.
    Outcome Test(std::size_t rule, std::u16string_view text, std::size_t& stepsLeft, std::size_t heldBack) const;

    std::vector<LogRule> rules_;
    std::vector<std::optional<RuleRegex>> compiled_;  // one per rule; empty unless it compiled
    std::size_t expressionCount_ = 0;                 // rules whose expression compiled
    std::size_t expressionShare_ = 0;                 // steps each of them is sure to get on a line
    int masterVolume_ = 100;
    bool remoteTalk_ = false;
    Colour background_ = 0;
    Colour noticeColour_ = 0xFFFFFFu;
    LogFontDescription font_;
};

}  // namespace vrl
