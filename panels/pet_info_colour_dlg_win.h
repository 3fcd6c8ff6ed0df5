#pragma once
// CPetInfoColorDlg: the modal dialog "Config Color of Pet Information" that edits the look of the
// pet list (text colours; per bar whether it is drawn, its width ratio and its bar, background and
// frame colours) and writes it into PetInfo.kcsv on OK. The same object, without a window, is
// the loader the pet panel takes its look from.

#include <windows.h>

#include "panels/pet_info_file_win.h"
#include "panels/pet_options.h"
#include "ui/dialog_win.h"

namespace vrl {

class CPetInfoColorDlg : public CDialogImplBase {
public:
    // Control ids: the text and background colour (edit, swatch, button), then one row of eleven
    // controls per bar starting at kFirstRowId + 11 * bar.
    static constexpr int kTextEditId = 1000;
    static constexpr int kBkEditId = 1003;
    static constexpr int kFirstRowId = 1006;
    static constexpr int kRowControls = 11;

    // Reads PetInfo.kcsv; every value that is missing or unreadable takes its default.
    void Load();
    // Loads, then runs the dialog owned by the active window: IDOK (the file written), IDCANCEL,
    // or -1 when it cannot be shown.
    INT_PTR DoModal();
    const PetListLook& Look() const { return look_; }

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnCommand(int id, int code);
    void OnColourEdited(int editId);
    void OnSelect(int buttonId);
    void OnOk();
    void DrawSwatch(const DRAWITEMSTRUCT& item);
    // The colour that an edit, swatch or button id belongs to; null for other ids.
    Colour* ColourOf(int id);
    void ShowColour(int editId, Colour colour);

    PetInfoFile file_;
    PetListLook look_;
    bool editsLive_ = false;
};

}  // namespace vrl
