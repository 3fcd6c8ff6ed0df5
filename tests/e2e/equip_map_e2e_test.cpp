// The equip set window driven by the keys a player presses, and the treasure map cut out of the
// demo game's window, on the running companion through the module stand-in.

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "e2e_support.h"

namespace {

constexpr int kSlotEquipWindow = 20;
constexpr int kSlotEquipRequest = 24;
constexpr int kSlotFurtherWindow = 36;

struct Running : e2e::Session {
    std::wstring SaveFolder(const std::wstring& character) const {
        return install.gameFolder + L"\\save\\" + character;
    }
    void MakeCharacter(const std::wstring& character, const std::string& names = {}) const {
        ::CreateDirectoryW((install.gameFolder + L"\\save").c_str(), nullptr);
        ::CreateDirectoryW(SaveFolder(character).c_str(), nullptr);
        if (!names.empty()) vrltest::WriteFileBytes(SaveFolder(character) + L"\\Vrl_EquipSet.ini", names);
    }
};

// --- Equip sets -------------------------------------------------------------------------------

struct EquipWindow {
    HWND window = nullptr;
    HWND list = nullptr;

    std::vector<std::wstring> Entries() const {
        std::vector<std::wstring> entries;
        const LRESULT count = ::SendMessageW(list, LB_GETCOUNT, 0, 0);
        for (LRESULT i = 0; i < count; ++i) {
            wchar_t text[256] = {};
            ::SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            entries.emplace_back(text);
        }
        return entries;
    }
    LRESULT Selection() const { return ::SendMessageW(list, LB_GETCURSEL, 0, 0); }
    // Presses `key` and waits until the window's title is `title`.
    bool Key(WPARAM key, const std::string& title) const {
        ::PostMessageW(list, WM_KEYDOWN, key, 0);
        return e2e::WaitUntil([&] { return e2e::WindowText(window) == title; }, 3000);
    }
    void Down(int times) const {
        const LRESULT wanted = Selection() + times;
        for (int i = 0; i < times; ++i) ::PostMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
        e2e::WaitUntil([&] { return Selection() == wanted; }, 3000);
    }
};

// The equip window once the module's request has shown it; empty when it did not show.
EquipWindow WaitForEquipSets(const Running& run) {
    EquipWindow equip;
    if (!e2e::WaitUntil([&] { return ::IsWindowVisible(equip.window = run.Slot(kSlotEquipWindow)); }, 15000))
        return {};
    equip.list = ::GetDlgItem(equip.window, 1000);
    return equip;
}

// A character the game has not made a folder for yet gets the box; once the folder is there, the
// next request opens the window.
TEST(EquipSets, AnUnknownCharacterGetsTheBoxThenKeysWalkTheMenuRestoreTheFourthSetAndShiftCloses) {
    Running run;
    run.StartWithGame("iLanguage=0\r\nenEquipSet=1\r\n", "static1 hero\nrequest a000\n");
    const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(run.companion->ProcessId(), 15000);
    ASSERT_TRUE(box.window);
    EXPECT_EQ(box.caption, L"");
    EXPECT_EQ(box.text, L"Error: Cannot detect character name.");
    EXPECT_FALSE(::IsWindowVisible(run.Slot(kSlotEquipWindow)));
    e2e::Press(box.window, IDOK);
    ASSERT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(box.window); }, 3000));

    // A damaged names file: what can be read stands, the rest gets the default names.
    const std::string longName(100, 'x');
    run.MakeCharacter(L"hero", "\x01\x02garbage [[[ ]]] ====\r\n\x80\x81\xfe\r\n[Vorrel]\r\nEqSetName_02=" + longName +
                                   "\r\nEqSetName_05\r\n=no key\r\n[Other]\r\nEqSetName_06=not ours\r\n");
    ::PostMessageW(run.frame, 0xA000, 0, 0);
    const EquipWindow equip = WaitForEquipSets(run);
    ASSERT_TRUE(equip.window);
    EXPECT_EQ(e2e::WindowText(equip.window), "Vrl [Equip set menu]");
    EXPECT_EQ(equip.Entries(), (std::vector<std::wstring>{L"Restore equip set", L"Save equip set", L"Edit equip set"}));
    EXPECT_EQ(equip.Selection(), 0);

    ASSERT_TRUE(equip.Key(VK_RETURN, "Restore equip set"));
    const std::vector<std::wstring> sets = equip.Entries();
    ASSERT_EQ(sets.size(), 10u);
    EXPECT_EQ(sets[0], L"1:Set 1");
    EXPECT_EQ(sets[2], L"3:" + std::wstring(63, L'x')) << "names are read back cut to 63 characters";
    EXPECT_EQ(sets[5], L"6:Set 6");
    EXPECT_EQ(sets[6], L"7:Set 7");

    ::PostMessageW(equip.list, WM_KEYDOWN, '4', 0);  // the digit picks the entry it begins
    EXPECT_TRUE(e2e::WaitUntil([&] { return equip.Selection() == 3; }, 3000));
    ::PostMessageW(equip.list, WM_KEYDOWN, VK_RETURN, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return ::GetWindowLongW(run.frame, kSlotEquipRequest) == 11003; }, 3000));
    EXPECT_TRUE(equip.Entries().empty());
    EXPECT_EQ(::GetForegroundWindow(), run.game) << "the module acts once its game is in front";

    ASSERT_TRUE(equip.Key(VK_LEFT, "Vrl [Equip set menu]"));
    EXPECT_EQ(equip.Selection(), 0);
    equip.Down(1);
    ASSERT_TRUE(equip.Key(VK_RIGHT, "Save equip set"));
    ::PostMessageW(equip.list, WM_KEYDOWN, VK_SHIFT, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(equip.window); }, 3000)) << "Shift closes";
    EXPECT_EQ(::GetWindowLongW(run.frame, kSlotEquipRequest), 11003) << "nothing chosen in the save list";
}

