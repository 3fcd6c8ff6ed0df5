// The music control panel of the running companion, fed by the module stand-in from inside the
// demo game: the file the rules choose and how the audio library is asked to play it, repeats,
// stops, missing files, hostile requests, the volumes kept across a restart, and a missing library.

#include <gtest/gtest.h>

#include "e2e_support.h"
#include "music/music_request.h"

#include <commctrl.h>
#include "tests/common/alerts_support_win.h"

namespace {

using vrltest::Calls;
using vrltest::Field;

constexpr int kPlayingFile = 1000, kFileVolume = 1001, kFileVolumeValue = 1002, kSoundFont = 1003,
              kOriginalFile = 1005, kDateTime = 1006, kCandidates = 1007, kRand = 1008, kError = 1009,
              kMapObjId = 1010;

const char kRules[] =
    "#format,kcsv\r\n"
    "#option,SoundFont:nofont.sf2\r\n"
    "#column,orgfile,month,day,hour,playlist\r\n"
    "bgm01.mid:5,,,,loop.ogg\r\n"
    "bgm01.mid,,,Morning,town.wav\r\n"
    "bgm02.mid,,,,missing.ogg\r\n";

struct MusicSession : e2e::Session {
    HWND panel = nullptr;
    std::wstring loopOgg;  // user music folder
    std::wstring townWav;  // game sound folder

    explicit MusicSession(bool withLibrary = true) {
        ::CreateDirectoryW((install.gameFolder + L"\\sound").c_str(), nullptr);
        ::CreateDirectoryW((install.gameFolder + L"\\user").c_str(), nullptr);
        ::CreateDirectoryW((install.gameFolder + L"\\user\\music").c_str(), nullptr);
        loopOgg = install.gameFolder + L"\\user\\music\\loop.ogg";
        townWav = install.gameFolder + L"\\sound\\town.wav";
        vrltest::WriteOgg(loopOgg, {"TITLE=loop", "LOOPSTART=1000", "looplength=500"});
        vrltest::WriteWav(townWav, 200);
        install.WriteProgramFile(L"BGMEx.kcsv", kRules);
        if (withLibrary) {
            for (const wchar_t* name : {L"bass.dll", L"bassmidi.dll"}) {
                EXPECT_TRUE(vrltest::CopyStandIn(L"simbass", name, install.programFolder));
            }
            // A plug-in of the library: found by its name, whatever it holds.
            ::CopyFileW(install.ProgramFile(L"bassmidi.dll").c_str(), install.ProgramFile(L"bassflac.dll").c_str(), FALSE);
        }
    }

    void Start(const std::string& scenario, int language = 0) {
        // An earlier run ends (with its games) before the next starts.
        ASSERT_NO_FATAL_FAILURE(Session::Start("enMusicExtender=1\r\niLanguage=" + std::to_string(language) + "\r\n",
                                               "waitfor music\n" + scenario));
        if (panel) e2e::WaitUntil([&] { return !::IsWindow(panel); }, 10000);
        panel = e2e::WaitForWindow(L"#32770", language ? L"音楽コントロールパネル" : L"Music Control Panel", 20000);
        ASSERT_TRUE(panel);
    }

    std::vector<std::string> Trace() const { return vrltest::ReadLines(install.ProgramFile(L"bass_trace.txt")); }

    std::string Text(int id) const { return e2e::WindowText(::GetDlgItem(panel, id)); }

    LRESULT Request(ULONG_PTR code, const std::string& bytes) const { return e2e::SendCopyData(panel, code, bytes); }

