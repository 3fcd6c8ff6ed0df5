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

    // Below a drive root the game folder is the bare drive.
    ASSERT_TRUE(vrl::DeriveGameFolders(u"C:\\Vorrel", &folders));
    EXPECT_EQ(folders.game, u"C:");
    EXPECT_EQ(folders.userMusic, u"C:\\user\\music");

    // A folder without a backslash is refused and leaves the values alone.
    EXPECT_FALSE(vrl::DeriveGameFolders(u"Vorrel", &folders));
    EXPECT_FALSE(vrl::DeriveGameFolders(u"", &folders));
    EXPECT_EQ(folders.game, u"C:");

    EXPECT_EQ(vrl::JoinPath(u"C:\\Morva\\", u"save"), u"C:\\Morva\\save");
    EXPECT_EQ(vrl::JoinPath(u"", u"save"), u"save");
    EXPECT_EQ(vrl::FolderOf(u"C:\\Morva\\Vorrel\\VrlBoot.exe"), u"C:\\Morva\\Vorrel");
    EXPECT_EQ(vrl::FolderOf(u"VrlBoot.exe"), u"");
}

std::size_t MarkerIn(const std::string& text) {
    const std::vector<unsigned char> bytes(text.begin(), text.end());
    return vrl::FindHspMarker(bytes.data(), bytes.size());
}

// The marker is "hspwnd0" with its terminating zero, at any offset where all eight bytes fit.
TEST(HspMarker, IsTheNarrowTextWithItsZero) {
    const std::string marker("hspwnd0\0", 8);
    EXPECT_EQ(MarkerIn("MZ....." + marker), 7u);
    EXPECT_EQ(MarkerIn("MZ....." + marker.substr(0, 7)), vrl::kNoHspMarker);
    EXPECT_EQ(MarkerIn("hhspwnd" + marker + marker), 7u);
    EXPECT_EQ(MarkerIn(marker), 0u);
    EXPECT_EQ(MarkerIn("hspwnd0 hspwnd01"), vrl::kNoHspMarker);
    EXPECT_EQ(MarkerIn(std::string("h\0s\0p\0w\0n\0d\0" "0\0\0\0", 16)), vrl::kNoHspMarker);
    EXPECT_EQ(vrl::FindHspMarker(nullptr, 0), vrl::kNoHspMarker);
}

}  // namespace
