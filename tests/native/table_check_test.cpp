#include "settings/table_check.h"
#include "tests/native/run_tool.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

using vrl::CheckTableText;

// "LINE: message" per problem, joined by newlines: compact to compare, readable when it fails.
std::string Report(std::u16string_view path, std::string_view text, int language = 0) {
    std::string out;
    for (const auto& p : CheckTableText(path, text, language)) out += std::to_string(p.line) + ": " + p.message + "\n";
    return out;
}

bool Mentions(const std::string& report, const std::string& part) { return report.find(part) != std::string::npos; }

TEST(TableCheck, CleanTablesReportNothing) {
    EXPECT_EQ(Report(u"LogEx.kcsv",
                     "#format,kcsv\r\n#option,MasterVolume:80,bkcolor:#000000,FontFace:Meiryo UI\r\n"
                     "#column,keyword,exact,regex,talk,sound,volume,color\r\n"
                     "ally,1,,,,70,#ff8000\r\n^You,,1,1,ding.wav,100,Nothing\r\n\"a, b\",,,,,50,\r\n"),
              "");
    EXPECT_EQ(Report(u"Volume.kcsv", "#format,kcsv\r\n#option,MasterVolume:100\r\n#column,File,Volume\r\nC:\\a.ogg,70\r\nb.ogg,\r\n"), "");
    EXPECT_EQ(Report(u"unknown.kcsv", "#format,kcsv\r\n#column,anything\r\nx,y,z\r\n"), "");
}

TEST(TableCheck, ExplainsWhyATextIsNotATable) {
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", "\xEF\xBB\xBF#format,kcsv\r\n"), "1: not a KCSV table: the file begins with a byte-order mark"));
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", "#format,kcsv\n#column,a\n"), "every line must end with CR LF"));
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", "#Format,KCSV\r\n"), "#format,kcsv exactly"));
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", ""), "the file is empty"));
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", "keyword,color\r\n"), "must begin with #format,kcsv"));
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", "\xFF\xFE#\0f\0"), "saved as UTF-16"));
}

TEST(TableCheck, StructureProblemsWithTheirLines) {
    const std::string report = Report(u"notes.kcsv",
                                      "#format,kcsv\r\n#option,Alone,:5,ok:1\r\n#column,a,B,b\r\n"
                                      "\"two\r\nlines\",x\r\n#Option,x:1\r\n\xFF\r\n#column,c\r\n#format,kcsv\r\n");
    EXPECT_EQ(report,
              "2: option \"Alone\" has no colon; it is read as the option \"Alone\" with an empty value\n"
              "2: option \":5\" has no name before its colon and is ignored\n"
              "3: column \"b\" is named twice (first as \"B\"); the program reads only the first of them by "
              "name\n"
              "6: \"#Option\" is not #option (keywords are case-sensitive); this line is read as a data row\n"
              "7: bytes that are not UTF-8; they read as the replacement character \xEF\xBF\xBD\n"
              "8: a second #column line (the first is on line 3); the program stops reading here and ignores "
              "this line and all after it\n");
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", "#format,kcsv\r\na\r\n\"never closed,\r\nb\r\n"),
                         "3: a quoted cell that starts here is never closed"));
    EXPECT_TRUE(Mentions(Report(u"a.kcsv", std::string("#format,kcsv\r\na\0b\r\n", 18)), "2: a NUL character"));
}

