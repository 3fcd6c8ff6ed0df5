// What the full-log window does with each line the module sends, and the loading of its rules.

#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <new>

#include "app/app_state_win.h"
#include "app/game_link_win.h"
#include "log/log_texts.h"
#include "log/log_window_win.h"
#include "log/sound_effect_player_win.h"
#include "log/speech_win.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr Colour kFullLogColour = 0xFFFFFF;

// Every code page gives at most one UTF-16 unit per byte and takes at most three bytes per unit,
// so this many bytes always hold more than the longest kept text; a huge payload is never
// converted whole.
constexpr std::size_t kLongestConvertedBytes = kLogTextLimit * 4;

// The line's text: ANSI code page bytes up to the first NUL or cbData, as UTF-16, at most
// kLogTextLimit units. Bytes that are not valid in the code page become replacement characters.
std::u16string TextOfCopyData(const COPYDATASTRUCT* data) {
    if (!data || !data->lpData || data->cbData == 0) return {};
    const char* bytes = static_cast<const char*>(data->lpData);
    std::size_t count = data->cbData;
    if (const void* nul = std::memchr(bytes, 0, count)) count = static_cast<std::size_t>(static_cast<const char*>(nul) - bytes);
    if (count > kLongestConvertedBytes) count = kLongestConvertedBytes;
    if (count == 0) return {};
    std::wstring wide(count, L'\0');
    const int units = ::MultiByteToWideChar(CP_ACP, 0, bytes, static_cast<int>(count), wide.data(), static_cast<int>(count));
    wide.resize(units > 0 ? static_cast<std::size_t>(units) : 0);
    return LogTextFrom(U16(wide));
}

std::u16string SpeechProgramPath() {
    std::wstring path = App().folders.program + L"\\RemoteTalk.exe";
    if (path.size() >= MAX_PATH) path.resize(MAX_PATH - 1);
    return U16(path);
}

