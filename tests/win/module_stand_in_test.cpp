// The module stand-in inside the demo game, played against a small companion made up in this test
// process: a frame with the ten slots and status static 1, and a full-log dialog that keeps what
// it receives. What the lead's end-to-end tests rely on is checked here first.
#include "app/process_with_dll_win.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/common/test_files_win.h"

#include <string>
#include <vector>

namespace {

constexpr UINT kLogControlRequest = 0x9000;
constexpr LRESULT kFullLogView = 0x1234;

std::wstring BinFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.rfind(L'\\'));
}


bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

struct Companion {
    HWND frame = nullptr;
    HWND status = nullptr;
    HWND fullLog = nullptr;
    std::vector<std::string> lines;  // WM_COPYDATA payloads, bytes as sent
    std::vector<WPARAM> commands;
};
Companion* g_companion = nullptr;

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kLogControlRequest) return wParam == 0 ? kFullLogView : 0;
    if (message == WM_COMMAND) {
        g_companion->commands.push_back(wParam);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

INT_PTR CALLBACK FullLogProc(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_COPYDATA) return message == WM_INITDIALOG;
    const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    g_companion->lines.emplace_back(static_cast<const char*>(data->lpData), data->cbData);
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, TRUE);  // the log window answers 1
    return TRUE;
}

// An empty dialog titled as the full-log window: class "#32770", as the module looks for it.
HWND CreateFullLog() {
    alignas(4) static WORD buffer[64] = {};
    auto* dialog = reinterpret_cast<DLGTEMPLATE*>(buffer);
    dialog->style = WS_POPUP | WS_CAPTION;
    dialog->cx = 100;
    dialog->cy = 50;
    WORD* tail = reinterpret_cast<WORD*>(dialog + 1);
    *tail++ = 0;  // no menu
    *tail++ = 0;  // the dialog class
    for (const wchar_t* c = L"Full Log - Vorrel"; ; ++c) {
        *tail++ = static_cast<WORD>(*c);
        if (*c == 0) break;
    }
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), dialog, nullptr, FullLogProc, 0);
}

void CreateCompanion(Companion* companion) {
    g_companion = companion;
    WNDCLASSEXW frameClass{};
    frameClass.cbSize = sizeof(frameClass);
    frameClass.lpfnWndProc = FrameProc;
    frameClass.cbWndExtra = 40;
    frameClass.hInstance = GetModuleHandleW(nullptr);
    frameClass.lpszClassName = L"VorrelUI";
    RegisterClassExW(&frameClass);
    companion->frame = CreateWindowExW(0, L"VorrelUI", L"Vorrel", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                                       nullptr, frameClass.hInstance, nullptr);
    companion->status = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 160, 24, companion->frame, nullptr,
                                        frameClass.hInstance, nullptr);
    SetWindowLongW(companion->frame, 12, static_cast<LONG>(reinterpret_cast<LONG_PTR>(companion->status)));
    companion->fullLog = CreateFullLog();
}

// Handles this process's messages (the module sends to our windows) until the transcript has `line`.
bool PumpUntil(const std::wstring& transcript, const std::string& line, DWORD timeoutMs) {
    const ULONGLONG deadline = GetTickCount64() + timeoutMs;
    while (GetTickCount64() < deadline) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (Contains(vrltest::ReadFileBytes(transcript), line)) return true;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return false;
}

class ModuleStandIn : public ::testing::Test {
protected:
    void SetUp() override {
        wchar_t temp[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temp);
        const std::wstring stem = std::wstring(temp) + L"vrl_module_" + std::to_wstring(GetCurrentProcessId());
        transcript_ = stem + L".transcript";
        scenario_ = stem + L".scenario";
        DeleteFileW(transcript_.c_str());
        SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", transcript_.c_str());
        SetEnvironmentVariableW(L"VRL_SIM_SCENARIO", scenario_.c_str());
    }
    void TearDown() override {
        if (game_.hProcess != nullptr) {
            TerminateProcess(game_.hProcess, 0);
            WaitForSingleObject(game_.hProcess, 5000);
            CloseHandle(game_.hProcess);
            CloseHandle(game_.hThread);
        }
        DeleteFileW(transcript_.c_str());
        DeleteFileW(scenario_.c_str());
        SetEnvironmentVariableW(L"VRL_SIM_CONNECT_MS", nullptr);
    }
    void StartGame(const std::string& scenario) {
        vrltest::WriteFileBytes(scenario_, scenario);
        const std::wstring game = BinFolder() + L"\\DemoGame.exe";
        char dll[MAX_PATH] = {};
        WideCharToMultiByte(CP_ACP, 0, (BinFolder() + L"\\VrlDLL.dll").c_str(), -1, dll, MAX_PATH, nullptr, nullptr);
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        ASSERT_TRUE(vrl::CreateProcessWithDllW(game.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                               &startup, &game_, dll));
    }
    std::string Transcript() const { return vrltest::ReadFileBytes(transcript_); }

