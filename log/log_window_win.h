#pragma once
// The two log windows. The full-log window (CLogExtenderDlg) receives every line of the game's
// message log from the in-game module, shows it in its view, and copies the lines its keyword
// rules pick into the extracted-log window (CLogExtenderDlg_Child) in the rule's colour, with speech
// and an alert sound. The extracted view can be docked into the full-log window as a second tab.

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "log/log_rules.h"
#include "log/log_view_win.h"
#include "settings/kcsv.h"
#include "ui/dialog_win.h"

namespace vrl {

class SoundEffectPlayer;

class CLogExtenderDlg_Child : public CDialogImplBase {
public:
    static constexpr int kViewId = 2001;
    static constexpr WORD kCmdClearLog = 2000;

    // Modeless, without owner, not shown; the template is built on first use.
    HWND Create();
    HWND View() const { return view_; }
    int ClientWidth() const { return clientWidth_; }
    int ClientHeight() const { return clientHeight_; }
    void ClearView() const;

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnSize(int width, int height);

    HWND view_ = nullptr;
    int clientWidth_ = 0;
    int clientHeight_ = 0;
};

class CLogExtenderDlg : public CDialogImplBase {
public:
    static constexpr int kTabId = 1003;
    static constexpr int kViewId = 1002;
    static constexpr WORD kCmdClearLog = 1000;
    static constexpr WORD kCmdDockUndock = 1001;

    CLogExtenderDlg();
    ~CLogExtenderDlg() override;

    // Modeless, without owner, not shown; its set-up creates the extracted-log window.
    HWND Create();
    // Destroys both windows (full log first).
    void DestroyWindows();
    CLogExtenderDlg_Child& Child() { return child_; }

    // Page 0 is the full-log view, page 1 the extracted-log view; null for any other page.
    HWND PageView(int page) const;
    int SelectedPage() const;
    bool IsDocked() const { return docked_; }

    // Window placement restores a saved page and docking state through these.
    void SelectPage(int page);
    void ToggleDock();
    void SetDocked(bool docked) {
        if (docked != docked_) ToggleDock();
    }
    void ClearCurrentPage();
    void ClearExtractedView() {
        FlushPendingLines();
        child_.ClearView();
    }
    // The tab control's selection, shown: its view focused and visible, the other page hidden.
    void ShowSelectedPage();

    // Lines are queued for their view and inserted together: see FlushPendingLines.
    void AppendLine(HWND view, const std::u16string& text, Colour colour);
    // Inserts the lines still waiting for their views. Anything that reads, clears, moves or
    // saves the views calls this first (the log windows do so for their own commands).
    void FlushPendingLines();
    // (Re)reads LogEx.kcsv from the current folder and applies it to the views.
    void LoadLogRules();
    void WriteNotice(const std::u16string& text);
    // One WM_COPYDATA from the module.
    void ProcessLogLine(const COPYDATASTRUCT* data);

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnSize(int width, int height);
    bool OnSysCommand(WPARAM command);
    void OnContextMenu(HWND clicked, LPARAM screenPoint);
    void OnDestroy();
    void Layout();
    int StripHeight() const;
    void ApplyLogFont();
    void PlayRuleSound(const LogRule& rule);
    bool FullLogEnabled() const;
    void HandleLine(const COPYDATASTRUCT* data);
    void TakeWaitingLines();
    static LRESULT CALLBACK FlushFirstProc(HWND window, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR log);
    static constexpr UINT_PTR kFlushFirstSubclassId = 1;

    CLogExtenderDlg_Child child_;
    HWND tab_ = nullptr;
    HWND fullView_ = nullptr;
    HWND pages_[2] = {};
    bool docked_ = false;
    int clientWidth_ = 0;
    int clientHeight_ = 0;

    KcsvFile rulesTable_;
    LogRuleSet rules_;
    bool speechEnabled_ = false;
    std::u16string speechProgram_;
    HWND frame_ = nullptr;
    std::unique_ptr<SoundEffectPlayer> sounds_;
    HFONT logFont_ = nullptr;
    LOGFONTW lastFont_{};  // the description logFont_ was made from
    LogRedrawBatch redraw_;

    // Lines not yet in their views, as runs of one colour per view (page 0, page 1).
    struct PendingRun {
        Colour colour;
        std::u16string text;
    };
    std::vector<PendingRun> pending_[2];
    int lineDepth_ = 0;     // nesting of ProcessLogLine
    int linesInRun_ = 0;
    bool takingLines_ = false;  // in TakeWaitingLines
    bool reloading_ = false;    // in the reload of the rules (its warning box may be up)
    bool flushing_ = false;
};

// The context menu of a log view ("テキストをコピー"), at `screenPoint`, owned by `owner`.
void ShowLogViewMenu(HWND owner, HWND view, LPARAM screenPoint);

}  // namespace vrl
