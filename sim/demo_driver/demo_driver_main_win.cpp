// vrl_demo_driver PROGRAM_FOLDER HANDSHAKE_FOLDER [ja]
// Starts VrlBoot.exe from PROGRAM_FOLDER, waits for the companion and the game, and walks through
// the player's views. At each view it writes "<n>-<name>" to HANDSHAKE_FOLDER\request and waits
// until the demo script answers by deleting the file (after taking its screenshot).
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

std::wstring g_handshake;

HWND WaitFor(const wchar_t* cls, const wchar_t* title, DWORD ms) {
    for (DWORD waited = 0; waited < ms; waited += 50) {
        if (HWND w = FindWindowW(cls, title)) return w;
        Sleep(50);
    }
    return nullptr;
}

HWND WaitForLogWindow(const wchar_t* title, DWORD ms) { return WaitFor(L"#32770", title, ms); }

void Shot(const char* name) {
    static int n = 0;
    char label[128];
    std::snprintf(label, sizeof label, "%02d-%s", ++n, name);
    const std::wstring request = g_handshake + L"\\request";
    // Written whole under another name first: the script must never read a half-written request.
    const std::wstring partial = request + L".tmp";
    if (FILE* f = _wfopen(partial.c_str(), L"wb")) {
        std::fputs(label, f);
        std::fclose(f);
        MoveFileExW(partial.c_str(), request.c_str(), MOVEFILE_REPLACE_EXISTING);
    }
    for (int i = 0; i < 300 && GetFileAttributesW(request.c_str()) != INVALID_FILE_ATTRIBUTES; ++i) Sleep(100);
    std::printf("shot %s\n", label);
    std::fflush(stdout);
}

