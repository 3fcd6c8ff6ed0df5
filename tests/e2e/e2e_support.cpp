#include "e2e_support.h"

#include <commctrl.h>
#include <shellapi.h>
#include <gtest/gtest.h>
#include <tlhelp32.h>

#include <stdexcept>

namespace e2e {
namespace {

constexpr UINT kTrayIconId = 1234;

void MustCopy(const std::wstring& from, const std::wstring& to) {
    if (!::CopyFileW(from.c_str(), to.c_str(), FALSE)) throw std::runtime_error("cannot copy " + Utf8(from));
}

// A copy of the demo game with every "hspwnd0" replaced, so that the marker is nowhere in the file.
void WriteMarkerlessCopy(const std::wstring& from, const std::wstring& to) {
    std::string bytes = vrltest::ReadFileBytes(from);
    const std::string marker("hspwnd0\0", 8);
    for (size_t at = bytes.find(marker); at != std::string::npos; at = bytes.find(marker, at + 1)) bytes[at] = 'x';
    vrltest::WriteFileBytes(to, bytes);
}

}  // namespace

std::wstring BinFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.find_last_of(L'\\'));
}

void Install::WriteIni(const std::string& extraLines) const {
    std::string ini = "[Vorrel_v5]\r\nwstrMorva=" + Utf8(gameExe) + "\r\n" + extraLines;
    // The profile functions read a UTF-8 file without a byte-order mark as ANSI; a Japanese path
    // therefore goes in as UTF-16 with its mark, which they read as Unicode.
    std::wstring wide(ini.size(), L'\0');
    wide.resize(static_cast<size_t>(::MultiByteToWideChar(CP_UTF8, 0, ini.data(), static_cast<int>(ini.size()),
                                                          wide.data(), static_cast<int>(wide.size()))));
    std::string bytes("\xFF\xFE", 2);
    bytes.append(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t));
    vrltest::WriteFileBytes(ProgramFile(L"Vrl.ini"), bytes);
}

void Install::WriteProgramFile(const std::wstring& name, const std::string& bytes) const {
    vrltest::WriteFileBytes(ProgramFile(name), bytes);
}

std::string Install::ReadTranscript() const { return vrltest::ReadFileBytes(transcript); }

std::string Install::WaitForScenarioEnd() const {
    const char* const end = "module: end of scenario";
    std::string text;
    WaitUntil([&] { return (text = ReadTranscript()).find(end) != std::string::npos; }, 20000);
    EXPECT_NE(text.find(end), std::string::npos) << text;
    return text;
}

