#include "app/tray_menu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vrl::AppSettings;
using vrl::tray_menu::BuildTrayMenu;
using vrl::tray_menu::MenuEntries;
using vrl::tray_menu::MenuEntry;

// One line per entry: "<id> <text>", "---" for a separator, "> <text>" for a submenu.
std::vector<std::u16string> Lines(const MenuEntries& entries) {
    std::vector<std::u16string> lines;
    for (const MenuEntry& e : entries) {
        switch (e.kind) {
        case MenuEntry::Kind::Command: {
            const std::string id = std::to_string(e.id);
            lines.push_back(std::u16string(id.begin(), id.end()) + u" " + e.text);
            break;
        }
        case MenuEntry::Kind::Separator: lines.push_back(u"---"); break;
        case MenuEntry::Kind::PlacementSubmenu: lines.push_back(u"> placement " + e.text); break;
        case MenuEntry::Kind::ScreenshotSubmenu: lines.push_back(u"> screenshot " + e.text); break;
        }
    }
    return lines;
}

AppSettings AllFlagsOn() {
    AppSettings s;
    s.enLogExtender = s.enLogExtender_FullLog = s.enItemInfo = s.enQuickSearch = 1;
    s.enMusicExtender = s.enPetInfo = s.enScreenshot = 1;
    return s;
}

TEST(TrayMenu, EveryFlagOffLeavesPlacementConfigAboutAndExit) {
    const auto model = BuildTrayMenu(AppSettings{}, u"TRUE", 0, 0);
    EXPECT_EQ(Lines(model.main), (std::vector<std::u16string>{
                                     u"> placement &Window Placement", u"---", u"34107 &Config...",
                                     u"34108 &About Vorrel", u"---", u"32776 E&xit Vorrel"}));
    EXPECT_EQ(Lines(model.placement),
              (std::vector<std::u16string>{u"34000 &Save", u"34001 &Restore", u"---", u"34004 R&eset"}));
    EXPECT_EQ(model.screenshot.size(), 14u) << "the screenshot popup is built even when not linked";
}

TEST(TrayMenu, EveryFlagOnInBothLanguages) {
    EXPECT_EQ(Lines(BuildTrayMenu(AllFlagsOn(), u"TRUE", 0, 0).main),
              (std::vector<std::u16string>{
                  u"34103 Show &Full Log", u"34104 Show Extracted &Log", u"34106 Show &Item Info Panel",
                  u"34102 Show &Quick Search", u"34100 Show &Music Control Panel",
                  u"34101 Show &VSTi Embed Editor", u"34105 Show &Pet Info Panel",
                  u"> placement &Window Placement", u"> screenshot &Screenshot", u"---", u"34107 &Config...",
                  u"34108 &About Vorrel", u"---", u"32776 E&xit Vorrel"}));
    EXPECT_EQ(Lines(BuildTrayMenu(AllFlagsOn(), u"TRUE", 0, 1).main),
              (std::vector<std::u16string>{
                  u"34103 全ログを表示 (&F)", u"34104 抽出ログを表示 (&L)", u"34106 アイテム情報を表示 (&P)",
                  u"34102 クイックサーチを表示 (&Q)", u"34100 音楽コントロールパネルを表示 (&M)",
                  u"34101 VSTi内蔵エディタを表示 (&V)", u"34105 ペット情報を表示 (&P)",
                  u"> placement ウィンドウ配置 (&W)", u"> screenshot スクリーンショットを撮る (&S)", u"---",
                  u"34107 設定(&C)", u"34108 バージョン情報 (&A)", u"---", u"32776 Vorrelを終了 (&X)"}));
    EXPECT_EQ(Lines(BuildTrayMenu(AppSettings{}, u"", 0, 1).placement),
              (std::vector<std::u16string>{u"34000 記憶 (&S)", u"34001 復元 (&R)", u"---", u"34004 リセット (&E)"}));
}

bool HasItem(const MenuEntries& entries, unsigned id) {
    for (const MenuEntry& e : entries)
        if (e.kind == MenuEntry::Kind::Command && e.id == id) return true;
    return false;
}