TEST(EquipSets, RenamingTheSecondSetWritesItsKeyAndShowsTheNewName) {
    Running run;
    run.MakeCharacter(L"hero");
    run.StartWithGame("iLanguage=1\r\nenEquipSet=1\r\n", "static1 hero\nrequest a000\n");
    const EquipWindow equip = WaitForEquipSets(run);
    ASSERT_TRUE(equip.window);
    EXPECT_EQ(e2e::WindowText(equip.window), "Vrl [装備セットメニュー]");
    equip.Down(2);
    ASSERT_TRUE(equip.Key(VK_RETURN, "装備セットの編集"));
    ASSERT_EQ(equip.Entries().size(), 10u);
    equip.Down(1);
    ::PostMessageW(equip.list, WM_KEYDOWN, VK_RETURN, 0);

    HWND edit = e2e::WaitForWindow(L"#32770", L"Edit", 5000);
    ASSERT_TRUE(edit);
    // A modal dialog shows itself once its set-up has filled the edit.
    ASSERT_TRUE(e2e::WaitUntil([&] { return ::IsWindowVisible(edit) != FALSE; }, 3000));
    wchar_t shown[64] = {};
    ::GetDlgItemTextW(edit, 1000, shown, 64);
    EXPECT_STREQ(shown, L"装備セット 2");
    ::SetDlgItemTextW(edit, 1000, L"Boss fight");
    e2e::Press(edit, IDOK);
    ASSERT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(edit); }, 3000));

    EXPECT_TRUE(e2e::WaitUntil(
        [&] { const auto now = equip.Entries(); return now.size() == 10 && now[1] == L"2:Boss fight"; }, 3000));
    EXPECT_EQ(equip.Selection(), 1);
    EXPECT_EQ(e2e::WindowText(equip.window), "装備セットの編集") << "the window stays in the edit mode";
    wchar_t stored[64] = {};
    ::GetPrivateProfileStringW(L"Vorrel", L"EqSetName_01", L"", stored, 64,
                               (run.SaveFolder(L"hero") + L"\\Vrl_EquipSet.ini").c_str());
    EXPECT_STREQ(stored, L"Boss fight");
}

