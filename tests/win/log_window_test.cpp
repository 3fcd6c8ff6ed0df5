// The log windows in this process, for what the end-to-end tests cannot read from outside: colours,
// fonts and the text limit of the views, the layout under the tabs, the system menus' clear
// commands, a burst of lines read between its lines, shown views repainted once per batch, and
// speech without its program.

#include "log/log_window_win.h"

#include <gtest/gtest.h>
#include <richedit.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/common/alerts_support_win.h"
#include "tests/common/window_driving_win.h"
#include "app/app_state_win.h"

namespace {

constexpr vrl::Colour kWhite = 0xFFFFFF;
constexpr vrl::Colour kOrange = 0x0080FF;  // #ff8000
constexpr vrl::Colour kGreen = 0x00C000;   // #00c000

const char kRules[] =
    "#format,kcsv\r\n"
    "#option,bkcolor:#000000,FontFace:Courier New,FontSize:12,FontBold:1,FontItalic:1\r\n"
    "#column,keyword,exact,regex,talk,sound,volume,color\r\n"
    "ally,,,,,,#ff8000\r\n"
    "ally joined,,,,,,#00c000\r\n"
    "^You ,,1,,,,#00c000\r\n"
    "quiet,,,,,,\r\n";

class LogWindow : public ::testing::Test {
protected:
    void SetUp() override {
        richEdit_ = LoadLibraryW(L"riched20.dll");
        ASSERT_TRUE(richEdit_);
        vrl::App().folders.program = folder_.Path();
        vrl::App().folders.game = folder_.Path();
        vrl::App().settings.enLogExtender_FullLog = 1;
        vrltest::WriteFileBytes(folder_ / L"LogEx.kcsv", kRules);
        GetCurrentDirectoryW(MAX_PATH, previous_);
        SetCurrentDirectoryW(folder_.Path().c_str());
    }
    void TearDown() override {
        log_.DestroyWindows();
        SetCurrentDirectoryW(previous_);
        FreeLibrary(richEdit_);
    }

    void Open() {
        ASSERT_TRUE(log_.Create());
        full_ = log_.PageView(0);
        extracted_ = log_.PageView(1);
        ASSERT_TRUE(full_ && extracted_);
    }

    void Send(const std::string& ansi) {
        EXPECT_EQ(vrltest::SendCopyData(log_.Handle(), 0, ansi), 1);
    }

    // The view's text as the control stores it: one CR per line break.
    static std::wstring Text(HWND view) {
        GETTEXTLENGTHEX length{GTL_DEFAULT, 1200};
        const auto size = SendMessageW(view, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0);
        std::wstring text(static_cast<size_t>(size) + 1, L'\0');
        GETTEXTEX get{};
        get.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        get.flags = GT_DEFAULT;
        get.codepage = 1200;
        text.resize(static_cast<size_t>(
            SendMessageW(view, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get), reinterpret_cast<LPARAM>(text.data()))));
        return text;
    }

