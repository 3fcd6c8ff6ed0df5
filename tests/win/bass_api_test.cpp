#include "music/bass_api_win.h"

#include <gtest/gtest.h>

#include "tests/common/alerts_support_win.h"
#include "music/bass_errors.h"

namespace {

using vrltest::Calls;
using vrltest::Field;
using vrltest::ResultOf;

// A program folder with the recording stand-ins of the library and its MIDI add-on.
class BassBinding : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(vrltest::CopyStandIn(L"simbass", L"bass.dll", folder_.Path()));
        ASSERT_TRUE(vrltest::CopyStandIn(L"simbass", L"bassmidi.dll", folder_.Path()));
        ASSERT_TRUE(vrl::BassApi::LoadFrom(folder_.Path()));
    }
    // Unbind before the folder goes, so that its DLLs can be deleted.
    void TearDown() override { vrl::BassApi::LoadFrom(empty_.Path()); }

    std::vector<std::string> Trace() const { return vrltest::ReadLines(folder_ / L"bass_trace.txt"); }

    vrltest::ScratchFolder folder_;
    vrltest::ScratchFolder empty_;
};

TEST_F(BassBinding, FirstUserInitialisesAndLastUserFrees) {
    const HWND owner = GetDesktopWindow();
    {
        vrl::BassUse log(owner);
        {
            vrl::BassUse music(nullptr);
            EXPECT_EQ(vrl::BassUse::Count(), 2);
        }
        EXPECT_EQ(vrl::BassUse::Count(), 1);
        EXPECT_TRUE(Calls(Trace(), "BASS_Free").empty()) << "freed while a user was left";
    }
    EXPECT_EQ(vrl::BassUse::Count(), 0);

    const auto lines = Trace();
    const auto inits = Calls(lines, "BASS_Init");
    ASSERT_EQ(inits.size(), 1u);
    EXPECT_EQ(Field(inits[0], "device"), "-1");
    EXPECT_EQ(Field(inits[0], "freq"), "48000");
    EXPECT_EQ(Field(inits[0], "flags"), "0x0");
    char win[32];
    snprintf(win, sizeof(win), "0x%llx", static_cast<unsigned long long>(reinterpret_cast<UINT_PTR>(owner)));
    EXPECT_EQ(Field(inits[0], "win"), win);
    EXPECT_EQ(Field(inits[0], "clsid"), "null");
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "BASS_PluginFree handle=0 -> 1");
    EXPECT_EQ(lines.back(), "BASS_Free -> 1");

    // A later user starts the library again.
    { vrl::BassUse again(owner); }
    EXPECT_EQ(Calls(Trace(), "BASS_Init").size(), 2u);
    EXPECT_EQ(Calls(Trace(), "BASS_Free").size(), 2u);
}

TEST_F(BassBinding, PassesInfoAndErrorCodesThrough) {
    vrl::BassUse use(nullptr);
    vrl::BassInfo info = {};
    ASSERT_TRUE(vrl::Bass().GetInfo(&info));
    EXPECT_EQ(info.freq, 48000u);

    const std::wstring missing = folder_ / L"missing.wav";
    EXPECT_EQ(vrl::Bass().SampleLoad(FALSE, missing.c_str(), 0, 0, 1, vrl::kBassUnicode), 0u);
    EXPECT_EQ(vrl::Bass().ErrorGetCode(), 2);

    const std::wstring text = folder_ / L"notes.wav";
    vrltest::WriteFileBytes(text, "just some text, not a sound");
    EXPECT_EQ(vrl::Bass().SampleLoad(FALSE, text.c_str(), 0, 0, 1, vrl::kBassUnicode), 0u);
    EXPECT_EQ(std::u16string(vrl::BassErrorName(vrl::Bass().ErrorGetCode())), u"BASS_ERROR_FILEFORM");

    const auto loads = Calls(Trace(), "BASS_SampleLoad");
    ASSERT_EQ(loads.size(), 2u);
    EXPECT_EQ(Field(loads[0], "file"), "\"" + vrltest::Utf8(missing) + "\"");
}

