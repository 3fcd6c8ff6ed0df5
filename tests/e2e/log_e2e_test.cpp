// The log windows of the running companion, fed by the module stand-in from inside the demo game:
// what reaches the full and the extracted log, the reload of the rules, the frame's log requests
// and commands, docking, speech and alert sounds, and hostile or oversized lines.

#include <gtest/gtest.h>
#include <objbase.h>

#include <algorithm>
#include <memory>
#include <thread>

#include "e2e_support.h"
#include "tests/common/alerts_support_win.h"

namespace {

using e2e::Companion;
using vrltest::Calls;
using vrltest::CopyStandIn;
using vrltest::Field;
using vrltest::MakeShortcut;
using vrltest::ReadLines;
using vrltest::WriteWav;

constexpr UINT kLogViewHandle = 0x9000;
constexpr UINT kClearLog = 0x9001;
constexpr WPARAM kShowFullLog = 34103;
constexpr WPARAM kShowExtractedLog = 34104;
constexpr WPARAM kDockUndock = 1001;

const char kIniBoth[] = "enLogExtender=1\r\nenLogExtender_FullLog=1\r\n";
const char kIniExtractedOnly[] = "enLogExtender=1\r\nenLogExtender_FullLog=0\r\n";

const char kRules[] =
    "#format,kcsv\r\n"
    "#option,bkcolor:#000000\r\n"
    "#column,keyword,exact,regex,talk,sound,volume,color\r\n"
    "ally,,,,,,#ff8000\r\n"
    "^You ,,1,,,,#00c000\r\n";

struct LogSession : e2e::Session {
    HWND fullWindow = nullptr;
    HWND extractedWindow = nullptr;
    HWND full = nullptr;       // page 0, as the frame answers it
    HWND extracted = nullptr;  // page 1

    // Starts the companion with the log windows; `scenario` runs in the game once they exist.
    void Start(const std::string& ini, const std::string& rules, const std::string& scenario = {}) {
        install.WriteProgramFile(L"LogEx.kcsv", rules);
        ASSERT_NO_FATAL_FAILURE(Session::Start(ini, "waitfor fulllog\n" + scenario));
        extractedWindow = e2e::WaitForWindow(L"#32770", L"Extracted Log - Vorrel", 20000);
        fullWindow = e2e::WaitForWindow(L"#32770", L"Full Log - Vorrel", 20000);
        ASSERT_TRUE(extractedWindow && fullWindow);
        full = Page(0);
        extracted = Page(1);
        ASSERT_TRUE(full && extracted);
    }

    HWND Page(WPARAM page) const {
        return reinterpret_cast<HWND>(::SendMessageW(frame, kLogViewHandle, page, 0));
    }

