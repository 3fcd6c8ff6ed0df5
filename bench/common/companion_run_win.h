#pragma once
// Shared by the benchmarks that play against the real VrlBoot.exe: a game folder of their own with
// the companion, the demo game and the module stand-in (which only connects and shows the game's
// treasure map), every companion window enabled and shown; the bench process then stands in for
// the module and sends what the module sends. Beside it runs a second process, this same program
// started with `--null-receiver`, whose only window answers WM_COPYDATA with 1: the bare round
// trip across processes that the companion's answers are measured against.

#include <windows.h>
#include <commctrl.h>
#include <psapi.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <stdexcept>
#include <string>

#include "app/game_link.h"
#include "bench/common/round_trip_win.h"
#include "music/music_request.h"
#include "panels/item_record.h"
#include "panels/pet_record.h"
#include "sim/module/companion_windows_win.h"
#include "sim/module/pet_strip.h"
#include "tests/common/test_files_win.h"

namespace vrlbench {

using Clock = std::chrono::steady_clock;

inline double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

inline double SendCopyData(HWND target, ULONG_PTR code, const void* bytes, std::size_t size) {
    COPYDATASTRUCT data{};
    data.dwData = code;
    data.cbData = static_cast<DWORD>(size);
    data.lpData = const_cast<void*>(bytes);
    const auto start = Clock::now();
    ::SendMessageW(target, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    return MillisecondsSince(start);
}

// What the module sends, as the module builds it.
namespace payload {

// `count` living pets; `round` moves every pet's HP, MP and experience, so that each message
// changes every row.
inline std::string Pets(int round, int count = vrl::kPetRows) {
    std::string bytes;
    for (int slot = 0; slot < count; ++slot) {
        const int hp = 10 + (slot + round) % 40;
        vrl::PetRecord::Make("pet " + std::to_string(slot), 1, 5 + slot, 100 * slot + round % 7, 5000, hp, 60,
                             3 + round % 5, 9, 40, 50)
            .Encode(bytes);
    }
    return bytes;
}

inline std::string Music(int map) {
    vrl::MusicRequest request;
    request.path = u"bgm" + std::u16string(1, static_cast<char16_t>(u'0' + map % 10)) + u".mid";
    request.month = 1;
    request.day = 1 + map % 28;
    request.hour = map % 24;
    request.mapObjectId = map;
    request.playCount = 1;
    return vrl::MusicRequestBytes(request);
}

inline std::vector<unsigned char> Item(int i) {
    vrl::ItemInfoRecord item;
    item.name = u"long sword +" + std::u16string(1, static_cast<char16_t>(u'0' + i % 10));
    item.chipId = 100 + i % 50;
    item.itemId = 1000 + i;
    item.properties = 0x406;
    item.enchantments[0] = {10012, 3};
    item.enchantments[1] = {80005, 1 + i % 4};
    return vrl::EncodeItemRecord(item);
}

}  // namespace payload

// The bare receiver's process: `--null-receiver` as the first argument makes this program one.
inline constexpr const wchar_t* kNullReceiverClass = L"VrlBenchNullReceiverProcess";

inline LRESULT CALLBACK NullReceiverWindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COPYDATA) return 1;
    if (msg == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

// Runs the receiver when asked to (true: this process was one and is done).
inline bool RunNullReceiverIfAsked(int argc, wchar_t** argv) {
    if (argc < 2 || std::wcscmp(argv[1], L"--null-receiver") != 0) return false;
    WNDCLASSW cls{};
    cls.lpfnWndProc = NullReceiverWindowProc;
    cls.hInstance = ::GetModuleHandleW(nullptr);
    cls.lpszClassName = kNullReceiverClass;
    ::RegisterClassW(&cls);
    ::CreateWindowExW(0, cls.lpszClassName, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, cls.hInstance, nullptr);
    MSG msg;
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) ::DispatchMessageW(&msg);
    return true;
}

template <typename Found>
HWND PollFor(Found found, DWORD ms) {
    const ULONGLONG end = ::GetTickCount64() + ms;
    for (;;) {
        if (HWND window = found()) return window;
        if (::GetTickCount64() >= end) return nullptr;
        ::Sleep(20);
    }
}

inline std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring folder(path);
    return folder.substr(0, folder.rfind(L'\\'));
}

