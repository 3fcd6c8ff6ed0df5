#include "panels/treasure_map_win.h"

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "panels/treasure_map.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/window_capture_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr LangText kName{u"Treasure Map", u"宝の地図"};
constexpr DWORD kWindowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
// The game has finished drawing the map this long after the module's order.
constexpr UINT kSettleMs = 500;
constexpr UINT_PTR kSettleTimer = 1;

void BuildTemplate(DialogTemplate& t) {
    t.Create(PanelTitle(kName), {0, 0, 276, 222}, kWindowStyle, 0, PanelFont());
    t.AddControl(ControlAtom::kStatic, CTreasureMapDlg::kPictureId, {7, 7, 20, 20}, SS_BITMAP, 0, u"");
}

}  // namespace

CTreasureMapDlg::~CTreasureMapDlg() {
    Destroy();
    if (picture_) ::DeleteObject(picture_);
}

HWND CTreasureMapDlg::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildTemplate));
}

bool CTreasureMapDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_HOTKEY:
        if (wp != static_cast<WPARAM>(game_link::kHotkeyTreasureMap)) return false;
        // Waiting on a timer keeps the other windows answering meanwhile; a second order restarts it.
        ::SetTimer(m_hWnd, kSettleTimer, kSettleMs, nullptr);
        return true;
    case WM_TIMER:
        if (wp != kSettleTimer) return false;
        ::KillTimer(m_hWnd, kSettleTimer);
        CaptureAndShow();
        return true;
    case WM_COMMAND:
        if (LOWORD(wp) != IDOK && LOWORD(wp) != IDCANCEL) return false;
        Show(SW_HIDE);
        return true;
    case WM_DESTROY:
        ShowPicture(nullptr);  // takes back a copy the static may hold
        return false;
    }
    return false;
}

void CTreasureMapDlg::OnInitDialog() {
    SetProgramIcons(m_hWnd);
    CentreOnParent(m_hWnd);
}

void CTreasureMapDlg::CaptureAndShow() {
    HWND game = App().gameWindow;
    HWND draw = game_link::GameDrawWindow(App().frame);
    if (!game || !draw) return;
    treasure_map::PictureSize size{};
    HBITMAP captured = nullptr;
    {
        // The game's rectangles and its device context in the game's own pixels (see WindowDpiScope).
        const WindowDpiScope scope(game);
        RECT gameClient{}, drawClient{};
        if (!::GetClientRect(game, &gameClient) || !::GetClientRect(draw, &drawClient)) return;
        const std::optional<int> scale = treasure_map::DisplayScale(drawClient.bottom, gameClient.bottom);
        if (!scale) return;
        size = treasure_map::ScaledPicture(*scale);
        const treasure_map::MapRect region = treasure_map::MapRegion(gameClient.right, gameClient.bottom);
        const RECT source{region.x, region.y, region.x + region.width, region.y + region.height};
        captured = CaptureClientRegion(game, source, size.width, size.height);
    }
    if (!captured) return;
    Show(SW_SHOWNOACTIVATE);
    ShowPicture(captured);

    RECT frame{0, 0, size.width, size.height};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_EXSTYLE)));
    const int width = frame.right - frame.left, height = frame.bottom - frame.top;
    RECT drawWindow{}, desktop{};
    ::GetWindowRect(draw, &drawWindow);
    ::GetWindowRect(::GetDesktopWindow(), &desktop);
    const int left = treasure_map::MapWindowLeft(drawWindow.right, width, desktop.right);
    ::SetWindowPos(m_hWnd, HWND_TOP, left, drawWindow.top, width, height, SWP_NOACTIVATE);
    ::MoveWindow(Item(kPictureId), 0, 0, size.width, size.height, TRUE);
}

void CTreasureMapDlg::ShowPicture(HBITMAP picture) {
    // The static answers with the picture it showed before. With version 6 of the common controls
    // that can be a copy it made of ours (it copies a picture whose pixels carry alpha), and the
    // copy is then ours to delete: nothing frees a picture the static hands back.
    const auto shown = reinterpret_cast<HBITMAP>(
        ::SendDlgItemMessageW(m_hWnd, kPictureId, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture)));
    if (shown && shown != picture_) ::DeleteObject(shown);
    if (picture_) ::DeleteObject(picture_);
    picture_ = picture;
}

}  // namespace vrl
