#include "log/speech_win.h"

#include <gtest/gtest.h>

#include "tests/common/alerts_support_win.h"

namespace {

// The speech program's stand-in in a scratch program folder; it logs each start to RemoteTalk.log.
class Speech : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(vrltest::CopyStandIn(L"simtalk", L"RemoteTalk.exe", folder_.Path()));
        const std::wstring path = folder_ / L"RemoteTalk.exe";
        program_.assign(path.begin(), path.end());
    }

    // Speaks and waits for the stand-in to record the start; the recorded line, or "" on timeout.
    std::string SpeakAndWait(const std::u16string& text) {
        const std::size_t before = vrltest::ReadLines(folder_ / L"RemoteTalk.log").size();
        vrl::Speak(program_, text);
        for (int i = 0; i < 200; ++i) {
            const auto lines = vrltest::ReadLines(folder_ / L"RemoteTalk.log");
            if (lines.size() > before) return lines.back();
            Sleep(50);
        }
        return "";
    }

    vrltest::ScratchFolder folder_;
    std::u16string program_;
};

TEST_F(Speech, StartsTheProgramHiddenWithTheTalkCommandLineAndQuotesUnescaped) {
    EXPECT_EQ(SpeakAndWait(u"ペットが倒れた"),
              "RemoteTalk hidden=1 show=0 cmdline= /Talk \"ペットが倒れた\"");
    EXPECT_EQ(SpeakAndWait(u"He said \"run\" now"),
              "RemoteTalk hidden=1 show=0 cmdline= /Talk \"He said \"run\" now\"");
}

TEST_F(Speech, CutsAnOverlongText) {
    const std::string line = SpeakAndWait(std::u16string(5000, u'x'));
    const std::string prefix = "RemoteTalk hidden=1 show=0 cmdline=";
    ASSERT_EQ(line.compare(0, prefix.size(), prefix), 0) << line.substr(0, 80);
    const std::string commandLine = line.substr(prefix.size());
    EXPECT_EQ(commandLine.size(), 2047u);
    EXPECT_EQ(commandLine.substr(0, 9), " /Talk \"x");
    EXPECT_EQ(commandLine.back(), '"');
}

TEST_F(Speech, MissingProgramIsSilent) {
    vrl::Speak(program_ + u".gone", u"Hello");
    vrl::Speak(u"", u"Hello");
    Sleep(200);
    EXPECT_TRUE(vrltest::ReadLines(folder_ / L"RemoteTalk.log").empty());
}

}  // namespace
