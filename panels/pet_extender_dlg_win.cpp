#include "panels/pet_extender_dlg_win.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "panels/pet_info_colour_dlg_win.h"
#include "panels/pet_info_file_win.h"
#include "panels/pet_texts.h"
#include "ui/layout_win.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr DWORD kPanelStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
// Windows destroys a list view's image lists with the control unless it shares them; the panel
// keeps its picture list for its own life and destroys it itself.
constexpr DWORD kListStyle = LVS_REPORT | LVS_SHAREIMAGELISTS | WS_BORDER | WS_TABSTOP;
// Pixel sizes at 96 DPI; the panel scales them to its window's resolution.
constexpr int kPictureSide = 40;
constexpr int kHeaderPadding = 15;
constexpr int kScrollBarMargin = 4;
constexpr int kBarInset = 2;
constexpr int kBarHeight = 6;
constexpr int kSourceCell = 48;  // the module's strip
constexpr int kNameLimit = 128;
constexpr UnitRect kLabelRect{6, 6, 42, 18};
constexpr UnitRect kFilterRect{54, 6, 114, 18};
constexpr UnitRect kListRect{6, 24, -6, -6};

struct ColumnSpec {
    const wchar_t* header;
    int format;
};
constexpr ColumnSpec kColumns[kPetColumnCount] = {
    {L"", LVCFMT_LEFT},         {L"Name", LVCFMT_LEFT}, {L"Stat", LVCFMT_LEFT}, {L"Lv", LVCFMT_RIGHT},
    {L"Next Exp", LVCFMT_RIGHT}, {L"HP", LVCFMT_RIGHT},  {L"MP", LVCFMT_RIGHT},  {L"ST", LVCFMT_RIGHT},
};

void BuildTemplate(DialogTemplate& t) {
    using namespace pet_texts;
    t.Create(PanelTitle(kPanelName), {0, 0, 520, 400}, kPanelStyle, 0, PanelFont());
    t.AddControl(ControlAtom::kStatic, CPetExtenderDlg::kFilterLabelId, {6, 6, 42, 12}, SS_CENTERIMAGE, 0,
                 kFilterLabel.Get());
    t.AddControl(ControlAtom::kComboBox, CPetExtenderDlg::kFilterId, {54, 6, 60, 12},
                 CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 0, u"");
    t.AddControl(ControlAtom::kButton, CPetExtenderDlg::kColourButtonId, {126, 6, 60, 12}, BS_PUSHBUTTON | WS_TABSTOP,
                 0, kColourButton.Get());
    t.AddControl(ControlAtom::kButton, CPetExtenderDlg::kAutoAdjustId, {198, 6, 96, 12}, BS_CHECKBOX | WS_TABSTOP, 0,
                 kAutoAdjust.Get());
    t.AddControl(u"SysListView32", CPetExtenderDlg::kListId, {6, 24, 468, 180}, kListStyle, 0, u"");
}

// The name's ANSI bytes as wide text, at most kNameLimit characters.
std::wstring NameText(const PetRecord& pet) {
    const std::string bytes = pet.NameBytes();
    if (bytes.empty()) return {};
    wchar_t wide[PetRecord::kNameBytes];
    const int units = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), wide,
                                            static_cast<int>(PetRecord::kNameBytes));
    return std::wstring(wide, static_cast<std::size_t>(std::max(0, std::min(units, kNameLimit))));
}

class Brush {
public:
    explicit Brush(Colour colour) : brush_(::CreateSolidBrush(colour & 0x00FFFFFFu)) {}
    ~Brush() {
        if (brush_) ::DeleteObject(brush_);
    }
    Brush(const Brush&) = delete;
    Brush& operator=(const Brush&) = delete;
    void Fill(HDC dc, const RECT& r) const {
        if (brush_ && r.right > r.left && r.bottom > r.top) ::FillRect(dc, &r, brush_);
    }

private:
    HBRUSH brush_;
};

}  // namespace

