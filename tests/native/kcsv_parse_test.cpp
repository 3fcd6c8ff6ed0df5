#include "settings/kcsv.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vrl::KcsvFile;
using Cells = std::vector<std::u16string>;

KcsvFile Parsed(std::u16string_view text, bool expected = true) {
    KcsvFile table;
    EXPECT_EQ(table.Parse(text), expected);
    return table;
}

TEST(KcsvParse, ReadsTheSmallFileOfTheFormat) {
    const KcsvFile t = Parsed(
        u"#format,kcsv\r\n#option,MasterVolume:80\r\n#option,FontFace:Meiryo UI,FontSize:10\r\n"
        u"#column,keyword,exact,regex,talk,sound,color\r\nally,1,,,,#ff8000\r\n");
    ASSERT_EQ(t.Options().size(), 3u);
    EXPECT_EQ(t.OptionValue(u"fontface"), u"Meiryo UI");
    EXPECT_EQ(t.OptionValue(u"FONTSIZE"), u"10");
    EXPECT_EQ(t.Columns(), (Cells{u"keyword", u"exact", u"regex", u"talk", u"sound", u"color"}));
    ASSERT_EQ(t.RowCount(), 1u);
    EXPECT_EQ(t.Rows()[0], (Cells{u"ally", u"1", u"", u"", u"", u"#ff8000"}));
    EXPECT_EQ(t.ColumnIndex(u"COLOR"), 5);
    EXPECT_EQ(t.ColumnIndex(u"colour"), -1);
}

TEST(KcsvParse, RejectsTextThatIsNotKcsv) {
    for (const char16_t* text : {u"", u"#format\r\n", u"#Format,kcsv\r\n", u"#format,KCSV\r\n", u"\uFEFF#format,kcsv\r\n"})
        Parsed(text, false);
    // LF-only line ends leave one long line whose second cell runs past "kcsv".
    const KcsvFile lf = Parsed(u"#format,kcsv\n#column,a\n1\n", false);
    EXPECT_TRUE(lf.Columns().empty());
    EXPECT_EQ(lf.RowCount(), 0u);
    Parsed(u"#format,kcsv,extra,cells\r\n", true);
    Parsed(u"#format,kcsv", true);
}

TEST(KcsvParse, StopsAtSecondFormatOrColumnLineKeepingWhatCameBefore) {
    KcsvFile t;
    EXPECT_FALSE(t.Parse(u"#format,kcsv\r\n#option,a:1\r\n#column,x\r\n1\r\n#column,y\r\n2\r\n"));
    EXPECT_EQ(t.OptionValue(u"a"), u"1");
    EXPECT_EQ(t.Columns(), Cells{u"x"});
    EXPECT_EQ(t.RowCount(), 1u);
    EXPECT_FALSE(t.Parse(u"#format,kcsv\r\nr1\r\n#format,kcsv\r\nr2\r\n"));
    EXPECT_EQ(t.RowCount(), 1u);
    // Keywords are case-sensitive: "#Column" is a data row, not a second column line.
    EXPECT_TRUE(t.Parse(u"#format,kcsv\r\n#column,x\r\n#Column,y\r\n"));
    EXPECT_EQ(t.Rows()[0], (Cells{u"#Column", u"y"}));
}

TEST(KcsvParse, OptionCells) {
    const KcsvFile t = Parsed(
        u"#format,kcsv\r\n#option,Path:C:\\x,:5,Empty:,NoColon,,MasterVolume:80\r\n"
        u"#option,mastervolume:90\r\n");
    ASSERT_EQ(t.Options().size(), 5u);
    EXPECT_EQ(t.Options()[0], (KcsvFile::Option{u"Path", u"C:\\x"}));
    EXPECT_EQ(t.Options()[1], (KcsvFile::Option{u"Empty", u""}));
    EXPECT_EQ(t.OptionIndex(u"empty"), 1);
    EXPECT_EQ(t.Options()[2], (KcsvFile::Option{u"NoColon", u""}));
    EXPECT_EQ(t.OptionValue(u"MASTERVOLUME"), u"90");
    EXPECT_EQ(t.OptionIndex(u"MasterVolume"), 4);
    EXPECT_EQ(t.OptionValue(u"missing"), u"");
    EXPECT_EQ(t.OptionIndex(u"missing"), -1);
}

