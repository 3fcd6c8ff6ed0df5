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

// Owners read their values through the schema (their own tests cover each clamp); what only
// the schema shows: the two volume tables clamp differently, and a face is cut between pairs.
TEST(TableSchema, VolumesClampByTheirTableAndFacesKeepPairsWhole) {
    namespace logex = vrl::tables::logex;
    const vrl::TableSchema& log = vrl::SchemaOf(logex::kFile);
    EXPECT_EQ(log.Column(logex::kVolume).value.NumberOf(u"-5"), 100);  // compared as unsigned
    EXPECT_EQ(vrl::ApplyRange(vrl::SchemaOf(u"Volume.kcsv").Column(u"volume").value.range, -3), 50);

    vrl::KcsvFile table;
    ASSERT_TRUE(table.Parse(u"#format,kcsv\r\n#option,FontFace:012345678901234567890123456789\U0001F600x\r\n"));
    EXPECT_EQ(log.OptionText(table, logex::kFontFace), u"012345678901234567890123456789");
}

}  // namespace
