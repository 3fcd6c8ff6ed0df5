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

// The command line itself is built and cut natively; here it reaches a real process whole, and
// a missing program is no error.
TEST_F(Speech, StartsTheProgramHiddenWithTheTalkCommandLineAndNothingWithoutIt) {
    EXPECT_EQ(SpeakAndWait(u"ペットが倒れた \"run\""),
              "RemoteTalk hidden=1 show=0 cmdline= /Talk \"ペットが倒れた \"run\"\"");
    const std::string cut = SpeakAndWait(std::u16string(5000, u'x'));
    EXPECT_EQ(cut.size(), std::string("RemoteTalk hidden=1 show=0 cmdline=").size() + 2047) << cut.substr(0, 80);

    vrl::Speak(program_ + u".gone", u"Hello");
    vrl::Speak(u"", u"Hello");
    Sleep(200);
    EXPECT_EQ(vrltest::ReadLines(folder_ / L"RemoteTalk.log").size(), 2u);
}

}  // namespace
