#include "music/bass_api_win.h"

#include "music/bass_errors.h"
#include "tests/win/audio_library_fixture_win.h"

namespace {

using vrltest::Calls;
using BassBinding = vrltest::AudioLibraryTest;

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
    char win[32];
    snprintf(win, sizeof(win), "0x%llx", static_cast<unsigned long long>(reinterpret_cast<UINT_PTR>(owner)));
    EXPECT_EQ(inits, std::vector<std::string>{std::string("BASS_Init device=-1 freq=48000 flags=0x0 win=") + win +
                                               " clsid=null -> 1"});
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "BASS_PluginFree handle=0 -> 1");
    EXPECT_EQ(lines.back(), "BASS_Free -> 1");

    // A later user starts the library again.
    { vrl::BassUse again(owner); }
    EXPECT_EQ(Calls(Trace(), "BASS_Init").size(), 2u);
    EXPECT_EQ(Calls(Trace(), "BASS_Free").size(), 2u);
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
        const std::wstring missing = folder / L"missing.wav";
        EXPECT_EQ(vrl::Bass().SampleLoad(FALSE, missing.c_str(), 0, 0, 1, vrl::kBassUnicode), 0u);
        EXPECT_EQ(vrl::Bass().ErrorGetCode(), 2) << "the library's own error code";
    }
    vrl::BassApi::LoadFrom(empty.Path());
}

}  // namespace
