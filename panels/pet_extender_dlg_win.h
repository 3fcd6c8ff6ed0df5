#pragma once
// CPetExtenderDlg: the "Pet Information" panel. The in-game module sends it every pet slot in one
// WM_COPYDATA; the panel lists the slots that pass its filter with a picture of each pet, their
// status, level, experience and HP, MP and ST with a bar under each number. Its options and
// colours live in PetInfo.kcsv.

#include <windows.h>
#include <commctrl.h>

#include <array>
#include <memory>
#include <string>
#include <type_traits>

#include "panels/pet_options.h"
#include "panels/pet_record.h"
#include "ui/dialog_win.h"

namespace vrl {

class PetPictureStrip;
class PetPictureCopy;
class PetBarBrushes;

class CPetExtenderDlg : public CDialogImplBase {
public:
    static constexpr int kFilterLabelId = 1000;
    static constexpr int kFilterId = 1001;
    static constexpr int kColourButtonId = 1002;
    static constexpr int kAutoAdjustId = 1003;
    static constexpr int kListId = 1004;

    CPetExtenderDlg();
    ~CPetExtenderDlg() override;

    // Modeless, without owner, not shown; the template is built on first use.
    HWND Create();
    // Writes the filter, the auto-adjust switch and the column widths into PetInfo.kcsv.
    void SaveOptions() const;

    // One WM_COPYDATA from the module.
    void ShowPets(const COPYDATASTRUCT* data);

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void Setup(bool first);
    void CreateListParts();
    void OnSize(int width, int height);
    void OnCommand(int id, int code);
    void OnColourButton();
    void OnAutoAdjustClicked();
    void SetLook(const PetListLook& look);
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw);
    void OnGetDispInfo(NMLVDISPINFOW& info) const;
    void DrawRowExtras(HDC dc) const;
    void DrawPicture(HDC dc, int row, int firstColumnRight) const;
    void DrawBars(HDC dc, int row, int dpi) const;
    void AutoAdjustColumns(int listWidth);
    int ListWidth() const;
    void AskForCellTexts() const;
    void WriteCells(const PetRows::Update& update);
    void InvalidateChangedRows(const PetRows::Update& update) const;
    void RebuildPictures(const PetPictureStrip& strip);

    struct ImageListDestroyer {
        void operator()(HIMAGELIST list) const { ::ImageList_Destroy(list); }
    };

    HWND list_ = nullptr;
    HWND frame_ = nullptr;
    // Ours alone: the list view shares it (LVS_SHAREIMAGELISTS) and leaves it alive when it goes,
    // so it is destroyed here, once, after the window.
    std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDestroyer> pictures_;
    std::unique_ptr<PetPictureCopy> shownPictures_;
    int pictureSide_ = 0;  // of the image list's pictures, in pixels of this window
    PetPanelOptions options_;
    PetListLook look_;
    PetRows rows_;
    // The texts the list shows, which it asks for as it paints (text callbacks).
    std::array<std::array<std::wstring, kPetColumnCount>, kPetRows> cells_;
    std::unique_ptr<PetBarBrushes> barBrushes_;
};

}  // namespace vrl
