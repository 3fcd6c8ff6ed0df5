#include "panels/equip_set.h"

#include <gtest/gtest.h>

namespace {

using namespace vrl::equip_set;

TEST(EquipSet, KeysNamesAndListEntriesOfTheTenSets) {
    EXPECT_EQ(NameKey(9), u"EqSetName_09");
    EXPECT_EQ(DefaultName(0, 0), u"Set 1");
    EXPECT_EQ(DefaultName(9, 0), u"Set10");
    EXPECT_EQ(DefaultName(2, 1), u"装備セット 3");
    EXPECT_EQ(ListEntry(8, u"Boss fight"), u"9:Boss fight");
    EXPECT_EQ(ListEntry(9, DefaultName(9, 0)), u"0:Set10") << "the tenth set answers to the 0 key";
}

TEST(EquipSet, OnlyAFolderRightInsideTheSaveFolderIsACharacter) {
    EXPECT_TRUE(IsCharacterFolderName(u"hero"));
    EXPECT_TRUE(IsCharacterFolderName(u"勇者 2"));
    for (const char16_t* name : {u"", u".", u"..", u"..\\other", u"a/b", u"C:hero"})
        EXPECT_FALSE(IsCharacterFolderName(name));
}

TEST(EquipSet, RequestCodesOnlyForRestoreAndSaveOfARealSet) {
    EXPECT_EQ(RequestCode(Mode::kRestore, 3), 11003);
    EXPECT_EQ(RequestCode(Mode::kSave, 9), 12009);
    EXPECT_EQ(RequestCode(Mode::kEdit, 3), 0);
    EXPECT_EQ(RequestCode(Mode::kMenu, 0), 0);
    EXPECT_EQ(RequestCode(Mode::kRestore, -1), 0) << "an empty list has no selection";
    EXPECT_EQ(RequestCode(Mode::kRestore, 10), 0);
    EXPECT_EQ(ModeForMenuChoice(0), Mode::kRestore);
    EXPECT_EQ(ModeForMenuChoice(2), Mode::kEdit);
    EXPECT_EQ(ModeForMenuChoice(-1), Mode::kMenu);
}

}  // namespace
