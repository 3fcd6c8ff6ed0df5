#include "music/music_player_dlg_win.h"

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>

#include <algorithm>

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "music/music_texts.h"
#include "settings/decimal_text.h"
#include "settings/table_schema.h"
#include "ui/layout_win.h"
#include "ui/panel_style.h"
#include "ui/panel_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

const std::u16string kRulesFile(tables::bgmex::kFile);
const std::u16string kVolumeFile(tables::volume::kFile);

constexpr DWORD kWindowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX;
constexpr DialogRect kWindowBox{0, 0, 276, 222};
constexpr DWORD kLabelRight = SS_RIGHT | SS_CENTERIMAGE | SS_NOPREFIX;
constexpr DWORD kLabelCentre = SS_CENTER | SS_CENTERIMAGE | SS_NOPREFIX;
constexpr DWORD kField = SS_SUNKEN | SS_LEFTNOWORDWRAP | SS_CENTERIMAGE | SS_NOPREFIX;
// Paths keep their file name in sight: the middle gives way.
constexpr DWORD kPathField = SS_SUNKEN | SS_PATHELLIPSIS | SS_CENTERIMAGE | SS_NOPREFIX;
constexpr DWORD kFieldCentre = SS_SUNKEN | SS_CENTER | SS_CENTERIMAGE | SS_NOPREFIX;
constexpr DWORD kListStyle = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SINGLESEL | WS_BORDER | WS_TABSTOP;
constexpr DWORD kSliderStyle = TBS_HORZ | TBS_NOTICKS | WS_TABSTOP;
constexpr DWORD kButtonStyle = BS_PUSHBUTTON | WS_TABSTOP;
constexpr int kMinWidthAt96 = 499;
constexpr int kMinHeightAt96 = 455;

constexpr LangText kNoText{u"", u""};
constexpr LangText kNotAvailable{u"N/A", u"N/A"};
constexpr LangText kZero{u"0", u"0"};
constexpr LangText kHundred{u"100", u"100"};
constexpr LangText kArrowText{u"↓", u"↓"};

struct Control {
    int id;  // -1: a label that is never addressed or moved
    ControlClass cls;
    const LangText* text;
    DWORD style;
    DialogRect box;
    UnitRect anchor;
};

