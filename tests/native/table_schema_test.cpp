#include "settings/table_schema.h"

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

TEST(TableSchema, RangesAsTheOwnersApplyThem) {
    const vrl::ValueSpec& logVolume = vrl::FindColumn(*vrl::FindTableSchema(u"LogEx.kcsv"), u"volume")->value;
    EXPECT_EQ(vrl::ApplyRange(logVolume.range, 120), 100);
    EXPECT_EQ(vrl::ApplyRange(logVolume.range, 10), 50);
    EXPECT_EQ(vrl::ApplyRange(logVolume.range, -5), 100);  // compared as unsigned
    const vrl::ValueSpec& fileVolume = vrl::FindColumn(*vrl::FindTableSchema(u"Volume.kcsv"), u"Volume")->value;
    EXPECT_EQ(vrl::ApplyRange(fileVolume.range, 30), 50);
    EXPECT_EQ(vrl::ApplyRange(fileVolume.range, 2147483647), 100);
    const vrl::ValueSpec& ratio = vrl::FindOption(*vrl::FindTableSchema(u"PetInfo.kcsv"), u"iHpColumnWidthRatio")->value;
    EXPECT_EQ(vrl::ApplyRange(ratio.range, -3), 0);
}

}  // namespace
