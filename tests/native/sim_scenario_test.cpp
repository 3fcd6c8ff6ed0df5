// The module stand-in's scenario parser. The stand-ins are not part of vrl_core, so its one
// portable source is compiled into this test directly.
#include "sim/module/scenario.cpp"

#include <gtest/gtest.h>

namespace {

using vrl::sim::Op;
using vrl::sim::ParsedLine;
using vrl::sim::Target;

vrl::sim::Command Parse(const std::string& line) {
    const ParsedLine parsed = vrl::sim::ParseScenarioLine(line);
    EXPECT_EQ(parsed.kind, ParsedLine::Kind::kCommand) << line << ": " << parsed.error;
    return parsed.command;
}

std::string ErrorOf(const std::string& line) {
    const ParsedLine parsed = vrl::sim::ParseScenarioLine(line);
    EXPECT_EQ(parsed.kind, ParsedLine::Kind::kError) << line;
    return parsed.error;
}

TEST(Scenario, SkipsBlankAndCommentLines) {
    EXPECT_EQ(vrl::sim::ParseScenarioLine("").kind, ParsedLine::Kind::kEmpty);
    EXPECT_EQ(vrl::sim::ParseScenarioLine("   \t").kind, ParsedLine::Kind::kEmpty);
    EXPECT_EQ(vrl::sim::ParseScenarioLine("  # log not this").kind, ParsedLine::Kind::kEmpty);
}

TEST(Scenario, RequestTakesAHexMessageAndADecimalOrHexWParam) {
    vrl::sim::Command c = Parse("request 9000 1");
    EXPECT_EQ(c.op, Op::kRequest);
    EXPECT_EQ(c.first, 0x9000);
    EXPECT_EQ(c.second, 1);
    c = Parse("request a000");
    EXPECT_EQ(c.first, 0xA000);
    EXPECT_EQ(c.second, 0);
    EXPECT_EQ(Parse("request 0x9001 0x10").second, 16);
    ErrorOf("request");
    ErrorOf("request 9000 x");
    ErrorOf("request 123456789 0");
}

TEST(Scenario, TextKeepsInnerSpacesAndQuotedOuterSpacesAndDecodesEscapes) {
    EXPECT_EQ(Parse("log You hit the putit.").text, "You hit the putit.");
    EXPECT_EQ(Parse("log   spaced   words  ").text, "spaced   words");
    EXPECT_EQ(Parse("log \"  kept  \"").text, "  kept  ");
    EXPECT_EQ(Parse("log0 a\\r\\nb\\x41\\\\\\\"").text, "a\r\nbA\\\"");
    EXPECT_EQ(Parse(u8"static1 キャラ").text, u8"キャラ");
    EXPECT_EQ(Parse("log").text, "");
    EXPECT_EQ(ErrorOf("log bad\\q"), "log: bad escape in text");
    ErrorOf("log cut\\x4");
    ErrorOf("log trailing\\");
}

TEST(Scenario, HexBytesArePairsWithSpacesOnlyBetweenPairs) {
    vrl::sim::Command c = Parse("logbytes 41 42 0d0A");
    EXPECT_EQ(c.bytes, (std::vector<unsigned char>{0x41, 0x42, 0x0D, 0x0A}));
    ErrorOf("logbytes 4 1");
    ErrorOf("logbytes 414");
    ErrorOf("logbytes zz");
}

TEST(Scenario, CopyDataNamesTheWindowTheCodeAndOptionalBytes) {
    vrl::sim::Command c = Parse("copydata music 2");
    EXPECT_EQ(c.target, Target::kMusic);
    EXPECT_EQ(c.first, 2);
    EXPECT_TRUE(c.bytes.empty());
    c = Parse("copydata item 0x10 0102 03");
    EXPECT_EQ(c.target, Target::kItem);
    EXPECT_EQ(c.bytes, (std::vector<unsigned char>{1, 2, 3}));
    EXPECT_EQ(ErrorOf("copydata tray 1"), "copydata: unknown window");
    ErrorOf("copydata pet");
}

TEST(Scenario, NumbersWindowsAndArgumentCountsAreChecked) {
    EXPECT_EQ(Parse("slot 36 -1").second, -1);
    EXPECT_EQ(Parse("reload 0x102").first, 0x102);
    EXPECT_EQ(Parse("waitfor fulllog").target, Target::kFullLog);
    EXPECT_EQ(Parse("waitfor map").target, Target::kTreasureMap);
    EXPECT_EQ(Parse("  closemain  ").op, Op::kCloseMain);
    EXPECT_EQ(Parse("open36").first, 0);
    EXPECT_EQ(Parse("open36 240 1200").second, 1200);
    ErrorOf("open36 240");
    ErrorOf("slot 8");
    ErrorOf("wait 10ms");
    ErrorOf("waitfor nothing");
    ErrorOf("close now");
    EXPECT_EQ(ErrorOf("jump 3"), "unknown command jump");
}

TEST(Scenario, FileSplitsOnLineBreaksAndDropsTheByteOrderMark) {
    const std::vector<std::string> lines = vrl::sim::SplitScenarioLines("\xEF\xBB\xBFlog a\r\n\r\nexit\nwait 5");
    EXPECT_EQ(lines, (std::vector<std::string>{"log a", "", "exit", "wait 5"}));
}

}  // namespace