// The module's picture strip, as a bitmap we own; null when it is missing or not a bitmap.
class PetPictureStrip {
public:
    explicit PetPictureStrip(const std::wstring& path)
        : bitmap_(static_cast<HBITMAP>(::LoadImageW(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0,
                                                    LR_LOADFROMFILE | LR_CREATEDIBSECTION))) {
        if (bitmap_) ::GetObjectW(bitmap_, sizeof info_, &info_);
    }
    ~PetPictureStrip() {
        if (bitmap_) ::DeleteObject(bitmap_);
    }
    PetPictureStrip(const PetPictureStrip&) = delete;
    PetPictureStrip& operator=(const PetPictureStrip&) = delete;

    HBITMAP Get() const { return bitmap_; }
    // Whether the strip holds the whole cell of `slot`.
    bool HasCell(int slot) const {
        return bitmap_ && std::abs(info_.bmHeight) >= kSourceCell &&
               static_cast<long long>(slot + 1) * kSourceCell <= info_.bmWidth;
    }

private:
    HBITMAP bitmap_;
    BITMAP info_{};
};

// The pictures as the list shows them, a cell per row, kept selected in a memory device context of
// their own: the list's own drawing of an image-list picture makes a device context for every row
// it paints, and under Wine each one costs three requests to the window server.
class PetPictureCopy {
public:
    PetPictureCopy()
        : dc_(::CreateCompatibleDC(nullptr)), original_(dc_ ? ::GetCurrentObject(dc_, OBJ_BITMAP) : nullptr) {}
    ~PetPictureCopy() {
        Hold(nullptr);
        if (dc_) ::DeleteDC(dc_);
    }
    PetPictureCopy(const PetPictureCopy&) = delete;
    PetPictureCopy& operator=(const PetPictureCopy&) = delete;

    // Takes `bitmap` (ours from now on) in place of the pictures held so far; null holds none. A
    // bitmap is deleted only once no device context has it selected.
    void Hold(HBITMAP bitmap) {
        if (!dc_) {
            if (bitmap) ::DeleteObject(bitmap);
            return;
        }
        ::SelectObject(dc_, bitmap ? static_cast<HGDIOBJ>(bitmap) : original_);
        if (held_) ::DeleteObject(held_);
        held_ = bitmap;
    }
    // The device context holding the pictures, or null before the first.
    HDC Dc() const { return held_ ? dc_ : nullptr; }

private:
    HDC dc_;
    HGDIOBJ original_;  // the bitmap the context was made with
    HBITMAP held_ = nullptr;
};

// The bars' brushes (frame, background, fill), made when the look changes rather than for every
// paint of the list.
class PetBarBrushes {
public:
    enum Part { kFrame, kBackground, kFill };
    explicit PetBarBrushes(const PetListLook& look) {
        for (int bar = 0; bar < kPetBarCount; ++bar) {
            const PetBarLook& colours = look.bars[static_cast<std::size_t>(bar)];
            auto& brushes = brushes_[static_cast<std::size_t>(bar)];
            brushes[kFrame].emplace(colours.frame);
            brushes[kBackground].emplace(colours.background);
            brushes[kFill].emplace(colours.bar);
        }
    }
    void Fill(int bar, Part part, HDC dc, const RECT& r) const {
        brushes_[static_cast<std::size_t>(bar)][part]->Fill(dc, r);
    }

private:
    std::array<std::array<std::optional<Brush>, 3>, kPetBarCount> brushes_;
};

CPetExtenderDlg::CPetExtenderDlg() = default;

CPetExtenderDlg::~CPetExtenderDlg() { Destroy(); }

HWND CPetExtenderDlg::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildTemplate));
}

bool CPetExtenderDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_COPYDATA:
        ShowPets(reinterpret_cast<const COPYDATASTRUCT*>(lp));
        result = TRUE;
        return true;
    case WM_SIZE:
        OnSize(LOWORD(lp), HIWORD(lp));
        return true;
    case WM_COMMAND:
        if (HideOnOkOrCancel(wp)) {
            SaveOptions();
            return true;
        }
        OnCommand(LOWORD(wp), HIWORD(wp));
        return true;
    case WM_NOTIFY: {
        const auto* header = reinterpret_cast<const NMHDR*>(lp);
        if (header->idFrom != kListId) return false;
        if (header->code == LVN_GETDISPINFOW) {
            OnGetDispInfo(*reinterpret_cast<NMLVDISPINFOW*>(lp));
            return true;
        }
        if (header->code != NM_CUSTOMDRAW) return false;
        result = OnCustomDraw(*reinterpret_cast<NMLVCUSTOMDRAW*>(lp));
        return true;
    }
    }
    return false;
}