const Control kControls[] = {
    {-1, ControlAtom::kStatic, &music_texts::kOriginalFile, kLabelRight, {6, 6, 72, 12}, {}},
    {CMusicPlayerDlg::kOriginalFile, ControlAtom::kStatic, &kNoText, kField, {84, 6, 144, 12}, {84, 6, -48, 18}},
    {CMusicPlayerDlg::kMapObjIdLabel, ControlAtom::kStatic, &music_texts::kMapObjId, kLabelCentre, {234, 6, 36, 12}, {-42, 6, -6, 18}},
    {-1, ControlAtom::kStatic, &music_texts::kDateTime, kLabelRight, {6, 24, 72, 12}, {}},
    {CMusicPlayerDlg::kDateTime, ControlAtom::kStatic, &kNoText, kField, {84, 24, 144, 12}, {84, 24, -48, 36}},
    {CMusicPlayerDlg::kMapObjIdValue, ControlAtom::kStatic, &kNotAvailable, kFieldCentre, {234, 24, 36, 12}, {-42, 24, -6, 36}},
    {-1, ControlAtom::kStatic, &music_texts::kCandidates, kLabelRight, {6, 42, 72, 12}, {}},
    {CMusicPlayerDlg::kCandidateList, u"SysListView32", &kNoText, kListStyle, {84, 42, 144, 66}, {84, 42, -48, -114}},
    {CMusicPlayerDlg::kRandLabel, ControlAtom::kStatic, &music_texts::kRand, kLabelCentre, {234, 42, 36, 12}, {-42, 42, -6, 54}},
    {CMusicPlayerDlg::kRandValue, ControlAtom::kStatic, &kZero, kFieldCentre, {234, 60, 36, 12}, {-42, 60, -6, 72}},
    {CMusicPlayerDlg::kArrow, ControlAtom::kStatic, &kArrowText, kLabelCentre, {85, 115, 144, 12}, {84, -108, -48, -96}},
    {CMusicPlayerDlg::kPlayingFileLabel, ControlAtom::kStatic, &music_texts::kPlayingFile, kLabelRight, {6, 132, 72, 12}, {6, -90, 78, -78}},
    {CMusicPlayerDlg::kPlayingFile, ControlAtom::kStatic, &kNoText, kPathField, {84, 132, 144, 12}, {84, -90, -48, -78}},
    {CMusicPlayerDlg::kSoundFontLabel, ControlAtom::kStatic, &music_texts::kSoundFont, kLabelRight, {6, 150, 72, 12}, {6, -72, 78, -60}},
    {CMusicPlayerDlg::kSoundFontField, ControlAtom::kStatic, &kNoText, kPathField, {84, 150, 144, 12}, {84, -72, -48, -60}},
    {CMusicPlayerDlg::kChangeButton, ControlAtom::kButton, &music_texts::kChange, kButtonStyle, {234, 150, 36, 12}, {-42, -72, -6, -60}},
    {CMusicPlayerDlg::kMasterVolumeLabel, ControlAtom::kStatic, &music_texts::kMasterVolume, kLabelRight, {6, 168, 72, 12}, {6, -54, 78, -42}},
    {CMusicPlayerDlg::kMasterVolume, u"msctls_trackbar32", &kNoText, kSliderStyle, {84, 168, 144, 12}, {84, -54, -48, -42}},
    {CMusicPlayerDlg::kMasterVolumeValue, ControlAtom::kStatic, &kHundred, kFieldCentre, {234, 168, 36, 12}, {-42, -54, -6, -42}},
    {CMusicPlayerDlg::kVolumeLabel, ControlAtom::kStatic, &music_texts::kVolume, kLabelRight, {6, 186, 72, 12}, {6, -36, 78, -24}},
    {CMusicPlayerDlg::kFileVolume, u"msctls_trackbar32", &kNoText, kSliderStyle, {84, 186, 144, 12}, {84, -36, -48, -24}},
    {CMusicPlayerDlg::kFileVolumeValue, ControlAtom::kStatic, &kHundred, kFieldCentre, {234, 186, 36, 12}, {-42, -36, -6, -24}},
    {CMusicPlayerDlg::kErrorLabel, ControlAtom::kStatic, &music_texts::kErrorInformation, kLabelRight, {6, 204, 72, 12}, {6, -18, 78, -6}},
    {CMusicPlayerDlg::kErrorField, ControlAtom::kStatic, &kNoText, kField, {84, 204, 144, 12}, {84, -18, -48, -6}},
};

void BuildTemplate(DialogTemplate& t) {
    // Titled by its own name alone, without the program's.
    t.Create(music_texts::kTitle.Get(), kWindowBox, kWindowStyle, 0, PanelFont());
    for (const Control& c : kControls) t.AddControl(c.cls, c.id, c.box, c.style, 0, c.text->Get());
}

std::u16string Formatted(const LangText& format, const std::u16string& value) {
    std::u16string text = format.Get();
    const std::size_t at = text.find(u"%s");
    if (at != std::u16string::npos) text.replace(at, 2, value);
    return text;
}

bool FileExistsOnDisk(const std::u16string& path) {
    const DWORD attributes = ::GetFileAttributesW(W(path));
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

void InsertColumn(HWND list, int index, const LangText& title) {
    std::wstring text = W(title.Get());
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = LVCFMT_LEFT;
    column.pszText = text.data();
    column.cx = static_cast<int>(::SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str()))) +
                ScaledForWindow(list, 15);
    ::SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

}  // namespace

CMusicPlayerDlg::CMusicPlayerDlg() : screenDpi_(WindowDpi(nullptr)) {}

CMusicPlayerDlg::~CMusicPlayerDlg() { Destroy(); }

HWND CMusicPlayerDlg::Create() {
    static DialogTemplate t;
    return CreateIndirect(BuiltOnce(t, BuildTemplate));
}

bool CMusicPlayerDlg::ProcessWindowMessage(HWND, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    result = 0;
    switch (msg) {
    case WM_INITDIALOG:
        OnInitDialog();
        result = TRUE;
        return true;
    case WM_COPYDATA: {
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lp);
        if (data) HandleMusicRequest(data->dwData, data->lpData, data->lpData ? data->cbData : 0);
        result = 1;
        return true;
    }
    case WM_SIZE:
        OnSize(LOWORD(lp), HIWORD(lp));
        return true;
    case WM_SIZING:
        OnSizing(wp, reinterpret_cast<RECT*>(lp));
        result = TRUE;
        return true;
    case WM_HSCROLL:
        OnVolumeScroll(LOWORD(wp));
        return true;
    case MM_MCINOTIFY:
        OnMciNotify(wp);
        return true;
    case WM_COMMAND:
        if (LOWORD(wp) == IDOK || LOWORD(wp) == IDCANCEL) {
            Show(SW_HIDE);
            return true;
        }
        if (LOWORD(wp) == kChangeButton && HIWORD(wp) == BN_CLICKED) {
            OnChangeSoundSource();
            return true;
        }
        return false;
    case WM_DESTROY:
        player_.reset();  // the library was given this window as its owner
        return false;
    }
    return false;
}

