#include "app/install_paths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(GameFolders, AreTheProgramFolderWithoutItsLastComponentAndItsSubfolders) {
    vrl::GameFolders folders;
    ASSERT_TRUE(vrl::DeriveGameFolders(u"D:\\Games\\Morva\\Vorrel", &folders));
    EXPECT_EQ(folders.game, u"D:\\Games\\Morva");
    EXPECT_EQ(folders.sound, u"D:\\Games\\Morva\\sound");
    EXPECT_EQ(folders.save, u"D:\\Games\\Morva\\save");
    EXPECT_EQ(folders.user, u"D:\\Games\\Morva\\user");
    EXPECT_EQ(folders.userMusic, u"D:\\Games\\Morva\\user\\music");
    EXPECT_EQ(folders.userSound, u"D:\\Games\\Morva\\user\\sound");
}

TEST(GameFolders, BelowADriveRootTheGameFolderIsTheBareDrive) {
    vrl::GameFolders folders;
    ASSERT_TRUE(vrl::DeriveGameFolders(u"C:\\Vorrel", &folders));
    EXPECT_EQ(folders.game, u"C:");
    EXPECT_EQ(folders.userMusic, u"C:\\user\\music");
}

TEST(GameFolders, AFolderWithoutBackslashIsRefusedAndLeavesTheValuesAlone) {
    vrl::GameFolders folders;
    folders.game = u"unchanged";
    EXPECT_FALSE(vrl::DeriveGameFolders(u"Vorrel", &folders));
    EXPECT_FALSE(vrl::DeriveGameFolders(u"", &folders));
    EXPECT_EQ(folders.game, u"unchanged");
}

TEST(JoinPath, AddsOneSeparatorOnlyWhenNeeded) {
    EXPECT_EQ(vrl::JoinPath(u"C:\\Morva\\", u"save"), u"C:\\Morva\\save");
    EXPECT_EQ(vrl::JoinPath(u"", u"save"), u"save");
    EXPECT_EQ(vrl::FolderOf(u"C:\\Morva\\Vorrel\\VrlBoot.exe"), u"C:\\Morva\\Vorrel");
    EXPECT_EQ(vrl::FolderOf(u"VrlBoot.exe"), u"");
}

std::vector<unsigned char> Bytes(const std::string& text) { return std::vector<unsigned char>(text.begin(), text.end()); }
const std::string kMarker("hspwnd0\0", 8);

TEST(HspMarker, IsFoundAtAnyOffsetWhoseEightBytesLieWithinTheData) {
    const std::vector<unsigned char> atEnd = Bytes("MZ....." + kMarker);
    EXPECT_EQ(vrl::FindHspMarker(atEnd.data(), atEnd.size()), 7u);
    // Cut by one byte, the terminating zero is missing.
    EXPECT_EQ(vrl::FindHspMarker(atEnd.data(), atEnd.size() - 1), vrl::kNoHspMarker);
    const std::vector<unsigned char> twice = Bytes("hhspwnd" + kMarker + kMarker);
    EXPECT_EQ(vrl::FindHspMarker(twice.data(), twice.size()), 7u);
    const std::vector<unsigned char> exact = Bytes(kMarker);
    EXPECT_EQ(vrl::FindHspMarker(exact.data(), exact.size()), 0u);
}

TEST(HspMarker, IsNotTheTextWithoutItsZeroNorTheWideText) {
    const std::vector<unsigned char> noZero = Bytes("hspwnd0 hspwnd01");
    EXPECT_EQ(vrl::FindHspMarker(noZero.data(), noZero.size()), vrl::kNoHspMarker);
    const std::vector<unsigned char> wide = Bytes(std::string("h\0s\0p\0w\0n\0d\0" "0\0\0\0", 16));
    EXPECT_EQ(vrl::FindHspMarker(wide.data(), wide.size()), vrl::kNoHspMarker);
    EXPECT_EQ(vrl::FindHspMarker(nullptr, 0), vrl::kNoHspMarker);
}

}  // namespace