bool Install::ProgramFileExists(const std::wstring& name) const {
    return ::GetFileAttributesW(ProgramFile(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void Install::MakeGameFolders() const {
    for (const wchar_t* folder : {L"save", L"sound", L"user", L"user\\music", L"user\\sound"}) {
        ::CreateDirectoryW((gameFolder + L"\\" + folder).c_str(), nullptr);
    }
}

Install::Install(Install&& other) noexcept
    : root(std::move(other.root)), gameFolder(std::move(other.gameFolder)),
      programFolder(std::move(other.programFolder)), gameExe(std::move(other.gameExe)),
      transcript(std::move(other.transcript)) {
    other.root.clear();
}

// Best effort: a program of the test that still runs keeps its files, and the folder stays.
Install::~Install() {
    if (!root.empty()) vrltest::RemoveTree(root);
}

Install MakeInstall(const InstallOptions& options) {
    Install install;
    install.root = vrltest::CreateNewFolder(L"vrl-e2e");
    install.gameFolder = install.root + L"\\" + options.gameFolderName;
    install.programFolder = install.gameFolder + L"\\Vorrel";
    install.gameExe = install.gameFolder + L"\\DemoGame.exe";
    install.transcript = install.root + L"\\transcript.txt";
    ::CreateDirectoryW(install.gameFolder.c_str(), nullptr);
    ::CreateDirectoryW(install.programFolder.c_str(), nullptr);

    const std::wstring bin = BinFolder();
    if (options.markerlessGame) {
        WriteMarkerlessCopy(bin + L"\\DemoGame.exe", install.gameExe);
    } else {
        MustCopy(bin + L"\\DemoGame.exe", install.gameExe);
    }
    MustCopy(bin + L"\\VrlBoot.exe", install.ProgramFile(L"VrlBoot.exe"));
    MustCopy(bin + L"\\VrlConfig.exe", install.ProgramFile(L"VrlConfig.exe"));
    if (options.withModule) MustCopy(bin + L"\\VrlDLL.dll", install.ProgramFile(L"VrlDLL.dll"));
    return install;
}

Install CompleteUnpackedPackage() {
    const std::wstring bin = BinFolder();
    Install install;
    install.root = bin.substr(0, bin.find_last_of(L'\\')) + L"\\package-e2e";
    install.gameFolder = install.root + L"\\Morva";
    install.programFolder = install.gameFolder + L"\\Vorrel";
    install.gameExe = install.gameFolder + L"\\DemoGame.exe";
    install.transcript = install.root + L"\\transcript.txt";
    install.MakeGameFolders();
    MustCopy(bin + L"\\DemoGame.exe", install.gameExe);
    MustCopy(bin + L"\\VrlDLL.dll", install.ProgramFile(L"VrlDLL.dll"));
    MustCopy(bin + L"\\VrlConfig.exe", install.ProgramFile(L"VrlConfig.exe"));
    MustCopy(bin + L"\\simbass\\bass.dll", install.ProgramFile(L"bass.dll"));  // the starter rules play sounds
    return install;
}

std::string RunInFolder(const std::wstring& exe, const std::wstring& folder, DWORD* exitCode,
                        const std::wstring& arguments) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (!::CreatePipe(&readEnd, &writeEnd, &inherit, 0)) return "(no pipe)";
    ::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writeEnd;
    startup.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    std::wstring commandLine = L"\"" + exe + L"\"" + (arguments.empty() ? L"" : L" " + arguments);
    const BOOL started = ::CreateProcessW(exe.c_str(), commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                          nullptr, folder.c_str(), &startup, &process);
    ::CloseHandle(writeEnd);
    std::string output;
    char chunk[4096];
    DWORD got = 0;
    while (started && ::ReadFile(readEnd, chunk, sizeof chunk, &got, nullptr) && got > 0) output.append(chunk, got);
    ::CloseHandle(readEnd);
    if (!started) return "(not started)";
    ::WaitForSingleObject(process.hProcess, 30000);
    ::GetExitCodeProcess(process.hProcess, exitCode);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return output;
}

Companion::Companion(const Install& install) {
    ::SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", install.transcript.c_str());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    std::wstring exe = install.ProgramFile(L"VrlBoot.exe");
    // Started from elsewhere on purpose: the companion must find its folders by itself.
    if (!::CreateProcessW(exe.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, install.root.c_str(),
                          &startup, &process_)) {
        throw std::runtime_error("cannot start VrlBoot.exe");
    }
}

Companion::~Companion() {
    if (WaitExit(0) == STILL_ACTIVE) {
        ::TerminateProcess(process_.hProcess, 99);
        ::WaitForSingleObject(process_.hProcess, 5000);
    }
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
    EndDemoGames();
}

DWORD Companion::WaitExit(DWORD ms) const {
    if (::WaitForSingleObject(process_.hProcess, ms) != WAIT_OBJECT_0) return STILL_ACTIVE;
    DWORD code = STILL_ACTIVE;
    ::GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

HWND WaitForWindow(const wchar_t* className, const wchar_t* title, DWORD ms) {
    HWND found = nullptr;
    WaitUntil([&] { return (found = ::FindWindowW(className, title)) != nullptr; }, ms);
    return found;
}

HWND WaitForFrame(DWORD ms) { return WaitForWindow(L"VorrelUI", L"Vorrel", ms); }

HWND WaitForGameWindow(DWORD ms) { return WaitForWindow(L"hspwnd0", nullptr, ms); }

void LetTheCompanionSeeTheGame(HWND game) {
    WaitUntil([&] { return ::IsWindowVisible(game) != FALSE; }, 10000);
    ::Sleep(500);
}

MessageBoxSeen WaitForMessageBox(DWORD processId, DWORD ms) {
    MessageBoxSeen seen;
    WaitUntil([&] { return (seen.window = VisibleWindowOf(processId, L"#32770")) != nullptr; }, ms);
    if (seen.window) {
        wchar_t buffer[2048] = {};
        ::GetWindowTextW(seen.window, buffer, 2048);
        seen.caption = buffer;
        buffer[0] = 0;
        ::SendMessageW(::GetDlgItem(seen.window, 0xFFFF), WM_GETTEXT, 2048, reinterpret_cast<LPARAM>(buffer));
        seen.text = buffer;
    }
    return seen;
}

namespace {

struct WindowSearch {
    DWORD processId;
    const wchar_t* className;
    HWND found;
};

BOOL CALLBACK MatchVisibleWindow(HWND hwnd, LPARAM lp) {
    auto* search = reinterpret_cast<WindowSearch*>(lp);
    DWORD pid = 0;
    ::GetWindowThreadProcessId(hwnd, &pid);
    if (pid != search->processId || !::IsWindowVisible(hwnd)) return TRUE;
    if (search->className) {
        wchar_t cls[64] = {};
        ::GetClassNameW(hwnd, cls, 64);
        if (std::wstring(cls) != search->className) return TRUE;
    }
    search->found = hwnd;
    return FALSE;
}

}  // namespace

HWND VisibleWindowOf(DWORD processId, const wchar_t* className) {
    WindowSearch search{processId, className, nullptr};
    ::EnumWindows(&MatchVisibleWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool TrayIconShown(HWND frame) {
    // Changing nothing in an icon succeeds only while the icon is there.
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = frame;
    data.uID = kTrayIconId;
    return ::Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
}

void Press(HWND box, int buttonId) { ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(buttonId, BN_CLICKED), 0); }

void PressCtrlAlt(WORD key) {
    INPUT keys[6] = {};
    const WORD order[3] = {VK_CONTROL, VK_MENU, key};
    for (int i = 0; i < 3; ++i) {
        keys[i].type = keys[5 - i].type = INPUT_KEYBOARD;
        keys[i].ki.wVk = keys[5 - i].ki.wVk = order[i];
        keys[5 - i].ki.dwFlags = KEYEVENTF_KEYUP;
    }
    ::SendInput(6, keys, sizeof(INPUT));
}

std::string WindowText(HWND window) {
    wchar_t text[1024] = {};
    const LRESULT length = ::SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
    return Utf8(std::wstring(text, static_cast<size_t>(length > 0 ? length : 0)));
}

namespace {

// A block of memory in the process of `window`, for the messages whose argument is a pointer
// (the list view's): they are not carried across processes.
class RemoteBlock {
public:
    RemoteBlock(HWND window, size_t size) {
        DWORD processId = 0;
        ::GetWindowThreadProcessId(window, &processId);
        process_ = ::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId);
        if (process_) memory_ = ::VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    ~RemoteBlock() {
        if (memory_) ::VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
        if (process_) ::CloseHandle(process_);
    }
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;

    template <typename T>
    T* As() const { return static_cast<T*>(memory_); }
    void Write(const void* bytes, size_t size) const { ::WriteProcessMemory(process_, memory_, bytes, size, nullptr); }
    void Read(void* bytes, size_t size) const { ::ReadProcessMemory(process_, memory_, bytes, size, nullptr); }

private:
    HANDLE process_ = nullptr;
    void* memory_ = nullptr;
};

}  // namespace

std::vector<std::vector<std::string>> ListViewRows(HWND list, int columns) {
    std::vector<std::vector<std::string>> rows;
    constexpr int kUnits = 512;
    struct Remote {
        LVITEMW item;
        wchar_t text[kUnits];
    };
    const RemoteBlock block(list, sizeof(Remote));
    Remote* remote = block.As<Remote>();
    const int count = static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; remote && row < count; ++row) {
        rows.emplace_back();
        for (int column = 0; column < columns; ++column) {
            Remote local{};
            local.item.iSubItem = column;
            local.item.pszText = remote->text;
            local.item.cchTextMax = kUnits;
            block.Write(&local, sizeof local);
            const LRESULT length = ::SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                                  reinterpret_cast<LPARAM>(&remote->item));
            block.Read(&local, sizeof local);
            rows.back().push_back(Utf8(std::wstring(local.text, static_cast<size_t>(length > 0 ? length : 0))));
        }
    }
    return rows;
}

RECT ListViewCellRect(HWND list, int row, int column, LONG part) {
    RECT r{part, column, 0, 0};
    const RemoteBlock block(list, sizeof r);
    if (!block.As<RECT>()) return RECT{};
    block.Write(&r, sizeof r);
    ::SendMessageW(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(block.As<RECT>()));
    block.Read(&r, sizeof r);
    ::MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&r), 2);
    return r;
}

