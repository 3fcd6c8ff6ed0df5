#include "log/speech.h"

#include <gtest/gtest.h>

#include <string>

namespace vrl {
namespace {

TEST(SpeechCommandLine, WrapsTheTextAfterALeadingSpace) {
    EXPECT_EQ(SpeechCommandLine(u"Hello"), u" /Talk \"Hello\"");
    EXPECT_EQ(SpeechCommandLine(u""), u" /Talk \"\"");
    EXPECT_EQ(SpeechCommandLine(u"ペットが倒れた"), u" /Talk \"ペットが倒れた\"");
}

TEST(SpeechCommandLine, PassesQuotesAndPercentSignsUnchanged) {
    EXPECT_EQ(SpeechCommandLine(u"say \"hi\" 100%s %d"), u" /Talk \"say \"hi\" 100%s %d\"");
}

TEST(SpeechCommandLine, FitsTheBufferAtTheLimitAndBeyond) {
    const std::size_t room = kSpeechCommandLineCapacity - 1 - 9;  // " /Talk \"" and "\""
    const std::u16string fits(room, u'a');
    EXPECT_EQ(SpeechCommandLine(fits), u" /Talk \"" + fits + u"\"");

    const std::u16string line = SpeechCommandLine(std::u16string(5000, u'b'));
    EXPECT_EQ(line.size(), kSpeechCommandLineCapacity - 1);
    EXPECT_EQ(line.back(), u'"');
    EXPECT_EQ(line.substr(0, 9), u" /Talk \"b");
}

TEST(SpeechCommandLine, CutNeverSplitsASurrogatePair) {
    const std::size_t room = kSpeechCommandLineCapacity - 1 - 9;
    // The pair straddles the cut: its high half would be the last unit kept.
    std::u16string text(room - 1, u'x');
    text += u"\U0001F600tail";
    const std::u16string line = SpeechCommandLine(text);
    EXPECT_EQ(line.size(), kSpeechCommandLineCapacity - 2);
    EXPECT_EQ(line, u" /Talk \"" + std::u16string(room - 1, u'x') + u"\"");

    // A pair that ends exactly at the limit is kept whole.
    std::u16string whole(room - 2, u'y');
    whole += u"\U0001F600more";
    EXPECT_EQ(SpeechCommandLine(whole), u" /Talk \"" + std::u16string(room - 2, u'y') + u"\U0001F600\"");
}

}  // namespace
}  // namespace vrl
