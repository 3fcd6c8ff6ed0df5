#pragma once
// CMainFrame: the hidden top-level window at the hub of the companion. Its creation prepares the
// folders and settings, launches the game and creates the companion windows; its timer watches
// the game and closes everything once the game has gone.

#include <windows.h>

#include "app/message_loop_win.h"
#include "app/num_lock_win.h"
#include "app/tray_icon_win.h"
#include "log/log_window_win.h"
#include "panels/item_info_win.h"
#include "panels/quick_search_win.h"
#include "panels/pet_extender_dlg_win.h"
#include "music/music_player_dlg_win.h"
#include "panels/equip_set_win.h"
#include "panels/treasure_map_win.h"
#include "tools/screenshot_win.h"
#include "tools/window_placement_win.h"
#include "ui/window_win.h"

namespace vrl {

class CMainFrame : public CFrameWindowImpl, public CMessageFilter, public CIdleHandler {
public:
    static constexpr UINT_PTR kGameWatchTimer = 10000;
    static constexpr UINT kGameWatchPeriodMs = 100;
    static constexpr int kMaxFruitlessTicks = 30;

    CMainFrame() = default;
    ~CMainFrame() override;

    // Creates the (never shown) frame window; its creation handler does the rest.
    HWND CreateFrame();

    bool PreTranslateMessage(MSG* msg) override;
    bool OnIdle() override;

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

    DWORD GameProcessId() const { return gameProcessId_; }
    DWORD GameThreadId() const { return gameThreadId_; }

private:
    LRESULT OnCreate(const CREATESTRUCTW* create);
    void OnClose();
    void OnDestroy();
    void OnGameWatchTimer();
    void OnHotKey(int id);
    void OnCommand(WORD id, WORD notifyCode);
    void OnTrayNotify(WPARAM id, LPARAM mouseMessage);
    LRESULT OnLogViewHandleRequest(WPARAM page);
    void OnClearLogRequest(WPARAM which);
    void OnOpenEquipSetRequest();

    void ComputeFolders();
    void CreateStatusStatics();
    void RegisterHotkeys();
    // Every hotkey of the companion is Ctrl+Alt and one key, sent to the frame as WM_HOTKEY `id`.
    void RegisterCtrlAltHotkey(int id, UINT key) const;
    void CreateCompanionWindows();
    void DestroyCompanionWindows();
    // The windows that placement saves, restores and resets, in the order of its file.
    std::vector<PlaceableWindow> PlaceableWindows();
    // Commands 34103 and 34104: the full log (page 0) or the extracted log (page 1) in front.
    void ShowLog(int page);
    HWND FindGameWindow() const;
    [[noreturn]] void StartSettingsEditorAndExit();
    void RefuseSecondInstance();

    TrayIcon tray_;
    CLogExtenderDlg logWindow_;
    ScreenshotTaker screenshots_;
    CLogExtenderDlg_Child* extractedLog_ = nullptr;  // set once the log windows exist
    CQuickSearchDlg quickSearch_;
    CItemInfoDlg itemInfo_;
    CPetExtenderDlg petPanel_;
    CMusicPlayerDlg musicPanel_;
    CTreasureMapDlg treasureMap_;
    CEquipSetDlg equipSet_;
    WindowPlacement placement_{PlaceableWindows(), &logWindow_};  // after the windows it places
    HMODULE richEdit_ = nullptr;
    HWND statusStatic1_ = nullptr;
    HWND statusStatic2_ = nullptr;
    HANDLE instanceMutex_ = nullptr;
    DWORD gameProcessId_ = 0;
    DWORD gameThreadId_ = 0;
    int fruitlessTicks_ = 0;
    NumLockKeeper numLock_;
};

}  // namespace vrl