void CPetExtenderDlg::OnInitDialog() {
    SetProgramIcons(m_hWnd);
    frame_ = App().frame;
    list_ = Item(kListId);
    Setup(true);
    // The module waits for its answer, and the list sends its text callbacks and custom draw by
    // the hundred per paint; the dialog manager has nothing to do with either.
    AnswerAheadOfDialogManager(WM_COPYDATA);
    AnswerAheadOfDialogManager(WM_NOTIFY);
}

void CPetExtenderDlg::Setup(bool first) {
    PetInfoFile file;
    file.Load();
    options_ = PetPanelOptions::Read(file.Table());
    if (first) {
        CreateListParts();
        AskForCellTexts();
    }
    // A filter the list does not have selects nothing, and shows no pets until one is chosen.
    ::SendDlgItemMessageW(m_hWnd, kFilterId, CB_SETCURSEL, static_cast<WPARAM>(options_.filterIndex), 0);
    ::CheckDlgButton(m_hWnd, kAutoAdjustId, options_.autoAdjust ? BST_CHECKED : BST_UNCHECKED);
    const int dpi = WindowDpi(m_hWnd);
    for (int column = 0; column < kPetColumnCount; ++column) {
        // Negative widths mean "size to the contents" to the list; a width is a width. The file
        // holds widths at 96 DPI, like every size the panel is given in pixels.
        const int width = std::max(0, options_.widths[static_cast<std::size_t>(column)]);
        ListView_SetColumnWidth(list_, column, ScaleToDpi(width, dpi));
    }
    SetLook(PetListLook::Read(file.Table()));
    if (options_.autoAdjust) AutoAdjustColumns(ListWidth());
    ::InvalidateRect(list_, nullptr, TRUE);
}

void CPetExtenderDlg::CreateListParts() {
    HWND filter = Item(kFilterId);
    for (const LangText& name : pet_texts::kFilters)
        ::SendMessageW(filter, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(name.Get())));
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    for (int column = 0; column < kPetColumnCount; ++column) {
        LVCOLUMNW spec{};
        spec.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        spec.fmt = kColumns[column].format;
        spec.pszText = const_cast<wchar_t*>(kColumns[column].header);
        spec.cx = ListView_GetStringWidth(list_, kColumns[column].header) + ScaledForWindow(m_hWnd, kHeaderPadding);
        spec.iSubItem = column;
        ListView_InsertColumn(list_, column, &spec);
    }
    pictureSide_ = ScaledForWindow(m_hWnd, kPictureSide);
    pictures_.reset(::ImageList_Create(pictureSide_, pictureSide_, ILC_COLOR32, kPetRows, 0));
    shownPictures_ = std::make_unique<PetPictureCopy>();
    ListView_SetImageList(list_, pictures_.get(), LVSIL_SMALL);
    // Row n shows picture n, drawn by the panel after the list (DrawRowExtras). In report view a
    // small-image list keeps its room in the first column for every row, so a row without an
    // image of its own still has its picture's place.
    for (int row = 0; row < kPetRows; ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = row;
        item.pszText = const_cast<wchar_t*>(L"");
        item.iImage = I_IMAGENONE;
        ListView_InsertItem(list_, &item);
    }
}