    std::wstring transcript_;
    std::wstring scenario_;
    PROCESS_INFORMATION game_{};
};

TEST_F(ModuleStandIn, PlaysItsScenarioAgainstTheCompanionAndRecordsEachOutcome) {
    Companion companion;
    CreateCompanion(&companion);
    StartGame(
        "request 9000 0\n"
        "request 9000 2\n"
        "log You hit the putit.\n"
        "log0 abc\n"
        "logbytes 41 00 42\n"
        "reload 0x2\n"
        "reload 0x100\n"
        "screen 3\n"
        "static1 \"Ryoko \"\n"
        "command 34103\n"
        "jump 3\n"
        "open36\n"
        "closemain\n");
    ASSERT_TRUE(PumpUntil(transcript_, "module: end of scenario", 30000)) << Transcript();
    ASSERT_TRUE(PumpUntil(transcript_, "game: main window destroyed", 5000)) << Transcript();

    const std::string transcript = Transcript();
    EXPECT_TRUE(Contains(transcript, "module: request 9000 0 -> 0x1234\r\n")) << transcript;
    EXPECT_TRUE(Contains(transcript, "module: request 9000 2 -> 0x0\r\n"));
    EXPECT_TRUE(Contains(transcript, "module: log You hit the putit. -> 1\r\n")) << transcript;
    EXPECT_TRUE(Contains(transcript, "module: reload 0x100 -> 0x102\r\n"));
    EXPECT_TRUE(Contains(transcript, "module: command 34103 -> posted\r\n"));
    EXPECT_TRUE(Contains(transcript, "module: error: unknown command jump\r\n"));
    EXPECT_EQ(companion.lines, (std::vector<std::string>{"You hit the putit.", std::string("abc\0", 4),
                                                          std::string("A\0B", 3)}));
    EXPECT_EQ(companion.commands, (std::vector<WPARAM>{34103}));

    wchar_t status[32] = {};
    GetWindowTextW(companion.status, status, 32);
    EXPECT_STREQ(status, L"Ryoko ");
    EXPECT_EQ(GetWindowLongW(companion.frame, 4), 3);
    EXPECT_EQ(GetWindowLongW(companion.frame, 8), 0x102);
    EXPECT_NE(GetWindowLongW(companion.frame, 0), 0);  // the game window, now destroyed
    // Without its main window the game keeps running while the further window in slot 36 stays.
    const HWND further = reinterpret_cast<HWND>(static_cast<LONG_PTR>(GetWindowLongW(companion.frame, 36)));
    EXPECT_TRUE(IsWindow(further));
    EXPECT_EQ(WaitForSingleObject(game_.hProcess, 300), static_cast<DWORD>(WAIT_TIMEOUT));
    DestroyWindow(companion.fullLog);
    DestroyWindow(companion.frame);
}

TEST_F(ModuleStandIn, WithoutACompanionRecordsErrorsAndStillClosesTheGame) {
    SetEnvironmentVariableW(L"VRL_SIM_CONNECT_MS", L"200");
    StartGame("log nobody\nrequest 9000 0\nreadslot 0\nclose\n");
    ASSERT_EQ(WaitForSingleObject(game_.hProcess, 20000), static_cast<DWORD>(WAIT_OBJECT_0)) << Transcript();
    DWORD exitCode = 1;
    GetExitCodeProcess(game_.hProcess, &exitCode);
    EXPECT_EQ(exitCode, 0u);
    const std::string transcript = Transcript();
    EXPECT_TRUE(Contains(transcript, "module: error: no frame window\r\n")) << transcript;
    EXPECT_TRUE(Contains(transcript, "module: log nobody -> error: no fulllog window\r\n"));
    EXPECT_TRUE(Contains(transcript, "module: request 9000 0 -> error: no frame window\r\n"));
    EXPECT_TRUE(Contains(transcript, "module: close -> posted\r\n"));
    EXPECT_TRUE(Contains(transcript, "game: close requested\r\n"));
}

}  // namespace
