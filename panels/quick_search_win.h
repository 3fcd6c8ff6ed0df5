#pragma once
// CQuickSearchDlg: the quick search bar, a thin caption-less popup whose word box the in-game
// module reads through frame slot 16. The drop-down offers the saved words of QuickSearch.kcsv;
// the strip at the left is blue while the bar is the active window.

#include <windows.h>

#include "ui/dialog_win.h"

namespace vrl {

class CQuickSearchDlg : public CDialogImplBase {
public:
    static constexpr int kStripId = 1000;
    static constexpr int kWordBoxId = 1001;

    CQuickSearchDlg() = default;
    ~CQuickSearchDlg() override;

    // Modeless, without owner, not shown.
    HWND Create();
    HWND WordBox() const { return wordBox_; }

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnActivate();
    bool OnDrawItem(const DRAWITEMSTRUCT* item) const;
    // (Re)reads the saved words; the text in the word box stays as it is.
    void FillWordList();

    HWND strip_ = nullptr;
    HWND wordBox_ = nullptr;
    HWND frame_ = nullptr;
    HBRUSH active_ = nullptr;
    HBRUSH inactive_ = nullptr;
};

}  // namespace vrl
