#pragma once
// The About box: the app name with the release, a link to the add-on's page, a few remarks for
// the player and a credit to the game's author. Modal; only one is open at a time.

#include <windows.h>

#include <string>

#include "ui/dialog_template.h"
#include "ui/dialog_win.h"

namespace vrl {

class CAboutBox : public CDialogImplBase {
public:
    enum ControlId : int {
        kIdName = 1000,     // "Vorrel [Dec 30, 2023]"
        kIdLink = 1001,     // the add-on's page
        kIdRemarks = 1002,  // the remarks, one per line
    };

    // Raises the About box when one is open (result 0); otherwise runs a new one, owned by the
    // active window, and returns 1 for OK, 2 for Cancel, -1 when it could not be shown.
    static INT_PTR Open();

    // The box's title in `language`; the open box is found by it.
    static const char16_t* Title(int language);
    // The template of the box in `language`. `withLinkControl` false puts a plain static
    // in place of the link control, for systems whose common controls have none.
    static DialogTemplate BuildTemplate(int language, bool withLinkControl);
    static const char16_t* PageAddress();

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    CAboutBox() = default;

    void OnInitDialog();
    void OnLinkNotify(const NMHDR* header);
};

}  // namespace vrl
