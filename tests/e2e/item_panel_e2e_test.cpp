// The item information panel of the running companion: items sent by the module stand-in from
// inside the demo game, read back from the panel's list in both languages, with the settings
// editor's built-in enchant table and the player's own table on top; hostile payloads.

#include <gtest/gtest.h>

#include <memory>

#include "e2e_support.h"

#include <commctrl.h>
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

struct ItemSession {
    e2e::Install install = e2e::MakeInstall();
    std::unique_ptr<e2e::Companion> companion;
    HWND frame = nullptr;
    HWND panel = nullptr;

    void Start(const std::string& ini, const std::string& scenario) {
        install.WriteIni(ini);
        install.WriteScenario("waitfor item\n" + scenario);
        companion = std::make_unique<e2e::Companion>(install);
        frame = e2e::WaitForFrame();
        ASSERT_TRUE(frame);
        ASSERT_TRUE(e2e::WaitUntil([&] { return ::IsWindow(panel = Published()) != FALSE; }, 20000));
        std::string transcript;
        e2e::WaitUntil([&] {
            transcript = install.ReadTranscript();
            return transcript.find("module: end of scenario") != std::string::npos;
        }, 30000);
        ASSERT_NE(transcript.find("module: end of scenario"), std::string::npos) << transcript;
        EXPECT_EQ(transcript.find("error"), std::string::npos) << transcript;
    }

    HWND Published() const {
        return reinterpret_cast<HWND>(static_cast<LONG_PTR>(::GetWindowLongW(frame, kSlotItemPanel)));
    }
    Rows List() const { return e2e::ListViewRows(::GetDlgItem(panel, kListId), 4); }
    std::string Field(int id) const { return e2e::WindowText(::GetDlgItem(panel, id)); }

    LRESULT Send(const void* bytes, DWORD size, ULONG_PTR code = 0) const {
        COPYDATASTRUCT data{code, size, const_cast<void*>(bytes)};
        return ::SendMessageW(panel, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    }
    LRESULT Send(const vrl::ItemInfoRecord& record, ULONG_PTR code = 0) const {
        const std::vector<unsigned char> bytes = vrl::EncodeItemRecord(record);
        return Send(bytes.data(), static_cast<DWORD>(bytes.size()), code);
    }
};

TEST(ItemPanel, ShowsTheModulesItemAndASecondItemReplacesEveryRow) {
    ItemSession s;
    s.install.WriteProgramFile(L"EnchantTable.kcsv", kPlayerTable);
    s.Start("iLanguage=0\r\nenItemInfo=1\r\n", kFireDagger);

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
    HWND list = ::GetDlgItem(s.panel, kListId);
    EXPECT_EQ(::SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0), 0);
    EXPECT_EQ(::SendMessageW(list, LVM_GETCOLUMNWIDTH, 1, 0), 0);
    EXPECT_EQ(::SendMessageW(list, LVM_GETCOLUMNWIDTH, 2, 0), 150);

    vrl::ItemInfoRecord ring;
    ring.name = u"Ring";
    ring.chipId = 3;
    ring.enchantments[4] = {70010, 4};
    EXPECT_EQ(s.Send(ring, 0xDEAD), TRUE) << "dwData is not the module's to set";
    EXPECT_EQ(s.List(), (Rows{{"", "70010", "Sustain[Strength]", "(4)"}}));
    EXPECT_EQ(s.Field(1003), "Ring");

    // Closing hides the panel; the tray item brings it back.
    ::SendMessageW(s.panel, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindowVisible(s.panel));
    ::SendMessageW(s.frame, WM_COMMAND, 34106, 0);
    EXPECT_TRUE(::IsWindowVisible(s.panel));
}

TEST(ItemPanel, JapaneseTexts) {
    ItemSession s;
    s.install.WriteProgramFile(L"EnchantTable.kcsv", kPlayerTable);
    s.Start("iLanguage=1\r\nenItemInfo=1\r\n", kFireDagger);
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

TEST(ItemPanel, HostilePayloadsWithoutAnyEnchantTable) {
    ItemSession s;
    ::DeleteFileW(s.install.ProgramFile(L"VrlConfig.exe").c_str());
    s.Start("iLanguage=0\r\nenItemInfo=1\r\n", kFireDagger);
    EXPECT_EQ(s.List(), (Rows{{"", "1", "", ""},
                              {"", "1", "", ""},
                              {"", "10012", "[]", "(3)"},
                              {"", "80005", "[]", "(1)"},
                              {"", "2", "", "(-2)"},
                              {"", "90001", "[]", "(7)"},
                              {"", "40000", "[]", "(5)"}}));

    const char16_t shortName[] = u"Ax";
    EXPECT_EQ(s.Send(shortName, sizeof shortName), TRUE);
    EXPECT_EQ(s.Field(1003), "Ax");
    EXPECT_EQ(s.Field(1004), "0");
    EXPECT_TRUE(s.List().empty()) << "past its end a short payload reads as zeros";

    const std::string garbage(4096, '\xFF');
    EXPECT_EQ(s.Send(garbage.data(), static_cast<DWORD>(garbage.size())), TRUE);
    EXPECT_EQ(s.Field(1004), "-1");
    EXPECT_EQ(s.List().size(), 3u + 15u) << "three property rows, fifteen enchantments of id -1";

    EXPECT_EQ(s.Send(nullptr, 0), TRUE);
    EXPECT_TRUE(s.List().empty());
    EXPECT_TRUE(::IsWindow(s.frame));
}

}  // namespace
