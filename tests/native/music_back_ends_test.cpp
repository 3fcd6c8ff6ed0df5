#include "music/bass_errors.h"
#include "music/midi_back_ends.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vrl {
namespace {

TEST(MidiBackEnds, InstrumentBitnessFromTheProgramSignature) {
    unsigned char dos[kDosHeaderBytes] = {'M', 'Z'};
    dos[60] = 0x80;
    dos[61] = 0x01;
    EXPECT_EQ(PeHeaderOffset(dos), 0x180u);
    const unsigned char x86[kPeSignatureBytes] = {'P', 'E', 0, 0, 0x4C, 0x01};
    const unsigned char x64[kPeSignatureBytes] = {'P', 'E', 0, 0, 0x64, 0x86};
    const unsigned char arm[kPeSignatureBytes] = {'P', 'E', 0, 0, 0x64, 0xAA};
    const unsigned char text[kPeSignatureBytes] = {'P', 'E', ' ', 0, 0x4C, 0x01};
    EXPECT_EQ(VstBitsOf(x86, 64), 32);
    EXPECT_EQ(VstBitsOf(x64, 32), 64);
    EXPECT_EQ(VstBitsOf(arm, 64), 0);
    EXPECT_EQ(VstBitsOf(text, 64), 64) << "not a program: the bitness stays";
}

TEST(MidiBackEnds, HostCommandLineAndCommandSize) {
    const std::u16string folder = VstHostFolder(u"C:\\Vrl\\", 64);
    EXPECT_EQ(folder, u"C:\\Vrl\\vst64");
    EXPECT_EQ(VstHostCommandLine(folder, 64, 42, 0x10080, 4000000000u),
              u"C:\\Vrl\\vst64\\VrlVstHost64.exe v=3 pid=42 hwndpf=65664 hwndee=4000000000");
    EXPECT_EQ(VstCommandBytes(0), 2u);
    EXPECT_EQ(VstCommandBytes(1023), 2048u);
    EXPECT_TRUE(VstCommandFits(1023));
    EXPECT_FALSE(VstCommandFits(1024));
}

TEST(MidiBackEnds, SmfLibraryVolumeOptionAndResultNames) {
    EXPECT_EQ(SmfMasterVolume(1.0f), 0);
    EXPECT_EQ(SmfMasterVolume(0.25f), -63);
    EXPECT_EQ(SmfMasterVolume(0.0f), -127);
    EXPECT_EQ(SmfPlayOption(1), 2);
    EXPECT_EQ(SmfPlayOption(2), 3);
    EXPECT_EQ(std::u16string(SmfResultName(0)), u"NoError");
    EXPECT_EQ(std::u16string(SmfResultName(kSmfApiNull)), u"ApiNull");
    EXPECT_EQ(std::u16string(SmfResultName(16)), u"");
    EXPECT_EQ(std::u16string(SmfResultName(-1)), u"");
}

std::u16string Name(int code) { return BassErrorName(code); }

// Every defined code has a name of its own; gaps and anything outside -1 to 46 read as undefined.
TEST(BassErrorName, NamesEachDefinedCodeOnce) {
    EXPECT_EQ(Name(-1), u"BASS_ERROR_UNKNOWN");
    EXPECT_EQ(Name(0), u"BASS_OK");
    EXPECT_EQ(Name(46), u"BASS_ERROR_BUSY");
    const std::set<int> gaps = {11, 12, 13, 15, 16, 17, 26, 28, 30, 35, 36};
    std::set<std::u16string> distinct;
    for (int code = -40; code <= 60; ++code) {
        const bool undefined = code < -1 || code > 46 || gaps.count(code) != 0;
        if (undefined) {
            EXPECT_EQ(Name(code), u"BASS_ERROR_UNDEFINED") << code;
        } else {
            EXPECT_TRUE(distinct.insert(Name(code)).second) << "name repeated for " << code;
        }
    }
    EXPECT_EQ(distinct.count(u"BASS_ERROR_UNDEFINED"), 0u);
    EXPECT_EQ(Name(-2147483647 - 1), u"BASS_ERROR_UNDEFINED");
    EXPECT_EQ(Name(2147483647), u"BASS_ERROR_UNDEFINED");
}

}  // namespace
}  // namespace vrl