TEST(TableCheck, LogRulesAsTheLogWindowReadsThem) {
    const std::string report = Report(u"LogEx.kcsv",
                                      "#format,kcsv\r\n#option,MasterVolume:abc,bkcolor:red\r\n"
                                      "#column,keyword,exact,regex,volume,color,colour\r\n"
                                      "[,0,1,-5,#ff80\r\n[,0,0,80%,#FF8000\r\n,,,70,\r\n,1,,70,\r\nx,off,00\r\n"
                                      "a,b,c,d,e,f,g\r\n#note\r\n,,1,70\r\n#option,MasterVolum:1,FontItalic:256\r\n");
    EXPECT_TRUE(Mentions(report, "2: option MasterVolume \"abc\" is not a number; it reads as 0; the program uses 50"));
    EXPECT_TRUE(Mentions(report, "2: option bkcolor \"red\" is not a colour (write # and six hexadecimal digits, "
                                 "like #ff8000); the program uses the default colour #000000\n"));
    EXPECT_TRUE(Mentions(report, "3: unknown column \"colour\"; the program ignores it (did you mean color?)"));
    EXPECT_FALSE(Mentions(report, "missing column"));
    EXPECT_TRUE(Mentions(report, "4: keyword \"[\" is not a valid regular expression; this rule never matches"));
    EXPECT_TRUE(Mentions(report, "4: volume -5 is outside 50 to 100; the program uses 100"));
    EXPECT_TRUE(Mentions(report, "4: color \"#ff80\" is not a colour"));
    EXPECT_FALSE(Mentions(report, "5: keyword"));  // "[" is plain text while regex is off
    EXPECT_TRUE(Mentions(report, "5: volume \"80%\" is not a plain number; it reads as 80\n"));
    EXPECT_TRUE(Mentions(report, "6: keyword is empty, so this rule matches every line"));
    EXPECT_FALSE(Mentions(report, "7: keyword"));  // exact: matches only an empty line
    EXPECT_TRUE(Mentions(report, "8: exact \"off\" counts as on"));
    EXPECT_TRUE(Mentions(report, "8: regex \"00\" counts as on"));
    EXPECT_TRUE(Mentions(report, "9: this row has 7 cells but there are 6 columns"));
    EXPECT_TRUE(Mentions(report, "10: this row begins with \"#\", but LogEx.kcsv has no comment rows; the program "
                                 "reads it as a rule\n"));
    EXPECT_TRUE(Mentions(report, "11: keyword is empty, so this rule matches every line"));  // regex on, too
    EXPECT_TRUE(Mentions(report, "12: unknown option \"MasterVolum\"; the program ignores it (did you mean MasterVolume?)"));
    EXPECT_TRUE(Mentions(report, "12: option FontItalic 256: only the low 8 bits count, so it reads as 0"));

    EXPECT_EQ(Report(u"LogEx.kcsv", "#format,kcsv\r\n#column,keyword\r\nally\r\n"),
              "1: missing option bkcolor; both log views are black\n"
              "2: missing column \"color\"; no line is ever copied to the extracted log\n");
}