// What the music player relies on: streams, loop tags, the MIDI plug-in and soundfonts.
TEST_F(BassBinding, StandInServesStreamsTagsAndSoundfonts) {
    vrl::BassUse use(nullptr);
    auto& bass = vrl::Bass();
    ASSERT_TRUE(bass.HasMidi());

    const std::wstring ogg = folder_ / L"field.ogg";
    const std::string comments = std::string("\x03vorbis") + std::string("\x02\0\0\0", 4) + "me" +
                                 std::string("\x02\0\0\0", 4) + std::string("\x0c\0\0\0", 4) +
                                 "LOOPSTART=10" + std::string("\x0e\0\0\0", 4) + "LOOPLENGTH=200";
    vrltest::WriteFileBytes(ogg, "OggS" + std::string(24, '\0') + comments);
    const vrl::BassHandle stream = bass.StreamCreateFile(FALSE, ogg.c_str(), 0, 0, vrl::kBassUnicode | vrl::kBassSampleLoop);
    ASSERT_NE(stream, 0u);
    const char* tags = bass.ChannelGetTags(stream, vrl::kBassTagOgg);
    ASSERT_NE(tags, nullptr);
    EXPECT_STREQ(tags, "LOOPSTART=10");
    EXPECT_STREQ(tags + 13, "LOOPLENGTH=200");
    EXPECT_STREQ(tags + 28, "");
    EXPECT_TRUE(bass.ChannelSetPosition(stream, 40, vrl::kBassPosLoop));
    EXPECT_TRUE(bass.ChannelPlay(stream, FALSE));

    // MIDI files open as streams only once the add-on is loaded as a plug-in.
    const std::wstring mid = folder_ / L"town.mid";
    vrltest::WriteFileBytes(mid, std::string("MThd\0\0\0\x06\0\0\0\x01\0\x60", 14));
    EXPECT_EQ(bass.StreamCreateFile(FALSE, mid.c_str(), 0, 0, vrl::kBassUnicode), 0u);
    ASSERT_NE(bass.PluginLoad((folder_ / L"bassmidi.dll").c_str(), vrl::kBassUnicode), 0u);
    const vrl::BassHandle midi = bass.StreamCreateFile(FALSE, mid.c_str(), 0, 0, vrl::kBassUnicode);
    ASSERT_NE(midi, 0u);

    const std::wstring sf2 = folder_ / L"piano.sf2";
    vrltest::WriteFileBytes(sf2, std::string("RIFF\x04\0\0\0sfbk", 12));
    const vrl::BassMidiFont font = {bass.MidiFontInit(sf2.c_str(), vrl::kBassUnicode), -1, 0};
    ASSERT_NE(font.font, 0u);
    EXPECT_TRUE(bass.MidiStreamSetFonts(0, &font, 1));
    EXPECT_TRUE(bass.MidiStreamSetFonts(midi, &font, 1));
    EXPECT_FALSE(bass.MidiStreamSetFonts(0x7777, &font, 1));
    EXPECT_EQ(bass.ErrorGetCode(), 5);
    EXPECT_TRUE(bass.MidiFontFree(font.font));
    EXPECT_TRUE(bass.StreamFree(midi));
    EXPECT_FALSE(bass.StreamFree(midi));
}

TEST(BassBindingMissing, EveryCallFailsSoftlyWithoutTheLibrary) {
    vrltest::ScratchFolder empty;
    EXPECT_FALSE(vrl::BassApi::LoadFrom(empty.Path()));
    auto& bass = vrl::Bass();
    EXPECT_FALSE(bass.HasBass());
    EXPECT_FALSE(bass.HasMidi());
    {
        vrl::BassUse use(nullptr);
        vrl::BassInfo info = {};
        EXPECT_FALSE(bass.GetInfo(&info));
        EXPECT_EQ(info.freq, 0u);
        EXPECT_EQ(bass.SampleLoad(FALSE, L"C:\\a.wav", 0, 0, 1, 0x80020000), 0u);
        EXPECT_EQ(bass.SampleGetChannel(1, FALSE), 0u);
        EXPECT_EQ(bass.StreamCreateFile(FALSE, L"C:\\a.ogg", 0, 0, 0), 0u);
        EXPECT_EQ(bass.PluginLoad(L"C:\\bassflac.dll", 0), 0u);
        EXPECT_FALSE(bass.ChannelPlay(1, FALSE));
        EXPECT_FALSE(bass.ChannelSetAttribute(1, 2, 0.5f));
        EXPECT_EQ(bass.ChannelGetTags(1, 2), nullptr);
        EXPECT_EQ(bass.MidiFontInit(L"C:\\a.sf2", 0), 0u);
        EXPECT_EQ(bass.ErrorGetCode(), vrl::kBassNotLoaded);
        EXPECT_EQ(std::u16string(vrl::BassErrorName(bass.ErrorGetCode())), u"BASS_ERROR_UNKNOWN");
    }
    EXPECT_EQ(vrl::BassUse::Count(), 0);
}

TEST(BassBindingMissing, LibraryWithoutItsAddOnStillPlays) {
    vrltest::ScratchFolder folder;
    vrltest::ScratchFolder empty;
    ASSERT_TRUE(vrltest::CopyStandIn(L"simbass", L"bass.dll", folder.Path()));
    ASSERT_TRUE(vrl::BassApi::LoadFrom(folder.Path()));
    {
        vrl::BassUse use(nullptr);
        EXPECT_FALSE(vrl::Bass().HasMidi());
        EXPECT_EQ(vrl::Bass().MidiFontInit(L"C:\\a.sf2", vrl::kBassUnicode), 0u);
        const vrl::BassMidiFont font = {1, -1, 0};
        EXPECT_FALSE(vrl::Bass().MidiStreamSetFonts(0, &font, 1));
        const std::wstring wav = folder / L"a.wav";
        vrltest::WriteWav(wav, 100);
        EXPECT_NE(vrl::Bass().SampleLoad(FALSE, wav.c_str(), 0, 0, 1, vrl::kBassUnicode), 0u);
    }
    vrl::BassApi::LoadFrom(empty.Path());
}

}  // namespace
