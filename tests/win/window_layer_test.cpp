// The window layer against the running system: the loop's filter and idle order, a frame's class
// registered once, the dialog dispatch's answers, and handlers that throw.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "app/message_loop_win.h"
#include "ui/dialog_template.h"
#include "ui/dialog_win.h"
#include "ui/window_win.h"

namespace {

using vrl::CMessageLoop;

constexpr UINT kProbe = WM_APP + 77;

// Notes its name when it sees the probe or an idle pass; `consume` keeps the probe from the
// filters after it, `quitWith` ends the loop after an idle pass.
struct Recorder : vrl::CMessageFilter, vrl::CIdleHandler {
    Recorder(std::vector<std::string>& log, std::string name, bool consume = false, int quitWith = 0)
        : log_(log), name_(std::move(name)), consume_(consume), quitWith_(quitWith) {}
    bool PreTranslateMessage(MSG* msg) override {
        if (msg->message != kProbe) return false;
        log_.push_back(name_);
        return consume_;
    }
    bool OnIdle() override {
        log_.push_back(name_);
        if (quitWith_) ::PostQuitMessage(quitWith_);
        return true;
    }
    std::vector<std::string>& log_;
    std::string name_;
    bool consume_;
    int quitWith_;
};

TEST(MessageLoop, FiltersLastRegisteredFirstIdleHandlersInOrderAndQuitValue) {
    std::vector<std::string> log;
    CMessageLoop loop;
    Recorder first(log, "filter1"), second(log, "filter2"), third(log, "filter3", true);
    Recorder idleA(log, "idleA"), idleB(log, "idleB", false, 7);
    loop.AddMessageFilter(&first);
    loop.AddMessageFilter(&second);
    loop.AddMessageFilter(&third);
    loop.RemoveMessageFilter(&third);
    loop.AddIdleHandler(&idleA);
    loop.AddIdleHandler(&idleB);

    ::PostThreadMessageW(::GetCurrentThreadId(), kProbe, 0, 0);
    EXPECT_EQ(loop.Run(), 7);
    // The probe through the filters from the last one registered (the third, removed, never sees
    // it), then, with the queue empty, one idle pass in registration order; the second handler
    // posts the quit that ends the loop.
    const std::vector<std::string> expected{"filter2", "filter1", "idleA", "idleB"};
    EXPECT_EQ(log, expected);
}

constexpr UINT kThrow = WM_APP + 80;

// Throws on kThrow; answers kProbe with 5.
class ProbeFrame : public vrl::CFrameWindowImpl {
public:
    bool ProcessWindowMessage(HWND, UINT msg, WPARAM, LPARAM, LRESULT& result) override {
        if (msg == kThrow) throw std::runtime_error("handler failed");
        result = 5;
        return msg == kProbe;
    }
};

// The frame's dispatch, extra bytes and exit value are checked end to end, where there is one frame.
TEST(FrameWindow, ASecondFrameReusesTheRegisteredClass) {
    const vrl::CWindowImpl::ClassSpec spec{L"VrlProbeFrame", 0, 40};
    ProbeFrame first, second;
    ASSERT_TRUE(first.Create(spec, nullptr, L"probe", WS_OVERLAPPEDWINDOW, 0));
    EXPECT_TRUE(second.Create(spec, nullptr, L"probe2", WS_OVERLAPPEDWINDOW, 0));
    // A handler that throws costs its message only, whichever window procedure called it.
    EXPECT_EQ(first.Send(kThrow), 0);
    EXPECT_EQ(first.Send(kProbe), 5);
    second.Destroy();
    first.Destroy();
    MSG quit;  // each frame's end asked this thread's loop to quit
    while (::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

// Answers kProbe through the dialog manager and kProbe + 1 ahead of it, counting the latter.
class AheadDialog : public vrl::CDialogImplBase {
public:
    bool ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM, LRESULT& result) override {
        switch (msg) {
        case WM_INITDIALOG:
            AnswerAheadOfDialogManager(kProbe + 1);
            result = TRUE;
            return true;
        case kProbe:
            result = 99;
            return true;
        case kThrow:
            throw std::runtime_error("handler failed");
        case kProbe + 1:
            if (wp == 0) throw std::runtime_error("handler failed");
            ++ahead;
            result = static_cast<LRESULT>(wp) * 2;
            return true;
        }
        return false;
    }
    int ahead = 0;
};

TEST(DialogWindow, AnswersThroughTheMessageResultOrAheadOfTheDialogManager) {
    vrl::DialogTemplate dialogTemplate;
    dialogTemplate.Create(u"ahead", {0, 0, 100, 50}, WS_POPUP | WS_CAPTION, 0, {u"Arial", 9, 400, false, 0});
    AheadDialog dialog;
    for (int round = 0; round < 2; ++round) {  // a second window of the same object is set up again
        ASSERT_TRUE(dialog.CreateIndirect(dialogTemplate));
        const LONG_PTR before = ::GetWindowLongPtrW(dialog.Handle(), DWLP_MSGRESULT);
        EXPECT_EQ(dialog.Send(kProbe + 1, 21), 42);
        EXPECT_EQ(::GetWindowLongPtrW(dialog.Handle(), DWLP_MSGRESULT), before) << "not through the message result";
        EXPECT_EQ(dialog.Send(kProbe), 99) << "other messages still go through the dialog manager";
        EXPECT_EQ(dialog.Send(kThrow), 0);
        EXPECT_EQ(dialog.Send(kProbe + 1, 0), 0);
        EXPECT_EQ(dialog.Send(kProbe), 99);
        dialog.Destroy();
        EXPECT_FALSE(dialog.IsWindow());
    }
    EXPECT_EQ(dialog.ahead, 2);
}

}  // namespace