TEST(TableCheck, OtherKnownTables) {
    const std::string volume = Report(u"Volume.kcsv", "#format,kcsv\r\n#option,MasterVolume:30,MasterVolume:80\r\n"
                                                      "#column,file\r\na.ogg\r\n");
    EXPECT_TRUE(Mentions(volume, "2: option MasterVolume 30 is outside 50 to 100; the program uses 50"));
    EXPECT_TRUE(Mentions(volume, "2: option \"MasterVolume\" is set again (first on line 2); the program uses the last one"));
    EXPECT_TRUE(Mentions(volume, "3: missing column \"Volume\"; every file plays at 100"));

    const std::string pets = Report(u"PetInfo.kcsv", "#format,kcsv\r\n#option,iFilterIndex:2,colHpBar:#12345g\r\n"
                                                     "#option,iStColumnWidthRatio:12,bHpBarEnabled:no,colBk:nothing,"
                                                     "colText:\r\n#column,x\r\n1\r\n");
    EXPECT_TRUE(Mentions(pets, "2: option iFilterIndex 2 is outside 0 to 1; the pet list then shows no pet"));
    EXPECT_TRUE(Mentions(pets, "2: option colHpBar \"#12345g\" is not a colour (write # and six hexadecimal digits, "
                               "like #ff8000); the program uses the default colour #ff9b9b\n"));
    EXPECT_TRUE(Mentions(pets, "3: option iStColumnWidthRatio 12 is outside 0 to 9; the program uses 9"));
    EXPECT_TRUE(Mentions(pets, "3: option bHpBarEnabled \"no\" is not a number"));
    // A colour of the pet list cannot be "no colour": the panel draws the table's default instead.
    EXPECT_TRUE(Mentions(pets, "3: option colBk \"nothing\" asks for no colour, which this value cannot be; the "
                               "program uses the default colour #ffffff\n"));
    EXPECT_TRUE(Mentions(pets, "3: option colText \"\" asks for no colour, which this value cannot be; the "
                               "program uses the default colour #000000\n"));
    EXPECT_TRUE(Mentions(pets, "4: PetInfo.kcsv holds options only; its columns are ignored"));
    EXPECT_TRUE(Mentions(pets, "5: PetInfo.kcsv holds options only; its rows are ignored"));

    const std::string places = Report(u"WindowPlacement.kcsv",
                                      "#format,kcsv\r\n#column,WindowID,rcNormalPosition.left,showCmd\r\nmorva,x,1\r\n");
    EXPECT_TRUE(Mentions(places, "2: missing column \"rcNormalPosition.top\""));
    EXPECT_TRUE(Mentions(places, "3: WindowID \"morva\" is not one of Morva, LogEx"));
    EXPECT_TRUE(Mentions(places, "3: rcNormalPosition.left \"x\" is not a number"));

    const std::string enchant = Report(u"EnchantTable.kcsv", "#format,kcsv\r\n#option,invoke3:12,invoke5:x,invoke05:1,invoke100:1\r\n"
                                                             "#column,type,id,text_en,text_jp\r\n#note,,,\r\n"
                                                             "FLAG,1,a,b\r\nflags,2,a,b\r\n");
    EXPECT_TRUE(Mentions(enchant, "2: option invoke5 \"x\" is not a number"));
    EXPECT_TRUE(Mentions(enchant, "2: unknown option \"invoke05\"; the program ignores it (did you mean invoke5?)"));
    EXPECT_TRUE(Mentions(enchant, "(did you mean invoke0 ... invoke99?)"));
    EXPECT_FALSE(Mentions(enchant, "4:"));  // note rows are skipped by the enchant table
    EXPECT_FALSE(Mentions(enchant, "5:"));  // kinds are compared without case
    EXPECT_TRUE(Mentions(enchant, "6: type \"flags\" is not one of category, flag"));
}

TEST(TableCheck, MusicRuleMonthDayAndHourCells) {
    EXPECT_EQ(Report(u"BGMEx.kcsv",
                     "#format,kcsv\r\n#column,orgfile,month,day,hour,playlist\r\n"
                     "*,12/1/2,*,Morning/Noon/夜/23,a.ogg\r\n"
                     "a.mid,3 / 4,05/x,morning/24/*/ 5,b.ogg\r\n#off,,,,\r\n"),
              "4: month \"3 / 4\": the spaces around \"/\" belong to the numbers, so \"3 \" never matches; write "
              "them without spaces\n"
              "4: day \"05/x\": \"05\" never matches; numbers are compared as written without leading zeros (5)\n"
              "4: day \"05/x\": \"x\" is not a number, so it never matches\n"
              "4: hour \"morning/24/*/ 5\": \"morning\" never matches; time-of-day names are case-sensitive (write "
              "Morning)\n"
              "4: hour \"morning/24/*/ 5\": hour 24 never comes; hours run from 0 to 23\n"
              "4: hour \"morning/24/*/ 5\": \"*\" means any only when it stands alone\n"
              "4: hour \"morning/24/*/ 5\": the spaces around \"/\" belong to the numbers, so \" 5\" never matches; "
              "write them without spaces\n"
              "5: this row begins with \"#\", but BGMEx.kcsv has no comment rows; the program reads it as a music "
              "rule\n");
}

TEST(TableCheck, MessagesInJapanese) {
    EXPECT_EQ(Report(u"LogEx.kcsv", "#format,kcsv\r\n#option,FontSise:3\r\n#column,keyword\r\n", 1),
              "1: オプション bkcolor がありません。両方のログの背景は黒になります\n"
              "2: 知らないオプション \"FontSise\" です。プログラムは無視します (FontSize のことですか?)\n"
              "3: 列 \"color\" がありません。抽出ログには一行も写されません\n");
}

using vrltest::RunTool;

