#include "music/music_rules.h"
#include "music/music_try.h"
#include "music/stream_tags.h"
#include "music/volume_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "settings/kcsv.h"

namespace vrl {
namespace {

KcsvFile Table(std::u16string_view lines) {
    KcsvFile table;
    EXPECT_TRUE(table.Parse(u"#format,kcsv\r\n" + std::u16string(lines)));
    return table;
}

// The candidates the rules (orgfile,month,day,hour,playlist rows) give a request.
struct Rules {
    std::vector<MusicRule> rules;
    explicit Rules(std::u16string_view rows)
        : rules(MusicRulesOf(Table(u"#column,orgfile,month,day,hour,playlist\r\n" + std::u16string(rows)))) {}

    CandidateSearch For(std::u16string path, int month = 1, int day = 1, int hour = 0, int mapObject = 0) const {
        MusicRequest request;
        request.path = std::move(path);
        request.month = month;
        request.day = day;
        request.hour = hour;
        request.mapObjectId = mapObject;
        return FindCandidates(rules, request);
    }
    std::vector<std::u16string> Entries(std::u16string path, int month = 1, int day = 1, int hour = 0,
                                        int mapObject = 0) const {
        return For(std::move(path), month, day, hour, mapObject).entries;
    }
};

using Entries = std::vector<std::u16string>;

TEST(MusicRulesTest, MapObjectRulesComeBeforeNameRules) {
    const Rules r(u"bgm01.mid,,,,plain.ogg\r\nBGM01.MID:5,,,,map5.ogg\r\n");
    const CandidateSearch five = r.For(u"C:\\game\\sound\\bgm01.mid", 1, 1, 0, 5);
    EXPECT_EQ(five.entries, Entries{u"map5.ogg"});
    EXPECT_EQ(five.pass, 1);
    const CandidateSearch six = r.For(u"C:\\game\\sound\\bgm01.mid", 1, 1, 0, 6);
    EXPECT_EQ(six.entries, Entries{u"plain.ogg"});
    EXPECT_EQ(six.pass, 2);
    // A wildcard rule already matches in the first pass and keeps the name rules out.
    const Rules wild(u"*,,,,any.ogg\r\nbgm01.mid,,,,plain.ogg\r\n");
    EXPECT_EQ(wild.Entries(u"bgm01.mid"), Entries{u"any.ogg"});
}

TEST(MusicRulesTest, MonthDayAndHourCells) {
    const Rules months(u"*,12/1/2,,,winter.ogg\r\n");
    for (int month : {12, 1, 2}) EXPECT_EQ(months.Entries(u"a.ogg", month), Entries{u"winter.ogg"}) << month;
    EXPECT_EQ(months.Entries(u"a.ogg", 11), Entries{u"a.ogg"});  // no rule: the game's own file

    const Rules days(u"*,,1,,first.ogg\r\n");
    EXPECT_EQ(days.Entries(u"a.ogg", 5, 11), Entries{u"a.ogg"});  // "/1/" is not inside "/11/"

    const Rules periods(u"*,,,Morning/Noon,day.ogg\r\n*,,,morning,never.ogg\r\n*,,,23,late.ogg\r\n*,,,夜,night.ogg\r\n");
    for (int hour = 0; hour < 24; ++hour) {
        Entries want;
        if (hour >= 8 && hour <= 15) want.push_back(u"day.ogg");
        if (hour == 23) want.push_back(u"late.ogg");
        if (hour >= 20) want.push_back(u"night.ogg");
        if (want.empty()) want.push_back(u"a.ogg");
        EXPECT_EQ(periods.Entries(u"a.ogg", 1, 1, hour), want) << hour;
    }
}

TEST(MusicRulesTest, RequestNamesAndMapConditions) {
    const Rules r(u"cmap\\town.ogg,,,,cmap\\mine.ogg\r\nmcVrlRaid,,,,raid.ogg/raid.ogg/\r\n");
    const CandidateSearch custom = r.For(u"C:\\Morva\\user\\cmap\\town.ogg");
    EXPECT_EQ(custom.requestName, u"cmap\\town.ogg");
    EXPECT_EQ(custom.entries, Entries{u"cmap\\mine.ogg"});
    EXPECT_EQ(r.For(u"C:\\Morva\\User\\CMAP\\town.ogg").requestName, u"town.ogg");  // the folder test keeps case

    // A variant falls back on its general condition; doubled entries and a trailing "/" stay as written.
    const CandidateSearch baby = r.For(u"mcVrlBabyRaid");
    EXPECT_EQ(baby.requestName, u"mcVrlBabyRaid");
    EXPECT_EQ(baby.variantName, u"mcVrlRaid");
    EXPECT_EQ(baby.entries, (Entries{u"raid.ogg", u"raid.ogg"}));
    ASSERT_EQ(baby.matched.size(), 1u);
    EXPECT_TRUE(baby.matched[0].variant);

    // A map condition without rules changes nothing; an ordinary file plays itself.
    const Rules none(u"x.ogg,,,,y.ogg\r\n");
    EXPECT_TRUE(none.For(u"mcVrlBabyRaid").keepPlaying);
    EXPECT_TRUE(none.For(u"mcVrlUnknown").keepPlaying);
    EXPECT_TRUE(none.For(u"mcVrlUnknown").entries.empty());
    const CandidateSearch own = none.For(u"C:\\g\\sound\\town.mid");
    EXPECT_TRUE(own.ownFile);
    EXPECT_EQ(own.entries, Entries{u"town.mid"});
}

TEST(MusicRulesTest, RequestRecordsReadOnlyWhatArrived) {
    MusicRequest sent;
    sent.path = u"C:\\g\\sound\\bgm01.mid";
    sent.month = 12;
    sent.day = -3;
    sent.hour = 23;
    sent.mapObjectId = 77;
    sent.playCount = 2;
    const std::string bytes = MusicRequestBytes(sent);
    ASSERT_EQ(bytes.size(), kMusicRequestBytes);
    const MusicRequest got = ReadMusicRequest(bytes.data(), bytes.size() + 0);
    EXPECT_EQ(got.path, sent.path);
    EXPECT_EQ(std::tie(got.month, got.day, got.hour, got.mapObjectId, got.playCount), std::tie(sent.month, sent.day, sent.hour, sent.mapObjectId, sent.playCount));
    // Cut inside the hour: what is missing reads as zero. An unterminated path stops at 260 units.
    const MusicRequest cut = ReadMusicRequest(bytes.data(), 530);
    EXPECT_EQ(cut.day, -3);
    EXPECT_EQ(cut.hour, 23 & 0xFFFF);
    EXPECT_EQ(cut.playCount, 0);
    const std::string noNul(600, 'A');
    EXPECT_EQ(ReadMusicRequest(noNul.data(), noNul.size()).path.size(), kMusicPathChars);
    EXPECT_TRUE(ReadMusicRequest(nullptr, 0).path.empty());

    EXPECT_EQ(MusicDateTimeText(sent, 0), u"12/-3 23h [Night]");
    sent.hour = 30;  // shown as it came, named by the clamped hour
    EXPECT_EQ(MusicDateTimeText(sent, 1), u"12/-3 30時 [夜]");
}

TEST(MusicRulesTest, CandidatesResolveInTheGameFolders) {
    GameFolders folders;
    ASSERT_TRUE(DeriveGameFolders(u"C:\\Morva\\Vorrel", &folders));
    std::set<std::u16string> files{u"C:\\Morva\\user\\sound\\a.ogg", u"C:\\Morva\\user\\music\\a.ogg", u"local.ogg"};
    const FileExists exists = [&](const std::u16string& p) { return files.count(p) != 0; };
    EXPECT_EQ(ResolveMusicPath(u"a.ogg", folders, exists).path, u"C:\\Morva\\user\\music\\a.ogg");
    EXPECT_EQ(ResolveMusicPath(u"local.ogg", folders, exists).path, u"local.ogg");
    const ResolvedMusicPath custom = ResolveMusicPath(u"cmap\\x.ogg", folders, exists);
    EXPECT_EQ(custom.path, u"C:\\Morva\\user\\cmap\\x.ogg");
    EXPECT_TRUE(custom.exists);
    const ResolvedMusicPath missing = ResolveMusicPath(u"b.ogg", folders, exists);
    EXPECT_EQ(missing.path, u"C:\\Morva\\sound\\b.ogg");
    EXPECT_FALSE(missing.exists);

    EXPECT_TRUE(IsMidiFileName(u"SONG.MID"));
    EXPECT_FALSE(IsMidiFileName(u"song.midi"));
    EXPECT_FALSE(IsMidiFileName(u"mid"));
}

TEST(MusicRulesTest, TheDrawIsTheMultiplyAndRejectSelection) {
    std::mt19937 generator(12345);
    for (std::uint32_t n : {1u, 2u, 3u, 7u, 200u}) {
        for (int i = 0; i < 50; ++i) {
            std::mt19937 before = generator;
            const std::uint32_t index = DrawCandidateIndex(generator, n);
            ASSERT_LT(index, n);
            // Unless the low half falls below the threshold, the index is the high half of r * n.
            const std::uint64_t product = static_cast<std::uint64_t>(before()) * n;
            if (static_cast<std::uint32_t>(product) >= (0u - n) % n) {
                EXPECT_EQ(index, product >> 32);
            }
        }
    }
    // A large n rejects often; the draws still land in range and cover both halves.
    std::mt19937 c(1);
    std::set<bool> halves;
    for (int i = 0; i < 200; ++i) halves.insert(DrawCandidateIndex(c, 0xC0000000u) >= 0x60000000u);
    EXPECT_EQ(halves.size(), 2u);
}

TEST(MusicRulesTest, TheOptionsOfTheRuleTable) {
    EXPECT_EQ(MidiDeviceCodeOf(Table(u"")), 1);
    EXPECT_EQ(MidiDeviceCodeOf(Table(u"#option,device:2\r\n")), 3);
    EXPECT_EQ(MidiDeviceCodeOf(Table(u"#option,device:x\r\n")), 1);
    EXPECT_EQ(MidiDeviceCodeOf(Table(u"#option,device:9\r\n")), 0);
    EXPECT_EQ(SoundFontOf(Table(u"#option,SoundFont:C:\\sf\\a.sf2\r\n")), u"C:\\sf\\a.sf2");
    // Missing columns read as empty cells: every rule is a wildcard.
    EXPECT_EQ(Rules(u"").rules.size(), 0u);
    const auto rules = MusicRulesOf(Table(u"#column,playlist\r\nx.ogg\r\n"));
    ASSERT_EQ(rules.size(), 1u);
    EXPECT_EQ(rules[0].orgfile, u"//");
}

TEST(MusicRulesTest, TheTryReportTellsWhatThePanelWouldDo) {
    GameFolders folders;
    ASSERT_TRUE(DeriveGameFolders(u"C:\\Morva\\Vorrel", &folders));
    const KcsvFile rules = Table(u"#column,orgfile,hour,playlist\r\nbgm01.mid,Noon,a.ogg/b.ogg\r\nmcVrlRaid,,\r\n");
    const KcsvFile volumes = Table(u"#column,File,Volume\r\nC:\\Morva\\user\\music\\a.ogg,70\r\n");
    const FileExists exists = [](const std::u16string& p) { return p == u"C:\\Morva\\user\\music\\a.ogg"; };
    MusicRequest request;
    request.path = u"bgm01.mid";
    request.hour = 13;
    const std::string report = MusicTryReport(rules, volumes, request, folders, exists);
    EXPECT_NE(report.find("second pass (name only): rule 1 matched"), std::string::npos) << report;
    EXPECT_NE(report.find("a.ogg -> C:\\Morva\\user\\music\\a.ogg  volume 70"), std::string::npos) << report;
    EXPECT_NE(report.find("b.ogg -> C:\\Morva\\sound\\b.ogg  NOT FOUND"), std::string::npos) << report;
    EXPECT_NE(MusicTryReport(rules, volumes, request, folders, exists, 1).find("2 回目 (名前のみ): 規則 1 が一致"),
              std::string::npos);
    request.path = u"mcVrlBabyRaid";  // its general rule has an empty playlist: nothing changes
    EXPECT_NE(MusicTryReport(rules, volumes, request, folders, exists).find("goes on"), std::string::npos);
}

TEST(VolumeTableTest, ReadingClampsAndKeepsTheFirstOrder) {
    VolumeTable volumes;
    const KcsvFile table = Table(u"#option,masterVolume:30\r\n#column,file,volume\r\n"
                                 u"a.ogg,30\r\nb.ogg,150\r\nc.ogg,\r\nd.ogg\r\nA.ogg,70\r\na.ogg,80\r\n");
    volumes.Load(table);
    EXPECT_EQ(VolumeTable::MasterVolumeOf(table), 50);
    EXPECT_EQ(VolumeTable::MasterVolumeOf(Table(u"")), 100);
    EXPECT_EQ(volumes.VolumeOf(u"a.ogg"), 80);  // the later row wins
    EXPECT_EQ(volumes.VolumeOf(u"b.ogg"), 100);
    EXPECT_EQ(volumes.VolumeOf(u"c.ogg"), 100);  // empty cell
    EXPECT_EQ(volumes.VolumeOf(u"d.ogg"), 100);  // short row
    EXPECT_EQ(volumes.VolumeOf(u"A.ogg"), 70);   // keys keep their case
    EXPECT_EQ(volumes.VolumeOf(u"never.ogg"), 100);
    EXPECT_EQ(volumes.Order(), (Entries{u"a.ogg", u"b.ogg", u"c.ogg", u"d.ogg", u"A.ogg"}));

    KcsvFile written = table;
    volumes.Set(u"e.ogg", 60);
    volumes.WriteTo(written, 90);
    KcsvFile reread;
    ASSERT_TRUE(reread.ParseUtf8(written.ToUtf8()));
    VolumeTable again;
    again.Load(reread);
    EXPECT_EQ(again.Order(), volumes.Order());
    EXPECT_EQ(again.VolumeOf(u"e.ogg"), 60);
    EXPECT_EQ(VolumeTable::MasterVolumeOf(reread), 90);
    // A table without the columns gets them for the write.
    KcsvFile bare;
    volumes.WriteTo(bare, 100);
    EXPECT_EQ(bare.Columns(), (Entries{u"File", u"Volume"}));
    EXPECT_EQ(bare.RowCount(), 6u);
}

TEST(StreamTagsTest, LoopPointsAndOutputRate) {
    auto loop = [](std::string comments) {
        comments.push_back('\0');
        return LoopPointsOf(comments.c_str());
    };
    const LoopPoints both = loop(std::string("TITLE=x\0LOOPSTART=100\0LOOPLENGTH=50\0", 37));
    EXPECT_EQ(both.start, 400u);
    EXPECT_EQ(both.end, 600u);
    EXPECT_EQ(loop(std::string("loopstart=10\0", 13)).start, 40u);
    EXPECT_EQ(loop(std::string("XLOOPSTART=10\0", 14)).start, 0u);  // read from its "=" on
    EXPECT_EQ(loop(std::string("LOOPSTART=10\0", 13)).end, 0u);     // no length: the natural end
    EXPECT_EQ(LoopPointsOf(nullptr).start, 0u);
    EXPECT_EQ(OutputRateText(48000), u"48 kHz");
    EXPECT_EQ(OutputRateText(44100), u"44100 Hz");
}

}  // namespace
}  // namespace vrl
