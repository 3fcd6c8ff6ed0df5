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

TEST(Scenario, ItemTakesItsFieldsEnchantmentPairsAndAName) {
    vrl::sim::Command c = Parse("item -7 512 0x402 10012:3,80005:-1 \" Fire dagger \"");
    EXPECT_EQ(c.op, Op::kItem);
    EXPECT_EQ(c.item.chipId, -7);
    EXPECT_EQ(c.item.itemId, 512);
    EXPECT_EQ(c.item.properties, 0x402u);
    EXPECT_EQ(c.item.enchantments[1].id, 80005);
    EXPECT_EQ(c.item.enchantments[1].value, -1);
    EXPECT_EQ(c.item.enchantments[2].id, 0);
    EXPECT_EQ(c.text, " Fire dagger ");
    EXPECT_EQ(Parse("item 1 2 0 - Stone").text, "Stone");
    ErrorOf("item 1 2 0");
    ErrorOf("item 1 2 x - Stone");
    ErrorOf("item 1 2 0 10012:3, Stone");
    ErrorOf("item 1 2 0 1:1,2:2,3:3,4:4,5:5,6:6,7:7,8:8,9:9,10:10,11:11,12:12,13:13,14:14,15:15,16:16 Too many");
    EXPECT_EQ(Parse("word").op, Op::kWord);
}

TEST(Scenario, MusicRequestsCarryTheRecordTheModuleSends) {
    vrl::sim::Command c = Parse("music 1 12 31 23 -5 2 C:\\g\\sound\\bgm01.mid");
    EXPECT_EQ(c.first, 1);
    ASSERT_EQ(c.bytes.size(), 552u);
    EXPECT_EQ(c.bytes[0], 'C');
    EXPECT_EQ(c.bytes[1], 0);
    EXPECT_EQ(c.bytes[2 * 20], 0);  // the NUL after the 20 characters
    EXPECT_EQ(c.bytes[520], 12);
    EXPECT_EQ(c.bytes[528], 23);
    EXPECT_EQ(c.bytes[540], 0xFB);
    EXPECT_EQ(c.bytes[543], 0xFF);
    EXPECT_EQ(c.bytes[548], 2);
    EXPECT_EQ(Parse("music 1 1 1 1 0 1 a \xe6\x9c\x9d.ogg").bytes[4], 0x1D);  // U+671D, low byte
    ErrorOf("music 1 1 1 1 0 x.ogg");
}

TEST(Scenario, NumbersWindowsAndArgumentCountsAreChecked) {
    EXPECT_EQ(Parse("slot 36 -1").second, -1);
    EXPECT_EQ(Parse("reload 0x102").first, 0x102);
    EXPECT_EQ(Parse("waitfor fulllog").target, Target::kFullLog);
    EXPECT_EQ(Parse("waitfor map").target, Target::kTreasureMap);
    EXPECT_EQ(Parse("  closemain  ").op, Op::kCloseMain);
    EXPECT_EQ(Parse("open36").first, -1) << "no size: the further window keeps its own";
    EXPECT_EQ(Parse("open36 240 1200").second, 1200);
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

TEST(Scenario, PetSlotsAreWrittenWithReadableFields) {
    vrl::sim::Command c = Parse("pet \"Little \\\"Gwen\\\"\" 9 101 12 300/1000 -5/0 1/2 3/4");
    EXPECT_EQ(c.op, Op::kPet);
    EXPECT_EQ(c.text, "Little \"Gwen\"");
    EXPECT_EQ(c.numbers, (std::vector<std::int32_t>{9, 101, 12, 300, 1000, -5, 0, 1, 2, 3, 4}));
    EXPECT_EQ(Parse("pet putit 1 0 1 0/10 5/5 0/0 9/9").text, "putit");
    ErrorOf("pet putit 1 0 1 0/10 5/5 0/0");  // a pair missing
    ErrorOf("pet putit 1 0 1 0 5/5 0/0 9/9");  // a number where a pair goes
    ErrorOf("pet \"unclosed 1 0 1 0/10 5/5 0/0 9/9");
    c = Parse("petsend");
    EXPECT_EQ(c.first, -1);
    EXPECT_EQ(c.second, -1);
    c = Parse("petsend 3 300");
    EXPECT_EQ(c.first, 3);
    EXPECT_EQ(c.second, 300);
    EXPECT_EQ(Parse("peticons 2").first, 2);
}

}  // namespace
