// The game launch against real files and processes: the executable check, the music files, and
// starting the demo game with the module stand-in loaded before any of the game's code.
#include "app/game_launch_win.h"
#include "app/install_paths.h"
#include "app/process_with_dll_win.h"

#include <gtest/gtest.h>
#include <tlhelp32.h>
#include <windows.h>

#include "tests/common/test_files_win.h"

#include <string>
#include <vector>

namespace {

using vrl::AppFolders;
using vrltest::ReadFileBytes;
using vrltest::Utf8;
using vrltest::WriteFileBytes;
using TempFolder = vrltest::ScratchFolder;

std::wstring BinFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.rfind(L'\\'));
}

std::string Ansi(const std::wstring& text) {
    char buffer[1024] = {};
    WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, buffer, sizeof(buffer), nullptr, nullptr);
    return buffer;
}

int CountProcesses(const wchar_t* exeName) {
    int count = 0;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
        if (_wcsicmp(entry.szExeFile, exeName) == 0) ++count;
    }
    CloseHandle(snapshot);
    return count;
}

// Waits for a launched game to end by itself (its scenario says "exit"), killing it if it does not.
bool WaitForExit(DWORD processId) {
    HANDLE process = OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, processId);
    if (process == nullptr) return true;
    const bool ended = WaitForSingleObject(process, 15000) == WAIT_OBJECT_0;
    if (!ended) TerminateProcess(process, 1);
    CloseHandle(process);
    return ended;
}

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// The module and game write to a transcript chosen by the environment the child inherits.
class SimEnvironment {
public:
    SimEnvironment(const TempFolder& folder, const std::string& scenario)
        : transcript_(folder / L"transcript.txt") {
        WriteFileBytes(folder / L"scenario.txt", scenario);
        SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", transcript_.c_str());
        SetEnvironmentVariableW(L"VRL_SIM_SCENARIO", (folder / L"scenario.txt").c_str());
        SetEnvironmentVariableW(L"VRL_SIM_CONNECT_MS", L"300");
    }
    ~SimEnvironment() {
        SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", nullptr);
        SetEnvironmentVariableW(L"VRL_SIM_SCENARIO", nullptr);
        SetEnvironmentVariableW(L"VRL_SIM_CONNECT_MS", nullptr);
    }
    std::string Transcript() const { return ReadFileBytes(transcript_); }

private:
    std::wstring transcript_;
};

// Finding the marker in bytes is tested natively; here, how much of the file is read.
TEST(HspMarkerScan, ReadsOnlyTheFirst16MiBAndFindsAMarkerEndingAtItsLastByte) {
    TempFolder folder(L"vrl_launch_scan");
    const std::string marker("hspwnd0\0", 8);
    std::string content(vrl::kHspScanLimit + 16, 'x');
    content.replace(vrl::kHspScanLimit - 8, 8, marker);
    WriteFileBytes(folder / L"last.exe", content);
    EXPECT_TRUE(vrl::ExecutableCarriesHspMarker(folder / L"last.exe"));

    // One byte later the terminating zero falls outside what is read.
    std::string straddling(vrl::kHspScanLimit + 16, 'x');
    straddling.replace(vrl::kHspScanLimit - 7, 8, marker);
    WriteFileBytes(folder / L"straddling.exe", straddling);
    EXPECT_FALSE(vrl::ExecutableCarriesHspMarker(folder / L"straddling.exe"));

    EXPECT_FALSE(vrl::ExecutableCarriesHspMarker(folder / L"missing.exe"));
}

TEST(MusicFiles, CopiesOnlyMissingTargetsAndOnlyWithTheMusicExtender) {
    TempFolder game(L"vrl_launch_music");
    for (const wchar_t* sub : {L"sound", L"user", L"user\\music"}) CreateDirectoryW((game / sub).c_str(), nullptr);
    WriteFileBytes(game / L"sound\\orc04.mid", "march");
    WriteFileBytes(game / L"sound\\PSML514.MID", "unrest");
    WriteFileBytes(game / L"user\\music\\PSML514_Unrest.MID", "edited by the player");
    // sound\morning_breeze.mid is missing: its copy fails quietly.

    vrl::PrepareMusicFiles(game.Path(), false);
    EXPECT_EQ(GetFileAttributesW((game / L"user\\music\\orc04_March3.mid").c_str()), INVALID_FILE_ATTRIBUTES);

    vrl::PrepareMusicFiles(game.Path(), true);
    EXPECT_EQ(ReadFileBytes(game / L"user\\music\\orc04_March3.mid"), "march");
    EXPECT_EQ(ReadFileBytes(game / L"user\\music\\PSML514_Unrest.MID"), "edited by the player");
    EXPECT_EQ(GetFileAttributesW((game / L"user\\music\\morning_breeze_Town6.mid").c_str()), INVALID_FILE_ATTRIBUTES);
}

