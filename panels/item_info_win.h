#pragma once
// CItemInfoDlg: the "Item Information" panel. The in-game module finds it through frame slot 28
// and sends it the item the player looks at; the panel shows the name, the chip and item ids and
// one row per property and enchantment, in words from the enchant table loaded at creation.

#include <windows.h>

#include "panels/enchant_table.h"
#include "ui/dialog_win.h"

namespace vrl {

struct ItemInfoRecord;

class CItemInfoDlg : public CDialogImplBase {
public:
    static constexpr int kChipLabelId = 1001;
    static constexpr int kItemLabelId = 1002;
    static constexpr int kNameId = 1003;
    static constexpr int kChipId = 1004;
    static constexpr int kItemId = 1005;
    static constexpr int kListId = 1006;

    // Modeless, without owner; the panel shows itself at the end of its set-up.
    HWND Create();

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnItemData(const COPYDATASTRUCT* data);
    void OnSize(int width, int height);
    void ShowItem(const ItemInfoRecord& record);

    HWND list_ = nullptr;
    EnchantTables tables_;
};

}  // namespace vrl
