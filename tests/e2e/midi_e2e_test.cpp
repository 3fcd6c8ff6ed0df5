// MIDI music of the running companion through its other back ends, fed by the module stand-in:
// a VST instrument in a host program of its own bitness (the host stand-in records its command
// line and every command), the SMF library (a recording stand-in) and the MCI sequencer.

#include <gtest/gtest.h>

#include "e2e_support.h"

#include <commctrl.h>
#include <mmsystem.h>

#include "music/vst_host_win.h"
#include "tests/common/alerts_support_win.h"

namespace {

using vrltest::Calls;

constexpr int kPlayingFile = 1000, kFileVolume = 1001, kSoundFont = 1003, kChangeButton = 1004, kError = 1009;
constexpr int kMasterVolume = 1011;

// "song.mid" answers a.mid, "loop.ogg" b.mid, "text.mid" (not a MIDI file) c.mid; all in the
// user's music folder.
struct MidiSession : e2e::Session {
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
                                                    "#column,orgfile,playlist\r\na.mid,song.mid\r\nb.mid,loop.ogg\r\nc.mid,text.mid\r\n");
        vrltest::WriteFileBytes(music + L"\\text.mid", "no music here\r\n");
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
        ASSERT_NO_FATAL_FAILURE(Session::Start("enMusicExtender=1\r\niLanguage=0\r\n", "waitfor music\n" + scenario));
        panel = e2e::WaitForWindow(L"#32770", L"Music Control Panel", 20000);
        ASSERT_TRUE(panel);
    }
    // Starts again after an earlier run, with a new transcript.
    void Restart(const std::string& scenario) {
        companion.reset();
        ::DeleteFileW(install.transcript.c_str());
        Start(scenario);
    }
    void WaitForScenario() const { install.WaitForScenarioEnd(); }
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
    HWND status = s.Slot(32);  // status static 2
    EXPECT_EQ(trace[0], "start " + e2e::Utf8(s.install.programFolder) + "\\vst64\\VrlVstHost64.exe v=3 pid=" +
                            std::to_string(s.companion->ProcessId()) + " hwndpf=" +
                            std::to_string(reinterpret_cast<ULONG_PTR>(::GetDlgItem(s.panel, kPlayingFile))) +
                            " hwndee=" + std::to_string(reinterpret_cast<ULONG_PTR>(status)));
    EXPECT_EQ(trace[1], "folder " + e2e::Utf8(s.install.programFolder) + "\\vst64 show=0");
    // The host runs in vst64: the instrument named beside the program reaches it in full.
    const std::string instrumentPath = e2e::Utf8(instrument);
    EXPECT_EQ(Commands(trace), (std::vector<std::string>{"5 " + instrumentPath, "1 " + song, "2", "3", "4", "4",
                                                         "1 " + song, "2", "4", "4"}));
    EXPECT_NE(trace[2].find("size=" + std::to_string(2 * instrument.size() + 2) + " self=1"), std::string::npos)
        << trace[2];
    EXPECT_NE(trace[4].find("command 2 size=2 self=1"), std::string::npos) << trace[4];
    EXPECT_EQ(s.Text(kSoundFont), "instrument64.dll");
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.loop));
    const auto bass = vrltest::ReadLines(s.install.ProgramFile(L"bass_trace.txt"));
    ASSERT_EQ(Calls(bass, "BASS_StreamCreateFile").size(), 1u) << "only the Ogg file went to the audio library";
    EXPECT_EQ(Calls(bass, "BASS_ChannelPlay").size(), 1u);

    // The host can embed its editor: the tray offers it, and picking it sends command 6.
    EXPECT_EQ(e2e::WindowText(status), "TRUE");
    HWND menu = s.OpenTrayMenu();
    ASSERT_TRUE(menu);
    ::Sleep(100);
    e2e::HoldForScreenshot("tray_vst_editor");
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

