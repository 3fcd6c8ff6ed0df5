// The log windows of the running companion, fed by the module stand-in from inside the demo game:
// what reaches the full and the extracted log, the reload of the rules, the frame's log requests
// and commands, docking, speech and alert sounds, and lines that are hostile or costly.

#include <gtest/gtest.h>
#include <objbase.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>

#include "e2e_support.h"
#include "tests/common/alerts_support_win.h"

namespace {

using e2e::Companion;
using e2e::Install;
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

struct LogSession {
    Install install = e2e::MakeInstall();
    std::unique_ptr<Companion> companion;
    HWND frame = nullptr;
    HWND fullWindow = nullptr;
    HWND extractedWindow = nullptr;
    HWND full = nullptr;       // page 0, as the frame answers it
    HWND extracted = nullptr;  // page 1

    // Starts the companion with the log windows; `scenario` runs in the game once they exist.
    void Start(const std::string& ini, const std::string& rules, const std::string& scenario = {}) {
        install.WriteIni(ini);
        install.WriteProgramFile(L"LogEx.kcsv", rules);
        install.WriteScenario("waitfor fulllog\n" + scenario);
        companion = std::make_unique<Companion>(install);
        frame = e2e::WaitForFrame(30000);  // a loaded machine starts Wine slowly
        ASSERT_TRUE(frame);
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

    // Waits for the scenario to finish; its transcript.
    std::string WaitForScenario() const { return install.WaitForScenarioEnd(); }

    LRESULT SendLine(const std::string& ansi) const { return SendBytes(ansi.data(), static_cast<DWORD>(ansi.size())); }
    LRESULT SendBytes(const void* bytes, DWORD count) const {
        COPYDATASTRUCT data{};
        data.cbData = count;
        data.lpData = const_cast<void*>(bytes);
        return ::SendMessageW(fullWindow, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    }
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

std::string Title(HWND window) {
    wchar_t title[64] = {};
    ::GetWindowTextW(window, title, 64);
    return e2e::Utf8(title);
}

TEST(LogWindows, LinesNoticesAndMalformedPayloadsFromTheModule) {
    LogSession log;
    log.Start(kIniBoth, kRules,
              "log The ally joined you.\n"
              "log0 Nothing happens.\n"
              "log You feel better.\n"
              "log !Game saved.\n"
              "logbytes 41 42 00 43\n"  // text ends at the NUL
              "copydata fulllog 0\n"    // no bytes at all
              "logbytes ff fe 81\n");
    const std::string transcript = log.WaitForScenario();
    EXPECT_EQ(transcript.find("error"), std::string::npos) << transcript;
    EXPECT_NE(transcript.find("module: log The ally joined you. -> 1"), std::string::npos) << transcript;

    const std::string full = Text(log.full);
    const std::string expected = "The ally joined you.\nNothing happens.\nYou feel better.\nGame saved.\nAB\n\n";
    EXPECT_EQ(full.substr(0, expected.size()), expected) << full;
    EXPECT_EQ(std::count(full.begin(), full.end(), '\n'), 7);
    EXPECT_EQ(Text(log.extracted), "The ally joined you.\nYou feel better.\nGame saved.\n");
    EXPECT_EQ(log.Page(2), nullptr) << "any other page: 0";
}

TEST(LogWindows, TheReloadBitReloadsTheRulesAndDropsThatLineEvenWhileASecondCopyIsRefused) {
    LogSession log;
    log.Start(kIniBoth, kRules);
    log.WaitForScenario();
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
}

TEST(LogWindows, RequestsAndCommandsOfTheFrameWithTheFullLogOff) {
    LogSession log;
    log.Start(kIniExtractedOnly, kRules, "log The ally waves.\nlog !Saved.\nrequest 9001 0\n");
    const std::string transcript = log.WaitForScenario();
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

TEST(LogWindows, DockedAndUndockedBothViewsKeepWorking) {
    LogSession log;
    log.Start(kIniBoth, kRules);
    log.WaitForScenario();
    ::SendMessageW(log.fullWindow, WM_SYSCOMMAND, kDockUndock, 0);
    EXPECT_EQ(Title(log.fullWindow), "Log - Vorrel");
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
    EXPECT_EQ(Text(log.full), "ally docked\n");
    ::SendMessageW(log.frame, WM_COMMAND, kShowFullLog, 0);
    EXPECT_TRUE(::IsWindowVisible(log.full));
    EXPECT_FALSE(::IsWindowVisible(log.extracted));

    ::SendMessageW(log.fullWindow, WM_SYSCOMMAND, kDockUndock, 0);
    EXPECT_EQ(Title(log.fullWindow), "Full Log - Vorrel");
    EXPECT_TRUE(::IsWindowVisible(log.extractedWindow));
    EXPECT_EQ(::GetParent(log.extracted), log.extractedWindow);
    log.SendLine("ally undocked");
    EXPECT_EQ(Text(log.extracted), "ally undocked\n");
    EXPECT_EQ(Text(log.full), "ally docked\nally undocked\n");
}

TEST(LogWindows, CostlyRulesAndHugeLinesDoNotHoldTheGame) {
    LogSession log;
    log.Start(kIniBoth,
              "#format,kcsv\r\n#column,keyword,exact,regex,color\r\n(a|aa)*$,1,1,#ff0000\r\n"
              "(x+x+)+y,,1,#ff0000\r\n[,,1,#ff0000\r\nend,,,#00c000\r\n");
    log.WaitForScenario();
    const std::string as = std::string(2044, 'a') + "b";
    const std::string xs = std::string(2042, 'x') + "end";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(log.SendLine(as), 1);
    EXPECT_EQ(log.SendLine(xs), 1);
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    std::printf("two 2045-character lines against the costly rules: %lld ms\n", static_cast<long long>(took.count()));
    EXPECT_LT(took.count(), 3000);
    EXPECT_EQ(Text(log.extracted), xs + "\n");

    const std::string huge(1024 * 1024, 'z');
    EXPECT_EQ(log.SendLine(huge), 1);
    EXPECT_EQ(log.SendBytes(nullptr, 0), 1);
    const std::string full = Text(log.full);
    EXPECT_EQ(full.substr(full.size() - 2047), std::string(2045, 'z') + "\n\n") << "cut to 2045, then an empty line";
}

// --- Speech and alert sounds --------------------------------------------------------------------

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
    for (const wchar_t* name : {L"a.wav", L"b.wav", L"c.wav", L"d.wav", L"target.wav"})
        WriteWav(sound + L"\\" + name, 100);
    ASSERT_TRUE(MakeShortcut(sound + L"\\alert.lnk", sound + L"\\target.wav"));
    ::CoUninitialize();

    log.Start(kIniBoth,
              "#format,kcsv\r\n#option,MasterVolume:80,EnableRemoteTalk:1\r\n"
              "#column,keyword,exact,regex,talk,sound,volume,color\r\n"
              "Speak,,,1,,,,\r\nfirst,,,,a.wav,70,\r\nsecond,,,,b.wav,,\r\nthird,,,,c.wav,,\r\n"
              "fourth,,,,d.wav,,\r\nshortcut,,,,alert.lnk,,\r\n",
              "log [12] Speak up\nlog Speak \"quoted\"\nlog first\nlog second\nlog third\nlog fourth\n"
              "log shortcut\n");
    log.WaitForScenario();
    std::vector<std::string> talks;
    e2e::WaitUntil([&] {
        talks = Calls(ReadLines(program + L"\\RemoteTalk.log"), "RemoteTalk");
        return talks.size() >= 2;
    }, 5000);
    ASSERT_EQ(talks.size(), 2u);
    // Speeches run independently, so their order is not fixed.
    std::sort(talks.begin(), talks.end());
    EXPECT_EQ(talks[0], "RemoteTalk hidden=1 show=0 cmdline= /Talk \"Speak \"quoted\"\"");
    EXPECT_EQ(talks[1], "RemoteTalk hidden=1 show=0 cmdline= /Talk \"Speak up\"");

    const std::wstring trace = program + L"\\bass_trace.txt";
    // A line is answered before its sound plays: the last one may still be loading.
    e2e::WaitUntil([&] { return Calls(ReadLines(trace), "BASS_SampleLoad").size() >= 5; }, 5000);
    const auto inits = Calls(ReadLines(trace), "BASS_Init");
    ASSERT_EQ(inits.size(), 1u);
    EXPECT_EQ(Field(inits[0], "device"), "-1");
    EXPECT_EQ(Field(inits[0], "freq"), "48000");
    std::vector<std::string> played;  // the files that loaded, in order, and their handles
    std::vector<std::string> handles;
    for (const std::string& load : Calls(ReadLines(trace), "BASS_SampleLoad")) {
        EXPECT_EQ(Field(load, "flags"), "0x80020000");
        const std::string handle = load.substr(load.rfind(' ') + 1);
        if (handle == "0") continue;
        const std::string file = Field(load, "file");
        played.push_back(file.substr(file.rfind('\\') + 1));
        handles.push_back(handle);
    }
    ASSERT_EQ(played, (std::vector<std::string>{"a.wav\"", "b.wav\"", "c.wav\"", "d.wav\"", "target.wav\""}));
    const auto frees = Calls(ReadLines(trace), "BASS_SampleFree");
    ASSERT_GE(frees.size(), 1u);
    EXPECT_EQ(Field(frees[0], "handle"), handles[0]) << "the fourth sound takes the first slot";
    const auto volumes = Calls(ReadLines(trace), "BASS_ChannelSetAttribute");
    ASSERT_EQ(volumes.size(), 5u);
    EXPECT_EQ(Field(volumes[0], "attrib"), "2");
    EXPECT_EQ(Field(volumes[0], "value"), "0.56");
    EXPECT_EQ(Field(volumes[1], "value"), "0.4") << "an empty volume cell reads as 0, which becomes 50";
}

}  // namespace