inline void Copy(const std::wstring& from, const std::wstring& to) {
    if (!::CopyFileW(from.c_str(), to.c_str(), FALSE)) throw std::runtime_error("cannot copy " + vrltest::Utf8(from));
}

// The companion started on a game folder of its own, with every window enabled and shown, and the
// null receiver beside it. Ends both (and the game) and removes the folder at the end.
class CompanionRun {
public:
    CompanionRun() : root_(vrltest::CreateNewFolder(L"vrl-bench")) {
        const std::wstring bin = ProgramFolder();
        const std::wstring gameFolder = root_ + L"\\Morva";
        program_ = gameFolder + L"\\Vorrel";
        ::CreateDirectoryW(gameFolder.c_str(), nullptr);
        ::CreateDirectoryW(program_.c_str(), nullptr);
        ::CreateDirectoryW((program_ + L"\\screenshot").c_str(), nullptr);
        Copy(bin + L"\\DemoGame.exe", gameFolder + L"\\DemoGame.exe");
        for (const wchar_t* file : {L"VrlBoot.exe", L"VrlDLL.dll"}) Copy(bin + L"\\" + file, program_ + L"\\" + file);
        const std::string ini = "[Vorrel_v5]\r\nwstrMorva=" + vrltest::Utf8(gameFolder) +
                                "\\DemoGame.exe\r\niLanguage=0\r\nenLogExtender=1\r\nenLogExtender_FullLog=1\r\n"
                                "enPetInfo=1\r\nenItemInfo=1\r\nenMusicExtender=1\r\nenTreasureMap=1\r\n"
                                "enScreenshot=1\r\niScreenshotFormat=0\r\n";
        vrltest::WriteFileBytes(program_ + L"\\Vrl.ini", ini);
        vrltest::WriteFileBytes(program_ + L"\\LogEx.kcsv", payload::LogRules());
        vrltest::WriteFileBytes(program_ + L"\\peticons.bmp", vrl::sim::PetStripBmp(vrl::kPetRows));
        vrltest::WriteFileBytes(program_ + L"\\VrlDLL.scenario", "showmap 1\n");
        ::SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", (root_ + L"\\transcript.txt").c_str());

        companion_ = Start(program_ + L"\\VrlBoot.exe", L"", root_);
        nullProcess_ = Start(bin + L"\\" + OwnName(), L" --null-receiver", root_);
        frame = PollFor([] { return ::FindWindowW(L"VorrelUI", L"Vorrel"); }, 30000);
        nullReceiver = PollFor([] { return ::FindWindowW(kNullReceiverClass, nullptr); }, 30000);
        game = PollFor([] { return ::FindWindowW(L"hspwnd0", nullptr); }, 30000);
        if (!frame || !nullReceiver || !game) throw std::runtime_error("the companion, the game or the receiver did not start");
        using vrl::sim::Target;
        const DWORD id = companion_.dwProcessId;
        fullLog = PollFor([id] { return vrl::sim::FindCompanionWindow(id, Target::kFullLog); }, 20000);
        extractedLog = PollFor([id] { return vrl::sim::FindCompanionWindow(id, Target::kExtractedLog); }, 20000);
        pet = PollFor([id] { return vrl::sim::FindCompanionWindow(id, Target::kPet); }, 20000);
        music = PollFor([id] { return vrl::sim::FindCompanionWindow(id, Target::kMusic); }, 20000);
        item = PollFor([&] { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(
                                 ::GetWindowLongW(frame, vrl::game_link::kSlotItemInfo))); }, 20000);
        map = PollFor([id] { return vrl::sim::FindCompanionWindow(id, Target::kTreasureMap); }, 20000);
        if (!fullLog || !extractedLog || !pet || !music || !item || !map) throw std::runtime_error("a companion window is missing");
        // The pet list is ready once it has its sixteen rows.
        HWND list = ::GetDlgItem(pet, 1004);
        PollFor([list] { return ::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == vrl::kPetRows ? list : nullptr; }, 20000);
        int x = 0;
        for (HWND window : {fullLog, extractedLog, pet, music, item}) {
            ::SetWindowPos(window, nullptr, x, 560, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
            x += 250;
        }
        ::Sleep(500);  // everything painted once
    }

