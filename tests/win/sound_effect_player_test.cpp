#include "log/sound_effect_player_win.h"

#include "tests/win/audio_library_fixture_win.h"

namespace {

using vrltest::Calls;
using vrltest::Field;
using vrltest::ResultOf;

class SoundEffects : public vrltest::AudioLibraryTest {
protected:
    void SetUp() override {
        AudioLibraryTest::SetUp();
        for (const wchar_t* name : {L"a.wav", L"b.wav", L"c.wav", L"d.wav"}) {
            vrltest::WriteWav(folder_ / name, 2000);  // long enough to still play when cut off
        }
    }

    std::string Quoted(const std::wstring& name) const {
        return "\"" + vrltest::Utf8(folder_ / name) + "\"";
    }
    // The sample handle that loading the named file gave.
    std::string SampleOf(const std::wstring& name) const {
        for (const std::string& load : Calls(Trace(), "BASS_SampleLoad")) {
            if (Field(load, "file") == Quoted(name)) return std::to_string(ResultOf(load));
        }
        return "<not loaded>";
    }
    std::vector<std::string> FreedSamples() const {
        std::vector<std::string> freed;
        for (const std::string& line : Calls(Trace(), "BASS_SampleFree")) freed.push_back(Field(line, "handle"));
        return freed;
    }
};

// The file, its flags and the volume are checked end to end; here, that the channel of the sample
// just loaded is the one given the volume and played.
TEST_F(SoundEffects, PlaysTheChannelOfTheSampleJustLoaded) {
    vrl::SoundEffectPlayer player(GetDesktopWindow(), 3);
    ASSERT_TRUE(player.PlaySoundEffect(File(L"a.wav"), 0.5f));
    const auto lines = Trace();
    const auto get = Calls(lines, "BASS_SampleGetChannel");
    ASSERT_EQ(get.size(), 1u);
    EXPECT_EQ(Field(get[0], "handle"), SampleOf(L"a.wav"));
    EXPECT_EQ(Field(get[0], "onlynew"), "0");
    const std::string channel = std::to_string(ResultOf(get[0]));
    const auto attribute = Calls(lines, "BASS_ChannelSetAttribute");
    ASSERT_EQ(attribute.size(), 1u);
    EXPECT_EQ(Field(attribute[0], "handle"), channel);
    EXPECT_EQ(Calls(lines, "BASS_ChannelPlay"),
              std::vector<std::string>{"BASS_ChannelPlay handle=" + channel + " restart=0 -> 1"});
}

// Slots are used in turn; a failed load empties its slot, and the next sound takes it. A file that
// is no shortcut is loaded by the name given.
TEST_F(SoundEffects, SlotsTakeTurnsAndAFailedLoadEmptiesItsSlot) {
    EXPECT_EQ(vrl::SoundEffectPlayer(nullptr, 7).SlotCount(), 3);
    EXPECT_EQ(vrl::SoundEffectPlayer(nullptr, -2).SlotCount(), 1);
    vrltest::WriteFileBytes(folder_ / L"bad.wav", "not a sound");
    vrltest::WriteFileBytes(folder_ / L"broken.lnk", "no shell link in here");
    vrl::SoundEffectPlayer player(nullptr, 2);
    ASSERT_TRUE(player.PlaySoundEffect(File(L"a.wav"), 1.0f));
    ASSERT_TRUE(player.PlaySoundEffect(File(L"b.wav"), 1.0f));
    EXPECT_FALSE(player.PlaySoundEffect(File(L"bad.wav"), 1.0f));
    EXPECT_EQ(FreedSamples(), std::vector<std::string>{SampleOf(L"a.wav")});
    EXPECT_FALSE(player.PlaySoundEffect(File(L"broken.lnk"), 1.0f));
    EXPECT_EQ(FreedSamples().size(), 1u) << "an empty slot has nothing to free";
    EXPECT_EQ(Field(Calls(Trace(), "BASS_SampleLoad").back(), "file"), Quoted(L"broken.lnk"));

    // Same slot again: nothing to free; the slot after it (b) goes with the sound after that.
    ASSERT_TRUE(player.PlaySoundEffect(File(L"c.wav"), 1.0f));
    EXPECT_EQ(FreedSamples().size(), 1u);
    ASSERT_TRUE(player.PlaySoundEffect(File(L"d.wav"), 1.0f));
    EXPECT_EQ(FreedSamples(), (std::vector<std::string>{SampleOf(L"a.wav"), SampleOf(L"b.wav")}));
    EXPECT_EQ(Calls(Trace(), "BASS_SampleGetChannel").size(), 4u) << "no channel for a failed load";
}

// The library outlives the player for the music player: the samples must not stay behind in it.
TEST_F(SoundEffects, FreesItsSamplesWhenDestroyed) {
    vrl::BassUse music(nullptr);
    {
        vrl::SoundEffectPlayer player(nullptr, 3);
        ASSERT_TRUE(player.PlaySoundEffect(File(L"a.wav"), 1.0f));
        ASSERT_TRUE(player.PlaySoundEffect(File(L"b.wav"), 1.0f));
    }
    EXPECT_EQ(FreedSamples(), (std::vector<std::string>{SampleOf(L"a.wav"), SampleOf(L"b.wav")}));
    EXPECT_TRUE(Calls(Trace(), "BASS_Free").empty()) << "the music player still uses it";
}

}  // namespace
