#include "app/main_frame_win.h"

#include <shellapi.h>

#include "app/about_box_win.h"
#include "app/app_state_win.h"
#include "app/command_ids.h"
#include "app/error_box_win.h"
#include "app/foreground_input_win.h"
#include "app/frame_texts.h"
#include "app/game_launch_win.h"
#include "app/game_link_win.h"
#include "app/tray_menu_win.h"
#include "app/version_text.h"
#include "music/vst_host_win.h"
#include "settings/app_settings_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr DWORD kFrameStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
constexpr DWORD kFrameExStyle = WS_EX_APPWINDOW | WS_EX_WINDOWEDGE;
constexpr DWORD kStatusStaticStyle = WS_CHILD | WS_VISIBLE | WS_BORDER;

}  // namespace

CMainFrame::~CMainFrame() {
    if (instanceMutex_) ::CloseHandle(instanceMutex_);
}

HWND CMainFrame::CreateFrame() {
    const ClassSpec spec{W(game_link::kFrameClass), 0, game_link::kFrameExtraBytes,
                         reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1)};
    return Create(spec, nullptr, L"", kFrameStyle, kFrameExStyle);
}

bool CMainFrame::PreTranslateMessage(MSG*) { return false; }  // the frame has no accelerators

bool CMainFrame::OnIdle() { return false; }

bool CMainFrame::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_CREATE:
        result = OnCreate(reinterpret_cast<const CREATESTRUCTW*>(lp));
        return true;
    case TrayIcon::kCallbackMessage:
        OnTrayNotify(wp, lp);
        return true;
    case WM_CLOSE:
        OnClose();
        return true;
    case WM_DESTROY:
        OnDestroy();
        return false;  // the frame base goes on and ends the loop
    case WM_TIMER:
        OnGameWatchTimer();
        return true;
    case WM_HOTKEY:
        OnHotKey(static_cast<int>(wp));
        return true;
    case game_link::kMsgLogViewHandle:
        result = OnLogViewHandleRequest(wp);
        return true;
    case game_link::kMsgClearLog:
        OnClearLogRequest(wp);
        return true;
    case game_link::kMsgOpenEquipSet:
        OnOpenEquipSetRequest();
        return true;
    case WM_COMMAND:
        OnCommand(LOWORD(wp), HIWORD(wp));
        return true;
    }
    return false;
}

LRESULT CMainFrame::OnCreate(const CREATESTRUCTW* create) {
    AppState& app = App();
    if (CMessageLoop* loop = g_module.GetMessageLoop()) {
        loop->AddMessageFilter(this);
        loop->AddIdleHandler(this);
    }
    app.instance = create->hInstance;
    ComputeFolders();

    CheckInstallation(&app.folders);  // ends the process when the installation is broken
    if (::GetFileAttributesW(app.settingsPath.c_str()) == INVALID_FILE_ATTRIBUTES) StartSettingsEditorAndExit();

    richEdit_ = ::LoadLibraryW(L"riched20.dll");
    tray_.Add(m_hWnd, app.instance);

    app.settings.section = AppSettings::kSection;
    app.settings.filePath = U16(app.settingsPath);
    LoadAppSettings(app.settings);
    if (app.settings.wstrMorva.empty()) StartSettingsEditorAndExit();

    app.settings.iLanguage = AppSettings::ResolveLanguage(app.settings.iLanguage, ::GetUserDefaultLCID());
    SetLanguageIndex(app.settings.iLanguage);
    RefuseSecondInstance();
    // The title makes the frame findable by the module and the companion windows: only once it is
    // sure to be the only one.
    SetText(W(kAppName));
    app.versionText = FormatVersionText(kThisRelease, LanguageIndex());

    app.frame = game_link::FindFrame();
    CreateStatusStatics();
    RegisterHotkeys();
    CreateCompanionWindows();

    const GameProcess game = LaunchGame(app.folders, Wstr(app.settings.wstrMorva), app.settings.enMusicExtender != 0);
    gameProcessId_ = game.processId;
    gameThreadId_ = game.threadId;

    ::SetTimer(m_hWnd, kGameWatchTimer, kGameWatchPeriodMs, nullptr);
    if (app.settings.enNumlockOff) numLock_.SwitchOffAtStart();
    return 0;
}

