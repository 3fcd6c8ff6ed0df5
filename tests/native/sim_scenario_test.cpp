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

TEST(Scenario, FilesSplitOnAnyLineBreakAndBlankOrCommentLinesAreSkipped) {
    EXPECT_EQ(vrl::sim::SplitScenarioLines("\xEF\xBB\xBFlog a\r\n\r\nexit\nwait 5"),
              (std::vector<std::string>{"log a", "", "exit", "wait 5"}));
    for (const char* line : {"", "   \t", "  # log not this"})
        EXPECT_EQ(vrl::sim::ParseScenarioLine(line).kind, ParsedLine::Kind::kEmpty) << line;
}

TEST(Scenario, ArgumentsOfEachShape) {
    const vrl::sim::Command request = Parse("request 9000 1");
    EXPECT_EQ(request.op, Op::kRequest);
    EXPECT_EQ(std::tie(request.first, request.second), std::make_tuple(0x9000, 1));
    EXPECT_EQ(Parse("request 0x9001 0x10").second, 16);
    EXPECT_EQ(Parse("request a000").second, 0);

    EXPECT_EQ(Parse("log   spaced   words  ").text, "spaced   words");
    EXPECT_EQ(Parse("log \"  kept  \"").text, "  kept  ");
    EXPECT_EQ(Parse("log0 a\\r\\nb\\x41\\\\\\\"").text, "a\r\nbA\\\"");
    EXPECT_EQ(Parse(u8"static1 キャラ").text, u8"キャラ");
    EXPECT_EQ(Parse("logbytes 41 42 0d0A").bytes, (std::vector<unsigned char>{0x41, 0x42, 0x0D, 0x0A}));

    const vrl::sim::Command copy = Parse("copydata item 0x10 0102 03");
    EXPECT_EQ(copy.target, Target::kItem);
    EXPECT_EQ(copy.first, 16);
    EXPECT_EQ(copy.bytes, (std::vector<unsigned char>{1, 2, 3}));
    EXPECT_EQ(Parse("  waitfor map  ").target, Target::kTreasureMap);
    EXPECT_EQ(Parse("open36").first, -1) << "no size: the further window keeps its own";
    EXPECT_EQ(Parse("open36 240 1200").second, 1200);
    EXPECT_EQ(Parse("petsend").second, -1);

    const vrl::sim::Command item = Parse("item -7 512 0x402 10012:3,80005:-1 \" Fire dagger \"");
    EXPECT_EQ(std::tie(item.item.chipId, item.item.itemId), std::make_tuple(-7, 512));
    EXPECT_EQ(item.item.properties, 0x402u);
    EXPECT_EQ(item.item.enchantments[1].value, -1);
    EXPECT_EQ(item.item.enchantments[2].id, 0);
    EXPECT_EQ(item.text, " Fire dagger ");
    EXPECT_EQ(Parse("item 1 2 0 - Stone").text, "Stone");

    const vrl::sim::Command pet = Parse("pet \"Little \\\"Gwen\\\"\" 9 101 12 300/1000 -5/0 1/2 3/4");
    EXPECT_EQ(pet.text, "Little \"Gwen\"");
    EXPECT_EQ(pet.numbers, (std::vector<std::int32_t>{9, 101, 12, 300, 1000, -5, 0, 1, 2, 3, 4}));

    const vrl::sim::Command music = Parse("music 1 12 31 23 -5 2 C:\\g\\\xe6\x9c\x9d.mid");
    EXPECT_EQ(music.first, 1);
    const vrl::MusicRequest sent = vrl::ReadMusicRequest(music.bytes.data(), music.bytes.size());
    EXPECT_EQ(music.bytes.size(), vrl::kMusicRequestBytes);
    EXPECT_EQ(sent.path, u"C:\\g\\朝.mid");
    EXPECT_EQ(std::tie(sent.month, sent.day, sent.hour, sent.mapObjectId, sent.playCount),
              std::make_tuple(12, 31, 23, -5, 2));
}

TEST(Scenario, MalformedLinesAreRefusedWithTheirReason) {
    for (const char* line : {
             "request", "request 9000 x", "request 123456789 0", "log cut\\x4", "log trailing\\", "logbytes 4 1",
             "logbytes 414", "logbytes zz", "copydata pet", "item 1 2 0", "item 1 2 x - Stone",
             "item 1 2 0 10012:3, Stone",
             "item 1 2 0 1:1,2:2,3:3,4:4,5:5,6:6,7:7,8:8,9:9,10:10,11:11,12:12,13:13,14:14,15:15,16:16 Too many",
             "pet putit 1 0 1 0/10 5/5 0/0", "pet putit 1 0 1 0 5/5 0/0 9/9", "pet \"unclosed 1 0 1 0/10 5/5 0/0 9/9",
             "music 1 1 1 1 0 x.ogg", "slot 8", "wait 10ms", "waitfor nothing", "close now"}) {
        EXPECT_EQ(vrl::sim::ParseScenarioLine(line).kind, ParsedLine::Kind::kError) << line;
    }
    EXPECT_EQ(vrl::sim::ParseScenarioLine("log bad\\q").error, "log: bad escape in text");
    EXPECT_EQ(vrl::sim::ParseScenarioLine("copydata tray 1").error, "copydata: unknown window");
    EXPECT_EQ(vrl::sim::ParseScenarioLine("jump 3").error, "unknown command jump");
}

}  // namespace