    ~CompanionRun() {
        for (PROCESS_INFORMATION* process : {&companion_, &nullProcess_}) {
            ::TerminateProcess(process->hProcess, 0);
            ::WaitForSingleObject(process->hProcess, 5000);
            ::CloseHandle(process->hThread);
            ::CloseHandle(process->hProcess);
        }
        DWORD gameProcess = 0;
        ::GetWindowThreadProcessId(game, &gameProcess);
        if (HANDLE handle = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, gameProcess)) {
            ::TerminateProcess(handle, 0);
            ::WaitForSingleObject(handle, 5000);
            ::CloseHandle(handle);
        }
        vrltest::RemoveTree(root_);
    }
    CompanionRun(const CompanionRun&) = delete;
    CompanionRun& operator=(const CompanionRun&) = delete;

    HANDLE Process() const { return companion_.hProcess; }

    // What the companion's process holds: private bytes, GDI and USER objects (0 where the system
    // does not count them).
    struct Footprint {
        std::size_t privateBytes = 0;
        bool fromLinux = false;  // Wine gave none: the anonymous resident memory of its Linux process
        DWORD gdiObjects = 0, userObjects = 0;
    };
    Footprint Measure() const {
        Footprint footprint;
        PROCESS_MEMORY_COUNTERS_EX memory{};
        memory.cb = sizeof memory;
        if (::GetProcessMemoryInfo(companion_.hProcess, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory))
            footprint.privateBytes = memory.PrivateUsage;
        if (footprint.privateBytes == 0) {
            footprint.privateBytes = LinuxAnonymousBytes();
            footprint.fromLinux = true;
        }
        footprint.gdiObjects = ::GetGuiResources(companion_.hProcess, GR_GDIOBJECTS);
        footprint.userObjects = ::GetGuiResources(companion_.hProcess, GR_USEROBJECTS);
        return footprint;
    }
    const std::wstring& ProgramFolderOfCompanion() const { return program_; }

    // Returns once the window's thread has handled everything sent to it before.
    static void WaitUntilIdle(HWND window) { ::SendMessageW(window, WM_NULL, 0, 0); }
    // Returns once the window's thread has also painted what is left to paint: from another
    // process, RedrawWindow with RDW_UPDATENOW has the owning thread paint before it returns.
    static void WaitUntilPainted(HWND window) {
        WaitUntilIdle(window);
        ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }

    HWND frame = nullptr, game = nullptr, fullLog = nullptr, extractedLog = nullptr, pet = nullptr, music = nullptr, item = nullptr,
         map = nullptr, nullReceiver = nullptr;

private:
    // Under Wine: RssAnon of the Linux process whose command line names this run's VrlBoot.exe,
    // read through drive Z:; 0 elsewhere.
    std::size_t LinuxAnonymousBytes() const {
        const std::wstring folderName = root_.substr(root_.rfind(L'\\') + 1);
        WIN32_FIND_DATAW found{};
        const HANDLE search = ::FindFirstFileW(L"Z:\\proc\\*", &found);
        if (search == INVALID_HANDLE_VALUE) return 0;
        std::size_t bytes = 0;
        do {
            const std::wstring process = std::wstring(L"Z:\\proc\\") + found.cFileName;
            if (found.cFileName[0] < L'0' || found.cFileName[0] > L'9') continue;
            const std::string commandLine = vrltest::ReadFileBytes(process + L"\\cmdline");
            if (commandLine.find(vrltest::Utf8(folderName)) == std::string::npos ||
                commandLine.find("VrlBoot.exe") == std::string::npos)
                continue;
            const std::string status = vrltest::ReadFileBytes(process + L"\\status");
            const std::size_t at = status.find("RssAnon:");
            if (at != std::string::npos) bytes = std::strtoull(status.c_str() + at + 8, nullptr, 10) * 1024;
            break;
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
        return bytes;
    }

    static std::wstring OwnName() {
        wchar_t path[MAX_PATH] = {};
        ::GetModuleFileNameW(nullptr, path, MAX_PATH);
        const std::wstring full(path);
        return full.substr(full.rfind(L'\\') + 1);
    }

    static PROCESS_INFORMATION Start(const std::wstring& exe, const std::wstring& arguments, const std::wstring& folder) {
        std::wstring commandLine = L"\"" + exe + L"\"" + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(exe.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                              &startup, &process))
            throw std::runtime_error("cannot start " + vrltest::Utf8(exe));
        return process;
    }

    std::wstring root_;
    std::wstring program_;
    PROCESS_INFORMATION companion_{};
    PROCESS_INFORMATION nullProcess_{};
};

}  // namespace vrlbench