// Every text cell is asked for as the list paints it: writing a cell of a visible list would
// invalidate its row there and then, and under Wine each invalidation is a round trip to the
// window server; a message instead invalidates the rows it changed, once.
void CPetExtenderDlg::AskForCellTexts() const {
    for (int row = 0; row < kPetRows; ++row) {
        for (int column = kPetColumnName; column < kPetColumnCount; ++column) {
            LVITEMW item{};
            item.iSubItem = column;
            item.pszText = LPSTR_TEXTCALLBACKW;
            ::SendMessageW(list_, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        }
    }
}

void CPetExtenderDlg::SetLook(const PetListLook& look) {
    look_ = look;
    barBrushes_ = std::make_unique<PetBarBrushes>(look_);
}

void CPetExtenderDlg::SaveOptions() const {
    if (!list_) return;
    PetInfoFile file;
    file.Load();
    PetPanelOptions options = options_;
    const int dpi = WindowDpi(m_hWnd);
    for (int column = 0; column < kPetColumnCount; ++column)
        options.widths[static_cast<std::size_t>(column)] = ScaleFromDpi(ListView_GetColumnWidth(list_, column), dpi);
    options.Write(file.Table());
    file.Save();
}

void CPetExtenderDlg::OnSize(int width, int height) {
    if (!list_) return;  // the first size comes before the controls exist
    MoveAnchored(m_hWnd, kFilterLabelId, kLabelRect, width, height);
    // The drop-down keeps the height that holds its list.
    const RECT filter = AnchoredRect(m_hWnd, kFilterRect, width, height);
    RECT now{};
    ::GetWindowRect(Item(kFilterId), &now);
    ::MoveWindow(Item(kFilterId), filter.left, filter.top, filter.right - filter.left, now.bottom - now.top, TRUE);
    const RECT list = AnchoredRect(m_hWnd, kListRect, width, height);
    ::MoveWindow(list_, list.left, list.top, list.right - list.left, list.bottom - list.top, TRUE);
    if (options_.autoAdjust) AutoAdjustColumns(list.right - list.left);
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    ::InvalidateRect(ListView_GetHeader(list_), nullptr, TRUE);
}

int CPetExtenderDlg::ListWidth() const {
    RECT r{};
    ::GetWindowRect(list_, &r);
    return r.right - r.left;
}

void CPetExtenderDlg::AutoAdjustColumns(int listWidth) {
    int fixed = 0;
    for (int column = 0; column < kFirstBarColumn; ++column) fixed += ListView_GetColumnWidth(list_, column);
    const int freeWidth =
        listWidth - (::GetSystemMetrics(SM_CXVSCROLL) + ScaledForWindow(m_hWnd, kScrollBarMargin)) - fixed;
    const auto widths = SplitBarColumns(freeWidth, look_.Ratios());
    for (int bar = 0; bar < kPetBarCount; ++bar)
        ListView_SetColumnWidth(list_, kFirstBarColumn + bar, widths[static_cast<std::size_t>(bar)]);
}

void CPetExtenderDlg::OnCommand(int id, int code) {
    switch (id) {
    case kColourButtonId:
        if (code == BN_CLICKED) OnColourButton();
        return;
    case kAutoAdjustId:
        if (code == BN_CLICKED) OnAutoAdjustClicked();
        return;
    case kFilterId:
        // Shown with the next message from the module.
        if (code == CBN_SELENDOK)
            options_.filterIndex = static_cast<int>(::SendDlgItemMessageW(m_hWnd, kFilterId, CB_GETCURSEL, 0, 0));
        return;
    }
}

void CPetExtenderDlg::OnColourButton() {
    CPetInfoColorDlg dialog;
    if (dialog.DoModal() != IDOK) return;
    SetLook(dialog.Look());
    if (options_.autoAdjust) AutoAdjustColumns(ListWidth());
    ::InvalidateRect(list_, nullptr, TRUE);
}

void CPetExtenderDlg::OnAutoAdjustClicked() {
    options_.autoAdjust = !options_.autoAdjust;
    ::CheckDlgButton(m_hWnd, kAutoAdjustId, options_.autoAdjust ? BST_CHECKED : BST_UNCHECKED);
    if (options_.autoAdjust) AutoAdjustColumns(ListWidth());
}

// --- The pets --------------------------------------------------------------------------------

void CPetExtenderDlg::ShowPets(const COPYDATASTRUCT* data) {
    if (!list_) return;
    if (game_link::ReloadRequested(frame_, game_link::kReloadPetOptions)) {
        Setup(false);
        frame_ = game_link::ClearReloadRequest(game_link::kReloadPetOptions);
    }
    const std::size_t count = data ? PetRecordCount(data->dwData, data->lpData, data->cbData) : 0;
    const PetRows::Update update =
        rows_.Take(static_cast<const unsigned char*>(count ? data->lpData : nullptr), count, options_.filterIndex);
    // The module may write its picture strip again as soon as it has its answer, so the pictures
    // are read first (rare: only when the rows come from other slots).
    std::optional<PetPictureStrip> strip;
    if (update.fullRefresh || update.picturesMoved) strip.emplace(App().folders.program + L"\\peticons.bmp");
    // The records are our own copy now: the module goes on while the list is updated.
    if (::InSendMessage()) ::ReplyMessage(TRUE);

    WriteCells(update);
    if (strip) RebuildPictures(*strip);
    if (update.fullRefresh) {
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
    } else {
        InvalidateChangedRows(update);
    }
}

void CPetExtenderDlg::WriteCells(const PetRows::Update& update) {
    for (int row = 0; row < kPetRows; ++row) {
        auto& cells = cells_[static_cast<std::size_t>(row)];
        if (row >= update.rowCount) {
            if (update.fullRefresh) std::fill(cells.begin(), cells.end(), std::wstring());
            continue;
        }
        const PetRecord& pet = rows_.Row(row);
        const unsigned columns = update.changedColumns[static_cast<std::size_t>(row)];
        for (int column = kPetColumnName; column < kPetColumnCount; ++column) {
            if ((columns & (1u << column)) == 0) continue;
            cells[static_cast<std::size_t>(column)] =
                column == kPetColumnName ? NameText(pet) : Wstr(PetCellText(pet, column, LanguageIndex()));
        }
    }
}

// One region for all changed rows: one invalidation, one round trip.
void CPetExtenderDlg::InvalidateChangedRows(const PetRows::Update& update) const {
    HRGN changed = ::CreateRectRgn(0, 0, 0, 0);
    if (!changed) return;
    bool any = false;
    for (int row = 0; row < update.rowCount; ++row) {
        RECT r{};
        if (update.changedColumns[static_cast<std::size_t>(row)] == 0 || !ListView_GetItemRect(list_, row, &r, LVIR_BOUNDS))
            continue;
        if (HRGN rowRegion = ::CreateRectRgnIndirect(&r)) {
            ::CombineRgn(changed, changed, rowRegion, RGN_OR);
            ::DeleteObject(rowRegion);
            any = true;
        }
    }
    if (any) ::InvalidateRgn(list_, changed, TRUE);
    ::DeleteObject(changed);
}

void CPetExtenderDlg::OnGetDispInfo(NMLVDISPINFOW& info) const {
    LVITEMW& item = info.item;
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0) return;
    item.pszText[0] = L'\0';
    if (item.iItem < 0 || item.iItem >= kPetRows || item.iSubItem < 0 || item.iSubItem >= kPetColumnCount) return;
    const std::wstring& text = cells_[static_cast<std::size_t>(item.iItem)][static_cast<std::size_t>(item.iSubItem)];
    const std::size_t units = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax - 1));
    text.copy(item.pszText, units);
    item.pszText[units] = L'\0';
}

