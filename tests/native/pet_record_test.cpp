#include "panels/pet_options.h"
#include "panels/pet_record.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

using vrl::PetRecord;
using vrl::PetRows;
using Pet = PetRecord;

// The message as the module sends it: one 112-byte record per slot.
std::vector<unsigned char> Message(const std::vector<Pet>& pets) {
    std::string bytes;
    for (const Pet& pet : pets) pet.Encode(bytes);
    return std::vector<unsigned char>(bytes.begin(), bytes.end());
}

const Pet kPutit = Pet::Make("putit", 1, 3, 10, 50, 20, 30, 5, 8, 70, 100);
const Pet kDog = Pet::Make("dog", 6, 7, 0, 90, 40, 40, 0, 0, 100, 100);
const Pet kCat = Pet::Make("cat", 7, 2, 1, 9, 9, 9, 1, 1, 1, 1);
const Pet kEmpty;

PetRows::Update Take(PetRows& rows, const std::vector<Pet>& pets, int filter = vrl::kPetFilterAll) {
    const auto bytes = Message(pets);
    return rows.Take(bytes.data(), pets.size(), filter);
}

TEST(PetRecord, DecodesTheWireLayoutAndCountsOnlyWhatThePayloadHolds) {
    Pet museum = Pet::Make("Gwen", 9, 12, 300, 1000, -5, 0, 1, 2, 3, 4, 101);
    museum.chipId = 1000;
    const auto bytes = Message({museum});
    const PetRecord pet = PetRecord::Decode(bytes.data());
    EXPECT_EQ(pet.chipId, 1000);
    EXPECT_EQ(bytes[68], 9);  // status right after the name
    EXPECT_EQ(bytes[108], 101);
    EXPECT_EQ(pet.NameBytes(), "Gwen");
    EXPECT_EQ(pet.status, 9);
    EXPECT_EQ(pet.hp, -5);
    EXPECT_EQ(pet.stMax, 4);
    EXPECT_EQ(pet.areaKind, 101);
    EXPECT_EQ(vrl::PetCellText(pet, vrl::kPetColumnStatus, 0), u"Museum");
    EXPECT_EQ(vrl::PetCellText(pet, vrl::kPetColumnNextXp, 0), u"700");
    EXPECT_EQ(vrl::PetCellText(pet, vrl::kPetColumnHp, 0), u"-5/0");

    // A name filling all 64 bytes has no NUL: it stops there.
    auto full = Message({kPutit});
    std::memset(&full[4], 'a', 64);
    EXPECT_EQ(PetRecord::Decode(full.data()).NameBytes(), std::string(64, 'a'));

    EXPECT_EQ(vrl::PetRecordCount(3, bytes.data(), 3 * 112), 3u);
    EXPECT_EQ(vrl::PetRecordCount(16, bytes.data(), 2 * 112 + 111), 2u);  // truncated
    EXPECT_EQ(vrl::PetRecordCount(1, bytes.data(), 16 * 112), 1u);        // oversized
    EXPECT_EQ(vrl::PetRecordCount(5, nullptr, 5 * 112), 0u);
}

// A pet in the ranch or the museum is named by where it stands; an unknown status shows its number.
TEST(PetRecord, StatusTextsFollowTheArea) {
    EXPECT_EQ(std::u16string(vrl::PetStatusText(9, 31).Get(1)), u"牧場");
    EXPECT_EQ(std::u16string(vrl::PetStatusText(9, 55).Get(0)), u"Standby");
    EXPECT_EQ(std::u16string(vrl::PetStatusText(9, 55).Get(1)), u"待機X");
    PetRecord odd;
    odd.status = 42;
    EXPECT_EQ(vrl::PetCellText(odd, vrl::kPetColumnStatus, 0), u"(42)");
}

TEST(PetRows, FiltersKeepSlotOrderAndRememberTheSlots) {
    PetRows rows;
    Take(rows, {kEmpty, kCat, kPutit, kEmpty, kDog}, vrl::kPetFilterSameMap);
    ASSERT_EQ(rows.RowCount(), 2);
    EXPECT_EQ(rows.Row(0).NameBytes(), "putit");
    EXPECT_EQ(rows.SlotOf(0), 2);
    EXPECT_EQ(rows.SlotOf(1), 4);

    Take(rows, {kEmpty, kCat, kPutit, kEmpty, kDog}, vrl::kPetFilterAll);
    ASSERT_EQ(rows.RowCount(), 3);
    EXPECT_EQ(rows.Row(0).NameBytes(), "cat");
    EXPECT_EQ(Take(rows, {kCat, kPutit}, 2).rowCount, 0);
    EXPECT_EQ(Take(rows, {kCat, kPutit}, -1).rowCount, 0);

    // More than 16 passing slots: the first 16 are shown.
    const PetRows::Update many = Take(rows, std::vector<Pet>(20, kPutit));
    EXPECT_EQ(many.rowCount, 16);
    EXPECT_EQ(rows.SlotOf(15), 15);
}