std::vector<std::string> ComboBoxEntries(HWND combo) {
    std::vector<std::string> entries;
    const LRESULT count = ::SendMessageW(combo, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        std::wstring text(static_cast<size_t>(::SendMessageW(combo, CB_GETLBTEXTLEN, i, 0)) + 1, L'\0');
        text.resize(static_cast<size_t>(::SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()))));
        entries.push_back(Utf8(text));
    }
    return entries;
}

COLORREF ScreenPixel(int x, int y) {
    HDC screen = ::GetDC(nullptr);
    const COLORREF colour = ::GetPixel(screen, x, y);
    ::ReleaseDC(nullptr, screen);
    return colour;
}

std::vector<DWORD> ScreenPixels(const RECT& area) {
    const int width = area.right - area.left, height = area.bottom - area.top;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HDC screen = ::GetDC(nullptr);
    HDC memory = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    ::GdiFlush();
    std::vector<DWORD> pixels(static_cast<const DWORD*>(bits), static_cast<const DWORD*>(bits) + width * height);
    ::SelectObject(memory, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    for (DWORD& pixel : pixels) pixel &= 0xFFFFFF;
    return pixels;
}

void EndDemoGames() {
    HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry)) {
        const std::wstring name = entry.szExeFile;
        if (_wcsicmp(name.c_str(), L"DemoGame.exe") == 0 || _wcsicmp(name.c_str(), L"VrlBoot.exe") == 0) {
            if (HANDLE process = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, entry.th32ProcessID)) {
                ::TerminateProcess(process, 99);
                ::WaitForSingleObject(process, 5000);
                ::CloseHandle(process);
            }
        }
    }
    ::CloseHandle(snapshot);
}