TEST(KcsvParse, PadsShortRowsAfterTheColumnLineOnly) {
    const KcsvFile t = Parsed(u"#format,kcsv\r\nearly\r\n#column,a,b,c\r\n1\r\n1,2,3,4\r\n\r\n");
    ASSERT_EQ(t.RowCount(), 4u);
    EXPECT_EQ(t.Rows()[0], Cells{u"early"});
    EXPECT_EQ(t.Rows()[1], (Cells{u"1", u"", u""}));
    EXPECT_EQ(t.Rows()[2], (Cells{u"1", u"2", u"3", u"4"}));
    EXPECT_EQ(t.Rows()[3], (Cells{u"", u"", u""}));  // a blank line is a row
}

TEST(KcsvParse, ColumnNamedTwiceKeepsEveryPositionAndIsFoundFirst) {
    const KcsvFile t = Parsed(u"#format,kcsv\r\n#column,a,B,b,c\r\n1,2,3,4\r\n");
    EXPECT_EQ(t.Columns(), (Cells{u"a", u"B", u"b", u"c"}));
    EXPECT_EQ(t.ColumnIndex(u"b"), 1);
    EXPECT_EQ(t.ColumnIndex(u"c"), 3);
    EXPECT_EQ(t.CellInt(0, u"c", 0), 4);
}

TEST(KcsvTokenise, QuotedCells) {
    auto cells = [](std::u16string_view text) { return vrl::TokeniseKcsv(text).at(0).cells; };
    EXPECT_EQ(cells(u"\"a,b\",c"), (Cells{u"a,b", u"c"}));
    EXPECT_EQ(cells(u"\"say \"\"hi\"\"\""), Cells{u"say \"hi\""});
    EXPECT_EQ(cells(u"\"ab\"cd,e"), (Cells{u"abcd", u"e"}));
    // After the closing quote everything up to the comma is literal, pairs included.
    EXPECT_EQ(cells(u"\"a\"b\"\"c"), Cells{u"ab\"\"c"});
    EXPECT_EQ(cells(u"a\"b\"c,d"), (Cells{u"a\"b\"c", u"d"}));
    EXPECT_EQ(cells(u"\"\""), Cells{u""});
    EXPECT_EQ(cells(u"\"\"\"\""), Cells{u"\""});
}

TEST(KcsvTokenise, LineBreaksAndEnds) {
    const auto lines = vrl::TokeniseKcsv(u"\"x\r\ny\",z\r\na\rb\nc\r\n\r\nlast,");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].cells, (Cells{u"x\r\ny", u"z"}));
    EXPECT_EQ(lines[1].cells, Cells{u"a\rb\nc"});
    EXPECT_EQ(lines[2].cells, Cells{u""});
    EXPECT_EQ(lines[3].cells, (Cells{u"last", u""}));
    // Physical lines as an editor counts them (every LF starts one).
    EXPECT_EQ(lines[0].line, 1u);
    EXPECT_EQ(lines[1].line, 3u);
    EXPECT_EQ(lines[2].line, 5u);
    EXPECT_EQ(lines[3].line, 6u);

    EXPECT_EQ(vrl::TokeniseKcsv(u"a,b").at(0).cells, (Cells{u"a", u"b"}));
    EXPECT_EQ(vrl::TokeniseKcsv(u"a,b\r\n").size(), 1u);
    EXPECT_EQ(vrl::TokeniseKcsv(u"a\r").at(0).cells, Cells{u"a\r"});
    EXPECT_TRUE(vrl::TokeniseKcsv(u"").empty());
    // The text ends at its first NUL.
    EXPECT_EQ(vrl::TokeniseKcsv(std::u16string(u"a,b\0c,d", 7)).at(0).cells, (Cells{u"a", u"b"}));
}