// --- Treasure map -----------------------------------------------------------------------------

RECT ScreenRectOf(HWND window, RECT client) {
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

struct MapShown {
    HWND window = nullptr;
    HWND picture = nullptr;
    RECT pictureClient{};
};

// Waits for the map window to show a picture of `width` x `height` filling its client area (the
// window has been placed then).
MapShown WaitForMap(int width, int height) {
    MapShown map;
    e2e::WaitUntil(
        [&] {
            map.window = ::FindWindowW(L"#32770", L"Treasure Map - Vorrel");
            map.picture = ::GetDlgItem(map.window, 1000);
            RECT client{};
            ::GetClientRect(map.window, &client);
            ::GetClientRect(map.picture, &map.pictureClient);
            return ::IsWindowVisible(map.window) && map.pictureClient.right == width &&
                   map.pictureClient.bottom == height && client.right == width && client.bottom == height;
        },
        15000);
    return map;
}

TEST(TreasureMap, TheGamesMapPixelForPixelBesideTheGameThenDoubleFromATallDrawWindowAgainstTheEdge) {
    Running run;
    run.StartWithGame("iLanguage=0\r\nenTreasureMap=1\r\n", "showmap 1\nwait 2500\nhotkey 1200\n");
    ::SetWindowPos(run.game, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    MapShown map = WaitForMap(408, 312);
    ASSERT_EQ(map.pictureClient.right, 408);
    ::Sleep(300);  // painted

    RECT gameWindow{}, mapWindow{};
    ::GetWindowRect(run.game, &gameWindow);
    ::GetWindowRect(map.window, &mapWindow);
    EXPECT_EQ(mapWindow.left, gameWindow.right);
    EXPECT_EQ(mapWindow.top, gameWindow.top);

    const std::vector<DWORD> shown = e2e::ScreenPixels(ScreenRectOf(map.picture, map.pictureClient));
    const std::vector<DWORD> game = e2e::ScreenPixels(ScreenRectOf(run.game, {196, 140, 196 + 408, 140 + 312}));
    size_t differing = 0;
    for (size_t i = 0; i < shown.size(); ++i) differing += shown[i] != game[i];
    EXPECT_EQ(differing, 0u) << "of " << shown.size() << " pixels";
    EXPECT_EQ(game[0], 0x00E2CA96u) << "the game's parchment is where the map is cut out";

    ::PostMessageW(map.window, WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(map.window); }, 3000)) << "closing hides it";

    // The game opens a draw window twice as tall, near the screen's right edge, as the module
    // publishes it.
    HWND draw = reinterpret_cast<HWND>(::SendMessageW(run.game, WM_APP + 0x36, 240, 1200));
    ASSERT_TRUE(draw);
    ::SetWindowLongW(run.frame, kSlotFurtherWindow, static_cast<LONG>(reinterpret_cast<LONG_PTR>(draw)));
    ::SetWindowPos(draw, nullptr, 1000, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ::PostMessageW(map.window, WM_HOTKEY, 1200, 0);
    map = WaitForMap(816, 624);
    ASSERT_EQ(map.pictureClient.right, 816);
    RECT desktop{}, drawWindow{};
    ::GetWindowRect(map.window, &mapWindow);
    ::GetWindowRect(::GetDesktopWindow(), &desktop);
    ::GetWindowRect(draw, &drawWindow);
    EXPECT_EQ(mapWindow.right, desktop.right) << "pulled back onto the screen, over the game";
    EXPECT_EQ(mapWindow.top, drawWindow.top);
}

}  // namespace
