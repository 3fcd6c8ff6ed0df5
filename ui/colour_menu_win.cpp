#include "ui/colour_menu_win.h"

#include "ui/lang_text.h"
#include "ui/wide_win.h"

#include <commdlg.h>

#include <vector>

namespace vrl {
namespace {

const LangText kCurrentSetting{u"Current setting", u"現在の設定"};
const LangText kCustom{u"Custom", u"カスタム"};

// Menu item ids. The named colours use their index (1 to 27) and "Current setting" 0, as
// "dismissed" does. "Custom" means -1, but a menu item id of -1 cannot be told apart from
// "nothing chosen" in every menu implementation, so it travels as an id of its own.
constexpr UINT kCurrentItem = 0;
constexpr UINT kCustomItem = 1000;
constexpr UINT kBlankItem = 1001;
constexpr int kColumnLength = 9;

// Swatch bitmaps of the open menu; freed with the menu.
class Swatches {
public:
    Swatches() : side_(::GetSystemMetrics(SM_CYMENUCHECK)) {}
    ~Swatches() {
        for (HBITMAP b : bitmaps_) ::DeleteObject(b);
    }
    Swatches(const Swatches&) = delete;
    Swatches& operator=(const Swatches&) = delete;

    // A square of the check-mark size in `colour`, with a one-pixel black border.
    HBITMAP Make(Colour colour) {
        HDC screen = ::GetDC(nullptr);
        HDC dc = ::CreateCompatibleDC(screen);
        HBITMAP bitmap = ::CreateCompatibleBitmap(screen, side_, side_);
        ::ReleaseDC(nullptr, screen);
        if (!dc || !bitmap) {
            if (dc) ::DeleteDC(dc);
            if (bitmap) ::DeleteObject(bitmap);
            return nullptr;
        }
        HGDIOBJ old = ::SelectObject(dc, bitmap);
        PaintSwatch(dc, RECT{0, 0, side_, side_}, colour);
        ::SelectObject(dc, old);
        ::DeleteDC(dc);
        bitmaps_.push_back(bitmap);
        return bitmap;
    }

private:
    int side_;
    std::vector<HBITMAP> bitmaps_;
};

void AppendSwatchItem(HMENU menu, UINT flags, UINT id, const char16_t* text, HBITMAP swatch) {
    ::AppendMenuW(menu, MF_STRING | flags, id, W(text));
    if (swatch) {
        const UINT position = static_cast<UINT>(::GetMenuItemCount(menu) - 1);
        ::SetMenuItemBitmaps(menu, position, MF_BYPOSITION, swatch, swatch);
    }
}

void AppendNamedColours(HMENU menu, Swatches& swatches, int first) {
    for (int index = first; index < first + kColumnLength; ++index) {
        const NamedColour& named = NamedColourAt(index);
        const char16_t* name = LanguageIndex() == 1 ? named.japanese : named.english;
        AppendSwatchItem(menu, 0, static_cast<UINT>(index), name, swatches.Make(named.value));
    }
}

HMENU BuildMenu(Colour current, Swatches& swatches) {
    HMENU menu = ::CreatePopupMenu();
    if (!menu) return nullptr;
    AppendSwatchItem(menu, 0, kCurrentItem, kCurrentSetting.Get(), swatches.Make(current));
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendNamedColours(menu, swatches, 1);

    ::AppendMenuW(menu, MF_STRING | MF_MENUBARBREAK, kCustomItem, W(kCustom.Get()));
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendNamedColours(menu, swatches, 1 + kColumnLength);

    ::AppendMenuW(menu, MF_STRING | MF_MENUBARBREAK | MF_GRAYED, kBlankItem, L"");
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendNamedColours(menu, swatches, 1 + 2 * kColumnLength);
    return menu;
}

Colour ChooseCustomColour(Colour current) {
    CHOOSECOLORW cc{};
    cc.lStructSize = sizeof cc;
    cc.hwndOwner = ::GetActiveWindow();
    cc.rgbResult = current == kNoColour ? RGB(255, 255, 255) : current;
    cc.lpCustColors = CustomColours().data();
    cc.Flags = CC_FULLOPEN | CC_RGBINIT;
    if (!::ChooseColorW(&cc)) return current;
    return cc.rgbResult & 0x00FFFFFFu;
}

}  // namespace

void PaintSwatch(HDC dc, const RECT& r, Colour colour) {
    // "No colour" shows as white with a diagonal, so it is not mistaken for white.
    const bool none = colour == kNoColour;
    HBRUSH fill = ::CreateSolidBrush(none ? RGB(255, 255, 255) : colour);
    ::FillRect(dc, &r, fill);
    ::DeleteObject(fill);
    if (none) {
        ::MoveToEx(dc, r.left, r.bottom - 1, nullptr);
        ::LineTo(dc, r.right - 1, r.top);
    }
    ::FrameRect(dc, &r, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
}

std::array<COLORREF, 16>& CustomColours() {
    static std::array<COLORREF, 16> colours = [] {
        std::array<COLORREF, 16> white{};
        white.fill(RGB(255, 255, 255));
        return white;
    }();
    return colours;
}

Colour ShowColourMenu(HWND owner, Colour current) {
    Swatches swatches;
    HMENU menu = BuildMenu(current, swatches);
    if (!menu) return current;
    POINT cursor{};
    ::GetCursorPos(&cursor);
    const UINT command = static_cast<UINT>(::TrackPopupMenu(
        menu, TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN | TPM_LEFTBUTTON, cursor.x, cursor.y,
        0, owner, nullptr));
    // The bitmaps must outlive the menu that shows them.
    ::DestroyMenu(menu);

    if (command == kCustomItem) return ChooseCustomColour(current);
    if (command >= 1 && command <= static_cast<UINT>(kNamedColourCount))
        return NamedColourAt(static_cast<int>(command)).value;
    return current;
}

}  // namespace vrl
