// The quick search bar of the running companion: its sorted word list, the word the module reads
// through slot 16, the reload on activation, Close and the hotkey, and the colour of its strip.

#include <gtest/gtest.h>

#include "e2e_support.h"

namespace {

constexpr int kSlotReloadFlags = 8;
constexpr int kSlotWordBox = 16;
constexpr COLORREF kBlue = RGB(0, 0, 223);
constexpr COLORREF kGrey = RGB(127, 127, 127);

struct QuickSearchSession : e2e::Session {
    HWND bar = nullptr;
    HWND box = nullptr;

    void Start(const std::string& ini, const std::string& words, const std::string& scenario) {
        install.WriteProgramFile(L"QuickSearch.kcsv", words);
        ASSERT_NO_FATAL_FAILURE(Session::Start(ini, scenario));
        ASSERT_TRUE(e2e::WaitUntil([&] { return ::IsWindow(box = Slot(kSlotWordBox)) != FALSE; }, 20000));
        bar = ::GetParent(box);
    }
    // The middle of the strip at the bar's left edge, on the screen.
    COLORREF StripColour() const {
        RECT strip{};
        ::GetWindowRect(::GetDlgItem(bar, 1000), &strip);
        return e2e::ScreenPixel((strip.left + strip.right) / 2, (strip.top + strip.bottom) / 2);
    }
};

std::string Words(std::initializer_list<const char*> words) {
    std::string file = "#format,kcsv\r\n#column,keyword\r\n";
    for (const char* word : words) file += std::string(word) + "\r\n";
    return file;
}

TEST(QuickSearch, SortedWordsTheModulesWordReloadCloseAndHotkey) {
    QuickSearchSession s;
    // The module reads the word once the test has typed it.
    s.Start("iLanguage=0\r\nenQuickSearch=1\r\n", Words({"potion", "dagger", "scroll"}), "wait 2000\nword\n");
    ::SendMessageW(s.box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"dragon"));
    EXPECT_EQ(e2e::ComboBoxEntries(s.box), (std::vector<std::string>{"dagger", "potion", "scroll"}));
    EXPECT_EQ(e2e::WindowText(::GetDlgItem(s.bar, IDOK)), "Close");
    EXPECT_TRUE(::IsWindowVisible(s.bar));
    const std::string transcript = s.install.WaitForScenarioEnd();
    EXPECT_NE(transcript.find("module: word -> \"dragon\""), std::string::npos) << transcript;

    // A changed file is read only when the bar is activated with the bit set; other bits stay.
    s.install.WriteProgramFile(L"QuickSearch.kcsv", Words({"wand", "amulet"}));
    ::SetWindowLongW(s.frame, kSlotReloadFlags, 0x100 | 0x2);
    EXPECT_EQ(e2e::ComboBoxEntries(s.box).size(), 3u);
    ::SendMessageW(s.frame, WM_COMMAND, 34102, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return e2e::ComboBoxEntries(s.box).size() == 2; }, 5000));
    EXPECT_EQ(e2e::ComboBoxEntries(s.box), (std::vector<std::string>{"amulet", "wand"}));
    EXPECT_EQ(::GetWindowLongW(s.frame, kSlotReloadFlags), 0x2);
    EXPECT_EQ(e2e::WindowText(s.box), "dragon") << "a reload leaves the word alone";

    // Enter and Escape in the word field leave the bar alone.
    HWND field = ::GetWindow(s.box, GW_CHILD);
    for (WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        ::PostMessageW(field, WM_KEYDOWN, key, 0);
        ::PostMessageW(field, WM_KEYUP, key, 0xC0000001);
    }
    EXPECT_FALSE(e2e::WaitUntil([&] { return !::IsWindowVisible(s.bar); }, 500));

    ::SendMessageW(::GetDlgItem(s.bar, IDOK), BM_CLICK, 0, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return !::IsWindowVisible(s.bar); }, 5000));
    EXPECT_EQ(e2e::WindowText(s.box), "dragon") << "Close keeps the word";

    // Ctrl+Alt+F brings it back.
    e2e::PressCtrlAlt('F');
    EXPECT_TRUE(e2e::WaitUntil([&] { return ::IsWindowVisible(s.bar) != FALSE; }, 5000));
}

TEST(QuickSearch, StripIsBlueWhileTheBarIsActiveAndGreyOtherwise) {
    QuickSearchSession s;
    s.Start("iLanguage=1\r\nenQuickSearch=1\r\n", Words({}), "");
    EXPECT_EQ(e2e::WindowText(::GetDlgItem(s.bar, IDOK)), "閉じる");
    HWND game = e2e::WaitForGameWindow();
    ASSERT_TRUE(game);
    e2e::LetTheCompanionSeeTheGame(game);

    // Below the game, so that the game in front leaves the strip in sight.
    ::SetWindowPos(s.bar, nullptr, 200, 900, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ::SendMessageW(s.frame, WM_COMMAND, 34102, 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return s.StripColour() == kBlue; }, 5000))
        << std::hex << s.StripColour();
    ::SetForegroundWindow(game);
    EXPECT_TRUE(e2e::WaitUntil([&] { return s.StripColour() == kGrey; }, 5000))
        << std::hex << s.StripColour();
}

}  // namespace