void CMusicPlayerDlg::OnInitDialog() {
    SetProgramIcons(m_hWnd);
    SetText(W(music_texts::kTitle.Get()));
    frame_ = App().frame;
    DeriveGameFolders(U16(App().folders.program), &folders_);

    LoadMusicRules();
    LoadVolumeTable();
    HWND list = Item(kCandidateList);
    ::SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    InsertColumn(list, 0, music_texts::kFileColumn);
    InsertColumn(list, 1, music_texts::kVolumeColumn);
    volumes_.AddColumnsTo(volumeFile_);

    for (int id : {kMasterVolume, kFileVolume}) {
        ::SendMessageW(Item(id), TBM_SETRANGE, FALSE, MAKELPARAM(VolumeTable::kMin, VolumeTable::kMax));
        ::SendMessageW(Item(id), TBM_SETPAGESIZE, 0, 10);
    }
    std::random_device seed;
    generator_.seed(seed());

    midiDeviceCode_ = MidiDeviceCodeOf(rulesTable_);
    player_ = std::make_unique<CAudioPlayer>(midiDeviceCode_, m_hWnd);
    ApplySoundFont(soundFontPath_);
    masterVolume_ = VolumeTable::MasterVolumeOf(volumeFile_);
    SetVolumes(masterVolume_, 0);

    // The columns share the list's width from the start, not only after the first resize.
    RECT client{};
    ::GetClientRect(m_hWnd, &client);
    OnSize(client.right, client.bottom);
    // The game waits for every request; the dialog manager has nothing to do with them.
    AnswerAheadOfDialogManager(WM_COPYDATA);
}

void CMusicPlayerDlg::LoadMusicRules() {
    KcsvFile table;
    if (!table.LoadFile(kRulesFile)) return;  // the rules read before stay in force
    rulesTable_ = std::move(table);
    soundFontPath_ = SoundFontOf(rulesTable_);
    rules_ = MusicRulesOf(rulesTable_);
}

void CMusicPlayerDlg::LoadVolumeTable() {
    volumeFile_ = KcsvFile();
    const bool loaded = volumeFile_.LoadFile(kVolumeFile);
    if (!loaded) volumeFile_ = KcsvFile();
    // A file that is there but could not be read is the player's to mend: it is never overwritten.
    WIN32_FILE_ATTRIBUTE_DATA file{};
    volumeFileUnreadable_ = !loaded && ::GetFileAttributesExW(W(kVolumeFile), GetFileExInfoStandard, &file) &&
                            (file.nFileSizeLow != 0 || file.nFileSizeHigh != 0);
    volumes_.Load(volumeFile_);
}

void CMusicPlayerDlg::SaveVolumeTable() {
    if (volumeFileUnreadable_) return;
    volumes_.WriteTo(volumeFile_, masterVolume_);
    volumeFile_.SaveFile(kVolumeFile);
}

ResolvedMusicPath CMusicPlayerDlg::Resolve(const std::u16string& entry) const {
    return ResolveMusicPath(entry, folders_, FileExistsOnDisk);
}

void CMusicPlayerDlg::SetField(int id, const std::u16string& text) const { ::SetDlgItemTextW(m_hWnd, id, W(text)); }

void CMusicPlayerDlg::ShowPlayingReport(const std::u16string& text) {
    fieldFile_.clear();
    SetField(kPlayingFile, text);
}

std::u16string CMusicPlayerDlg::FieldText(int id) const {
    wchar_t text[MAX_PATH + 1] = {};
    const UINT length = ::GetDlgItemTextW(m_hWnd, id, text, MAX_PATH + 1);
    return U16(std::wstring(text, length));
}

void CMusicPlayerDlg::EnableFileVolume(bool enable) const {
    ::EnableWindow(Item(kFileVolume), enable);
    ::EnableWindow(Item(kFileVolumeValue), enable);
}