    // The game closes; the companion follows and stores what it keeps. A game closed before the
    // companion's watch has seen it would be reported as never found.
    void EndGame() {
        game = e2e::WaitForGameWindow(5000);
        e2e::LetTheCompanionSeeTheGame(game);
        ::PostMessageW(game, WM_CLOSE, 0, 0);
        EXPECT_EQ(companion->WaitExit(20000), 1u);
    }
};

// "row:column" texts of the candidate list, read through the companion's memory.
std::vector<std::string> Candidates(HWND panel) {
    std::vector<std::string> rows;
    for (const std::vector<std::string>& cells : e2e::ListViewRows(::GetDlgItem(panel, kCandidates), 2))
        rows.push_back(cells[0] + ":" + cells[1]);
    return rows;
}

// A request record as the module sends it.
std::string Record(const std::wstring& path, int month, int day, int hour, int mapObject, int playCount) {
    return vrl::MusicRequestBytes({std::u16string(path.begin(), path.end()), month, day, hour, mapObject, playCount});
}

TEST(MusicPanel, RequestsPlayTheChosenFileWithItsLoopAndVolume) {
    MusicSession music;
    music.install.WriteProgramFile(L"Volume.kcsv", "#format,kcsv\r\n#option,MasterVolume:80\r\n#column,File,Volume\r\n" +
                                                       e2e::Utf8(music.loopOgg) + ",60\r\n");
    // A request, its repeat (no restart), a stop, the same request again (a restart).
    const std::string request = "music 1 12 31 23 5 2 C:\\Morva\\sound\\bgm01.mid\n";
    music.Start(request + request + "copydata music 2\n" + request);
    const std::string transcript = music.install.WaitForScenarioEnd();
    EXPECT_EQ(transcript.find("error"), std::string::npos) << transcript;

    EXPECT_EQ(music.Text(kOriginalFile), "bgm01.mid");
    EXPECT_EQ(music.Text(kMapObjId), "5");
    EXPECT_EQ(music.Text(kDateTime), "12/31 23h [Night]");
    EXPECT_EQ(Candidates(music.panel), std::vector<std::string>{"loop.ogg:60"});
    EXPECT_EQ(music.Text(kRand), "0");
    EXPECT_EQ(music.Text(kPlayingFile), e2e::Utf8(music.loopOgg));
    EXPECT_EQ(music.Text(kError), "BASS_OK");
    EXPECT_EQ(music.Text(kFileVolumeValue), "60");
    EXPECT_EQ(music.Text(kSoundFont), "Failed to change soundfont.");

    // Plug-ins, loop flags and loop points are the player's, tested in-process and natively.
    const auto trace = music.Trace();
    const auto creates = Calls(trace, "BASS_StreamCreateFile");
    ASSERT_EQ(creates.size(), 2u) << "the repeat went on playing, the request after the stop restarted";
    EXPECT_EQ(Field(creates[0], "flags"), "0x80000004");  // play count 2: the loop flag
    EXPECT_EQ(Calls(trace, "BASS_ChannelStop").size(), 1u);
    const auto volumes = Calls(trace, "BASS_ChannelSetAttribute");
    ASSERT_FALSE(volumes.empty());
    EXPECT_EQ(Field(volumes.back(), "value"), "0.48");  // 80 x 60 / 10000

    // An hour of the morning without the map object: the name rule.
    EXPECT_EQ(music.Request(1, Record(L"C:\\Morva\\sound\\bgm01.mid", 4, 1, 9, 0, 1)), 1);
    EXPECT_EQ(music.Text(kPlayingFile), e2e::Utf8(music.townWav));
    EXPECT_EQ(music.Text(kDateTime), "4/1 9h [Morning]");
    EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(music.panel, kFileVolume)));

    // A missing candidate is reported and its volume cannot be set.
    EXPECT_EQ(music.Request(1, Record(L"bgm02.mid", 4, 1, 9, 0, 1)), 1);
    EXPECT_EQ(music.Text(kPlayingFile), "[missing.ogg] File not found.");
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(music.panel, kFileVolume)));
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(music.panel, kFileVolumeValue)));

    // Hostile requests: empty, cut short, an unknown code, no bytes behind the size. Each is
    // answered; what a record holds when it is cut short or too long is read natively.
    EXPECT_EQ(music.Request(1, ""), 1);
    EXPECT_EQ(music.Request(1, Record(L"bgm01.mid", 1, 1, 1, 5, 1).substr(0, 7)), 1);
    EXPECT_EQ(music.Request(3, std::string(4000, '\xA7')), 1);
    EXPECT_EQ(e2e::SendCopyData(music.panel, 1, nullptr, 100), 1);
    EXPECT_TRUE(::IsWindow(music.panel));

    // The settings editor changed the rules and set the reload bit: the next request reads them.
    music.install.WriteProgramFile(L"BGMEx.kcsv", "#format,kcsv\r\n#column,orgfile,playlist\r\nbgm02.mid,town.wav\r\n");
    HWND frame = e2e::WaitForFrame(1000);
    ::SetWindowLongW(frame, 8, 0x4 | 0x2);
    EXPECT_EQ(music.Request(1, Record(L"bgm02.mid", 4, 1, 9, 0, 1)), 1);
    EXPECT_EQ(Candidates(music.panel), std::vector<std::string>{"town.wav:100"});
    EXPECT_EQ(::GetWindowLongW(frame, 8), 0x2) << "only the music bit is cleared";
}

