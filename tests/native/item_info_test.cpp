// The enchant table as the item panel loads it (built-in copy, then the player's file on top) and
// the rows the panel shows for an item record.
#include "panels/enchant_table.h"
#include "panels/item_info.h"
#include "panels/item_record.h"
#include "panels/quick_search.h"
#include "settings/kcsv.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using vrl::EnchantTables;
using vrl::ItemInfoRecord;
using vrl::ItemRow;

const char kBuiltIn[] =
    "#format,kcsv\r\n"
    "#option,invoke5:30,invoke6:31\r\n"
    "#column,type,id,text_en,text_jp\r\n"
    "category,10000,Attribute,属性\r\n"
    "category,80000,Invoke,発動\r\n"
    "category,90000,Ammo,弾\r\n"
    "flag,1,Blessed,祝福\r\n"
    "flag,10,Precious,貴重\r\n"
    "attribute,12,Fire resistance,火炎耐性\r\n"
    "attribute,13,Cold resistance,冷気耐性\r\n"
    "Magic,30,Fire bolt,ファイアボルト\r\n"
    "other,12,Sustain,維持\r\n"
    "bullet,3,Burst,バースト\r\n"
    "#note,99,Never stored,保存しない\r\n"
    "unknown,14,Ignored,無視\r\n";

const char kPlayerFile[] =
    "#format,kcsv\r\n"
    "#option,invoke5:0,invoke7:-2\r\n"
    "#column,type,id,text_en,text_jp\r\n"
    "attribute,12,Flame ward,炎の守り\r\n"
    "#,13,Commented,注釈\r\n";

EnchantTables Loaded(int language) {
    EnchantTables tables;
    EXPECT_TRUE(vrl::FillEnchantTablesFromUtf8(kBuiltIn, language, tables));
    vrl::KcsvFile file;
    EXPECT_TRUE(file.ParseUtf8(kPlayerFile));
    vrl::FillEnchantTables(file, language, tables);
    return tables;
}

TEST(EnchantTable, BuiltInThenPlayerFileInEitherLanguage) {
    const EnchantTables en = Loaded(0);
    EXPECT_EQ(EnchantTables::Text(en.effect, 12), u"Flame ward") << "the file replaces the built-in text";
    EXPECT_EQ(EnchantTables::Text(en.effect, 13), u"Cold resistance") << "built-in ids the file lacks remain";
    EXPECT_EQ(EnchantTables::Text(en.effect, 30), u"Fire bolt") << "kinds are compared without case";
    EXPECT_EQ(en.InvokeEffect(5), 30) << "invoke 0 in the file does not clear the built-in entry";
    EXPECT_EQ(en.InvokeEffect(7), 0);
    EXPECT_EQ(en.invoke.count(7), 0u);
    EXPECT_TRUE(EnchantTables::Text(en.effect, 99).empty()) << "rows beginning with # are notes";
    EXPECT_TRUE(EnchantTables::Text(en.effect, 14).empty());
    EXPECT_EQ(en.flag.size(), 2u);

    const EnchantTables ja = Loaded(1);
    EXPECT_EQ(EnchantTables::Text(ja.effect, 12), u"炎の守り");
    EXPECT_EQ(EnchantTables::Text(ja.category, 10000), u"属性");
}

TEST(EnchantTable, MissingColumnsShortRowsAndBadSources) {
    EnchantTables tables;
    // Without an "id" column every row lands on 0 and the last one wins.
    EXPECT_TRUE(vrl::FillEnchantTablesFromUtf8("#format,kcsv\r\n#column,type,text_en\r\n"
                                               "other,First\r\nother,Second\r\n",
                                               0, tables));
    EXPECT_EQ(EnchantTables::Text(tables.other, 0), u"Second");
    EXPECT_EQ(tables.other.size(), 1u);

    EXPECT_TRUE(vrl::FillEnchantTablesFromUtf8("#format,kcsv\r\n#column,type,id,text_en\r\nflag,2,Sealed\r\n", 1,
                                               tables));
    EXPECT_EQ(tables.flag.count(2), 1u);
    EXPECT_EQ(EnchantTables::Text(tables.flag, 2), u"") << "no text_jp column: empty texts";

    EnchantTables untouched;
    EXPECT_FALSE(vrl::FillEnchantTablesFromUtf8("", 0, untouched));
    EXPECT_FALSE(vrl::FillEnchantTablesFromUtf8("\xEF\xBB\xBF#format,kcsv\r\n", 0, untouched));
    EXPECT_FALSE(vrl::FillEnchantTablesFromUtf8(std::string("\0\xff garbage", 10), 0, untouched));
    EXPECT_TRUE(untouched.effect.empty() && untouched.invoke.empty());
}