// The folder rules themselves are tested natively; here, the ANSI form that the module path needs.
TEST(InstallCheck, NeedsABackslashInBothFormsOfTheProgramFolderAndCutsTheModulePath) {
    AppFolders folders;
    folders.program = L"C:\\Vorrel";
    folders.programAnsi = "C:\\Vorrel";
    ASSERT_EQ(vrl::DeriveInstallFolders(&folders), vrl::InstallCheck::kOk);
    EXPECT_EQ(folders.game, L"C:");
    folders.programAnsi = "Vorrel";
    EXPECT_EQ(vrl::DeriveInstallFolders(&folders), vrl::InstallCheck::kNoAnsiBackslash);
    folders.program = L"Vorrel";
    EXPECT_EQ(vrl::DeriveInstallFolders(&folders), vrl::InstallCheck::kNoBackslash);
    EXPECT_EQ(folders.game, L"C:");

    EXPECT_EQ(vrl::ModulePathAnsi("C:\\Games\\Morva\\Vorrel"), "C:\\Games\\Morva\\Vorrel\\VrlDLL.dll");
    EXPECT_EQ(vrl::ModulePathAnsi(std::string(300, 'a')).size(), 259u) << "the loader's buffer of 260 bytes";
}

TEST(ProcessWithDll, FailsAndLeavesNoProcessWhenTheDllCannotBeUsed) {
    const std::wstring game = BinFolder() + L"\\DemoGame.exe";
    const int before = CountProcesses(L"DemoGame.exe");
    struct Case {
        std::string dll;
        DWORD error;
    };
    const Case cases[] = {
        {Ansi(BinFolder() + L"\\NoSuchModule.dll"), ERROR_FILE_NOT_FOUND},
        {Ansi(BinFolder() + L"\\VrlConfig.exe"), ERROR_BAD_EXE_FORMAT},  // not a DLL
    };
    for (const Case& c : cases) {
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION pi{};
        EXPECT_FALSE(vrl::CreateProcessWithDllW(game.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                                &startup, &pi, c.dll.c_str()));
        EXPECT_EQ(GetLastError(), c.error) << c.dll;
        EXPECT_EQ(pi.hProcess, nullptr);
        EXPECT_EQ(pi.dwProcessId, 0u);
    }
    EXPECT_EQ(CountProcesses(L"DemoGame.exe"), before);
}

// The whole launch from a program folder named in Japanese inside a game folder named in
// Japanese: the ANSI code page may not hold these characters, and the module must still load.
TEST(LaunchGame, StartsTheGameFromJapaneseFoldersWithTheModuleLoaded) {
    TempFolder root(L"vrl_launch_jp");
    const std::wstring gameFolder = root / L"モルヴァ";
    const std::wstring programFolder = gameFolder + L"\\ヴォレル";
    ASSERT_TRUE(CreateDirectoryW(gameFolder.c_str(), nullptr));
    ASSERT_TRUE(CreateDirectoryW(programFolder.c_str(), nullptr));
    ASSERT_TRUE(CopyFileW((BinFolder() + L"\\DemoGame.exe").c_str(), (gameFolder + L"\\ゲーム.exe").c_str(), FALSE));
    ASSERT_TRUE(CopyFileW((BinFolder() + L"\\VrlDLL.dll").c_str(), (programFolder + L"\\VrlDLL.dll").c_str(), FALSE));
    SimEnvironment sim(root, "exit\n");

    // The import directory holds narrow text: the name chosen must open the same file.
    const std::string importName =
        vrl::ChooseDllImportName(programFolder + L"\\VrlDLL.dll", vrl::ModulePathAnsi(Ansi(programFolder)));
    HANDLE dll = CreateFileA(importName.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(dll, INVALID_HANDLE_VALUE) << importName;
    CloseHandle(dll);

    AppFolders folders;
    folders.program = programFolder;
    folders.programAnsi = Ansi(programFolder);
    ASSERT_EQ(vrl::DeriveInstallFolders(&folders), vrl::InstallCheck::kOk);
    EXPECT_EQ(folders.game, gameFolder);
    wchar_t before[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, before);

    const vrl::GameProcess launched = vrl::LaunchGame(folders, gameFolder + L"\\ゲーム.exe", false);
    wchar_t after[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, after);
    SetCurrentDirectoryW(before);
    ASSERT_NE(launched.processId, 0u);
    EXPECT_NE(launched.threadId, 0u);
    EXPECT_TRUE(WaitForExit(launched.processId));
    EXPECT_EQ(std::wstring(after), programFolder);

    const std::string transcript = sim.Transcript();
    EXPECT_TRUE(Contains(transcript, "game: constructor VrlDLL.dll loaded")) << transcript;
    EXPECT_TRUE(Contains(transcript, "game: current folder " + Utf8(gameFolder) + "\r\n")) << transcript;
    EXPECT_TRUE(Contains(transcript, "module: exit -> exiting")) << transcript;
}

}  // namespace
