#include "settings/table_schema.h"

#include "settings/kcsv.h"

#include <gtest/gtest.h>

namespace {

TEST(TableSchema, FindsKnownFilesByBaseNameInAnyCase) {
    ASSERT_NE(vrl::FindTableSchema(u"C:\\Morva\\Vorrel\\logex.KCSV"), nullptr);
    EXPECT_EQ(vrl::FindTableSchema(u"./tables/BGMEX.kcsv")->fileName, u"BGMEx.kcsv");
    EXPECT_EQ(vrl::FindTableSchema(u"Label.kcsv"), nullptr);
    EXPECT_EQ(vrl::FindTableSchema(u"LogEx.kcsv.bak"), nullptr);
    EXPECT_EQ(vrl::KnownTables().size(), 7u);

    const vrl::TableSchema& enchant = *vrl::FindTableSchema(u"EnchantTable.kcsv");
    EXPECT_NE(vrl::FindOption(enchant, u"invoke0"), nullptr);
    EXPECT_NE(vrl::FindOption(enchant, u"INVOKE99"), nullptr);
    EXPECT_EQ(vrl::FindOption(enchant, u"invoke100"), nullptr);
    EXPECT_EQ(vrl::FindOption(enchant, u"invoke07"), nullptr);
    EXPECT_EQ(vrl::FindOption(enchant, u"invoke"), nullptr);
    EXPECT_NE(vrl::FindColumn(*vrl::FindTableSchema(u"Volume.kcsv"), u"volume"), nullptr);
}

TEST(TableSchema, ValuesAsTheOwnersReadThem) {
    namespace logex = vrl::tables::logex;
    namespace petinfo = vrl::tables::petinfo;
    const vrl::TableSchema& log = vrl::SchemaOf(logex::kFile);
    const vrl::ValueSpec& volume = log.Column(logex::kVolume).value;
    EXPECT_EQ(volume.NumberOf(u"120"), 100);
    EXPECT_EQ(volume.NumberOf(u"abc"), 50);
    EXPECT_EQ(volume.NumberOf(u"-5"), 100);  // compared as unsigned
    EXPECT_EQ(volume.NumberOf(u"", false), 100);
    EXPECT_EQ(vrl::ApplyRange(vrl::SchemaOf(u"Volume.kcsv").Column(u"volume").value.range, -3), 50);

    vrl::KcsvFile table;
    ASSERT_TRUE(table.Parse(u"#format,kcsv\r\n#option,FontSize:0,FontItalic:256,colHpBar:red,"
                            u"FontFace:012345678901234567890123456789\U0001F600x\r\n"));
    EXPECT_EQ(log.OptionNumber(table, logex::kFontSize), 9);
    EXPECT_EQ(log.OptionNumber(table, logex::kFontItalic), 0);  // only the low eight bits count
    EXPECT_EQ(log.OptionNumber(table, logex::kMasterVolume), 100);
    EXPECT_EQ(log.OptionText(table, logex::kFontFace), u"012345678901234567890123456789");  // a pair is not split
    EXPECT_EQ(log.OptionText(vrl::KcsvFile(), logex::kFontFace), u"Meiryo UI");

    const vrl::TableSchema& pets = vrl::SchemaOf(petinfo::kFile);
    EXPECT_EQ(pets.OptionColour(table, petinfo::kBarColour[1]), vrl::MakeColour(255, 155, 155));
    EXPECT_EQ(pets.OptionNumber(table, petinfo::kBarRatio[3]), 1);
    EXPECT_EQ(pets.Option(petinfo::kBarRatio[0]).value.NumberOf(u"12"), 9);
    EXPECT_EQ(pets.OptionNumber(table, petinfo::kColumnWidth[1]), 160);
}

}  // namespace