void CMusicPlayerDlg::HandleMusicRequest(ULONG_PTR code, const void* data, std::size_t size) {
    if (!player_) return;  // a request while the player is still being made (its library's box is up)
    if (game_link::ReloadRequested(frame_, game_link::kReloadMusicRules)) {
        LoadMusicRules();
        frame_ = game_link::ClearReloadRequest(game_link::kReloadMusicRules);
    }
    if (code == kMusicCodeStop || code == kMusicCodeClose) {
        playingPath_.clear();
        if (code == kMusicCodeStop) {
            player_->Stop();
        } else {
            player_->Close();
        }
        return;
    }
    const MusicRequest request = ReadMusicRequest(data, size);
    playCount_ = request.playCount;
    const CandidateSearch search = FindCandidates(rules_, request);
    SetField(kOriginalFile, search.requestName);
    SetField(kMapObjIdValue, DecimalText(request.mapObjectId));
    SetField(kDateTime, MusicDateTimeText(request, LanguageIndex()));
    ::SendMessageW(Item(kCandidateList), LVM_DELETEALLITEMS, 0, 0);
    if (search.keepPlaying) return;
    AddCandidates(search.entries);
    ChooseAndPlay();
}

void CMusicPlayerDlg::AddCandidates(const std::vector<std::u16string>& entries) {
    HWND list = Item(kCandidateList);
    int row = static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (const std::u16string& entry : entries) {
        const std::u16string volume = DecimalText(volumes_.VolumeOf(Resolve(entry).path));
        std::wstring file = Wstr(entry);
        std::wstring volumeText = Wstr(volume);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = file.data();
        const int at = static_cast<int>(::SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
        if (at < 0) continue;
        item.iItem = at;
        item.iSubItem = 1;
        item.pszText = volumeText.data();
        ::SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&item));
        row = at + 1;
    }
}

void CMusicPlayerDlg::ChooseAndPlay() {
    HWND list = Item(kCandidateList);
    const auto count = static_cast<std::uint32_t>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    if (count == 0) return;
    const std::uint32_t index = DrawCandidateIndex(generator_, count);
    SetField(kRandValue, DecimalText(index));
    wchar_t entry[kMusicPathChars] = {};
    LVITEMW item{};
    item.iSubItem = 0;
    item.pszText = entry;
    item.cchTextMax = static_cast<int>(kMusicPathChars);
    const LRESULT length = ::SendMessageW(list, LVM_GETITEMTEXTW, index, reinterpret_cast<LPARAM>(&item));
    PlayMusicFile(U16(std::wstring(entry, static_cast<std::size_t>(length))));
}

void CMusicPlayerDlg::PlayMusicFile(const std::u16string& entry) {
    const ResolvedMusicPath resolved = Resolve(entry);
    if (!resolved.exists) {
        ShowPlayingReport(Formatted(music_texts::kFileNotFound, entry));
        EnableFileVolume(false);
        return;
    }
    if (resolved.path == playingPath_) return;  // goes on playing
    playingPath_ = resolved.path;
    fieldFile_ = playingPath_;
    SetField(kPlayingFile, playingPath_);
    const int volume = volumes_.VolumeOf(playingPath_);
    player_->Close();
    player_->Open(playingPath_, playCount_);
    SetVolumes(masterVolume_, volume);
    const bool playing = player_->Play();
    EnableFileVolume(playing);
    if (!playing) {
        ShowPlayingReport(Formatted(music_texts::kFileNotFound, playingPath_));
        return;
    }
    std::u16string status;
    player_->GetErrorText(status);
    SetField(kErrorField, status);
    playStartMs_ = ::timeGetTime();
}

void CMusicPlayerDlg::SetVolumes(int master, int volume) {
    ::SendMessageW(Item(kMasterVolume), TBM_SETPOS, TRUE, master);
    ::SendMessageW(Item(kFileVolume), TBM_SETPOS, TRUE, volume);
    SetField(kMasterVolumeValue, DecimalText(master));
    SetField(kFileVolumeValue, DecimalText(volume));
    ApplyVolumes(master, volume);
}

void CMusicPlayerDlg::ApplyVolumes(int master, int volume) {
    master = VolumeTable::Clamp(master);
    volume = VolumeTable::Clamp(volume);
    masterVolume_ = master;
    // The volume belongs to the file the field names, playing or stopped; a report names none.
    const std::u16string key = FieldText(kPlayingFile);
    if (!key.empty() && key == fieldFile_) volumes_.Set(key, volume);
    if (player_) player_->SetVolume(static_cast<float>(master * volume) / 10000.0f);
}

