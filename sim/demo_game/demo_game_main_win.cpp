// The demo game. Environment:
//   VRL_SIM_TRANSCRIPT   file to append one line per event to (nothing when unset)
//   VRL_SIM_READY_EVENT  name of an event set as the very first thing the program's code does
// Private messages (from the module stand-in):
//   WM_APP + 0x36  open the further window (once); the result is its handle. wParam and lParam,
//                  when not 0, give it a client area of that width and height (also when it is open)
//   WM_APP + 0x37  destroy the main window only
//   WM_APP + 0x38  wParam 1 shows the treasure map, 0 hides it
//   WM_APP + 0x39  draw the test pattern (test_pattern.h) from now on; answered once it is drawn
#include "sim/common/sim_io_win.h"
#include "sim/demo_game/test_pattern.h"

#include <windows.h>

#include <vector>

namespace {

constexpr UINT kOpenFurtherWindow = WM_APP + 0x36;
constexpr UINT kDestroyMainWindow = WM_APP + 0x37;
constexpr UINT kShowMap = WM_APP + 0x38;
constexpr int kClientWidth = 800;
constexpr int kClientHeight = 600;
constexpr const wchar_t* kMainClass = L"hspwnd0";
constexpr const wchar_t* kFurtherClass = L"DemoGameExtra";
// The narrow form of the runtime's class name, as an HSP executable carries it; the launcher
// looks for exactly these bytes. Written to the transcript, so the linker keeps it.
const char kRuntimeMarker[] = "hspwnd0";

// Where the game shows its treasure map in a client area of 800 x 600.
constexpr RECT kMapArea = {196, 140, 196 + 408, 140 + 312};

HWND g_mainWindow = nullptr;
HWND g_furtherWindow = nullptr;
bool g_mapShown = false;
bool g_drawTestPattern = false;

void Record(const std::string& event) {
    vrl::sim::AppendLine(vrl::sim::EnvironmentValue(L"VRL_SIM_TRANSCRIPT"), "game: " + event);
}

std::string ModuleState() { return GetModuleHandleW(L"VrlDLL.dll") != nullptr ? "loaded" : "absent"; }

// The program's first constructor: the module, injected as an import, must
// already be in the process here.
struct StartupProbe {
    StartupProbe() {
        const std::wstring ready = vrl::sim::EnvironmentValue(L"VRL_SIM_READY_EVENT");
        if (!ready.empty()) {
            if (HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, ready.c_str())) {
                SetEvent(event);
                CloseHandle(event);
            }
        }
        Record("constructor VrlDLL.dll " + ModuleState());
    }
};
const StartupProbe g_startupProbe;

void FillShape(HDC dc, const POINT* points, int count, COLORREF fill, COLORREF edge) {
    HBRUSH brush = CreateSolidBrush(fill);
    HPEN pen = CreatePen(PS_SOLID, 2, edge);
    HGDIOBJ oldBrush = SelectObject(dc, brush);
    HGDIOBJ oldPen = SelectObject(dc, pen);
    Polygon(dc, points, count);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    DeleteObject(brush);
    DeleteObject(pen);
}

// A parchment with sea, an island with a hill, a dotted trail and the red cross of the treasure.
void PaintMap(HDC dc) {
    const int x = kMapArea.left, y = kMapArea.top;
    RECT area = kMapArea;
    HBRUSH parchment = CreateSolidBrush(RGB(226, 202, 150));
    FillRect(dc, &area, parchment);
    DeleteObject(parchment);
    RECT sea = {x + 12, y + 36, x + 396, y + 300};
    HBRUSH water = CreateSolidBrush(RGB(96, 150, 190));
    FillRect(dc, &sea, water);
    DeleteObject(water);
    const POINT island[] = {{x + 60, y + 120}, {x + 130, y + 70},  {x + 250, y + 80}, {x + 340, y + 140},
                            {x + 320, y + 240}, {x + 210, y + 280}, {x + 90, y + 250}, {x + 50, y + 180}};
    FillShape(dc, island, 8, RGB(120, 160, 80), RGB(80, 60, 30));
    const POINT hill[] = {{x + 150, y + 170}, {x + 185, y + 110}, {x + 220, y + 170}};
    FillShape(dc, hill, 3, RGB(150, 120, 70), RGB(80, 60, 30));
    HPEN trail = CreatePen(PS_DOT, 1, RGB(60, 40, 20));
    HGDIOBJ oldPen = SelectObject(dc, trail);
    MoveToEx(dc, x + 90, y + 230, nullptr);
    LineTo(dc, x + 160, y + 210);
    LineTo(dc, x + 240, y + 225);
    LineTo(dc, x + 270, y + 190);
    SelectObject(dc, oldPen);
    DeleteObject(trail);
    HPEN cross = CreatePen(PS_SOLID, 4, RGB(200, 30, 30));
    oldPen = SelectObject(dc, cross);
    MoveToEx(dc, x + 260, y + 180, nullptr);
    LineTo(dc, x + 282, y + 202);
    MoveToEx(dc, x + 282, y + 180, nullptr);
    LineTo(dc, x + 260, y + 202);
    SelectObject(dc, oldPen);
    DeleteObject(cross);
    SetTextColor(dc, RGB(70, 45, 20));
    RECT caption = {x, y + 6, x + 408, y + 32};
    DrawTextW(dc, L"Treasure Map", -1, &caption, DT_CENTER | DT_SINGLELINE | DT_VCENTER);
}