    // The text colour of the first occurrence of `part`; 0xFFFFFFFE when it is not there.
    static vrl::Colour ColourOf(HWND view, const std::wstring& part) {
        const size_t at = Text(view).find(part);
        if (at == std::wstring::npos) return 0xFFFFFFFEu;
        CHARRANGE range{static_cast<LONG>(at), static_cast<LONG>(at + part.size())};
        SendMessageW(view, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(view, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        EXPECT_TRUE(format.dwMask & CFM_COLOR) << "one colour over the whole part";
        return format.crTextColor;
    }

    // What a view draws new text with.
    static CHARFORMAT2W DefaultFormat(HWND view) {
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(view, EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
        return format;
    }

    vrltest::ScratchFolder folder_;
    vrl::CLogExtenderDlg log_;
    HWND full_ = nullptr;
    HWND extracted_ = nullptr;
    HMODULE richEdit_ = nullptr;
    wchar_t previous_[MAX_PATH] = {};
};

TEST_F(LogWindow, TheFullLogIsWhiteTheFirstMatchingRuleColoursTheExtractedCopyAndNoticesReadOnTheBackground) {
    Open();
    Send("The ally joined you.");
    Send("Nothing happens.");
    Send("You feel better.");
    Send("A quiet wind.");

    EXPECT_EQ(ColourOf(full_, L"The ally joined you."), kWhite);
    EXPECT_EQ(ColourOf(full_, L"You feel better."), kWhite);
    // "ally" comes before "ally joined"; a rule without a colour copies nothing.
    EXPECT_EQ(Text(extracted_), L"The ally joined you.\rYou feel better.\r");
    EXPECT_EQ(ColourOf(extracted_, L"The ally joined you."), kOrange);
    EXPECT_EQ(ColourOf(extracted_, L"You feel better."), kGreen);

    Send("!Saved.");
    EXPECT_EQ(ColourOf(extracted_, L"Saved."), kWhite) << "black background";
    vrltest::WriteFileBytes(folder_ / L"LogEx.kcsv", "#format,kcsv\r\n#option,bkcolor:#f0f0f0\r\n#column,keyword\r\n");
    log_.LoadLogRules();
    Send("!Light");
    EXPECT_EQ(ColourOf(extracted_, L"Light"), 0u);
}

TEST_F(LogWindow, BothViewsTakeTheLogFontAndGrowPastTheControlsDefaultLimit) {
    Open();
    for (HWND view : {full_, extracted_}) {
        const CHARFORMAT2W format = DefaultFormat(view);
        EXPECT_STREQ(format.szFaceName, L"Courier New");
        EXPECT_EQ(format.yHeight, 12 * 20) << "twips";
        EXPECT_EQ(format.dwEffects & (CFE_BOLD | CFE_ITALIC), static_cast<DWORD>(CFE_BOLD | CFE_ITALIC));
        EXPECT_EQ(SendMessageW(view, EM_GETLIMITTEXT, 0, 0), 0x7FFFFFFF);
    }
}

TEST_F(LogWindow, WithoutTheFullLogItsViewKeepsItsOwnFontButStillGrows) {
    vrl::App().settings.enLogExtender_FullLog = 0;
    Open();
    EXPECT_STRNE(DefaultFormat(full_).szFaceName, L"Courier New");
    EXPECT_STREQ(DefaultFormat(extracted_).szFaceName, L"Courier New");
    EXPECT_EQ(SendMessageW(full_, EM_GETLIMITTEXT, 0, 0), 0x7FFFFFFF);
}

// The extracted window's system menu and the full-log window's system menu (page 0 selected) each
// clear their own view.
TEST_F(LogWindow, EachSystemMenuClearsOnlyItsOwnView) {
    Open();
    Send("ally one");
    SendMessageW(log_.Child().Handle(), WM_SYSCOMMAND, vrl::CLogExtenderDlg_Child::kCmdClearLog, 0);
    EXPECT_EQ(Text(extracted_), L"");
    EXPECT_EQ(Text(full_), L"ally one\r");
    Send("ally two");
    SendMessageW(log_.Handle(), WM_SYSCOMMAND, vrl::CLogExtenderDlg::kCmdClearLog, 0);
    EXPECT_EQ(Text(full_), L"");
    EXPECT_EQ(Text(extracted_), L"ally two\r");
}

// The game's thread sends lines back to back while this thread handles them: whatever it reads
// or clears between two lines sees every line before, in its colour, as if each were inserted
// on arrival.
TEST_F(LogWindow, ABurstFromTheGameLooksAsLineByLineToWhateverComesBetweenItsLines) {
    Open();
    HWND window = log_.Handle();
    std::wstring expected;
    int firstWrongRead = -1;
    std::atomic<bool> done{false};
    std::thread game([&] {
        for (int i = 0; i < 300; ++i) {
            const std::string line = (i % 3 == 0 ? "ally " : i % 3 == 1 ? "You hit " : "plain ") + std::to_string(i);
            vrltest::SendCopyData(window, 0, line);
            expected += std::wstring(line.begin(), line.end()) + L"\r";
            if (i == 150) {
                SendMessageW(window, WM_SYSCOMMAND, vrl::CLogExtenderDlg::kCmdClearLog, 0);
                expected.clear();
            }
            GETTEXTLENGTHEX length{GTL_DEFAULT, 1200};
            const auto size = SendMessageW(full_, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0);
            if (static_cast<size_t>(size) != expected.size() && firstWrongRead < 0) firstWrongRead = i;
        }
        done = true;
    });
    MSG msg;
    while (!done) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    }
    game.join();
    EXPECT_EQ(firstWrongRead, -1);
    EXPECT_EQ(Text(full_), expected);
    EXPECT_EQ(ColourOf(extracted_, L"ally 297\r"), kOrange);
    EXPECT_EQ(ColourOf(extracted_, L"You hit 298\r"), kGreen);
    EXPECT_EQ(Text(extracted_).find(L"plain"), std::wstring::npos);
}

// The pixels of the view's client area, as the screen shows them.
std::vector<COLORREF> ShownPixels(HWND view) {
    RECT client{};
    GetClientRect(view, &client);
    HDC dc = GetDC(view);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; ++x) pixels.push_back(GetPixel(dc, x, y));
    ReleaseDC(view, dc);
    return pixels;
}

void PumpFor(DWORD ms) {
    MSG msg;
    for (const DWORD start = GetTickCount(); GetTickCount() - start < ms;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
    }
}

// On screen, the lines go into the views with their redraw held: the views change once for the
// batch, not as each run of lines goes in.
TEST_F(LogWindow, ShownViewsChangeOnceForTheBatchNotRunByRun) {
    Open();
    ShowWindow(log_.Handle(), SW_SHOW);
    PumpFor(400);
    const std::vector<COLORREF> before = ShownPixels(full_);
    std::atomic<bool> done{false};
    std::thread game([&] {
        for (int i = 0; i < 3; ++i) {
            vrltest::SendCopyData(log_.Handle(), 0, "ally " + std::to_string(i));
            Sleep(20);  // each line a run of its own
        }
        done = true;
    });
    MSG msg;
    while (!done) {  // the lines only: no paint, no timer
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_SENDMESSAGE);
        PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    game.join();
    EXPECT_EQ(Text(full_), L"ally 0\rally 1\rally 2\r");
    EXPECT_TRUE(ShownPixels(full_) == before) << "a run of lines repainted the view";
    PumpFor(400);
    EXPECT_FALSE(ShownPixels(full_) == before) << "the batch did not repaint the view";
}

// Fresh, each view fills its window with no tabs over it; docked, the views sit right below the row
// of tabs; undocked again, the extracted view takes its window's last size.
TEST_F(LogWindow, FreshTheViewsFillTheirWindowsDockedTheyStartBelowTheTabs) {
    Open();
    HWND window = log_.Handle();
    HWND child = log_.Child().Handle();
    for (HWND view : {full_, extracted_}) {
        RECT r{}, client{};
        GetWindowRect(view, &r);
        MapWindowPoints(nullptr, GetParent(view), reinterpret_cast<POINT*>(&r), 2);
        GetClientRect(GetParent(view), &client);
        EXPECT_TRUE(EqualRect(&r, &client)) << "before any resize, view " << (view == full_ ? 0 : 1);
    }
    RECT tabs{};
    GetWindowRect(GetDlgItem(window, vrl::CLogExtenderDlg::kTabId), &tabs);
    EXPECT_TRUE(IsRectEmpty(&tabs)) << "undocked, no tab strip over the full log";
    ShowWindow(window, SW_SHOW);
    ShowWindow(child, SW_SHOW);
    SetWindowPos(child, nullptr, 500, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    vrltest::HoldForScreenshot("fresh_log_windows");

    ShowWindow(window, SW_SHOW);
    ShowWindow(child, SW_SHOW);
    SetWindowPos(child, nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER);
    RECT childClient{};
    GetClientRect(child, &childClient);

    SendMessageW(window, WM_SYSCOMMAND, vrl::CLogExtenderDlg::kCmdDockUndock, 0);
    RECT fullRect{}, tabRect{};
    GetWindowRect(full_, &fullRect);
    GetWindowRect(GetDlgItem(window, vrl::CLogExtenderDlg::kTabId), &tabRect);
    EXPECT_GT(tabRect.bottom - tabRect.top, 10) << "a strip that holds the row of tabs";
    EXPECT_EQ(fullRect.top, tabRect.bottom) << "the views start right below the strip";
    EXPECT_EQ(SendMessageW(window, WM_COPYDATA, 0, 0), 1) << "no payload: an empty line";

    SendMessageW(window, WM_SYSCOMMAND, vrl::CLogExtenderDlg::kCmdDockUndock, 0);
    RECT viewRect{};
    GetWindowRect(extracted_, &viewRect);
    EXPECT_EQ(viewRect.right - viewRect.left, childClient.right);
}

TEST_F(LogWindow, SpeechWithoutItsProgramStaysOffUntilALoadFindsIt) {
    vrltest::WriteFileBytes(folder_ / L"LogEx.kcsv",
                            "#format,kcsv\r\n#option,EnableRemoteTalk:1\r\n#column,keyword,talk,color\r\nsay,1,#ff0000\r\n");
    Open();
    Send("say one");
    ASSERT_TRUE(vrltest::CopyStandIn(L"simtalk", L"RemoteTalk.exe", folder_.Path()));
    Send("say two");  // the program counts from the next load on
    log_.LoadLogRules();
    Send("say three");
    EXPECT_EQ(Text(extracted_), L"say one\rsay two\rsay three\r");
    std::vector<std::string> talks;
    for (int i = 0; i < 100 && talks.empty(); ++i, Sleep(50)) talks = vrltest::ReadLines(folder_ / L"RemoteTalk.log");
    Sleep(200);
    EXPECT_EQ(vrltest::ReadLines(folder_ / L"RemoteTalk.log"),
              std::vector<std::string>{"RemoteTalk hidden=1 show=0 cmdline= /Talk \"say three\""});
}

}  // namespace