TEST(VstHost, HostsThatLoadSlowlyHangOrNeverAppearAndFilesThatAreNoProgramsChangeNothingElse) {
    // A host that takes long to load the instrument still gets the commands that follow, so the
    // first track plays; a playlist entry found beside the program reaches it in full.
    MidiSession s("#option,SoundFont:instrument64.dll\r\n");
    const std::string instrument = e2e::Utf8(s.AddInstrument(64));
    s.AddHost(64, {L"slow.txt"});
    vrltest::WriteMidi(s.install.ProgramFile(L"here.mid"), 4);
    s.install.WriteProgramFile(L"BGMEx.kcsv", "#format,kcsv\r\n#option,SoundFont:instrument64.dll\r\n"
                                              "#column,orgfile,playlist\r\na.mid,here.mid\r\nb.mid,song.mid\r\n");
    s.Start(Request("a.mid"));
    s.WaitForScenario();
    EXPECT_EQ(Commands(s.HostTrace(64)),
              (std::vector<std::string>{"5 " + instrument, "1 " + e2e::Utf8(s.install.ProgramFile(L"here.mid")), "2"}));

    // A host that stops answering is waited for up to a cap, then passed over.
    ::DeleteFileW((s.install.programFolder + L"\\vst64\\slow.txt").c_str());
    ::DeleteFileW((s.install.programFolder + L"\\vst64\\vst_trace.txt").c_str());
    vrltest::WriteFileBytes(s.install.programFolder + L"\\vst64\\hang.txt", "on\r\n");
    s.Restart(Request("b.mid"));
    e2e::WaitUntil([&] { return s.install.ReadTranscript().find("end of scenario") != std::string::npos; },
                   vrl::kVstHostAnswerMs + 10000);
    s.WaitForScenario();
    EXPECT_EQ(Commands(s.HostTrace(64)), (std::vector<std::string>{"5 " + instrument, "1 " + e2e::Utf8(s.song)}));
    DWORD_PTR answer = 0;
    EXPECT_TRUE(::SendMessageTimeoutW(s.panel, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &answer)) << "the panel answers";
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));

    // A host that never creates its window: the commands are dropped, the file counts as playing.
    ::DeleteFileW((s.install.programFolder + L"\\vst64\\hang.txt").c_str());
    vrltest::WriteFileBytes(s.install.programFolder + L"\\vst64\\nowindow.txt", "on\r\n");
    s.Restart(Request("b.mid"));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));
    EXPECT_EQ(s.Text(kSoundFont), "instrument64.dll");

    // A ".dll" that is no program and no vst folder at all: MIDI stays with the audio library.
    s.install.WriteProgramFile(L"notes.dll", "not a program, only some text that is long enough to be read\r\n");
    s.install.WriteProgramFile(L"BGMEx.kcsv", "#format,kcsv\r\n#option,SoundFont:notes.dll\r\n#column,orgfile,playlist\r\na.mid,song.mid\r\n");
    s.Restart(Request("a.mid"));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kSoundFont), "notes.dll");
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));
    EXPECT_EQ(Calls(vrltest::ReadLines(s.install.ProgramFile(L"bass_trace.txt")), "BASS_StreamCreateFile").size(), 1u);
}

