#include "settings/kcsv.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vrl::KcsvFile;

TEST(KcsvWrite, BuildingATableTheWayOwnersSave) {
    EXPECT_EQ(KcsvFile().ToUtf8(), "#format,kcsv\r\n#column\r\n");
    KcsvFile t;
    t.AddColumn(u"File");
    t.AddColumn(u"file");  // already there
    t.AddColumn(u"Volume");
    t.InsertRow(0);
    t.SetCell(0, 0, u"b.ogg");
    t.InsertRow(0);
    t.SetCell(0, 0, u"a.ogg");
    t.SetCell(2, 0, u"c.ogg");   // row count: appends
    t.SetCell(9, 0, u"lost");    // past the end: nothing
    t.SetCell(0, 5, u"lost");    // no such cell: nothing
    t.InsertRow(40);             // past the end: appended
    EXPECT_EQ(t.ToUtf8(), "#format,kcsv\r\n#column,File,Volume\r\na.ogg,\r\nb.ogg,\r\nc.ogg,\r\n,\r\n");
}

TEST(KcsvWrite, QuotesOnlyForCommaOrDoubleQuote) {
    KcsvFile t;
    t.AddColumn(u"text");
    t.AddColumn(u"more");
    t.SetCell(0, 0, u"a,b");
    t.SetCell(0, 1, u"say \"hi\"");
    t.SetCell(1, 0, u" lead\r\nbreak");
    t.SetCell(1, 1, u"#not a note");
    EXPECT_EQ(t.ToUtf8(),
              "#format,kcsv\r\n#column,text,more\r\n\"a,b\",\"say \"\"hi\"\"\"\r\n"
              " lead\r\nbreak,#not a note\r\n");
    // A note row keeps its first cell only.
    ASSERT_TRUE(t.Parse(u"#format,kcsv\r\n#column,a,b\r\n#note,x\r\n\"#quoted,note\"\r\n"));
    EXPECT_EQ(t.ToUtf8(), "#format,kcsv\r\n#column,a,b\r\n#note\r\n#quoted,note\r\n");
}

TEST(KcsvWrite, OptionsKeepTheirPlaceAndAreQuotedOnEitherSideOfTheColon) {
    KcsvFile t;
    t.SetOption(u"MasterVolume", u"80");
    t.SetOption(u"a,b", u"c\"d");
    t.SetOption(u"Path", u"C:\\x:y");
    t.SetOption(u"mastervolume", u"90");  // replaces, keeps the first spelling and place
    EXPECT_EQ(t.ToUtf8(),
              "#format,kcsv\r\n#option,MasterVolume:90\r\n#option,\"a,b\":\"c\"\"d\"\r\n"
              "#option,Path:C:\\x:y\r\n#column\r\n");
    // Repeated options are all written back; a change goes to the one lookups find, the last.
    ASSERT_TRUE(t.Parse(u"#format,kcsv\r\n#option,MasterVolume:80\r\n#option,MASTERVOLUME:60\r\n"));
    t.SetOption(u"mastervolume", u"70");
    EXPECT_EQ(t.ToUtf8(), "#format,kcsv\r\n#option,MasterVolume:80\r\n#option,MASTERVOLUME:70\r\n#column\r\n");
}

TEST(KcsvUtf8, InvalidSequencesAndLoneSurrogatesBecomeReplacementCharacters) {
    using vrl::Utf8ToUtf16;
    EXPECT_EQ(Utf8ToUtf16("\xEF\xBB\xBF#"), u"\uFEFF#");
    EXPECT_EQ(Utf8ToUtf16("a\xFF" "b"), u"a\uFFFDb");
    EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD");            // overlong
    EXPECT_EQ(Utf8ToUtf16("\xE3\x81"), u"\uFFFD");                  // cut short at the end
    EXPECT_EQ(Utf8ToUtf16("\xE3\x81" "a"), u"\uFFFD" "a");
    EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // encoded surrogate
    EXPECT_EQ(Utf8ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xF0\x9F\x98\x80"), u"\U0001F600");
    EXPECT_EQ(Utf8ToUtf16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));

    using vrl::Utf16ToUtf8;
    EXPECT_EQ(Utf16ToUtf8(u"aé日\U0001F600"), "a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80");
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD800)) + u"x"), "\xEF\xBF\xBDx");
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xDC00))), "\xEF\xBF\xBD");
}

}  // namespace
