#include "ui/dialog_template.h"
#include "ui/dialog_win.h"
#include "ui/layout_win.h"
#include "ui/panel_style.h"
#include "tests/win/window_probe_win.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vrl::ControlAtom;
using vrl::DialogTemplate;
using vrltest::WindowText;

constexpr DWORD kPanelStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;

// A panel that does nothing but exist; destroyed at the end of a test.
class Panel : public vrl::CDialogImplBase {
public:
    explicit Panel(const DialogTemplate& t) { hwnd = CreateIndirect(t); }
    ~Panel() override { Destroy(); }
    bool ProcessWindowMessage(HWND, UINT msg, WPARAM, LPARAM, LRESULT& result) override {
        result = msg == WM_INITDIALOG;
        return msg == WM_INITDIALOG;
    }
    HWND hwnd;
};

DialogTemplate SmallPanel(int language) {
    DialogTemplate t;
    t.Create(vrl::PanelTitle(u"Test Panel"), {0, 0, 200, 120}, kPanelStyle, 0,
             vrl::PanelFont(language));
    t.AddControl(ControlAtom::kStatic, 100, {6, 6, 42, 12}, 0, 0, u"Filter:");
    t.AddControl(ControlAtom::kEdit, 200, {6, 24, 100, 40}, WS_BORDER, 0, u"");
    return t;
}

// Controls come out as visible children whatever style they were given, in the language's font.
TEST(DialogTemplateWin, PanelShowsItsControlsInTheFontOfTheLanguage) {
    for (int language : {1, 0}) {
        Panel panel(SmallPanel(language));
        ASSERT_NE(panel.hwnd, nullptr);
        EXPECT_EQ(GetWindow(panel.hwnd, GW_OWNER), nullptr);
        HWND label = GetDlgItem(panel.hwnd, 100);
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(GetParent(label), panel.hwnd);
        EXPECT_EQ(WindowText(label), L"Filter:");
        ShowWindow(panel.hwnd, SW_SHOWNA);
        EXPECT_TRUE(IsWindowVisible(label));

        const auto font = reinterpret_cast<HFONT>(SendMessageW(panel.hwnd, WM_GETFONT, 0, 0));
        LOGFONTW lf{};
        ASSERT_NE(GetObjectW(font, sizeof lf, &lf), 0);
        EXPECT_EQ(lf.lfCharSet, language == 1 ? 128 : 0) << "language " << language;
        EXPECT_EQ(std::wstring(lf.lfFaceName), language == 1 ? L"Meiryo UI" : L"Arial");
        EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)), font);
    }
}

TEST(DialogTemplateWin, AnchoredEdgesCountFromTheFarSideOfTheClientArea) {
    Panel panel(SmallPanel(0));
    ASSERT_NE(panel.hwnd, nullptr);
    RECT six{6, 24, 6, 6};
    MapDialogRect(panel.hwnd, &six);

    vrl::MoveAnchored(panel.hwnd, 200, {6, 24, -6, -6}, 300, 250);
    HWND edit = GetDlgItem(panel.hwnd, 200);
    RECT r{};
    GetWindowRect(edit, &r);
    MapWindowPoints(nullptr, panel.hwnd, reinterpret_cast<POINT*>(&r), 2);
    EXPECT_EQ(r.left, six.left);
    EXPECT_EQ(r.top, six.top);
    EXPECT_EQ(r.right, 300 - six.right);
    EXPECT_EQ(r.bottom, 250 - six.bottom);

    // Zero on the right or bottom is the edge itself; a negative left counts from the right.
    const RECT edge = vrl::AnchoredRect(panel.hwnd, {-6, 0, 0, 0}, 300, 250);
    EXPECT_EQ(edge.left, 300 - six.left);
    EXPECT_EQ(edge.top, 0);
    EXPECT_EQ(edge.right, 300);
    EXPECT_EQ(edge.bottom, 250);
}

// Notes its owner and ends at once with 42.
class EndAtOnce : public vrl::CDialogImplBase {
public:
    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM, LPARAM, LRESULT& result) override {
        if (msg != WM_INITDIALOG) return false;
        owner = GetWindow(hwnd, GW_OWNER);
        LOGFONTW lf{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(hwnd, WM_GETFONT, 0, 0)), sizeof lf, &lf);
        charset = lf.lfCharSet;
        EndDialog(42);
        result = TRUE;
        return true;
    }
    HWND owner = nullptr;
    int charset = -1;
};

TEST(DialogTemplateWin, ModalDialogIsOwnedByItsOwnerAndEmptyTemplatesCreateNothing) {
    HWND owner = CreateWindowExW(0, L"Static", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 200,
                                 100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(owner, nullptr);
    DialogTemplate t;
    t.Create(u"Modal", {0, 0, 100, 50}, WS_POPUP | WS_CAPTION, 0, vrl::PanelFont(1));
    EndAtOnce modal;
    EXPECT_EQ(modal.DoModalIndirect(t, owner), 42);
    EXPECT_EQ(modal.owner, owner);
    EXPECT_EQ(modal.charset, 128) << "the font repair reaches modal dialogs too";
    DestroyWindow(owner);

    EXPECT_EQ(modal.DoModalIndirect(DialogTemplate(), nullptr), -1);
    EXPECT_EQ(modal.CreateIndirect(DialogTemplate()), nullptr);
}

}  // namespace