TEST(SmfLibrary, TheLibraryPlaysMidiFilesWithItsVolumeScaleAndRepeatOption) {
    MidiSession s("#option,device:2\r\n");
    EXPECT_TRUE(vrltest::CopyStandIn(L"simsmf", L"GuruGuruSMF4.dll", s.install.programFolder));
    const std::string song = e2e::Utf8(s.song);
    s.install.WriteProgramFile(L"Volume.kcsv", "#format,kcsv\r\n#option,MasterVolume:50\r\n#column,File,Volume\r\n" + song + ",50\r\n");
    s.Start(Request("a.mid", 2) + "copydata music 2\n" + Request("a.mid"));
    s.WaitForScenario();
    const std::wstring traceFile = s.install.ProgramFile(L"smf_trace.txt");
    const std::string add = "GGS4AddListFromFileW path=\"" + song + "\" option=0 id=0 -> 0";
    EXPECT_EQ(vrltest::ReadLines(traceFile),
              (std::vector<std::string>{
                  "GGS4OpenDevice device=-1100 window=" + std::to_string(reinterpret_cast<ULONG_PTR>(s.panel)) + " -> 0",
                  "GGS4SetMasterVolume volume=0",
                  add, "GGS4SetMasterVolume volume=-63", "GGS4Play option=3 rest=0,0,0,0 -> 0", "GGS4Stop fadeOut=0",
                  "GGS4ClearList", "GGS4ClearList", add, "GGS4SetMasterVolume volume=-63", "GGS4Play option=2 rest=0,0,0,0 -> 0"}));
    EXPECT_EQ(s.Text(kError), "NoError");
    EXPECT_EQ(s.Text(kSoundFont), "Sound Font is not loaded. (MCI/DirectMusic)");

    // Full volume is the top of the library's scale.
    for (int id : {kMasterVolume, kFileVolume}) {
        HWND slider = ::GetDlgItem(s.panel, id);
        ::SendMessageW(slider, TBM_SETPOS, TRUE, 100);
        ::SendMessageW(s.panel, WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), reinterpret_cast<LPARAM>(slider));
    }
    EXPECT_EQ(vrltest::ReadLines(traceFile).back(), "GGS4SetMasterVolume volume=0");

    // The sequencer's completion notice repeats a file only when it came 15 s or more after the
    // start: the panel does not tell the back ends apart, and this one records the repeat.
    const auto plays = [&] { return Calls(vrltest::ReadLines(traceFile), "GGS4Play").size(); };
    const DWORD started = ::GetTickCount();
    ::SendMessageW(s.panel, MM_MCINOTIFY, MCI_NOTIFY_SUCCESSFUL, 0);
    EXPECT_EQ(plays(), 2u);
    ::Sleep(15500 - (::GetTickCount() - started));
    ::SendMessageW(s.panel, MM_MCINOTIFY, MCI_NOTIFY_ABORTED, 0);
    EXPECT_EQ(plays(), 2u);
    ::SendMessageW(s.panel, MM_MCINOTIFY, MCI_NOTIFY_SUCCESSFUL, 0);
    EXPECT_EQ(plays(), 3u);

    // A file the library refuses is reported as not found.
    s.Restart(Request("c.mid"));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kPlayingFile), "[" + e2e::Utf8(s.song.substr(0, s.song.size() - 8)) + "text.mid] File not found.");

    // Without the library: one box (in Japanese only) and every request fails without a crash.
    s.companion.reset();  // it holds the library
    ::DeleteFileW(s.install.ProgramFile(L"GuruGuruSMF4.dll").c_str());
    s.Restart("wait 5000\n" + Request("a.mid") + Request("b.mid") + Request("a.mid"));
    const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(s.companion->ProcessId(), 10000);
    ASSERT_TRUE(box.window);
    e2e::HoldForScreenshot("smf_missing_box");
    EXPECT_EQ(e2e::Utf8(box.text), "BGM拡張：GuruGuruSMF4.dll を読み込めないため、MIDI ファイルは演奏できません。");
    e2e::Press(box.window, IDOK);
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kPlayingFile), "[" + song + "] File not found.");
    ::Sleep(500);
    EXPECT_FALSE(::FindWindowW(L"#32770", box.caption.c_str())) << "one box only: " << e2e::Utf8(box.caption);
}

TEST(MciSequencer, OptionOneChoosesTheSequencerWhichPlaysWithoutASoundCard) {
    MidiSession s("#option,device:1\r\n");
    s.Start(Request("a.mid", 3));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kPlayingFile), e2e::Utf8(s.song));
    EXPECT_EQ(s.Text(kSoundFont), "Sound Font is not loaded. (MCI/DirectMusic)");

    s.Restart(Request("c.mid"));
    s.WaitForScenario();
    EXPECT_EQ(s.Text(kPlayingFile), "[" + e2e::Utf8(s.song.substr(0, s.song.size() - 8)) + "text.mid] File not found.");
}

}  // namespace
