#include "log/log_rules.h"
#include "log/speech.h"

#include <gtest/gtest.h>

#include <string>

namespace vrl {
namespace {

// A LogEx.kcsv text: option lines, the column line, then one line per rule.
LogRuleSet Load(std::u16string_view options, std::u16string_view rules,
                std::u16string_view columns = u"keyword,exact,regex,talk,sound,volume,color") {
    std::u16string text = u"#format,kcsv\r\n";
    if (!options.empty()) text += std::u16string(u"#option,") + std::u16string(options) + u"\r\n";
    text += std::u16string(u"#column,") + std::u16string(columns) + u"\r\n";
    text += rules;
    KcsvFile table;
    EXPECT_TRUE(table.Parse(text));
    LogRuleSet set;
    set.Load(table);
    return set;
}

std::optional<std::size_t> FirstMatch(std::u16string_view rules, std::u16string_view text) {
    return Load(u"", rules).FirstMatch(text);
}

TEST(LogRulesTest, TheFirstMatchingRuleTakesTheLine) {
    EXPECT_EQ(FirstMatch(u"ally\r\nally joined\r\n", u"Your ally joined."), 0u);
    EXPECT_EQ(FirstMatch(u"nothing\r\nally joined\r\n", u"Your ally joined."), 1u);
    EXPECT_EQ(FirstMatch(u"nothing\r\nelse\r\n", u"Your ally joined."), std::nullopt);
    // An empty substring keyword takes every line; with exact on only the empty line.
    EXPECT_EQ(FirstMatch(u",,\r\nx\r\n", u"x"), 0u);
    EXPECT_EQ(FirstMatch(u",1\r\nx\r\n", u"x"), 1u);
    EXPECT_EQ(FirstMatch(u",1\r\nx\r\n", u""), 0u);
}

TEST(LogRulesTest, TheFourModesOfARule) {
    // keyword, exact, regex
    EXPECT_EQ(FirstMatch(u"Hello,1,0\r\n", u"Hello!"), std::nullopt);
    EXPECT_EQ(FirstMatch(u"Hello,1,0\r\n", u"Hello"), 0u);
    EXPECT_EQ(FirstMatch(u"Hello,0,0\r\n", u"Hello!"), 0u);
    EXPECT_EQ(FirstMatch(u"hello,0,0\r\n", u"Hello!"), std::nullopt);
    EXPECT_EQ(FirstMatch(u"^You,0,1\r\n", u"You hit it."), 0u);
    EXPECT_EQ(FirstMatch(u"^You,1,1\r\n", u"You hit it."), std::nullopt);
    EXPECT_EQ(FirstMatch(u"^You.*,1,1\r\n", u"You hit it."), 0u);
    // A substring rule takes the keyword literally, regex characters included.
    EXPECT_EQ(FirstMatch(u"a.c,0,0\r\n", u"abc"), std::nullopt);
    EXPECT_EQ(FirstMatch(u"a.c,0,0\r\n", u"a.c"), 0u);
    // Switches read as the table reads them: not empty and not exactly "0".
    EXPECT_EQ(FirstMatch(u"a.c,0,00\r\n", u"abc"), 0u);
}

TEST(LogRulesTest, ABrokenOrTooCostlyExpressionDoesNotStopLaterRules) {
    EXPECT_EQ(FirstMatch(u"[,0,1\r\n(,1,1\r\nputit\r\n", u"a putit"), 2u);
    std::u16string line(2044, u'a');
    line += u"b";
    const auto set = Load(u"", u"\"(a|aa)*$\",0,1\r\n\"(x+x+)+y\",0,1\r\nb\r\n");
    EXPECT_FALSE(set.Matches(0, line));
    EXPECT_EQ(set.FirstMatch(line), 2u);
    // However many costly expressions come first, a cheap one after them still gets its steps,
    // and all of them together stay within what one line may cost.
    std::u16string table;
    for (int i = 0; i < 12; ++i) table += u"\"(a|aa)*$\",0,1\r\n";
    const auto costly = Load(u"", table + u"b$,0,1\r\n");
    std::size_t spent = 0;
    EXPECT_EQ(costly.FirstMatch(line, &spent), 12u);
    EXPECT_LE(spent, LogRuleSet::kLineStepBudget);
    EXPECT_GT(spent, RuleRegex::kStepBudget) << "the costly rules did spend";
}

TEST(LogRulesTest, RuleFieldsFromTheirColumns) {
    const auto set = Load(u"", u"ally,,,1,ding.wav,70,#FF8000\r\nfoe,,,0,,,Nothing\r\nx\r\n");
    ASSERT_EQ(set.Rules().size(), 3u);
    const LogRule& ally = set.Rules()[0];
    EXPECT_TRUE(ally.talk);
    EXPECT_EQ(ally.sound, u"ding.wav");
    EXPECT_EQ(ally.volume, 70);
    EXPECT_EQ(ally.color, MakeColour(255, 128, 0));
    EXPECT_EQ(set.Rules()[1].color, kNoColour);
    EXPECT_EQ(set.Rules()[1].volume, 50);  // an empty cell reads as 0
    EXPECT_EQ(set.Rules()[2].color, kNoColour);

    // Missing columns: empty texts, switches off, full volume.
    const auto bare = Load(u"", u"hello\r\n", u"keyword");
    ASSERT_EQ(bare.Rules().size(), 1u);
    EXPECT_EQ(bare.Rules()[0].volume, 100);
    EXPECT_FALSE(bare.Rules()[0].talk);
    EXPECT_TRUE(bare.Rules()[0].sound.empty());
    EXPECT_EQ(bare.FirstMatch(u"say hello"), 0u);
}

TEST(LogRulesTest, VolumesAreClampedAsUnsignedNumbers) {
    EXPECT_EQ(Load(u"MasterVolume:120", u"").MasterVolume(), 100);
    EXPECT_EQ(Load(u"MasterVolume:10", u"").MasterVolume(), 50);
    EXPECT_EQ(Load(u"MasterVolume:-5", u"").MasterVolume(), 100);
    EXPECT_EQ(Load(u"MasterVolume:loud", u"").MasterVolume(), 50);
    EXPECT_EQ(Load(u"", u"").MasterVolume(), 100);
    const auto set = Load(u"MasterVolume:80", u"a,,,,s.wav,70\r\nb,,,,s.wav,-1\r\nc,,,,s.wav, 75x\r\n");
    EXPECT_FLOAT_EQ(set.SoundVolume(set.Rules()[0]), 0.56f);
    EXPECT_EQ(set.Rules()[1].volume, 100);
    EXPECT_EQ(set.Rules()[2].volume, 75);
    EXPECT_FLOAT_EQ(LogSoundVolume(50, 50), 0.25f);
}

TEST(LogRulesTest, FontDescriptionAndItsDefaults) {
    const LogFontDescription defaults = Load(u"", u"").Font();
    EXPECT_EQ(defaults.face, u"Meiryo UI");
    EXPECT_EQ(defaults.pointSize, 9);
    EXPECT_EQ(defaults.weight, 400);
    EXPECT_FALSE(defaults.italic);
    EXPECT_EQ(Load(u"FontFace:,FontSize:0", u"").Font(), defaults);

    const LogFontDescription set = Load(u"FontFace:MS Gothic,FontSize:12,FontBold:1,FontItalic:256", u"").Font();
    EXPECT_EQ(set.face, u"MS Gothic");
    EXPECT_EQ(set.pointSize, 12);
    EXPECT_EQ(set.weight, 700);
    EXPECT_FALSE(set.italic);  // only the low eight bits count
    EXPECT_TRUE(Load(u"FontItalic:1", u"").Font().italic);
    EXPECT_EQ(Load(u"FontFace:" + std::u16string(40, u'F'), u"").Font().face.size(), 31u);

    EXPECT_EQ(LogFontHeight(9, 96), -12);
    EXPECT_EQ(LogFontHeight(10, 96), -13);  // 13.33 rounds down
    EXPECT_EQ(LogFontHeight(11, 96), -15);  // 14.67 rounds up
}

TEST(LogRulesTest, SpeechLeavesOutTheLineNumber) {
    EXPECT_EQ(SpeechText(u"[3] The door opens."), u"The door opens.");
    EXPECT_EQ(SpeechText(u"[12] [4] x"), u"[4] x");
    EXPECT_EQ(SpeechText(u"The door opens."), u"The door opens.");
    EXPECT_EQ(SpeechText(u"[3] "), u"[3] ");
    EXPECT_EQ(SpeechText(u"[] x"), u"[] x");
    EXPECT_EQ(SpeechText(u"[3]x"), u"[3]x");
    EXPECT_EQ(SpeechText(u" [3] x"), u" [3] x");
    // The rest must run to the end of the text without a line break.
    EXPECT_EQ(SpeechText(u"[3] a\nb"), u"[3] a\nb");
}

TEST(SpeechCommandLine, WrapsTheTextUnchangedAfterALeadingSpace) {
    EXPECT_EQ(SpeechCommandLine(u""), u" /Talk \"\"");
    EXPECT_EQ(SpeechCommandLine(u"ペットが倒れた"), u" /Talk \"ペットが倒れた\"");
    EXPECT_EQ(SpeechCommandLine(u"say \"hi\" 100%s %d"), u" /Talk \"say \"hi\" 100%s %d\"");
}

TEST(SpeechCommandLine, CutToTheBufferNeverSplittingASurrogatePair) {
    const std::size_t room = kSpeechCommandLineCapacity - 1 - 9;  // " /Talk \"" and "\""
    const std::u16string fits(room, u'a');
    EXPECT_EQ(SpeechCommandLine(fits), u" /Talk \"" + fits + u"\"");
    const std::u16string line = SpeechCommandLine(std::u16string(5000, u'b'));
    EXPECT_EQ(line, u" /Talk \"" + std::u16string(room, u'b') + u"\"");

    // The pair straddles the cut: its high half would be the last unit kept.
    std::u16string text(room - 1, u'x');
    text += u"\U0001F600tail";
    EXPECT_EQ(SpeechCommandLine(text), u" /Talk \"" + std::u16string(room - 1, u'x') + u"\"");
    // A pair that ends exactly at the limit is kept whole.
    std::u16string whole(room - 2, u'y');
    whole += u"\U0001F600more";
    EXPECT_EQ(SpeechCommandLine(whole), u" /Talk \"" + std::u16string(room - 2, u'y') + u"\U0001F600\"");
}

TEST(LogRulesTest, NoticesTakeTheColourThatShowsOnTheBackground) {
    EXPECT_EQ(NoticeColourOn(MakeColour(0, 0, 0)), 0xFFFFFFu);
    EXPECT_EQ(NoticeColourOn(MakeColour(255, 255, 255)), 0u);
    // 127500 is the first brightness that counts as light.
    EXPECT_EQ(NoticeColourOn(MakeColour(255, 51, 187)), 0u);         // exactly 127500
    EXPECT_EQ(NoticeColourOn(MakeColour(255, 51, 186)), 0xFFFFFFu);  // 127386
    EXPECT_EQ(Load(u"", u"").NoticeColour(), 0xFFFFFFu);             // no bkcolor: as on black
    // Missing, empty or not a colour: the views are black, never given "no colour".
    for (const char16_t* options : {u"", u"bkcolor:nonsense", u"bkcolor:Nothing"})
        EXPECT_EQ(Load(options, u"").Background(), 0u) << std::u16string(options).size();
    EXPECT_EQ(Load(u"bkcolor:#ffffff", u"").NoticeColour(), 0u);
    EXPECT_EQ(Load(u"bkcolor:#ffffff", u"").Background(), 0xFFFFFFu);
}

TEST(LogRulesTest, ReceivedTextIsCutAtNulAndAtTheLimit) {
    EXPECT_EQ(LogTextFrom(std::u16string(u"abc\0def", 7)), u"abc");
    EXPECT_EQ(LogTextFrom(std::u16string(3000, u'x')).size(), kLogTextLimit);
    EXPECT_EQ(LogLineOf(u"abc"), u"abc\r\n");
    EXPECT_TRUE(IsNotice(u"!Saved."));
    EXPECT_FALSE(IsNotice(u" !Saved."));
    EXPECT_EQ(SoundCandidates(u"C:\\Game", u"a.wav"),
              (std::vector<std::u16string>{u"C:\\Game\\user\\music\\a.wav", u"C:\\Game\\user\\sound\\a.wav",
                                           u"C:\\Game\\sound\\a.wav"}));
}

}  // namespace
}  // namespace vrl