bool FileExists(const std::u16string& path) {
    const DWORD attributes = ::GetFileAttributesW(W(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

void CLogExtenderDlg::LoadLogRules() {
    // A missing table keeps the rules of the last load; LoadFile leaves the table alone then.
    rulesTable_.LoadFile(u"LogEx.kcsv");
    rules_.Load(rulesTable_);
    speechEnabled_ = rules_.RemoteTalkRequested();
    if (speechEnabled_) {
        speechProgram_ = SpeechProgramPath();
        speechEnabled_ = FileExists(speechProgram_);
    }
    for (int page = 0; page < 2; ++page) {
        if (page == 0 && !FullLogEnabled()) continue;
        if (pages_[page]) log_view::Prepare(pages_[page], rules_.Background());
    }
    ApplyLogFont();
}

void CLogExtenderDlg::ApplyLogFont() {
    const LogFontDescription& wanted = rules_.Font();
    LOGFONTW font{};
    font.lfWeight = wanted.weight;
    font.lfItalic = wanted.italic ? TRUE : FALSE;
    const std::wstring face = Wstr(wanted.face);
    lstrcpynW(font.lfFaceName, face.c_str(), LF_FACESIZE);
    HDC screen = ::GetDC(m_hWnd);
    font.lfHeight = LogFontHeight(wanted.pointSize, ::GetDeviceCaps(screen, LOGPIXELSY));
    ::ReleaseDC(m_hWnd, screen);

    // Setting a font again would repaint both views for nothing on every reload.
    if (logFont_ && std::memcmp(&font, &lastFont_, sizeof font) == 0) return;
    HFONT created = ::CreateFontIndirectW(&font);
    if (!created) return;
    lastFont_ = font;
    const WPARAM handle = reinterpret_cast<WPARAM>(created);
    if (pages_[1]) ::SendMessageW(pages_[1], WM_SETFONT, handle, TRUE);
    if (pages_[0] && FullLogEnabled()) ::SendMessageW(pages_[0], WM_SETFONT, handle, TRUE);
    if (logFont_) ::DeleteObject(logFont_);
    logFont_ = created;
}

void CLogExtenderDlg::WriteNotice(const std::u16string& text) {
    const Colour colour = rules_.NoticeColour();
    AppendLine(pages_[0], text, colour);
    AppendLine(pages_[1], text, colour);
}

void CLogExtenderDlg::ProcessLogLine(const COPYDATASTRUCT* data) {
    ++lineDepth_;
    ++linesInRun_;
    HandleLine(data);
    // A line that arrives while waiting lines are taken in goes into the views with them. Any other
    // line takes in the lines the game sends meanwhile, then all of them go into the views together.
    // That includes a line let in by a message box that the handling of an earlier line keeps open
    // (a reload's warning): the earlier line is not done, but the views must not wait for the box.
    if (!takingLines_) {
        TakeWaitingLines();
        FlushPendingLines();
    }
    --lineDepth_;
}

void CLogExtenderDlg::HandleLine(const COPYDATASTRUCT* data) {
    // Whatever goes wrong with one line must not end the program.
    try {
        // A reload is finished, its bit cleared, before the game gets its answer.
        // The lines a warning box of the reload lets in are shown; they do not reload again.
        if (!reloading_ && game_link::ReloadRequested(frame_, game_link::kReloadLogRules)) {
            FlushPendingLines();
            reloading_ = true;
            LoadLogRules();
            reloading_ = false;
            WriteNotice(log_texts::kRulesReloaded.Get());
            frame_ = game_link::ClearReloadRequest(game_link::kReloadLogRules);
            return;
        }
        // The game's thread waits in SendMessage until we answer. Once the text is our own copy
        // (the payload may be the sender's memory), it gets its answer, 1, and the line is handled
        // while the game goes on. The line is queued for its views; any message other than a next
        // line puts the queue into the views before it is handled.
        const std::u16string text = TextOfCopyData(data);
        if (::InSendMessage()) ::ReplyMessage(1);
        const std::u16string line = LogLineOf(text);
        if (IsNotice(text)) {
            WriteNotice(line.substr(1));
            return;
        }
        if (FullLogEnabled()) AppendLine(pages_[0], line, kFullLogColour);

        const std::optional<std::size_t> match = rules_.FirstMatch(text);
        if (!match) return;
        const LogRule& rule = rules_.Rules()[*match];
        if (speechEnabled_ && rule.talk) Speak(speechProgram_, SpeechText(text));
        if (!rule.sound.empty()) PlayRuleSound(rule);
        if (rule.color != kNoColour) AppendLine(pages_[1], line, rule.color);
    } catch (const std::exception&) {
        // Out of memory for one line: the line is lost, the log goes on.
        reloading_ = false;
    }
}

namespace {

// A fight sends its lines back to back, each a moment after the last was answered: this long
// without a line ends the run. A run also ends after so many lines or so long, so the views never
// lag far behind.
constexpr DWORD kLineGapMs = 2;
constexpr int kLongestRun = 200;
constexpr DWORD kLongestRunMs = 50;

}  // namespace

// The log windows and their views pass every message through here. One sent while a run of lines
// is taken in, other than a next line, may read, clear or move the views: it finds them up to
// date. (A subclass costs nothing per message; a message hook would cost the game three requests
// to the window server under Wine for each line, before its answer.)
LRESULT CALLBACK CLogExtenderDlg::FlushFirstProc(HWND window, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id,
                                                 DWORD_PTR log) {
    auto* self = reinterpret_cast<CLogExtenderDlg*>(log);
    if (self->takingLines_ && !(msg == WM_COPYDATA && window == self->m_hWnd)) self->FlushPendingLines();
    // Windows wants a subclass gone before its window is.
    if (msg == WM_NCDESTROY) ::RemoveWindowSubclass(window, &CLogExtenderDlg::FlushFirstProc, id);
    return ::DefSubclassProc(window, msg, wp, lp);
}

// The lines the game sends while the last ones are handled arrive here as sent messages, each
// answered at once as always; inserting the run together costs the game far less than a line at a
// time. Waiting for them costs the game nothing, since it waits only for its answer. Any other
// message sent meanwhile to the log windows finds the views up to date (FlushFirstProc).
void CLogExtenderDlg::TakeWaitingLines() {
    takingLines_ = true;
    const DWORD start = ::GetTickCount();
    linesInRun_ = 1;
    MSG msg;
    while (linesInRun_ < kLongestRun && ::GetTickCount() - start < kLongestRunMs &&
           ::MsgWaitForMultipleObjectsEx(0, nullptr, kLineGapMs, QS_SENDMESSAGE, 0) == WAIT_OBJECT_0)
        ::PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    takingLines_ = false;
}

void CLogExtenderDlg::FlushPendingLines() {
    if (flushing_) return;
    flushing_ = true;
    // Called from window procedures of every kind (the subclass among them): nothing may leave it.
    try {
        for (int page = 0; page < 2; ++page) {
            std::vector<PendingRun> runs;
            runs.swap(pending_[page]);
            if (runs.empty() || !pages_[page]) continue;
            // Held before the text goes in: a rich edit with its redraw on repaints what an
            // insertion changed there and then.
            redraw_.Touched(pages_[page]);
            for (const PendingRun& run : runs) log_view::Append(pages_[page], run.text, run.colour);
        }
    } catch (const std::exception&) {
        // Out of memory: the lines that were waiting are lost, the log goes on.
    }
    flushing_ = false;
}

void CLogExtenderDlg::PlayRuleSound(const LogRule& rule) {
    if (!sounds_) return;
    const float volume = rules_.SoundVolume(rule);
    for (const std::u16string& path : SoundCandidates(U16(App().folders.game), rule.sound)) {
        if (sounds_->PlaySoundEffect(path, volume)) return;
    }
}

}  // namespace vrl
