#include "app/tray_menu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vrl::AppSettings;
using vrl::tray_menu::BuildTrayMenu;
using vrl::tray_menu::MenuEntries;
using vrl::tray_menu::MenuEntry;

// One word per entry: the command id, "---" for a separator, "placement" or "screenshot" for a submenu.
std::vector<std::string> Shape(const MenuEntries& entries) {
    std::vector<std::string> words;
    for (const MenuEntry& e : entries) {
        switch (e.kind) {
        case MenuEntry::Kind::Command: words.push_back(std::to_string(e.id)); break;
        case MenuEntry::Kind::Separator: words.push_back("---"); break;
        case MenuEntry::Kind::PlacementSubmenu: words.push_back("placement"); break;
        case MenuEntry::Kind::ScreenshotSubmenu: words.push_back("screenshot"); break;
        }
    }
    return words;
}

AppSettings AllFlagsOn() {
    AppSettings s;
    s.enLogExtender = s.enLogExtender_FullLog = s.enItemInfo = s.enQuickSearch = 1;
    s.enMusicExtender = s.enPetInfo = s.enScreenshot = 1;
    return s;
}

TEST(TrayMenu, ItemsFollowTheFlagsAndTheEditorState) {
    using Words = std::vector<std::string>;
    const Words tail = {"placement", "---", "34107", "34108", "---", "32776"};
    EXPECT_EQ(Shape(BuildTrayMenu(AppSettings{}, u"TRUE", 0, 0).main), tail);
    EXPECT_EQ(Shape(BuildTrayMenu(AllFlagsOn(), u"TRUE", 0, 0).main),
              (Words{"34103", "34104", "34106", "34102", "34100", "34101", "34105", "placement", "screenshot", "---",
                     "34107", "34108", "---", "32776"}));

    // The editor item needs the music extender and the host's exact "TRUE".
    AppSettings music;
    music.enMusicExtender = 1;
    Words withEditor = {"34100", "34101"};
    withEditor.insert(withEditor.end(), tail.begin(), tail.end());
    EXPECT_EQ(Shape(BuildTrayMenu(music, u"TRUE", 0, 0).main), withEditor);
    for (const char16_t* text : {u"", u"true", u"TRUE ", u" TRUE", u"TRUE\r\n", u"FALSE"})
        EXPECT_EQ(Shape(BuildTrayMenu(music, text, 0, 0).main).at(1), "placement") << std::u16string(text).size();

    // The full log needs the log extender as well.
    AppSettings fullLogOnly;
    fullLogOnly.enLogExtender_FullLog = 1;
    EXPECT_EQ(Shape(BuildTrayMenu(fullLogOnly, u"", 0, 0).main), tail);
    AppSettings logOnly;
    logOnly.enLogExtender = 1;
    EXPECT_EQ(Shape(BuildTrayMenu(logOnly, u"", 0, 0).main).front(), "34104");
}

TEST(TrayMenu, EveryTextFollowsTheLanguage) {
    const auto en = BuildTrayMenu(AllFlagsOn(), u"TRUE", 5, 0);
    const auto ja = BuildTrayMenu(AllFlagsOn(), u"TRUE", 5, 1);
    for (const auto& [english, japanese] : {std::pair{en.main, ja.main}, std::pair{en.placement, ja.placement},
                                            std::pair{en.screenshot, ja.screenshot}}) {
        ASSERT_EQ(Shape(english), Shape(japanese));
        for (std::size_t i = 0; i < english.size(); ++i) {
            if (english[i].kind != MenuEntry::Kind::Separator) {
                EXPECT_NE(english[i].text, japanese[i].text) << i;
            }
        }
    }
    EXPECT_EQ(en.main.back().text, u"E&xit Vorrel");
    EXPECT_EQ(ja.main.back().text, u"Vorrelを終了 (&X)");
    EXPECT_EQ(Shape(en.placement), (std::vector<std::string>{"34000", "34001", "---", "34004"}));
}

TEST(TrayMenu, ShortRangeNames) {
    using vrl::tray_menu::ScreenshotRangeName;
    using vrl::tray_menu::ShortRangeName;
    EXPECT_EQ(ShortRangeName(ScreenshotRangeName(1).en), u"Full + Window Frame");
    EXPECT_EQ(ShortRangeName(ScreenshotRangeName(1).ja), u"全体+ウィンドウ枠");
    EXPECT_EQ(ShortRangeName(u"(&X) keep"), u"(&X) keep") << "a \"(\" in front is not cut";
    EXPECT_EQ(ShortRangeName(u"A (b) (&C)"), u"A (b)") << "only the last \"(\" counts";
    EXPECT_EQ(ShortRangeName(u"&&Save&& \t(&S)"), u"Save");
    EXPECT_EQ(ShortRangeName(u"Plain"), u"Plain");
    EXPECT_EQ(ShortRangeName(u"&& (&S)"), u"");
    EXPECT_EQ(ShortRangeName(u""), u"");
}

TEST(TrayMenu, ScreenshotPopupNamesTheScreenTheGameShows) {
    // Built even when screenshots are off: the main popup just does not link to it.
    const auto model = BuildTrayMenu(AppSettings{}, u"", 5, 0);
    ASSERT_EQ(model.screenshot.size(), 14u);
    EXPECT_EQ(model.screenshot.front().id, 33001u);
    EXPECT_EQ(model.screenshot.back().id, 33000u);
    EXPECT_EQ(model.screenshot.back().text, u"Auto &detect [Wear]");
    EXPECT_EQ(BuildTrayMenu(AppSettings{}, u"", 11, 1).screenshot.back().text, u"自動判定 [会話] (&D)");
    // The module may leave anything in the slot; the item must still read sensibly.
    for (int slot : {-1, 12, 1000, -2147483647 - 1, 2147483647}) {
        EXPECT_EQ(vrl::tray_menu::AutoDetectText(slot, 0), u"Auto &detect [Auto detect]") << slot;
        EXPECT_EQ(vrl::tray_menu::AutoDetectText(slot, 1), u"自動判定 [自動判定] (&D)") << slot;
    }
}

}  // namespace
