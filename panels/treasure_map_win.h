#pragma once
// The treasure map window: on the in-game module's order (WM_HOTKEY 1200) it cuts the map out of
// the game window, scales it like the game's display and shows it beside the game.

#include <windows.h>

#include "ui/dialog_win.h"

namespace vrl {

class CTreasureMapDlg : public CDialogImplBase {
public:
    static constexpr int kPictureId = 1000;

    ~CTreasureMapDlg() override;

    // Modeless, without owner, not shown; the template is built on first use.
    HWND Create();

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    // Cuts the map out of the game window now and shows it; nothing while no game window is known
    // or either client area has no height.
    void CaptureAndShow();
    // Puts `picture` into the static and keeps it, deleting the one it replaces.
    void ShowPicture(HBITMAP picture);

    HBITMAP picture_ = nullptr;
};

}  // namespace vrl