void Session::Start(const std::string& ini, const std::string& scenario) {
    install.WriteIni(ini);
    if (!scenario.empty()) install.WriteScenario(scenario);
    companion.reset();
    companion = std::make_unique<Companion>(install);
    frame = WaitForFrame();
    ASSERT_TRUE(frame);
}

void Session::StartWithGame(const std::string& ini, const std::string& scenario) {
    ASSERT_NO_FATAL_FAILURE(Start(ini, scenario));
    game = WaitForGameWindow();
    ASSERT_TRUE(game) << install.ReadTranscript();
    LetTheCompanionSeeTheGame(game);
}

HWND Session::Slot(int slot) const {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(::GetWindowLongW(frame, slot)));
}

HWND Session::OpenTrayMenu() const {
    constexpr UINT kTrayCallback = WM_APP + 1;
    ::PostMessageW(frame, kTrayCallback, kTrayIconId, WM_RBUTTONDOWN);
    return WaitForMenu(companion->ProcessId(), 5000);
}

HWND WaitForMenu(DWORD processId, DWORD ms) {
    HWND menu = nullptr;
    WaitUntil([&] { return (menu = VisibleWindowOf(processId, L"#32768")) != nullptr; }, ms);
    return menu;
}

int AtScreenDpi(int pixels) {
    HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return ::MulDiv(pixels, dpi, 96);
}

}  // namespace e2e