TEST(MusicPanel, VolumesOutliveTheProgramAndAMissingLibraryPlaysNothing) {
    MusicSession music;
    music.Start("music 1 1 1 1 5 1 bgm01.mid\ncopydata music 2\n", 1);
    music.install.WaitForScenarioEnd();
    EXPECT_EQ(music.Text(kDateTime), "1/1 1時 [深夜]");
    EXPECT_EQ(music.Text(kFileVolumeValue), "100");
    // The game has stopped the music; the field still names the file, and the player lets go of
    // the file-volume slider at 70.
    HWND slider = ::GetDlgItem(music.panel, kFileVolume);
    ::SendMessageW(slider, TBM_SETPOS, TRUE, 70);
    ::SendMessageW(music.panel, WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 0), reinterpret_cast<LPARAM>(slider));
    EXPECT_EQ(music.Text(kFileVolumeValue), "70");
    EXPECT_EQ(Field(Calls(music.Trace(), "BASS_ChannelSetAttribute").back(), "value"), "0.7");
    // Closing only hides the panel; the tray item and Ctrl+Alt+M bring it back.
    ::SendMessageW(music.panel, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindowVisible(music.panel));
    ::SendMessageW(e2e::WaitForFrame(1000), WM_COMMAND, 34100, 0);
    EXPECT_TRUE(::IsWindowVisible(music.panel));
    ::SendMessageW(music.panel, WM_COMMAND, IDCANCEL, 0);
    // Wine may take the modifiers' state from the X server again while focus moves; press again then.
    bool shown = false;
    for (int press = 0; press < 3 && !shown; ++press) {
        e2e::PressCtrlAlt('M');
        shown = e2e::WaitUntil([&] { return ::IsWindowVisible(music.panel) != FALSE; }, 2000);
    }
    EXPECT_TRUE(shown);
    music.EndGame();
    const std::string saved = vrltest::ReadFileBytes(music.install.ProgramFile(L"Volume.kcsv"));
    EXPECT_NE(saved.find("MasterVolume:100"), std::string::npos) << saved;
    EXPECT_NE(saved.find("loop.ogg,70"), std::string::npos) << saved;

    // A Volume.kcsv the program cannot read is left as the player wrote it.
    const std::string unreadable = "#column,File,Volume\r\nthis is not a table\r\n";
    music.install.WriteProgramFile(L"Volume.kcsv", unreadable);
    music.Start("music 1 1 1 1 5 1 bgm01.mid\nwait 1500\nclose\n");  // the game closes once seen, the companion follows
    EXPECT_EQ(music.companion->WaitExit(20000), 1u);
    EXPECT_EQ(vrltest::ReadFileBytes(music.install.ProgramFile(L"Volume.kcsv")), unreadable);
    music.install.WriteProgramFile(L"Volume.kcsv", saved);

    // Without the library: the same request lists the kept volume and plays nothing.
    ::DeleteFileW(music.install.ProgramFile(L"bass.dll").c_str());
    ASSERT_TRUE(::DeleteFileW(music.install.transcript.c_str()));
    music.Start("music 1 1 1 1 5 1 bgm01.mid\n");
    music.install.WaitForScenarioEnd();
    EXPECT_EQ(Candidates(music.panel), std::vector<std::string>{"loop.ogg:70"});
    EXPECT_EQ(music.Text(kPlayingFile), "[" + e2e::Utf8(music.loopOgg) + "] File not found.");
    EXPECT_EQ(music.Text(kSoundFont), "Failed to change soundfont.");
}

}  // namespace