TEST(KcsvTokenise, UnclosedQuoteRunsToTheEnd) {
    const auto lines = vrl::TokeniseKcsv(u"a\r\n\"open,\r\nstill\"\"");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_FALSE(lines[0].unclosedQuote);
    EXPECT_TRUE(lines[1].unclosedQuote);
    EXPECT_EQ(lines[1].cells, Cells{u"open,\r\nstill\""});
    EXPECT_EQ(vrl::TokeniseKcsv(u"\"").at(0).cells, Cells{u""});
}

TEST(KcsvParse, SourceLinesNameWhereEachPartStarts) {
    KcsvFile t;
    vrl::KcsvSourceLines where;
    ASSERT_TRUE(t.ParseLines(
        vrl::TokeniseKcsv(u"#format,kcsv\r\n#option,a:1,b:2\r\n#column,k\r\n\"two\r\nlines\"\r\nx\r\n"),
        &where));
    EXPECT_EQ(where.options, (std::vector<unsigned>{2, 2}));
    EXPECT_EQ(where.columnLine, 3u);
    EXPECT_EQ(where.rows, (std::vector<unsigned>{4, 6}));
    EXPECT_EQ(where.stopLine, 0u);
    EXPECT_FALSE(t.ParseLines(vrl::TokeniseKcsv(u"#format,kcsv\r\n\r\n#format,kcsv\r\n"), &where));
    EXPECT_EQ(where.stopLine, 3u);
}

TEST(KcsvRead, ReadIntFollowsTheRuntime) {
    EXPECT_EQ(vrl::ReadInt(u" \t-17xyz"), -17);
    EXPECT_EQ(vrl::ReadInt(u"+8"), 8);
    EXPECT_EQ(vrl::ReadInt(u""), 0);
    EXPECT_EQ(vrl::ReadInt(u"abc"), 0);
    EXPECT_EQ(vrl::ReadInt(u"- 5"), 0);
    EXPECT_EQ(vrl::ReadInt(u"2147483647"), 2147483647);
    EXPECT_EQ(vrl::ReadInt(u"-2147483648"), -2147483647 - 1);
    EXPECT_EQ(vrl::ReadInt(u"\uFF11"), 0);  // full-width digits are not digits here
    EXPECT_TRUE(vrl::ReadSwitch(u"00"));
    EXPECT_TRUE(vrl::ReadSwitch(u" "));
    EXPECT_FALSE(vrl::ReadSwitch(u"0"));
    EXPECT_FALSE(vrl::ReadSwitch(u""));
}

TEST(KcsvRead, CellAccessorsAndFallbacks) {
    const KcsvFile t = Parsed(u"#format,kcsv\r\n#column,name,volume\r\nx,70\r\ny,abc\r\nz,1,extra\r\n");
    EXPECT_EQ(t.Cell(0, 0, u"-"), u"x");
    EXPECT_EQ(t.Cell(2, 2, u"-"), u"extra");
    EXPECT_EQ(t.Cell(2, 3, u"-"), u"-");
    EXPECT_EQ(t.Cell(99, 0, u"fallback"), u"fallback");
    EXPECT_EQ(t.CellInt(0, u"VOLUME", -1), 70);
    EXPECT_EQ(t.CellInt(1, u"volume", -1), 0);
    EXPECT_EQ(t.CellInt(0, u"missing", -1), -1);
    EXPECT_EQ(t.CellInt(99, u"volume", -1), 2147483647);
    // A row written before the column line may be too short for a column.
    const KcsvFile early = Parsed(u"#format,kcsv\r\nonly\r\n#column,a,b\r\n");
    EXPECT_EQ(early.CellInt(0, u"b", -1), 2147483647);
}

}  // namespace