void CPetExtenderDlg::RebuildPictures(const PetPictureStrip& strip) {
    if (!pictures_) return;
    ::ImageList_RemoveAll(pictures_.get());

    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = pictureSide_ * kPetRows;
    info.bmiHeader.biHeight = pictureSide_;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HDC screen = ::GetDC(nullptr);
    HDC target = ::CreateCompatibleDC(screen);
    HDC source = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HBITMAP cells = ::CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (target && source && cells) {
        HGDIOBJ oldTarget = ::SelectObject(target, cells);
        // Cells without a picture show the list's background.
        const RECT all{0, 0, pictureSide_ * kPetRows, pictureSide_};
        Brush(look_.background).Fill(target, all);
        if (strip.Get()) {
            HGDIOBJ oldSource = ::SelectObject(source, strip.Get());
            ::SetStretchBltMode(target, HALFTONE);
            ::SetBrushOrgEx(target, 0, 0, nullptr);
            for (int row = 0; row < rows_.RowCount(); ++row) {
                if (!strip.HasCell(rows_.SlotOf(row))) continue;
                ::StretchBlt(target, row * pictureSide_, 0, pictureSide_, pictureSide_, source,
                             rows_.SlotOf(row) * kSourceCell, 0, kSourceCell, kSourceCell, SRCCOPY);
            }
            ::SelectObject(source, oldSource);
        }
        ::SelectObject(target, oldTarget);
        ::ImageList_Add(pictures_.get(), cells, nullptr);
        shownPictures_->Hold(cells);
        cells = nullptr;
    }
    if (cells) ::DeleteObject(cells);
    if (source) ::DeleteDC(source);
    if (target) ::DeleteDC(target);
    ::InvalidateRect(list_, nullptr, FALSE);
}

