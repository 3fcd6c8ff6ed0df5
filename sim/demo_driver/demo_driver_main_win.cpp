// vrl_demo_driver PROGRAM_FOLDER HANDSHAKE_FOLDER [ja]
// Starts VrlBoot.exe from PROGRAM_FOLDER, waits for the companion and the game, and walks through
// the player's views. At each view it writes "<n>-<name>" to HANDSHAKE_FOLDER\request and waits
// until the demo script answers by deleting the file (after taking its screenshot).
#include <windows.h>
// GDI+ after windows.h, which it builds on.
#include <gdiplus.h>

#include <cstdio>
#include <memory>
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

// The equip set window as the module opens it for the character "hero", then its restore list.
void ShowEquipSets(HWND frame, HWND game) {
    HWND status = reinterpret_cast<HWND>(static_cast<LONG_PTR>(GetWindowLongW(frame, 12)));
    // Before the game has loaded a character the player is told so.
    SendMessageW(status, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"nobody"));
    PostMessageW(frame, 0xA000, 0, 0);
    if (HWND box = WaitFor(L"#32770", L"", 3000)) {
        Sleep(300);
        Shot("equip-set-no-character");
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        Sleep(300);
    }
    SendMessageW(status, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"hero"));
    SendMessageW(frame, 0xA000, 0, 0);
    HWND equip = reinterpret_cast<HWND>(static_cast<LONG_PTR>(GetWindowLongW(frame, 20)));
    if (!equip || !IsWindowVisible(equip)) return;
    RECT gameRect{};
    GetWindowRect(game, &gameRect);
    SetWindowPos(equip, HWND_TOP, gameRect.left + 60, gameRect.top + 80, 0, 0, SWP_NOSIZE);
    Sleep(300);
    Shot("equip-set-menu");
    HWND list = GetDlgItem(equip, 1000);
    PostMessageW(list, WM_KEYDOWN, VK_RETURN, 0);
    Sleep(300);
    PostMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
    Sleep(300);
    Shot("equip-set-restore");
    for (WORD key : {VK_LEFT, VK_DOWN, VK_DOWN, VK_RETURN, VK_RETURN}) {  // back, edit, the first set
        PostMessageW(list, WM_KEYDOWN, key, 0);
        Sleep(200);
    }
    if (HWND edit = WaitFor(L"#32770", L"Edit", 3000)) {
        Sleep(300);
        Shot("equip-set-rename");
        PostMessageW(edit, WM_COMMAND, IDCANCEL, 0);
        Sleep(300);
    }
    PostMessageW(list, WM_KEYDOWN, VK_SHIFT, 0);
    Sleep(300);
}