void CMainFrame::ComputeFolders() {
    AppState& app = App();
    app.folders = ProgramFolders();
    const std::wstring& program = app.folders.program;
    app.saveBackupFolder = program + L"\\save.bak";
    app.screenshotFolder = program + L"\\screenshot";
    ::SetCurrentDirectoryW(program.c_str());
    app.settingsPath = program + L"\\Vrl.ini";
}

void CMainFrame::StartSettingsEditorAndExit() {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    wchar_t application[] = L"VrlConfig.exe";
    if (::CreateProcessW(application, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::ExitProcess(0);
}

void CMainFrame::RefuseSecondInstance() {
    // A second companion would answer the module through the first one's frame; refuse it early,
    // before its frame has the title the module looks for, and before it starts a second game.
    instanceMutex_ = ::CreateMutexW(nullptr, FALSE, L"Local\\Vorrel.VrlBoot.Instance");
    if (instanceMutex_ && ::GetLastError() == ERROR_ALREADY_EXISTS) {
        tray_.Remove();
        WarningBox(frame_texts::kAlreadyRunning.Get());
        ::ExitProcess(0);
    }
}

void CMainFrame::CreateStatusStatics() {
    HINSTANCE instance = App().instance;
    statusStatic1_ = ::CreateWindowExW(0, L"STATIC", L"", kStatusStaticStyle, 0, 0, 160, 24, m_hWnd, nullptr,
                                       instance, nullptr);
    statusStatic2_ = ::CreateWindowExW(0, L"STATIC", L"", kStatusStaticStyle, 0, 24, 160, 24, m_hWnd, nullptr,
                                       instance, nullptr);
    game_link::WriteWindowSlot(m_hWnd, game_link::kSlotStatusStatic1, statusStatic1_);
    game_link::WriteWindowSlot(m_hWnd, game_link::kSlotStatusStatic2, statusStatic2_);
}

// The panels' own hotkeys (34100, 34102) are registered with their panels, in
// CreateCompanionWindows. Hotkeys end with the window; nothing unregisters them.
void CMainFrame::RegisterHotkeys() {
    if (App().settings.enScreenshot) RegisterCtrlAltHotkey(kCmdScreenshotFirst, VK_SNAPSHOT);
}

void CMainFrame::RegisterCtrlAltHotkey(int id, UINT key) const {
    ::RegisterHotKey(m_hWnd, id, MOD_CONTROL | MOD_ALT, key);
}

void CMainFrame::CreateCompanionWindows() {
    // The companion windows in their order: logs, pet, quick search, music, treasure map, equip
    // sets, item information.
    const AppSettings& settings = App().settings;
    extractedLog_ = nullptr;
    if (settings.enLogExtender && logWindow_.Create()) {
        extractedLog_ = &logWindow_.Child();
        extractedLog_->Show(SW_SHOW);
        if (settings.enLogExtender_FullLog) logWindow_.Show(SW_SHOW);
    }
    if (settings.enPetInfo && petPanel_.Create()) petPanel_.Show(SW_SHOW);
    if (settings.enQuickSearch && quickSearch_.Create()) {
        quickSearch_.Show(SW_SHOW);
        RegisterCtrlAltHotkey(kCmdShowQuickSearch, 'F');
    }
    if (settings.enMusicExtender && musicPanel_.Create()) {
        musicPanel_.Show(SW_SHOW);
        RegisterCtrlAltHotkey(kCmdShowMusicPanel, 'M');
    }
    if (settings.enTreasureMap) treasureMap_.Create();
    if (settings.enEquipSet) equipSet_.Create();
    if (settings.enItemInfo) itemInfo_.Create();  // it shows itself
}

void CMainFrame::DestroyCompanionWindows() {
    logWindow_.Destroy();
    if (extractedLog_) extractedLog_->Destroy();
    if (petPanel_.IsWindow()) {
        petPanel_.SaveOptions();
        petPanel_.Destroy();
    }
    itemInfo_.Destroy();
    quickSearch_.Destroy();
    if (musicPanel_.IsWindow()) {
        musicPanel_.SaveVolumeTable();
        musicPanel_.Destroy();
    }
    treasureMap_.Destroy();
    equipSet_.Destroy();
}

std::vector<PlaceableWindow> CMainFrame::PlaceableWindows() {
    using Restore = PlaceableWindow::Restore;
    using namespace placement;
    return {
        {kGameId, [] { return App().gameWindow; }, Restore::MoveOnly},
        {kFullLogId, [this] { return logWindow_.Handle(); }, Restore::FullPlacement},
        {kExtractedLogId, [this] { return logWindow_.Child().Handle(); }, Restore::FullPlacement},
        {kMusicPanelId, [this] { return musicPanel_.Handle(); }, Restore::FullPlacement},
        {kQuickSearchId, [this] { return quickSearch_.Handle(); }, Restore::MoveAndShow},
        {kPetPanelId, [this] { return petPanel_.Handle(); }, Restore::FullPlacement},
        {kItemPanelId, [this] { return itemInfo_.Handle(); }, Restore::FullPlacement},
    };
}

void CMainFrame::ShowLog(int page) {
    if (!logWindow_.IsWindow()) return;
    const bool fullLog = App().settings.enLogExtender_FullLog != 0;
    if (!logWindow_.IsDocked()) {
        if (page == 1) {
            logWindow_.Child().ShowInFront();
        } else if (fullLog) {
            logWindow_.ShowInFront();
        }
        return;
    }
    if (fullLog) logWindow_.ShowInFront();
    logWindow_.SelectPage(page);  // focuses that page's view and hides the other
}

namespace {

struct GameWindowSearch {
    DWORD processId;
    DWORD threadId;
    HWND found;
};

BOOL CALLBACK MatchGameWindow(HWND hwnd, LPARAM lp) {
    auto* search = reinterpret_cast<GameWindowSearch*>(lp);
    DWORD processId = 0;
    const DWORD threadId = ::GetWindowThreadProcessId(hwnd, &processId);
    if (::IsWindowVisible(hwnd) && processId == search->processId && threadId == search->threadId) {
        search->found = hwnd;
        return FALSE;
    }
    return TRUE;
}

}  // namespace

HWND CMainFrame::FindGameWindow() const {
    GameWindowSearch search{gameProcessId_, gameThreadId_, nullptr};
    ::EnumWindows(&MatchGameWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void CMainFrame::OnGameWatchTimer() {
    AppState& app = App();
    if (!app.gameWindow) {
        app.gameWindow = gameProcessId_ ? FindGameWindow() : nullptr;
        if (app.gameWindow) return;
        if (++fruitlessTicks_ > kMaxFruitlessTicks) {
            ::KillTimer(m_hWnd, kGameWatchTimer);
            FatalError(frame_texts::kGameNotFound.Get());
        }
        return;
    }
    if (::IsWindow(app.gameWindow)) return;

    // The main window has gone; a further window of the game still open means the process
    // lingers: end it. Handles and process ids are reused, so the window must be the game's.
    ::Sleep(100);
    HWND further = game_link::ReadWindowSlot(m_hWnd, game_link::kSlotFurtherWindow);
    DWORD furtherProcessId = 0;
    if (further && ::GetWindowThreadProcessId(further, &furtherProcessId) && furtherProcessId == gameProcessId_) {
        if (HANDLE process = ::OpenProcess(PROCESS_ALL_ACCESS, FALSE, gameProcessId_)) {
            ::TerminateProcess(process, 0);
            ::CloseHandle(process);
        }
    }
    ::KillTimer(m_hWnd, kGameWatchTimer);
    Send(WM_CLOSE);
}

void CMainFrame::OnClose() {
    HWND game = App().gameWindow;
    if (game && ::IsWindow(game)) {
        // The frame stays either way; the game watch closes it once the game window has gone.
        const int answer = ::MessageBoxW(m_hWnd, W(frame_texts::kGameStillRunning.Get()), W(kAppName),
                                         MB_YESNO | MB_ICONQUESTION);
        if (answer == IDYES && ::IsWindow(game)) {
            DWORD_PTR ignored = 0;
            ::SendMessageTimeoutW(game, WM_CLOSE, 0, 0, SMTO_ABORTIFHUNG, 5000, &ignored);
        }
        return;
    }
    if (App().settings.enNumlockOff) numLock_.RestoreAtExit();
    ::DestroyWindow(m_hWnd);
}

void CMainFrame::OnDestroy() {
    if (CMessageLoop* loop = g_module.GetMessageLoop()) {
        loop->RemoveMessageFilter(this);
        loop->RemoveIdleHandler(this);
    }
    DestroyCompanionWindows();
    tray_.Remove();
    if (richEdit_) {
        ::FreeLibrary(richEdit_);
        richEdit_ = nullptr;
    }
}

void CMainFrame::OnHotKey(int id) {
    switch (id) {
    case kCmdScreenshotFirst:  // the hotkey's range is the configured one, not the tray's auto-detect
        screenshots_.TakeRange(App().settings.iScreenshotRange);
        break;
    case kCmdShowMusicPanel:
    case kCmdShowQuickSearch:
        OnCommand(static_cast<WORD>(id), 0);
        break;
    }
}

void CMainFrame::OnCommand(WORD id, WORD /*notifyCode*/) {
    switch (id) {
    case kCmdExit:
    case kCmdExitFrameBase:
        Post(WM_CLOSE);
        return;
    case kCmdStartSettingsEditor:
        ::ShellExecuteW(nullptr, L"open", L"VrlConfig.exe", nullptr, nullptr, SW_SHOWNORMAL);
        return;
    case kCmdShowFullLog:
        ShowLog(0);
        return;
    case kCmdShowExtractedLog:
        ShowLog(1);
        return;
    case kCmdShowPetInfo:
        if (petPanel_.IsWindow()) petPanel_.ShowInFront();
        return;
    case kCmdAbout:
    case kCmdAboutFrameBase:
        CAboutBox::Open();
        return;
    case kCmdShowQuickSearch:
        if (quickSearch_.IsWindow()) quickSearch_.ShowInFront();
        return;
    case kCmdShowItemInfo:
        if (itemInfo_.IsWindow()) itemInfo_.ShowInFront();
        return;
    case kCmdShowMusicPanel:
        if (musicPanel_.IsWindow()) musicPanel_.ShowInFront();
        return;
    case kCmdShowVstEditor:
        if (musicPanel_.Player()) musicPanel_.Player()->GetBassPlayer()->SendVstHostCommand(kVstShowEditor, u"");
        return;
    }
    if (id >= kCmdScreenshotFirst && id <= kCmdScreenshotLast) {
        screenshots_.TakeRange(id - kCmdScreenshotFirst);
        return;
    }
    if (id >= kCmdPlacementFirst && id <= kCmdPlacementLast) {
        placement_.OnCommand(id);
        return;
    }
    // Any other id is not ours: ignored.
}

void CMainFrame::OnTrayNotify(WPARAM id, LPARAM mouseMessage) { HandleTrayNotify(m_hWnd, id, mouseMessage); }

LRESULT CMainFrame::OnLogViewHandleRequest(WPARAM page) {
    if (!logWindow_.IsWindow() || page > 1) return 0;
    return reinterpret_cast<LRESULT>(logWindow_.PageView(static_cast<int>(page)));
}

void CMainFrame::OnClearLogRequest(WPARAM which) {
    if (!logWindow_.IsWindow()) return;
    if (which == 0) logWindow_.ClearCurrentPage();
    if (which == 1) logWindow_.ClearExtractedView();
}

void CMainFrame::OnOpenEquipSetRequest() {
    if (!equipSet_.IsWindow() || !equipSet_.LoadSetNames()) return;
    equipSet_.SwitchMode(equip_set::Mode::kMenu);
    equipSet_.ShowInFront();
    // The game asked, so the game is in front and had the last input: a plain SetForegroundWindow
    // is refused by the foreground lock and the arrow keys would go on reaching the game.
    TakeForeground(equipSet_.Handle());
}

}  // namespace vrl