    LRESULT SendLine(const std::string& ansi) const { return e2e::SendCopyData(fullWindow, 0, ansi); }
};

// The text of a view from another process, with each line break as "\n".
std::string Text(HWND view) {
    const LRESULT length = ::SendMessageW(view, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    text.resize(static_cast<size_t>(::SendMessageW(view, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    std::wstring lines;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
        lines += text[i] == L'\r' ? L'\n' : text[i];
    }
    return e2e::Utf8(lines);
}

TEST(LogWindows, LinesNoticesAndMalformedPayloadsFromTheModuleDockedOrNot) {
    LogSession log;
    log.Start(kIniBoth, kRules,
              "log The ally joined you.\n"
              "log0 Nothing happens.\n"
              "log You feel better.\n"
              "log !Game saved.\n"
              "logbytes 41 42 00 43\n"  // text ends at the NUL
              "copydata fulllog 0\n"    // no bytes at all
              "logbytes ff fe 81\n");
    const std::string transcript = log.install.WaitForScenarioEnd();
    EXPECT_EQ(transcript.find("error"), std::string::npos) << transcript;
    EXPECT_NE(transcript.find("module: log The ally joined you. -> 1"), std::string::npos) << transcript;

    std::string full = Text(log.full);
    const std::string expected = "The ally joined you.\nNothing happens.\nYou feel better.\nGame saved.\nAB\n\n";
    EXPECT_EQ(full.substr(0, expected.size()), expected) << full;
    EXPECT_EQ(std::count(full.begin(), full.end(), '\n'), 7);
    EXPECT_EQ(Text(log.extracted), "The ally joined you.\nYou feel better.\nGame saved.\n");
    EXPECT_EQ(log.Page(2), nullptr) << "any other page: 0";

    EXPECT_EQ(log.SendLine(std::string(1024 * 1024, 'z')), 1);
    full = Text(log.full);
    EXPECT_EQ(full.substr(full.size() - 2047), "\n" + std::string(2045, 'z') + "\n") << "cut to 2045 characters";

    // Docked, the frame's pages and commands reach the views under the tabs.
    ::SendMessageW(log.fullWindow, WM_SYSCOMMAND, kDockUndock, 0);
    EXPECT_EQ(e2e::WindowText(log.fullWindow), "Log - Vorrel");
    EXPECT_FALSE(::IsWindowVisible(log.extractedWindow));
    EXPECT_EQ(::GetParent(log.extracted), log.fullWindow);
    EXPECT_EQ(log.Page(0), log.full);
    EXPECT_EQ(log.Page(1), log.extracted);
    log.SendLine("ally docked");
    ::SendMessageW(log.frame, WM_COMMAND, kShowExtractedLog, 0);
    EXPECT_TRUE(::IsWindowVisible(log.extracted));
    EXPECT_FALSE(::IsWindowVisible(log.full));
    ::SendMessageW(log.frame, kClearLog, 0, 0);  // page 1 is the current page now
    EXPECT_EQ(Text(log.extracted), "");
    full = Text(log.full);
    EXPECT_EQ(full.substr(full.size() - 12), "ally docked\n");
    ::SendMessageW(log.frame, WM_COMMAND, kShowFullLog, 0);
    EXPECT_TRUE(::IsWindowVisible(log.full));
    EXPECT_FALSE(::IsWindowVisible(log.extracted));

    ::SendMessageW(log.fullWindow, WM_SYSCOMMAND, kDockUndock, 0);
    EXPECT_EQ(e2e::WindowText(log.fullWindow), "Full Log - Vorrel");
    EXPECT_TRUE(::IsWindowVisible(log.extractedWindow));
    EXPECT_EQ(::GetParent(log.extracted), log.extractedWindow);
}

TEST(LogWindows, TheReloadBitReloadsTheRulesAndDropsThatLineEvenWhileASecondCopyIsRefused) {
    LogSession log;
    log.Start(kIniBoth, kRules);
    log.install.WaitForScenarioEnd();
    log.install.WriteProgramFile(L"LogEx.kcsv",
                                 "#format,kcsv\r\n#column,keyword,color\r\nwolf,#ff0000\r\n");
    ::SetWindowLongW(log.frame, 8, 0x2 | 0x4);
    EXPECT_EQ(log.SendLine("ally wolf, dropped"), 1);
    EXPECT_EQ(::GetWindowLongW(log.frame, 8), 0x4) << "only the log bit is cleared";
    log.SendLine("ally only");
    log.SendLine("a wolf howls");
    EXPECT_EQ(Text(log.full), "Config file has been reloaded.\nally only\na wolf howls\n");
    EXPECT_EQ(Text(log.extracted), "Config file has been reloaded.\na wolf howls\n");

    // A second copy's frame must never be what the module or the reload finds, box up or gone.
    Companion second(log.install);
    const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(second.ProcessId(), 20000);
    ASSERT_TRUE(box.window);
    EXPECT_EQ(box.text, L"Vorrel is already running.\r\nUse the Vorrel icon in the notification area.");
    EXPECT_EQ(::FindWindowW(L"VorrelUI", L"Vorrel"), log.frame);
    ::SetWindowLongW(log.frame, 8, 0x2);
    log.SendLine("while the box is up");
    EXPECT_EQ(::GetWindowLongW(log.frame, 8), 0);
    e2e::Press(box.window, IDOK);
    EXPECT_EQ(second.WaitExit(5000), 0u);
    ::SetWindowLongW(log.frame, 8, 0x2);
    log.SendLine("after the box");
    EXPECT_EQ(::GetWindowLongW(log.frame, 8), 0);
    log.SendLine("the wolf again");
    EXPECT_EQ(Text(log.extracted),
              "Config file has been reloaded.\na wolf howls\nConfig file has been reloaded.\n"
              "Config file has been reloaded.\nthe wolf again\n");

    // A table another program holds open: while the reload's warning box is up, the lines that go
    // on arriving are in the view at once, and they start no second reload.
    HANDLE held = ::CreateFileW(log.install.ProgramFile(L"LogEx.kcsv").c_str(), GENERIC_READ, 0, nullptr,
                                OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    ::SetWindowLongW(log.frame, 8, 0x2);
    std::thread reload([&] { log.SendLine("starts the reload"); });
    HWND warning = e2e::WaitForWindow(L"#32770", L"Vorrel Error", 10000);
    EXPECT_TRUE(warning);
    log.SendLine("the wolf while the box is up");
    const std::string full = Text(log.full);
    EXPECT_EQ(full.substr(full.size() - 29), "the wolf while the box is up\n") << full;
    if (warning) e2e::Press(warning, IDOK);
    reload.join();
    ::CloseHandle(held);
    EXPECT_EQ(::GetWindowLongW(log.frame, 8), 0);
}

TEST(LogWindows, RequestsAndCommandsOfTheFrameWithTheFullLogOff) {
    LogSession log;
    log.Start(kIniExtractedOnly, kRules, "log The ally waves.\nlog !Saved.\nrequest 9001 0\n");
    const std::string transcript = log.install.WaitForScenarioEnd();
    EXPECT_NE(transcript.find("request 9001 0 -> 0x0"), std::string::npos) << transcript;
    EXPECT_FALSE(::IsWindowVisible(log.fullWindow));
    EXPECT_TRUE(::IsWindowVisible(log.extractedWindow));
    EXPECT_EQ(Text(log.full), "Saved.\n") << "the full log holds notices only, and page 0 was not cleared";
    EXPECT_EQ(Text(log.extracted), "The ally waves.\nSaved.\n");

    ::SendMessageW(log.frame, kClearLog, 1, 0);
    EXPECT_EQ(Text(log.extracted), "");
    EXPECT_EQ(Text(log.full), "Saved.\n");

    ::SendMessageW(log.extractedWindow, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindowVisible(log.extractedWindow));
    ::SendMessageW(log.frame, WM_COMMAND, kShowFullLog, 0);
    EXPECT_FALSE(::IsWindowVisible(log.fullWindow)) << "the full log stays off";
    ::SendMessageW(log.frame, WM_COMMAND, kShowExtractedLog, 0);
    EXPECT_TRUE(::IsWindowVisible(log.extractedWindow));
}

// --- Speech and alert sounds --------------------------------------------------------------------

// How the speech and sound players treat a run of alerts (slots, quotes) is tested in-process;
// here the rules of the player's table reach them, with the table's volume and folders.
TEST(LogAlerts, SpeechAndSoundsAsTheRulesSay) {
    ASSERT_TRUE(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    LogSession log;
    const std::wstring program = log.install.programFolder;
    ASSERT_TRUE(CopyStandIn(L"simbass", L"bass.dll", program));
    ASSERT_TRUE(CopyStandIn(L"simbass", L"bassmidi.dll", program));
    ASSERT_TRUE(CopyStandIn(L"simtalk", L"RemoteTalk.exe", program));
    const std::wstring sound = log.install.gameFolder + L"\\user\\sound";
    ::CreateDirectoryW((log.install.gameFolder + L"\\user").c_str(), nullptr);
    ::CreateDirectoryW(sound.c_str(), nullptr);
    for (const wchar_t* name : {L"a.wav", L"b.wav", L"target.wav"}) WriteWav(sound + L"\\" + name, 100);
    ASSERT_TRUE(MakeShortcut(sound + L"\\alert.lnk", sound + L"\\target.wav"));
    ::CoUninitialize();

    log.Start(kIniBoth,
              "#format,kcsv\r\n#option,MasterVolume:80,EnableRemoteTalk:1\r\n"
              "#column,keyword,exact,regex,talk,sound,volume,color\r\n"
              "Speak,,,1,,,,\r\nfirst,,,,a.wav,70,\r\nsecond,,,,b.wav,,\r\nshortcut,,,,alert.lnk,,\r\n",
              "log [12] Speak up\nlog first\nlog second\nlog shortcut\n");
    log.install.WaitForScenarioEnd();
    std::vector<std::string> talks;
    e2e::WaitUntil([&] { return !(talks = Calls(ReadLines(program + L"\\RemoteTalk.log"), "RemoteTalk")).empty(); },
                   5000);
    EXPECT_EQ(talks, std::vector<std::string>{"RemoteTalk hidden=1 show=0 cmdline= /Talk \"Speak up\""});

    const std::wstring trace = program + L"\\bass_trace.txt";
    // A line is answered before its sound plays: the last one may still be loading.
    e2e::WaitUntil([&] { return Calls(ReadLines(trace), "BASS_ChannelSetAttribute").size() >= 3; }, 5000);
    const auto inits = Calls(ReadLines(trace), "BASS_Init");
    ASSERT_EQ(inits.size(), 1u);
    EXPECT_EQ(Field(inits[0], "device") + " " + Field(inits[0], "freq"), "-1 48000");
    std::vector<std::string> played;  // the files that loaded, in order
    for (const std::string& load : Calls(ReadLines(trace), "BASS_SampleLoad")) {
        EXPECT_EQ(Field(load, "flags"), "0x80020000");
        if (load.substr(load.rfind(' ') + 1) == "0") continue;
        const std::string file = Field(load, "file");
        played.push_back(file.substr(file.rfind('\\') + 1));
    }
    EXPECT_EQ(played, (std::vector<std::string>{"a.wav\"", "b.wav\"", "target.wav\""}));
    const auto volumes = Calls(ReadLines(trace), "BASS_ChannelSetAttribute");
    ASSERT_EQ(volumes.size(), 3u);
    EXPECT_EQ(Field(volumes[0], "attrib"), "2");
    EXPECT_EQ(Field(volumes[0], "value"), "0.56");
    EXPECT_EQ(Field(volumes[1], "value"), "0.4") << "an empty volume cell reads as 0, which becomes 50";
}

}  // namespace
