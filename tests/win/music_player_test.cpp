// The music players against the recording stand-ins of the audio library: which player the facade
// picks for a file, what the audio library's player asks of the library, soundfonts and plug-ins.

#include "music/audio_player_win.h"

#include "tests/win/audio_library_fixture_win.h"

namespace {

using vrltest::Calls;
using vrltest::Field;

// The library's folder is also the current folder, with a plug-in and a few files to play.
class MusicPlayers : public vrltest::AudioLibraryTest {
protected:
    void SetUp() override {
        AudioLibraryTest::SetUp();
        ::GetCurrentDirectoryW(MAX_PATH, previous_);
        ::SetCurrentDirectoryW(folder_.Path().c_str());
        ::CopyFileW((folder_ / L"bassmidi.dll").c_str(), (folder_ / L"bassflac.dll").c_str(), FALSE);
        vrltest::WriteFileBytes(folder_ / L"song.MID", std::string("MThd\0\0\0\6\0\0\0\1\0\x60", 14));
        vrltest::WriteOgg(folder_ / L"start.ogg", {"LoopStart=25"});
        vrltest::WriteWav(folder_ / L"town.wav", 100);
        vrltest::WriteFileBytes(folder_ / L"piano.sf2", std::string("RIFF\0\0\0\0sfbk", 12));
    }
    void TearDown() override {
        ::SetCurrentDirectoryW(previous_);
        AudioLibraryTest::TearDown();
    }

    wchar_t previous_[MAX_PATH] = {};
};

TEST_F(MusicPlayers, TheFacadeRoutesByExtensionAndClosesTheFileBefore) {
    {
        vrl::CAudioPlayer player(1, nullptr);
        EXPECT_EQ(player.MidiPlayer(), player.GetBassPlayer());
        ASSERT_TRUE(vrltest::MakeShortcut(folder_ / L"song.lnk", folder_ / L"song.MID"));
        EXPECT_TRUE(player.Open(File(L"song.lnk"), 1));
        EXPECT_TRUE(player.MidiSelected());
        EXPECT_TRUE(player.Play());
        EXPECT_TRUE(player.Open(File(L"town.wav"), 1));
        EXPECT_FALSE(player.MidiSelected());
        EXPECT_FALSE(player.Open(u"a.b", 1));  // too short for ".mid": the audio player, which fails
        EXPECT_FALSE(player.MidiSelected());
    }
    const auto trace = Trace();
    const auto creates = Calls(trace, "BASS_StreamCreateFile");
    ASSERT_EQ(creates.size(), 3u);
    EXPECT_NE(creates[0].find("song.MID"), std::string::npos) << "the shortcut's target is played";
    EXPECT_EQ(Calls(trace, "BASS_StreamFree").size(), 2u) << "each file was closed before the next one";
    const auto plugins = Calls(trace, "BASS_PluginLoad");
    ASSERT_EQ(plugins.size(), 2u);
    for (const auto& load : plugins) EXPECT_EQ(load.find("\\bass.dll"), std::string::npos) << load;

    // Without a MIDI back end a MIDI file is accepted and silent; soundfonts still reach the library.
    vrl::CAudioPlayer silent(0, nullptr);
    EXPECT_TRUE(silent.Open(File(L"song.MID"), 2));
    EXPECT_TRUE(silent.Play());
    EXPECT_EQ(Calls(Trace(), "BASS_StreamCreateFile").size(), 3u);
    EXPECT_TRUE(silent.GetBassPlayer()->SetSoundFont(File(L"piano.sf2")));
}

TEST_F(MusicPlayers, LoopPointsSoundfontsAndTheInfoText) {
    vrl::CBassPlayer player(nullptr);
    ASSERT_TRUE(player.Open(File(L"start.ogg"), 1));
    ASSERT_TRUE(player.Play());
    auto trace = Trace();
    EXPECT_EQ(Field(Calls(trace, "BASS_StreamCreateFile").back(), "flags"), "0x80000000") << "played once: no loop";
    const auto positions = Calls(trace, "BASS_ChannelSetPosition");
    ASSERT_EQ(positions.size(), 2u);
    EXPECT_EQ(Field(positions[0], "pos"), "100");
    EXPECT_EQ(Field(positions[1], "pos"), "0") << "no length: the natural end";

    std::u16string text;
    ::SetEnvironmentVariableW(L"VRL_SIM_BASS_FREQ", L"44100");
    player.GetInfoText(text);
    ::SetEnvironmentVariableW(L"VRL_SIM_BASS_FREQ", nullptr);
    EXPECT_EQ(text, u"44100 Hz");

    // A new soundfont reaches the playing stream; a failed one still frees the one before.
    ASSERT_TRUE(player.SetSoundFont(File(L"piano.sf2")));
    const vrl::BassHandle first = player.SoundFont();
    EXPECT_FALSE(player.SetSoundFont(File(L"missing.sf2")));
    EXPECT_EQ(player.SoundFont(), 0u);
    trace = Trace();
    const auto fonts = Calls(trace, "BASS_MIDI_StreamSetFonts");
    ASSERT_GE(fonts.size(), 2u);
    EXPECT_EQ(Field(fonts[1], "handle"), std::to_string(player.Stream()));
    EXPECT_EQ(Calls(trace, "BASS_MIDI_FontFree").back(), "BASS_MIDI_FontFree handle=" + std::to_string(first) + " -> 1");
    // An instrument always counts as a change of source, even one that cannot be read.
    EXPECT_TRUE(player.SetSoundFont(File(L"instrument.dll")));
    EXPECT_EQ(player.VstBits(), 0);
}

}  // namespace