void DrawTestPattern(HDC dc, const RECT& client) {
    const int width = client.right;
    const int height = client.bottom;
    if (width <= 0 || height <= 0) return;
    std::vector<DWORD> pixels(static_cast<size_t>(width) * height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const DWORD bgr = vrl::sim::TestPatternColour(x, y);  // DIB pixels are 0x00RRGGBB
            pixels[static_cast<size_t>(y) * width + x] = (bgr & 0xFF) << 16 | (bgr & 0xFF00) | (bgr >> 16 & 0xFF);
        }
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(dc, 0, 0, width, height, 0, 0, 0, height, pixels.data(), &info, DIB_RGB_COLORS);
}

void PaintPlayfield(HWND window) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    if (g_drawTestPattern) {
        DrawTestPattern(dc, client);
        EndPaint(window, &paint);
        return;
    }
    HBRUSH field = CreateSolidBrush(RGB(18, 24, 34));
    FillRect(dc, &client, field);
    DeleteObject(field);
    HPEN grid = CreatePen(PS_SOLID, 1, RGB(40, 52, 70));
    HGDIOBJ oldPen = SelectObject(dc, grid);
    for (int x = 0; x < client.right; x += 48) {
        MoveToEx(dc, x, 0, nullptr);
        LineTo(dc, x, client.bottom);
    }
    for (int y = 0; y < client.bottom; y += 48) {
        MoveToEx(dc, 0, y, nullptr);
        LineTo(dc, client.right, y);
    }
    SelectObject(dc, oldPen);
    DeleteObject(grid);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(230, 210, 140));
    RECT title = {0, client.bottom / 2 - 40, client.right, client.bottom / 2};
    DrawTextW(dc, L"Morva (demo)", -1, &title, DT_CENTER | DT_SINGLELINE | DT_VCENTER);
    SetTextColor(dc, RGB(170, 190, 210));
    RECT line = {0, client.bottom / 2, client.right, client.bottom / 2 + 30};
    DrawTextW(dc, L"A putit appears. You hear something in the distance.", -1, &line,
              DT_CENTER | DT_SINGLELINE | DT_VCENTER);
    if (g_mapShown) PaintMap(dc);
    EndPaint(window, &paint);
}

void SetClientSize(HWND window, int width, int height) {
    RECT frame = {0, 0, width, height};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
    SetWindowPos(window, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND OpenFurtherWindow(HINSTANCE instance, int width, int height) {
    if (g_furtherWindow == nullptr) {
        g_furtherWindow = CreateWindowExW(0, kFurtherClass, L"Morva (demo) - extra", WS_OVERLAPPED | WS_CAPTION,
                                          40, 40, 320, 200, nullptr, nullptr, instance, nullptr);
        ShowWindow(g_furtherWindow, SW_SHOWNOACTIVATE);
        Record("further window opened");
    }
    if (width > 0 && height > 0) SetClientSize(g_furtherWindow, width, height);
    return g_furtherWindow;
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            PaintPlayfield(window);
            return 0;
        case WM_CLOSE:
            Record("close requested");
            DestroyWindow(window);
            return 0;
        case kOpenFurtherWindow:
            return reinterpret_cast<LRESULT>(OpenFurtherWindow(
                reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window, GWLP_HINSTANCE)), static_cast<int>(wParam),
                static_cast<int>(lParam)));
        case kShowMap:
            g_mapShown = wParam != 0;
            InvalidateRect(window, nullptr, FALSE);
            UpdateWindow(window);
            Record(g_mapShown ? "map shown" : "map hidden");
            return 0;
        case kDestroyMainWindow:
            DestroyWindow(window);
            return 0;
        case vrl::sim::kDrawTestPattern:
            g_drawTestPattern = true;
            InvalidateRect(window, nullptr, FALSE);
            UpdateWindow(window);
            Record("test pattern drawn");
            return 1;
        case WM_DESTROY:
            Record("main window destroyed");
            g_mainWindow = nullptr;
            // A game that still shows a further window keeps running without its main window.
            if (g_furtherWindow == nullptr) PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

// The further window stays until the process ends. It may be taller than the screen: the game
// draws a scaled-up view in it.
LRESULT CALLBACK FurtherWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CLOSE) return 0;
    if (message == WM_GETMINMAXINFO) {
        DefWindowProcW(window, message, wParam, lParam);
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMaxTrackSize = {4096, 4096};
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool RegisterClasses(HINSTANCE instance) {
    WNDCLASSEXW main{};
    main.cbSize = sizeof(main);
    main.lpfnWndProc = MainWindowProc;
    main.hInstance = instance;
    main.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    main.lpszClassName = kMainClass;
    WNDCLASSEXW further = main;
    further.lpfnWndProc = FurtherWindowProc;
    further.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    further.lpszClassName = kFurtherClass;
    return RegisterClassExW(&main) != 0 && RegisterClassExW(&further) != 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
    Record("entry VrlDLL.dll " + ModuleState() + " class " + kRuntimeMarker);
    wchar_t folder[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, folder);
    Record("current folder " + vrl::sim::Utf8(folder));
    if (!RegisterClasses(instance)) return 1;
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    RECT frame = {0, 0, kClientWidth, kClientHeight};
    AdjustWindowRect(&frame, style, FALSE);
    g_mainWindow = CreateWindowExW(0, kMainClass, L"Morva (demo)", style, CW_USEDEFAULT, CW_USEDEFAULT,
                                   frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr, instance,
                                   nullptr);
    if (g_mainWindow == nullptr) return 1;
    ShowWindow(g_mainWindow, show == SW_HIDE ? SW_SHOWNORMAL : show);
    UpdateWindow(g_mainWindow);
    Record("main window shown");

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    Record("exit");
    return 0;
}
