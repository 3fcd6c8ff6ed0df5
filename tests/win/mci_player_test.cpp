// The MCI sequencer player against Wine's own sequencer: the completion notices a play count asks
// for, a play count of 0, and a file the sequencer refuses.

#include "music/mci_player_win.h"

#include <gtest/gtest.h>

#include "tests/common/alerts_support_win.h"
#include "ui/wide_win.h"

namespace {

// A message-only window that counts the completion notices. Wine's sequencer never finishes a
// sequence without a MIDI device, so a notice comes when the next command supersedes or aborts the
// play that asked for it: counted whatever its kind.
struct NoticeCounter {
    HWND window = ::CreateWindowW(L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ~NoticeCounter() { ::DestroyWindow(window); }

    // Notices that arrive within `ms`.
    int Count(DWORD ms) const {
        int notices = 0;
        const DWORD start = ::GetTickCount();
        while (::GetTickCount() - start < ms) {
            MSG msg;
            while (::PeekMessageW(&msg, window, MM_MCINOTIFY, MM_MCINOTIFY, PM_REMOVE)) {
                ++notices;
            }
            ::Sleep(20);
        }
        return notices;
    }
};

TEST(MciPlayer, EachPlayButTheLastAsksForTheNoticeAndACountOfZeroNeverPlays) {
    vrltest::ScratchFolder folder;
    const std::wstring song = folder / L"short.mid";
    vrltest::WriteMidi(song, 1);  // half a second
    NoticeCounter owner;
    vrl::CMciPlayer player(owner.window);

    ASSERT_TRUE(player.Open(vrl::U16(song), 3));
    int notices = 0;
    for (int play = 0; play < 3; ++play) {
        ASSERT_TRUE(player.Play()) << play;
        notices += owner.Count(700);
        player.SetPosition(0);
    }
    player.Stop();
    player.Close();
    EXPECT_EQ(notices + owner.Count(1000), 2) << "the last play asks for no notice";

    ASSERT_TRUE(player.Open(vrl::U16(song), 0));
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(owner.Count(1500), 0);
    player.Close();

    // A file the sequencer refuses: the play on the unopened device fails with a text.
    vrltest::WriteFileBytes(folder / L"text.mid", "no music here\r\n");
    EXPECT_FALSE(player.Open(vrl::U16(folder / L"text.mid"), 1));
    EXPECT_FALSE(player.Play());
    std::u16string error;
    player.GetErrorText(error);
    EXPECT_FALSE(error.empty());
    player.Close();
}

}  // namespace