ItemInfoRecord Record(std::uint32_t properties, std::initializer_list<vrl::ItemEnchantment> slots) {
    ItemInfoRecord record;
    record.properties = properties;
    std::size_t i = 0;
    for (const auto& slot : slots) record.enchantments[i++] = slot;
    return record;
}

TEST(ItemRows, PropertiesFirstThenEnchantmentsByCategory) {
    const EnchantTables tables = Loaded(0);
    // Bits 1 and 10 set, 2 clear, and an unshown bit 3; empty slots are skipped.
    const auto rows = vrl::BuildItemRows(
        Record((1u << 1) | (1u << 3) | (1u << 10),
               {{12, 3}, {0, 9}, {10012, -4}, {80005, 1}, {80009, 2}, {90003, 7}, {40000, 5}, {-12, 1}}),
        tables);
    const std::vector<ItemRow> expected = {
        {u"1", u"Blessed", u""},
        {u"1", u"Precious", u""},
        {u"12", u"Sustain", u"(3)"},
        {u"10012", u"Attribute[Flame ward]", u"(-4)"},
        {u"80005", u"Invoke[Fire bolt]", u"(1)"},
        {u"80009", u"Invoke[]", u"(2)"},  // no invoke entry: effect id 0, which has no text
        {u"90003", u"Ammo[Burst]", u"(7)"},
        {u"40000", u"[]", u"(5)"},  // a base without category text
        {u"-12", u"", u"(1)"},
    };
    EXPECT_EQ(rows, expected);
    EXPECT_TRUE(vrl::BuildItemRows(Record(0, {}), tables).empty());
    // Without any table the rows still come, with empty texts.
    EXPECT_EQ(vrl::BuildItemRows(Record(0, {{10012, 3}}), EnchantTables{}),
              (std::vector<ItemRow>{{u"10012", u"[]", u"(3)"}}));
}

TEST(ItemRecord, WireLayoutShortLongAndNamelessPayloads) {
    ItemInfoRecord record = Record(0x402, {{10012, 3}});
    record.name = std::u16string(70, u'剣');
    record.chipId = -7;
    record.itemId = 512;
    record.enchantments[14] = {90003, 0x12345678};
    std::vector<unsigned char> bytes = vrl::EncodeItemRecord(record);
    ASSERT_EQ(bytes.size(), 260u);
    EXPECT_EQ(bytes[128], 0xF9);  // chip id -7, little-endian
    EXPECT_EQ(bytes[132], 0x00);
    EXPECT_EQ(bytes[133], 0x02);
    EXPECT_EQ(bytes[137], 0x04);
    EXPECT_EQ(bytes[140], 0x1C);  // 10012 = 0x271C
    EXPECT_EQ(bytes[256], 0x78);

    // The name fills all 128 bytes without a NUL and is cut at 64 units.
    const ItemInfoRecord back = vrl::DecodeItemRecord(bytes.data(), bytes.size());
    EXPECT_EQ(back.name, std::u16string(64, u'剣'));
    EXPECT_EQ(back.chipId, -7);
    EXPECT_EQ(back.itemId, 512);
    EXPECT_EQ(back.properties, 0x402u);
    EXPECT_EQ(back.enchantments[14].value, 0x12345678);

    // Short: zero-filled past the end (slot 0's value is cut off).
    const ItemInfoRecord shortOne = vrl::DecodeItemRecord(bytes.data(), 144);
    EXPECT_EQ(shortOne.enchantments[0].id, 10012);
    EXPECT_EQ(shortOne.enchantments[0].value, 0);
    EXPECT_EQ(shortOne.enchantments[14].id, 0);
    // Long: read up to 260 bytes.
    bytes.resize(4096, 0xAB);
    EXPECT_EQ(vrl::DecodeItemRecord(bytes.data(), bytes.size()).enchantments[14].id, 90003);
    // Nothing at all: an empty record.
    const ItemInfoRecord none = vrl::DecodeItemRecord(nullptr, 260);
    EXPECT_TRUE(none.name.empty());
    EXPECT_EQ(none.properties, 0u);
    const char16_t named[] = u"Dagger";
    EXPECT_EQ(vrl::DecodeItemRecord(named, sizeof named).name, u"Dagger");
}

TEST(QuickSearchWords, OnePerRowInFileOrder) {
    vrl::KcsvFile table;
    ASSERT_TRUE(table.ParseUtf8("#format,kcsv\r\n#column,note,keyword\r\nx,b\r\ny,a\r\nz\r\n"));
    EXPECT_EQ(vrl::QuickSearchWords(table), (std::vector<std::u16string>{u"b", u"a", u""}));
    ASSERT_TRUE(table.ParseUtf8("#format,kcsv\r\n#column,word\r\nb\r\na\r\n"));
    EXPECT_EQ(vrl::QuickSearchWords(table), (std::vector<std::u16string>{u"", u""}));
}

}  // namespace