TEST(TrayMenu, ItemsThatNeedTwoConditions) {
    AppSettings music;
    music.enMusicExtender = 1;
    EXPECT_TRUE(HasItem(BuildTrayMenu(music, u"TRUE", 0, 0).main, 34101));
    for (const char16_t* text : {u"", u"true", u"True", u"TRUE ", u" TRUE", u"TRUE\r\n", u"FALSE"})
        EXPECT_FALSE(HasItem(BuildTrayMenu(music, text, 0, 0).main, 34101)) << std::u16string(text).size();
    EXPECT_FALSE(HasItem(BuildTrayMenu(AppSettings{}, u"TRUE", 0, 0).main, 34101)) << "needs the music extender";

    AppSettings fullLogOnly;
    fullLogOnly.enLogExtender_FullLog = 1;
    EXPECT_FALSE(HasItem(BuildTrayMenu(fullLogOnly, u"", 0, 0).main, 34103)) << "needs the log extender";
    EXPECT_FALSE(HasItem(BuildTrayMenu(fullLogOnly, u"", 0, 0).main, 34104));
    AppSettings logOnly;
    logOnly.enLogExtender = 1;
    EXPECT_FALSE(HasItem(BuildTrayMenu(logOnly, u"", 0, 0).main, 34103));
    EXPECT_TRUE(HasItem(BuildTrayMenu(logOnly, u"", 0, 0).main, 34104));
}

TEST(TrayMenu, ShortRangeNames) {
    using vrl::tray_menu::ScreenshotRangeName;
    using vrl::tray_menu::ShortRangeName;
    EXPECT_EQ(ShortRangeName(ScreenshotRangeName(1).en), u"Full + Window Frame");
    EXPECT_EQ(ShortRangeName(ScreenshotRangeName(1).ja), u"全体+ウィンドウ枠");
    EXPECT_EQ(ShortRangeName(ScreenshotRangeName(9).en), u"Treasure map");
    EXPECT_EQ(ShortRangeName(u"(&X) keep"), u"(&X) keep") << "a \"(\" in front is not cut";
    EXPECT_EQ(ShortRangeName(u"A (b) (&C)"), u"A (b)") << "only the last \"(\" counts";
    EXPECT_EQ(ShortRangeName(u"&&Save&& \t(&S)"), u"Save");
    EXPECT_EQ(ShortRangeName(u"Plain"), u"Plain");
    EXPECT_EQ(ShortRangeName(u"&& (&S)"), u"");
    EXPECT_EQ(ShortRangeName(u""), u"");
}

TEST(TrayMenu, ScreenshotPopupAndItsAutoDetectItem) {
    const auto model = BuildTrayMenu(AppSettings{}, u"", 5, 0);
    EXPECT_EQ(Lines(model.screenshot),
              (std::vector<std::u16string>{
                  u"33001 Full + Window Frame (&W)", u"33002 Full (&F)", u"---", u"33003 Character info (&C)",
                  u"33004 Inventory (&I)", u"33005 Wear (&W)", u"33006 Feat (&G)", u"33007 Magic (&M)",
                  u"33008 Ability (&A)", u"33009 Treasure map (&T)", u"33010 Material (&E)",
                  u"33011 Dialogue (&L)", u"---", u"33000 Auto &detect [Wear]"}));
    EXPECT_EQ(BuildTrayMenu(AppSettings{}, u"", 11, 1).screenshot.back().text, u"自動判定 [会話] (&D)");
    EXPECT_EQ(BuildTrayMenu(AppSettings{}, u"", 0, 1).screenshot[0].text, u"全体+ウィンドウ枠 (&W)");
    // The module may leave anything in the slot; the item must still read sensibly.
    for (int slot : {-1, 12, 1000, -2147483647 - 1, 2147483647}) {
        EXPECT_EQ(vrl::tray_menu::AutoDetectText(slot, 0), u"Auto &detect [Auto detect]") << slot;
        EXPECT_EQ(vrl::tray_menu::AutoDetectText(slot, 1), u"自動判定 [自動判定] (&D)") << slot;
    }
}

}  // namespace