// --- Drawing ---------------------------------------------------------------------------------

LRESULT CPetExtenderDlg::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT:
        draw.clrText = look_.text;
        draw.clrTextBk = look_.background;
        return CDRF_DODEFAULT;
    case CDDS_POSTPAINT:
        DrawRowExtras(draw.nmcd.hdc);
        return CDRF_DODEFAULT;
    }
    return CDRF_DODEFAULT;
}

// Each row's picture and bars, only in the rows the paint is for: a message invalidates just the
// rows it changed.
void CPetExtenderDlg::DrawRowExtras(HDC dc) const {
    RECT clip{};
    ::GetClipBox(dc, &clip);
    const int dpi = WindowDpi(m_hWnd);
    const int firstColumnWidth = ListView_GetColumnWidth(list_, 0);
    for (int row = 0; row < kPetRows; ++row) {
        RECT rowRect{}, inside{};
        if (!ListView_GetItemRect(list_, row, &rowRect, LVIR_BOUNDS) || !::IntersectRect(&inside, &rowRect, &clip)) continue;
        DrawPicture(dc, row, rowRect.left + firstColumnWidth);
        if (row < rows_.RowCount()) DrawBars(dc, row, dpi);
    }
}

// Where the list would draw picture `row` of its image list, cut at the first column's edge.
void CPetExtenderDlg::DrawPicture(HDC dc, int row, int firstColumnRight) const {
    HDC pictures = shownPictures_ ? shownPictures_->Dc() : nullptr;
    RECT icon{};
    if (!pictures || !ListView_GetItemRect(list_, row, &icon, LVIR_ICON)) return;
    const int width = std::min({pictureSide_, static_cast<int>(icon.right - icon.left), static_cast<int>(firstColumnRight - icon.left)});
    const int height = std::min(pictureSide_, static_cast<int>(icon.bottom - icon.top));
    if (width <= 0 || height <= 0) return;
    const int top = icon.top + (icon.bottom - icon.top - height) / 2;
    ::BitBlt(dc, icon.left, top, width, height, pictures, row * pictureSide_, 0, SRCCOPY);
}

void CPetExtenderDlg::DrawBars(HDC dc, int row, int dpi) const {
    if (!barBrushes_) return;
    const int inset = ScaleToDpi(kBarInset, dpi), height = ScaleToDpi(kBarHeight, dpi), edge = ScaleToDpi(1, dpi);
    for (int bar = 0; bar < kPetBarCount; ++bar) {
        if (!look_.bars[static_cast<std::size_t>(bar)].drawn) continue;
        RECT r{};
        if (!ListView_GetSubItemRect(list_, row, kFirstBarColumn + bar, LVIR_BOUNDS, &r)) continue;
        ::InflateRect(&r, -inset, -inset);
        r.top = r.bottom - height;
        barBrushes_->Fill(bar, PetBarBrushes::kFrame, dc, r);
        ::InflateRect(&r, -edge, -edge);
        barBrushes_->Fill(bar, PetBarBrushes::kBackground, dc, r);
        const BarValue value = PetBarValue(rows_.Row(row), bar);
        r.right = r.left + BarFillWidth(r.right - r.left, value.current, value.maximum);
        barBrushes_->Fill(bar, PetBarBrushes::kFill, dc, r);
    }
}

}  // namespace vrl