void CMusicPlayerDlg::OnVolumeScroll(WORD code) {
    const int master = VolumeTable::Clamp(static_cast<int>(::SendMessageW(Item(kMasterVolume), TBM_GETPOS, 0, 0)));
    const int volume = VolumeTable::Clamp(static_cast<int>(::SendMessageW(Item(kFileVolume), TBM_GETPOS, 0, 0)));
    SetField(kMasterVolumeValue, DecimalText(master));
    SetField(kFileVolumeValue, DecimalText(volume));
    if (code == TB_ENDTRACK) ApplyVolumes(master, volume);
}

void CMusicPlayerDlg::OnMciNotify(WPARAM code) {
    if (code != MCI_NOTIFY_SUCCESSFUL || !player_) return;
    if (::timeGetTime() - playStartMs_ < kMciRepeatAfterMs) return;
    player_->SetPosition(0);
    player_->Play();
}

void CMusicPlayerDlg::ApplySoundFont(const std::u16string& path) {
    if (midiDeviceCode_ != 1 || !player_) {
        SetField(kSoundFontField, music_texts::kSoundFontUnused.Get());
        return;
    }
    CBassPlayer* bass = player_->GetBassPlayer();
    bass->SetVstWindows(Item(kPlayingFile), game_link::ReadWindowSlot(frame_, game_link::kSlotStatusStatic2));
    if (bass->SetSoundFont(path)) {
        SetField(kSoundFontField, path);
    } else {
        SetField(kSoundFontField, music_texts::kSoundFontFailed.Get());
    }
}

void CMusicPlayerDlg::OnChangeSoundSource() {
    static const wchar_t kFilter[] =
        L"Sound Font (*.sf2)\0*.sf2\0SFZ (*.sfz)\0*.sfz\0VST instruments (*.dll)\0*.dll\0All Files (*.*)\0*.*\0";
    wchar_t path[MAX_PATH] = {};
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = ::GetActiveWindow();
    dialog.lpstrFilter = kFilter;
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
    const bool chosen = ::GetOpenFileNameW(&dialog) != FALSE;
    // The dialog may move the current folder; the plug-in search and the VST host rely on it.
    ::SetCurrentDirectoryW(App().folders.program.c_str());
    if (chosen) ApplySoundFont(U16(path));
}

void CMusicPlayerDlg::OnSize(int width, int height) {
    for (const Control& c : kControls) {
        if (c.id >= 0) MoveAnchored(m_hWnd, c.id, c.anchor, width, height);
    }
    HWND list = Item(kCandidateList);
    RECT listRect{};
    ::GetWindowRect(list, &listRect);
    const int usable = (listRect.right - listRect.left) - 2 * ::GetSystemMetrics(SM_CXEDGE) -
                       ::GetSystemMetrics(SM_CXVSCROLL);
    ::SendMessageW(list, LVM_SETCOLUMNWIDTH, 0, 3 * usable / 4);
    ::SendMessageW(list, LVM_SETCOLUMNWIDTH, 1, 1 * usable / 4);
    ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    ::InvalidateRect(reinterpret_cast<HWND>(::SendMessageW(list, LVM_GETHEADER, 0, 0)), nullptr, TRUE);
}

void CMusicPlayerDlg::OnSizing(WPARAM edge, RECT* rect) const {
    if (!rect) return;
    const int minWidth = ScaleToDpi(kMinWidthAt96, screenDpi_);
    const int minHeight = ScaleToDpi(kMinHeightAt96, screenDpi_);
    if (rect->right - rect->left < minWidth) {
        if (edge == WMSZ_LEFT || edge == WMSZ_TOPLEFT || edge == WMSZ_BOTTOMLEFT) {
            rect->left = rect->right - minWidth;
        } else if (edge == WMSZ_RIGHT || edge == WMSZ_TOPRIGHT || edge == WMSZ_BOTTOMRIGHT) {
            rect->right = rect->left + minWidth;
        }
    }
    if (rect->bottom - rect->top < minHeight) {
        if (edge == WMSZ_TOP || edge == WMSZ_TOPLEFT || edge == WMSZ_TOPRIGHT) {
            rect->top = rect->bottom - minHeight;
        } else if (edge == WMSZ_BOTTOM || edge == WMSZ_BOTTOMLEFT || edge == WMSZ_BOTTOMRIGHT) {
            rect->bottom = rect->top + minHeight;
        }
    }
}

}  // namespace vrl