// The game shows its treasure map and the module orders the copy; then the game opens a taller
// view of itself (its further window, published in slot 36) and the copy follows its scale.
void ShowTreasureMap(HWND frame, HWND game, bool japanese) {
    HWND map = WaitFor(L"#32770", japanese ? L"宝の地図 - Vorrel" : L"Treasure Map - Vorrel", 2000);
    if (!map) return;
    // The player looks at the map in the game: the game is in front, over the other panels.
    SetWindowPos(game, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    SendMessageW(game, WM_APP + 0x38, 1, 0);
    PostMessageW(map, WM_HOTKEY, 1200, 0);
    Sleep(1200);
    Shot("treasure-map");
    const LRESULT further = SendMessageW(game, WM_APP + 0x36, 300, 900);
    SetWindowLongW(frame, 36, static_cast<LONG>(further));
    // Beside the game, so that it leaves the map in the game window uncovered.
    SetWindowPos(reinterpret_cast<HWND>(further), HWND_TOP, 830, 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    PostMessageW(map, WM_HOTKEY, 1200, 0);
    Sleep(1200);
    Shot("treasure-map-scaled");
}

// The newest file of `folder`, or an empty path.
std::wstring NewestFile(const std::wstring& folder) {
    std::wstring newest;
    FILETIME newestTime{};
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return newest;
    do {
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
        if (newest.empty() || CompareFileTime(&found.ftLastWriteTime, &newestTime) > 0) {
            newest = folder + L"\\" + found.cFileName;
            newestTime = found.ftLastWriteTime;
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return newest;
}

// A plain window showing a picture file at half its size, so the player sees what a shot wrote.
std::unique_ptr<Gdiplus::Bitmap> g_picture;

LRESULT CALLBACK PictureWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(window, &paint);
        RECT client;
        GetClientRect(window, &client);
        Gdiplus::Graphics graphics(dc);
        if (g_picture) graphics.DrawImage(g_picture.get(), 0, 0, client.right, client.bottom);
        EndPaint(window, &paint);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND ShowPicture(const std::wstring& path, int x, int y) {
    g_picture = std::make_unique<Gdiplus::Bitmap>(path.c_str());
    if (g_picture->GetLastStatus() != Gdiplus::Ok) return nullptr;
    WNDCLASSW cls{};
    cls.lpfnWndProc = PictureWindowProc;
    cls.hInstance = GetModuleHandleW(nullptr);
    cls.lpszClassName = L"VrlDemoPicture";
    cls.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    RegisterClassW(&cls);
    RECT frame{0, 0, static_cast<LONG>(g_picture->GetWidth() / 2), static_cast<LONG>(g_picture->GetHeight() / 2)};
    AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
    const std::wstring title = path.substr(path.find_last_of(L'\\') + 1);
    HWND window = CreateWindowW(L"VrlDemoPicture", title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, x, y,
                                frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr,
                                cls.hInstance, nullptr);
    UpdateWindow(window);
    return window;
}

// Lets the picture window paint.
void PumpFor(DWORD ms) {
    const DWORD end = GetTickCount() + ms;
    while (GetTickCount() < end) {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
        Sleep(20);
    }
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: vrl_demo_driver PROGRAM_FOLDER HANDSHAKE_FOLDER\n");
        return 2;
    }
    const std::wstring program = argv[1];
    Gdiplus::GdiplusStartupInput gdiplusInput;
    ULONG_PTR gdiplusToken = 0;
    Gdiplus::GdiplusStartup(&gdiplusToken, &gdiplusInput, nullptr);
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

    if (HWND music = WaitFor(L"#32770", musicTitle, 2000)) {
        PostMessageW(frame, WM_COMMAND, 34100, 0);  // the tray item: the panel in front
        RECT box{};
        GetWindowRect(music, &box);
        SetWindowPos(music, HWND_TOP, 1280 - (box.right - box.left), 0, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
        Sleep(500);
        Shot("music-panel");
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
    PressKey('S');
    Sleep(500);
    Shot("tray-screenshot-menu");
    PressKey(VK_ESCAPE);
    PressKey('W');
    Sleep(500);
    Shot("tray-placement-menu");
    PressKey(VK_ESCAPE);
    PressKey(VK_ESCAPE);
    Sleep(300);

    // A screenshot of the client area through the tray command, shown as the player opens it.
    SendMessageW(frame, WM_COMMAND, 33002, 0);
    const std::wstring shotFile = NewestFile(program + L"\\screenshot");
    std::printf("screenshot file: %ls\n", shotFile.c_str());
    if (HWND picture = shotFile.empty() ? nullptr : ShowPicture(shotFile, 380, 300)) {
        PumpFor(300);
        Shot("screenshot-taken");
        DestroyWindow(picture);
    }

    // Window placement: the arrangement saved, the default layout, then the saved one back.
    SendMessageW(frame, WM_COMMAND, 34000, 0);
    SendMessageW(frame, WM_COMMAND, 34004, 0);
    Sleep(500);
    Shot("placement-reset");
    SendMessageW(frame, WM_COMMAND, 34001, 0);
    Sleep(500);
    Shot("placement-restored");

    PostMessageW(frame, WM_COMMAND, 34108, 0);
    HWND about = WaitFor(L"#32770", aboutTitle, 5000);
    Sleep(300);
    Shot("about-box");
    if (about) PostMessageW(about, WM_COMMAND, IDOK, 0);
    Sleep(300);

    ShowEquipSets(frame, game);
    ShowTreasureMap(frame, game, japanese);

    // The tray's Exit while the game runs asks first; No keeps both.
    PostMessageW(frame, WM_COMMAND, 32776, 0);
    HWND question = WaitFor(L"#32770", L"Vorrel", 5000);
    Sleep(300);
    Shot("exit-question");
    if (question) PostMessageW(question, WM_COMMAND, IDNO, 0);
    Sleep(300);

    PostMessageW(game, WM_CLOSE, 0, 0);
    DWORD code = STILL_ACTIVE;
    if (WaitForSingleObject(companion.hProcess, 10000) == WAIT_OBJECT_0) GetExitCodeProcess(companion.hProcess, &code);
    std::printf("companion exit code %lu\n", code);
    CloseHandle(companion.hThread);
    CloseHandle(companion.hProcess);
    g_picture.reset();
    Gdiplus::GdiplusShutdown(gdiplusToken);
    return code == 1 ? 0 : 1;
}
