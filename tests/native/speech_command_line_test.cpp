#include "log/speech.h"

#include <gtest/gtest.h>

#include <string>

namespace vrl {
namespace {

TEST(SpeechCommandLine, WrapsTheTextUnchangedAfterALeadingSpace) {
    EXPECT_EQ(SpeechCommandLine(u""), u" /Talk \"\"");
    EXPECT_EQ(SpeechCommandLine(u"ペットが倒れた"), u" /Talk \"ペットが倒れた\"");
    EXPECT_EQ(SpeechCommandLine(u"say \"hi\" 100%s %d"), u" /Talk \"say \"hi\" 100%s %d\"");
}

TEST(SpeechCommandLine, CutToTheBufferNeverSplittingASurrogatePair) {
    const std::size_t room = kSpeechCommandLineCapacity - 1 - 9;  // " /Talk \"" and "\""
    const std::u16string fits(room, u'a');
    EXPECT_EQ(SpeechCommandLine(fits), u" /Talk \"" + fits + u"\"");
    const std::u16string line = SpeechCommandLine(std::u16string(5000, u'b'));
    EXPECT_EQ(line, u" /Talk \"" + std::u16string(room, u'b') + u"\"");

    // The pair straddles the cut: its high half would be the last unit kept.
    std::u16string text(room - 1, u'x');
    text += u"\U0001F600tail";
    EXPECT_EQ(SpeechCommandLine(text), u" /Talk \"" + std::u16string(room - 1, u'x') + u"\"");
    // A pair that ends exactly at the limit is kept whole.
    std::u16string whole(room - 2, u'y');
    whole += u"\U0001F600more";
    EXPECT_EQ(SpeechCommandLine(whole), u" /Talk \"" + std::u16string(room - 2, u'y') + u"\U0001F600\"");
}

}  // namespace
}  // namespace vrl
