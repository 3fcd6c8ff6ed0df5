// The item information panel of the running companion: items sent by the module stand-in from
// inside the demo game, read back from the panel's list in both languages, with the settings
// editor's built-in enchant table and the player's own table on top; hostile payloads.

#include <gtest/gtest.h>

#include "e2e_support.h"
#include "panels/item_record.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

constexpr int kSlotItemPanel = 28;
constexpr int kListId = 1006;

// Replaces one built-in text and tries to clear a built-in invoke entry.
const char kPlayerTable[] =
    "#format,kcsv\r\n"
    "#option,invoke5:0\r\n"
    "#column,type,id,text_en,text_jp\r\n"
    "attribute,12,Nimbleness,敏捷\r\n";

const char kFireDagger[] = "item 512 1044 0x402 10012:3,80005:1,2:-2,90001:7,40000:5 Fire dagger\n";

struct ItemSession : e2e::Session {
    HWND panel = nullptr;

    // Starts the companion with the item panel, in `language`; the module sends it the fire dagger.
    void Start(int language) {
        ASSERT_NO_FATAL_FAILURE(Session::Start("enItemInfo=1\r\niLanguage=" + std::to_string(language) + "\r\n",
                                               std::string("waitfor item\n") + kFireDagger));
        ASSERT_TRUE(e2e::WaitUntil([&] { return ::IsWindow(panel = Slot(kSlotItemPanel)) != FALSE; }, 20000));
        const std::string transcript = install.WaitForScenarioEnd();
        EXPECT_EQ(transcript.find("error"), std::string::npos) << transcript;
    }

    Rows List() const { return e2e::ListViewRows(::GetDlgItem(panel, kListId), 4); }
    std::string Field(int id) const { return e2e::WindowText(::GetDlgItem(panel, id)); }
    LRESULT Send(const vrl::ItemInfoRecord& record, ULONG_PTR code = 0) const {
        const std::vector<unsigned char> bytes = vrl::EncodeItemRecord(record);
        return e2e::SendCopyData(panel, code, bytes.data(), bytes.size());
    }
};

// How short, long and nameless records read is tested natively; the panel answers each and
// shows what it read.
TEST(ItemPanel, ShowsTheModulesItemASecondItemReplacesEveryRowAndHostilePayloadsAreAnswered) {
    ItemSession s;
    s.install.WriteProgramFile(L"EnchantTable.kcsv", kPlayerTable);
    ASSERT_NO_FATAL_FAILURE(s.Start(0));

    EXPECT_EQ(e2e::WindowText(s.panel), "Item Information - Vorrel");
    EXPECT_TRUE(::IsWindowVisible(s.panel)) << "the panel shows itself";
    EXPECT_EQ(s.Field(1003), "Fire dagger");
    EXPECT_EQ(s.Field(1004), "512");
    EXPECT_EQ(s.Field(1005), "1044");
    const Rows expected = {
        {"", "1", "Blessed", ""},
        {"", "1", "Precious", ""},
        {"", "10012", "Attribute[Nimbleness]", "(3)"},
        {"", "80005", "Invoke[Fire bolt]", "(1)"},
        {"", "2", "Luck", "(-2)"},
        {"", "90001", "Ammo[Burst]", "(7)"},
        {"", "40000", "[]", "(5)"},
    };
    EXPECT_EQ(s.List(), expected);

    vrl::ItemInfoRecord ring;
    ring.name = u"Ring";
    ring.chipId = 3;
    ring.enchantments[4] = {70010, 4};
    EXPECT_EQ(s.Send(ring, 0xDEAD), TRUE) << "dwData is not the module's to set";
    EXPECT_EQ(s.List(), (Rows{{"", "70010", "Sustain[Strength]", "(4)"}}));
    EXPECT_EQ(s.Field(1003), "Ring");

    const char16_t shortName[] = u"Ax";
    EXPECT_EQ(e2e::SendCopyData(s.panel, 0, shortName, sizeof shortName), TRUE);
    EXPECT_EQ(s.Field(1003), "Ax");
    EXPECT_TRUE(s.List().empty()) << "past its end a short payload reads as zeros";
    EXPECT_EQ(e2e::SendCopyData(s.panel, 0, std::string(4096, '\xFF')), TRUE);
    EXPECT_EQ(s.Field(1004), "-1");
    EXPECT_EQ(s.List().size(), 3u + 15u) << "three property rows, fifteen enchantments of id -1";
    EXPECT_EQ(e2e::SendCopyData(s.panel, 0, nullptr, 0), TRUE);
    EXPECT_TRUE(s.List().empty());

    // Closing hides the panel; the tray item brings it back.
    ::SendMessageW(s.panel, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindowVisible(s.panel));
    ::SendMessageW(s.frame, WM_COMMAND, 34106, 0);
    EXPECT_TRUE(::IsWindowVisible(s.panel));
}

TEST(ItemPanel, JapaneseTexts) {
    ItemSession s;
    s.install.WriteProgramFile(L"EnchantTable.kcsv", kPlayerTable);
    ASSERT_NO_FATAL_FAILURE(s.Start(1));
    EXPECT_EQ(e2e::WindowText(s.panel), "アイテム情報 - Vorrel");
    const Rows expected = {
        {"", "1", "祝福", ""},
        {"", "1", "貴重品", ""},
        {"", "10012", "属性[敏捷]", "(3)"},
        {"", "80005", "発動[ファイアボルト]", "(1)"},
        {"", "2", "幸運", "(-2)"},
        {"", "90001", "弾[バースト]", "(7)"},
        {"", "40000", "[]", "(5)"},
    };
    EXPECT_EQ(s.List(), expected);
}

TEST(ItemPanel, WithoutAnyEnchantTableTheRowsShowTheirNumbers) {
    ItemSession s;
    ::DeleteFileW(s.install.ProgramFile(L"VrlConfig.exe").c_str());
    ASSERT_NO_FATAL_FAILURE(s.Start(0));
    EXPECT_EQ(s.List(), (Rows{{"", "1", "", ""},
                              {"", "1", "", ""},
                              {"", "10012", "[]", "(3)"},
                              {"", "80005", "[]", "(1)"},
                              {"", "2", "", "(-2)"},
                              {"", "90001", "[]", "(7)"},
                              {"", "40000", "[]", "(5)"}}));
}

}  // namespace