// The command-line tool itself, run as a player runs it, in a folder laid out like an installation.
class VrlTables : public testing::Test {
protected:
    void SetUp() override {
        tool_ = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "vrltables";
        if (access(tool_.c_str(), X_OK) != 0) GTEST_SKIP() << "vrltables not built beside the tests";
        char folder[] = "/tmp/vrltables-XXXXXX";
        ASSERT_NE(mkdtemp(folder), nullptr);
        root_ = folder;
        std::filesystem::create_directory(root_ / "Vorrel");
        std::filesystem::copy_file(std::filesystem::path(VRL_TEST_DATA) / "LogEx.kcsv", root_ / "Vorrel/LogEx.kcsv");
    }
    void TearDown() override {
        if (!root_.empty()) std::filesystem::remove_all(root_);
    }
    // The tool started in the program folder.
    std::string Run(const std::string& args, int& status, const std::string& lang = "C") {
        return RunTool("cd " + root_.string() + "/Vorrel && LANG=" + lang + " LC_ALL= " + tool_.string() + " " + args,
                       status);
    }

    std::filesystem::path tool_;
    std::filesystem::path root_;
};

TEST_F(VrlTables, ChecksFilesWithOrWithoutTheCommandAndTheTablesOfItsFolder) {
    int status = 0;
    const std::string output = Run("check LogEx.kcsv", status);
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(Mentions(output, "LogEx.kcsv:2: option MasterVolume 120 is outside 50 to 100")) << output;
    EXPECT_TRUE(Mentions(output, "LogEx.kcsv:12: a second #column line"));  // read to its end
    EXPECT_EQ(Run("LogEx.kcsv", status), output);  // a dropped file is checked
    EXPECT_TRUE(Mentions(Run("", status), output));  // no arguments: the installation and the tables here
    EXPECT_TRUE(Mentions(Run("", status, "ja_JP.UTF-8"), "LogEx.kcsv:12: 2 つ目の #column 行です"));

    std::ofstream(root_ / "Vorrel/escapes.kcsv") << "#format,kcsv\r\n#option,a:1\r\n#column,k,v\r\n\"q\"\"\\\r\n\tx\",日本\r\n";
    EXPECT_EQ(Run("dump escapes.kcsv", status),
              "{\n  \"options\": [\n    {\"name\": \"a\", \"value\": \"1\"}\n  ],\n"
              "  \"columns\": [\"k\", \"v\"],\n  \"rows\": [\n    [\"q\\\"\\\\\\r\\n\\tx\", \"日本\"]\n  ]\n}\n");
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(Mentions(Run("dump missing.kcsv", status), "cannot read the file"));
    EXPECT_EQ(status, 1);
    Run("dump", status);
    EXPECT_EQ(status, 2);
}

TEST_F(VrlTables, TriesALogLineAsTheLogWindowHandlesIt) {
    std::ofstream(root_ / "Vorrel/RemoteTalk.exe") << "stand-in";
    std::string game = root_.string() + "/";
    for (char& c : game) c = c == '/' ? '\\' : c;
    int status = 0;
    const std::string output = Run("try LogEx.kcsv '[3] You gain a level up'", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(output,
              "line: \"[3] You gain a level up\"\n"
              "rule 4 (line 9) takes the line: \"level up\" occurs in the line\n"
              "  no colour: the line is not copied to the extracted log\n"
              "  speech: \"You gain a level up\"\n"
              "  sound \"levelup.wav\" at volume 0.50, tried in this order until one plays:\n"
              "    " + game + "user\\music\\levelup.wav\n"
              "    " + game + "user\\sound\\levelup.wav\n"
              "    " + game + "sound\\levelup.wav\n"
              "rules before it that came close:\n"
              "  rule 2 (line 7): \"^You (gain|lose\" is not a valid regular expression, so the rule never matches\n");
    EXPECT_TRUE(Mentions(Run("try LogEx.kcsv '[12] x'", status),
                         "  rule 5 (line 10): exact is on, so the line must be exactly \"[12]\"; the keyword only "
                         "occurs in it\n"));
    EXPECT_TRUE(Mentions(Run("try LogEx.kcsv '!x'", status), "it is a notice"));
    EXPECT_TRUE(Mentions(Run("try Volume.kcsv a", status), "try knows these tables: LogEx.kcsv, BGMEx.kcsv"));
    EXPECT_EQ(status, 2);
}

}  // namespace