TEST(PetRows, OnlyChangedCellsAreRewrittenUntilTheRowCountChanges) {
    PetRows rows;
    const PetRows::Update first = Take(rows, {kPutit, kDog});
    EXPECT_TRUE(first.fullRefresh);
    EXPECT_EQ(first.changedColumns[0], 0xFEu);  // every column but the picture

    const PetRows::Update same = Take(rows, {kPutit, kDog});
    EXPECT_FALSE(same.fullRefresh);
    EXPECT_FALSE(same.picturesMoved);
    EXPECT_EQ(same.changedColumns[0] | same.changedColumns[1], 0u);

    Pet hurt = kDog;
    hurt.hpMax = 12;
    const PetRows::Update oneCell = Take(rows, {kPutit, hurt});
    EXPECT_EQ(oneCell.changedColumns[0], 0u);
    EXPECT_EQ(oneCell.changedColumns[1], 1u << vrl::kPetColumnHp);

    Pet moved = kCat;
    moved.status = 9;
    moved.areaKind = 31;
    Take(rows, {kPutit, moved});
    moved.areaKind = 101;  // same status, another area: another text
    EXPECT_EQ(Take(rows, {kPutit, moved}).changedColumns[1], 1u << vrl::kPetColumnStatus);

    const PetRows::Update fewer = Take(rows, {kPutit});
    EXPECT_TRUE(fewer.fullRefresh);
    EXPECT_EQ(fewer.rowCount, 1);

    // Same count, but the row now comes from another slot: another picture.
    Take(rows, {kPutit, kEmpty});
    EXPECT_TRUE(Take(rows, {kEmpty, kPutit}).picturesMoved);
}

TEST(PetBars, FillWidthsAndTheSplitOfFreeWidth) {
    EXPECT_EQ(vrl::BarFillWidth(100, 0, 0), 0);     // maximum 0 counts as 1
    EXPECT_EQ(vrl::BarFillWidth(100, 1, 0), 100);
    EXPECT_EQ(vrl::BarFillWidth(100, 150, 100), 100);
    EXPECT_EQ(vrl::BarFillWidth(100, -5, 100), 0);
    EXPECT_EQ(vrl::BarFillWidth(100, 1, 3), 33);
    EXPECT_EQ(vrl::BarFillWidth(100, 2000000000, 2000000000), 100);  // no overflow
    EXPECT_EQ(vrl::BarFillWidth(100, 5, -10), 0);

    using Widths = std::array<int, 4>;
    EXPECT_EQ(vrl::SplitBarColumns(403, {1, 1, 1, 1}), (Widths{100, 100, 100, 100}));
    EXPECT_EQ(vrl::SplitBarColumns(403, {0, 0, 0, 0}), (Widths{0, 0, 0, 0}));
    EXPECT_EQ(vrl::SplitBarColumns(300, {1, 2, 0, 0}), (Widths{100, 200, 0, 0}));
    EXPECT_EQ(vrl::SplitBarColumns(-50, {1, 1, 1, 1}), (Widths{0, 0, 0, 0}));
}

TEST(PetOptions, DefaultsForWhatIsMissingOrUnreadable) {
    vrl::KcsvFile table;
    ASSERT_TRUE(table.Parse(u"#format,kcsv\r\n#option,colHpBar:xyz,iMpColumnWidthRatio:12,"
                            u"iStColumnWidthRatio:-3,bXpBarEnabled:0,iFilterIndex:abc,iNameColumnWidth: 99\r\n#column\r\n"));
    const vrl::PetListLook look = vrl::PetListLook::Read(table);
    EXPECT_EQ(look.text, 0u);
    EXPECT_EQ(look.background, vrl::MakeColour(255, 255, 255));
    EXPECT_EQ(look.bars[1].bar, vrl::MakeColour(255, 155, 155));
    EXPECT_EQ(look.bars[2].bar, vrl::MakeColour(0, 0, 255));
    EXPECT_EQ(look.bars[3].frame, 0u);
    EXPECT_FALSE(look.bars[0].drawn);
    EXPECT_TRUE(look.bars[1].drawn);
    EXPECT_EQ(look.Ratios(), (std::array<int, 4>{1, 1, 9, 0}));

    const vrl::PetPanelOptions options = vrl::PetPanelOptions::Read(table);
    EXPECT_EQ(options.filterIndex, 0);
    EXPECT_TRUE(options.autoAdjust);
    EXPECT_EQ(options.widths[1], 99);
    EXPECT_EQ(options.widths[4], 120);
}

TEST(PetOptions, WritingKeepsOtherOptionsAndUsesLowerCaseColours) {
    vrl::KcsvFile table;
    ASSERT_TRUE(table.Parse(u"#format,kcsv\r\n#option,Mine:keep,colHpBar:#FF0000\r\n#column\r\n"));
    vrl::PetListLook look = vrl::PetListLook::Read(vrl::KcsvFile());
    look.Write(table);
    vrl::PetPanelOptions options;
    options.widths[0] = 44;
    options.Write(table);
    EXPECT_EQ(table.OptionValue(u"Mine"), u"keep");
    EXPECT_EQ(table.OptionValue(u"colHpBar"), u"#ff9b9b");
    EXPECT_EQ(table.OptionValue(u"colXpBar"), u"#ffffff");
    EXPECT_EQ(table.OptionValue(u"bStBarEnabled"), u"1");
    EXPECT_EQ(table.OptionValue(u"iChipColumnWidth"), u"44");
    EXPECT_EQ(table.OptionValue(u"bAutoAdjustColumn"), u"1");
    EXPECT_EQ(table.Options().size(), 2u + 2 + 8 + 12 + 2 + 8 - 1);
}

}  // namespace