void Place(HWND window, int x, int y, int w, int h) {
    if (window) SetWindowPos(window, HWND_TOP, x, y, w, h, SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void PressKey(WORD key) {
    INPUT keys[2] = {};
    keys[0].type = keys[1].type = INPUT_KEYBOARD;
    keys[0].ki.wVk = keys[1].ki.wVk = key;
    keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, keys, sizeof(INPUT));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: vrl_demo_driver PROGRAM_FOLDER HANDSHAKE_FOLDER\n");
        return 2;
    }
    const std::wstring program = argv[1];
    g_handshake = argv[2];
    const bool japanese = argc > 3 && std::wstring(argv[3]) == L"ja";
    const wchar_t* fullLogTitle = japanese ? L"全ログ - Vorrel" : L"Full Log - Vorrel";
    const wchar_t* extractedTitle = japanese ? L"抽出ログ - Vorrel" : L"Extracted Log - Vorrel";
    const wchar_t* aboutTitle = japanese ? L"Vorrelのバージョン情報" : L"About Vorrel";
    const wchar_t* musicTitle = japanese ? L"音楽コントロールパネル" : L"Music Control Panel";

    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION companion{};
    const std::wstring exe = program + L"\\VrlBoot.exe";
    if (!CreateProcessW(exe.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, program.c_str(), &startup,
                        &companion)) {
        std::fprintf(stderr, "cannot start VrlBoot.exe\n");
        return 1;
    }
    HWND frame = WaitFor(L"VorrelUI", L"Vorrel", 30000);
    HWND game = WaitFor(L"hspwnd0", nullptr, 30000);
    std::printf("frame %p game %p\n", static_cast<void*>(frame), static_cast<void*>(game));
    if (!frame || !game) return 1;

    HWND fullLog = WaitForLogWindow(fullLogTitle, 10000);
    HWND extracted = WaitForLogWindow(extractedTitle, 2000);
    RECT gameRect{};
    GetWindowRect(game, &gameRect);
    Place(game, 0, 0, gameRect.right - gameRect.left, gameRect.bottom - gameRect.top);
    const int right = gameRect.right - gameRect.left + 4;
    Place(fullLog, right, 0, 1280 - right, 420);
    Place(extracted, right, 424, 1280 - right, 360);
    Sleep(4000);  // the module's scenario sends its lines meanwhile
    Shot("game-and-logs");

    if (fullLog) {
        SendMessageW(fullLog, WM_SYSCOMMAND, 1001, 0);  // dock
        Place(fullLog, right, 0, 1280 - right, 600);
        SendMessageW(frame, WM_COMMAND, 34104, 0);       // show the extracted log page
        Sleep(500);
        Shot("docked-log");
        SendMessageW(frame, WM_COMMAND, 34103, 0);
        Sleep(300);
        Shot("docked-full-log");
    }

    // The pet panel beside the game, then its colour dialog.
    HWND pets = WaitFor(L"#32770", japanese ? L"ペット情報 - Vorrel" : L"Pet Information - Vorrel", 2000);
    if (pets) {
        Place(pets, 160, 300, 1000, 560);
        SendMessageW(frame, WM_COMMAND, 34105, 0);
        Sleep(500);
        Shot("pet-panel");
        PostMessageW(pets, WM_COMMAND, MAKEWPARAM(1002, BN_CLICKED), 0);
        HWND colours = WaitFor(L"#32770", japanese ? L"色の設定 - ペット情報" : L"Config Color of Pet Information", 5000);
        Sleep(500);
        Shot("pet-colours");
        if (colours) PostMessageW(colours, WM_COMMAND, IDCANCEL, 0);
        Sleep(300);
    }

    if (HWND music = WaitFor(L"#32770", musicTitle, 2000)) {
        PostMessageW(frame, WM_COMMAND, 34100, 0);  // the tray item: the panel in front
        RECT box{};
        GetWindowRect(music, &box);
        SetWindowPos(music, HWND_TOP, 1280 - (box.right - box.left), 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
        Sleep(500);
        Shot("music-panel");
    }

    // The item the module sent, beside the game; the quick search bar below it with its list open.
    HWND itemPanel = reinterpret_cast<HWND>(static_cast<LONG_PTR>(GetWindowLongW(frame, 28)));
    if (IsWindow(itemPanel)) {
        Place(itemPanel, right, 0, 1280 - right, 360);
        Sleep(300);
        Shot("item-info");
    }
    HWND wordBox = reinterpret_cast<HWND>(static_cast<LONG_PTR>(GetWindowLongW(frame, 16)));
    if (IsWindow(wordBox)) {
        HWND bar = GetParent(wordBox);
        SetWindowPos(bar, nullptr, 8, gameRect.bottom - gameRect.top + 8, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        SendMessageW(wordBox, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"dragon"));
        SendMessageW(frame, WM_COMMAND, 34102, 0);  // in front, active: the strip turns blue
        SendMessageW(wordBox, CB_SHOWDROPDOWN, TRUE, 0);
        Sleep(500);
        Shot("quick-search");
        SendMessageW(wordBox, CB_SHOWDROPDOWN, FALSE, 0);
    }

    PostMessageW(frame, WM_APP + 1, 1234, WM_RBUTTONDOWN);
    Sleep(800);
    Shot("tray-menu");
    PressKey(VK_ESCAPE);
    Sleep(300);

    PostMessageW(frame, WM_COMMAND, 34108, 0);
    HWND about = WaitFor(L"#32770", aboutTitle, 5000);
    Sleep(300);
    Shot("about-box");
    if (about) PostMessageW(about, WM_COMMAND, IDOK, 0);
    Sleep(300);

    PostMessageW(game, WM_CLOSE, 0, 0);
    DWORD code = STILL_ACTIVE;
    if (WaitForSingleObject(companion.hProcess, 10000) == WAIT_OBJECT_0) GetExitCodeProcess(companion.hProcess, &code);
    std::printf("companion exit code %lu\n", code);
    CloseHandle(companion.hThread);
    CloseHandle(companion.hProcess);
    return code == 1 ? 0 : 1;
}
