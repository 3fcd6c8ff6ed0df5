// MIDI music of the running companion through its other back ends, fed by the module stand-in:
// a VST instrument in a host program of its own bitness (the host stand-in records its command
// line and every command), the SMF library (a recording stand-in) and the MCI sequencer.

#include <gtest/gtest.h>

#include <memory>

#include "e2e_support.h"

#include "tests/common/alerts_support_win.h"

namespace {

using e2e::Companion;
using e2e::Install;
using vrltest::Calls;

constexpr int kPlayingFile = 1000, kSoundFont = 1003, kChangeButton = 1004, kError = 1009;
constexpr UINT kTrayCallback = WM_APP + 1;
constexpr WPARAM kTrayIconId = 1234;

// "song.mid" answers a.mid, "loop.ogg" answers b.mid; both in the user's music folder.
struct MidiSession {
    Install install = e2e::MakeInstall();
    std::unique_ptr<Companion> companion;
    HWND panel = nullptr;
    std::wstring song;
    std::wstring loop;

    explicit MidiSession(const std::string& options) {
        const std::wstring music = install.gameFolder + L"\\user\\music";
        ::CreateDirectoryW((install.gameFolder + L"\\user").c_str(), nullptr);
        ::CreateDirectoryW(music.c_str(), nullptr);
        song = music + L"\\song.mid";
        loop = music + L"\\loop.ogg";
        vrltest::WriteMidi(song, 4);
        vrltest::WriteOgg(loop, {"TITLE=loop"});
        install.WriteProgramFile(L"BGMEx.kcsv", "#format,kcsv\r\n" + options +
                                                    "#column,orgfile,playlist\r\na.mid,song.mid\r\nb.mid,loop.ogg\r\n");
        for (const wchar_t* name : {L"bass.dll", L"bassmidi.dll"}) {
            EXPECT_TRUE(vrltest::CopyStandIn(L"simbass", name, install.programFolder));
        }
    }

    // The host stand-in in vst<bits>; files named in `switches` beside it change its behaviour.
    std::wstring AddHost(int bits, std::initializer_list<const wchar_t*> switches = {}) const {
        const std::wstring folder = install.programFolder + L"\\vst" + std::to_wstring(bits);
        ::CreateDirectoryW(folder.c_str(), nullptr);
        EXPECT_TRUE(vrltest::CopyStandIn(L"simvst", L"VrlVstHost64.exe", folder));
        ::MoveFileW((folder + L"\\VrlVstHost64.exe").c_str(), (folder + L"\\VrlVstHost" + std::to_wstring(bits) + L".exe").c_str());
        for (const wchar_t* name : switches) vrltest::WriteFileBytes(folder + L"\\" + name, "on\r\n");
        return folder;
    }
    std::wstring AddInstrument(int bits) const {
        const std::wstring name = L"instrument" + std::to_wstring(bits) + L".dll";
        EXPECT_TRUE(vrltest::CopyStandIn(L"simvst", name, install.programFolder));
        return install.ProgramFile(name);
    }
    std::vector<std::string> HostTrace(int bits) const {
        return vrltest::ReadLines(install.programFolder + L"\\vst" + std::to_wstring(bits) + L"\\vst_trace.txt");
    }

