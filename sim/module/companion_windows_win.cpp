#include "sim/module/companion_windows_win.h"

#include <cwchar>

namespace vrl::sim {
namespace {

struct WindowTitles {
    Target target;
    const wchar_t* titles[4];  // null-padded
};

// English and Japanese titles; the full log is titled "Log" while the two log windows are docked.
constexpr WindowTitles kTitles[] = {
    {Target::kFullLog, {L"Full Log - Vorrel", L"Log - Vorrel", L"全ログ - Vorrel", L"ログ - Vorrel"}},
    {Target::kExtractedLog, {L"Extracted Log - Vorrel", L"抽出ログ - Vorrel", nullptr, nullptr}},
    {Target::kMusic, {L"Music Control Panel", L"音楽コントロールパネル", nullptr, nullptr}},
    {Target::kPet, {L"Pet Information - Vorrel", L"ペット情報 - Vorrel", nullptr, nullptr}},
    {Target::kItem, {L"Item Information - Vorrel", L"アイテム情報 - Vorrel", nullptr, nullptr}},
    {Target::kTreasureMap, {L"Treasure Map - Vorrel", L"宝の地図 - Vorrel", nullptr, nullptr}},
};

struct Search {
    DWORD processId;
    const WindowTitles* titles;
    HWND found;
};

bool TitleMatches(const WindowTitles& titles, const wchar_t* title) {
    for (const wchar_t* candidate : titles.titles) {
        if (candidate != nullptr && std::wcscmp(candidate, title) == 0) return true;
    }
    return false;
}

BOOL CALLBACK MatchDialog(HWND window, LPARAM param) {
    Search* search = reinterpret_cast<Search*>(param);
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    if (processId != search->processId) return TRUE;
    wchar_t className[16] = {};
    wchar_t title[128] = {};
    GetClassNameW(window, className, 16);
    GetWindowTextW(window, title, 128);
    if (std::wcscmp(className, L"#32770") == 0 && TitleMatches(*search->titles, title)) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK MatchGameWindow(HWND window, LPARAM param) {
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    wchar_t className[16] = {};
    GetClassNameW(window, className, 16);
    if (processId == GetCurrentProcessId() && std::wcscmp(className, L"hspwnd0") == 0) {
        *reinterpret_cast<HWND*>(param) = window;
        return FALSE;
    }
    return TRUE;
}

}  // namespace

HWND FindCompanionWindow(DWORD companionProcessId, Target target) {
    for (const WindowTitles& titles : kTitles) {
        if (titles.target != target) continue;
        Search search{companionProcessId, &titles, nullptr};
        EnumWindows(MatchDialog, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    return nullptr;
}

HWND FindOwnGameWindow() {
    HWND found = nullptr;
    EnumWindows(MatchGameWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

}  // namespace vrl::sim