    void Start(const std::string& scenario) {
        install.WriteIni("enMusicExtender=1\r\niLanguage=0\r\n");
        install.WriteScenario("waitfor music\n" + scenario);
        companion = std::make_unique<Companion>(install);
        ASSERT_TRUE(e2e::WaitForFrame(30000));
        panel = e2e::WaitForWindow(L"#32770", L"Music Control Panel", 20000);
        ASSERT_TRUE(panel);
    }
    void WaitForScenario() const {
        EXPECT_TRUE(e2e::WaitUntil([&] { return install.ReadTranscript().find("module: end of scenario") != std::string::npos; },
                                   30000)) << install.ReadTranscript();
    }
    std::string Text(int id) const { return e2e::WindowText(::GetDlgItem(panel, id)); }
};

std::string Request(const char* name, int playCount = 1) {
    return "music 1 1 1 1 5 " + std::to_string(playCount) + " " + name + "\n";
}

// The commands in a host trace: "<number> <text>".
std::vector<std::string> Commands(const std::vector<std::string>& trace) {
    std::vector<std::string> commands;
    for (const std::string& line : Calls(trace, "command")) {
        const std::size_t text = line.find(" text=");
        commands.push_back(line.substr(8, line.find(' ', 8) - 8) + (line.size() > text + 6 ? " " + line.substr(text + 6) : ""));
    }
    return commands;
}

// Picks a file in the panel's "Change" dialog.
bool ChooseSoundSource(const MidiSession& s, const std::wstring& path) {
    ::PostMessageW(s.panel, WM_COMMAND, MAKEWPARAM(kChangeButton, BN_CLICKED), 0);
    HWND dialog = nullptr;
    e2e::WaitUntil([&] {
        dialog = e2e::VisibleWindowOf(s.companion->ProcessId(), L"#32770");
        return dialog && dialog != s.panel;
    }, 10000);
    if (!dialog || dialog == s.panel) return false;
    HWND name = ::GetDlgItem(dialog, 0x47C);
    if (!name) name = ::GetDlgItem(dialog, 0x480);
    if (!name) return false;
    ::SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    return e2e::WaitUntil([&] { return !::IsWindow(dialog); }, 10000);
}

TEST(VstHost, AHostOfTheInstrumentsBitnessPlaysMidiFilesAndShowsItsEditor) {
    MidiSession s("#option,SoundFont:instrument64.dll\r\n");
    const std::wstring instrument = s.AddInstrument(64);
    const std::wstring instrument32 = s.AddInstrument(32);
    s.AddHost(64, {L"embed.txt"});
    s.AddHost(32);  // the 64-bit stand-in under the 32-bit name: it records how it was started
    s.Start(Request("a.mid") + "copydata music 2\n" + Request("a.mid") + Request("b.mid"));
    s.WaitForScenario();

    const std::string song = e2e::Utf8(s.song);
    auto trace = s.HostTrace(64);
    ASSERT_GE(trace.size(), 2u);
    HWND frame = e2e::WaitForFrame(1000);
    HWND status = reinterpret_cast<HWND>(::GetWindowLongPtrW(frame, 32));  // status static 2
    EXPECT_EQ(trace[0], "start " + e2e::Utf8(s.install.programFolder) + "\\vst64\\VrlVstHost64.exe v=3 pid=" +
                            std::to_string(s.companion->ProcessId()) + " hwndpf=" +
                            std::to_string(reinterpret_cast<ULONG_PTR>(::GetDlgItem(s.panel, kPlayingFile))) +
                            " hwndee=" + std::to_string(reinterpret_cast<ULONG_PTR>(status)));
    EXPECT_EQ(trace[1], "folder " + e2e::Utf8(s.install.programFolder) + "\\vst64 show=0");
    EXPECT_EQ(Commands(trace), (std::vector<std::string>{"5 instrument64.dll", "1 " + song, "2", "3", "4", "4",
                                                         "1 " + song, "2", "4", "4"}));
    EXPECT_NE(trace[2].find("size=34 self=1"), std::string::npos) << trace[2];
    EXPECT_EQ(s.Text(kSoundFont), "instrument64.dll");
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.loop));
    const auto bass = vrltest::ReadLines(s.install.ProgramFile(L"bass_trace.txt"));
    ASSERT_EQ(Calls(bass, "BASS_StreamCreateFile").size(), 1u) << "only the Ogg file went to the audio library";
    EXPECT_EQ(Calls(bass, "BASS_ChannelPlay").size(), 1u);

    // The host can embed its editor: the tray offers it, and picking it sends command 6.
    EXPECT_EQ(e2e::WindowText(status), "TRUE");
    ::PostMessageW(frame, kTrayCallback, kTrayIconId, WM_RBUTTONDOWN);
    HWND menu = nullptr;
    ASSERT_TRUE(e2e::WaitUntil([&] { return (menu = e2e::VisibleWindowOf(s.companion->ProcessId(), L"#32768")); }, 5000));
    ::Sleep(100);
    ::PostMessageW(menu, WM_CHAR, L'v', 0);
    EXPECT_TRUE(e2e::WaitUntil([&] { return Commands(s.HostTrace(64)).back() == "6"; }, 5000));

    // A second instrument, of 32 bits: the running host ends first, then the other one starts.
    ASSERT_TRUE(ChooseSoundSource(s, instrument32));
    EXPECT_TRUE(e2e::WaitUntil([&] { return !Commands(s.HostTrace(32)).empty(); }, 10000));
    trace = s.HostTrace(64);
    EXPECT_EQ(Commands(trace).back(), "7");
    EXPECT_EQ(trace.back(), "end");
    const auto trace32 = s.HostTrace(32);
    ASSERT_FALSE(trace32.empty());
    EXPECT_EQ(trace32[0].substr(0, trace32[0].find(" v=3 pid=")),
              "start " + e2e::Utf8(s.install.programFolder) + "\\vst32\\VrlVstHost32.exe");
    EXPECT_EQ(Commands(trace32), std::vector<std::string>{"5 " + e2e::Utf8(instrument32)});
    EXPECT_EQ(s.Text(kSoundFont), e2e::Utf8(instrument32));
}

TEST(VstHost, HostsThatHangOrNeverAppearAndFilesThatAreNoProgramsChangeNothingElse) {
    // A host that stops answering: every command is given up after a few seconds.
    MidiSession s("#option,SoundFont:instrument64.dll\r\n");
    s.AddInstrument(64);
    s.AddHost(64, {L"hang.txt"});
    s.Start(Request("a.mid"));
    s.WaitForScenario();
    EXPECT_EQ(Commands(s.HostTrace(64)), (std::vector<std::string>{"5 instrument64.dll", "1 " + e2e::Utf8(s.song)}));
    DWORD_PTR answer = 0;
    EXPECT_TRUE(::SendMessageTimeoutW(s.panel, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &answer)) << "the panel answers";
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));
    s.companion.reset();

    // A host that never creates its window: the commands are dropped, the file counts as playing.
    ::DeleteFileW((s.install.programFolder + L"\\vst64\\hang.txt").c_str());
    vrltest::WriteFileBytes(s.install.programFolder + L"\\vst64\\nowindow.txt", "on\r\n");
    ::DeleteFileW(s.install.transcript.c_str());
    s.Start(Request("a.mid"));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));
    EXPECT_EQ(s.Text(kSoundFont), "instrument64.dll");
    s.companion.reset();

    // A ".dll" that is no program and no vst folder at all: MIDI stays with the audio library.
    s.install.WriteProgramFile(L"notes.dll", "not a program, only some text that is long enough to be read\r\n");
    s.install.WriteProgramFile(L"BGMEx.kcsv", "#format,kcsv\r\n#option,SoundFont:notes.dll\r\n#column,orgfile,playlist\r\na.mid,song.mid\r\n");
    ::DeleteFileW(s.install.transcript.c_str());
    s.Start(Request("a.mid"));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kSoundFont), "notes.dll");
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));
    EXPECT_EQ(Calls(vrltest::ReadLines(s.install.ProgramFile(L"bass_trace.txt")), "BASS_StreamCreateFile").size(), 1u);
}

}  // namespace
