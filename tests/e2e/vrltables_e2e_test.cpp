// vrltables.exe as a player runs it in the companion's folder: without arguments it checks Vrl.ini,
// the installation and the tables there, in the language that Vrl.ini beside it sets.

#include <gtest/gtest.h>

#include <algorithm>

#include "e2e_support.h"

namespace {

// Runs the copy of vrltables.exe in the program folder, from that folder; what it printed.
std::string RunVrlTables(const e2e::Install& install, DWORD* exitCode, const std::wstring& arguments = {}) {
    const std::wstring exe = install.ProgramFile(L"vrltables.exe");
    if (!::CopyFileW((e2e::BinFolder() + L"\\vrltables.exe").c_str(), exe.c_str(), FALSE)) return "(not copied)";
    std::string output = e2e::RunInFolder(exe, install.programFolder, exitCode, arguments);
    output.erase(std::remove(output.begin(), output.end(), '\r'), output.end());  // the console's line ends
    return output;
}

TEST(VrlTablesE2E, ChecksTheTablesBesideItInTheLanguageOfVrlIni) {
    const e2e::Install install = e2e::MakeInstall();
    install.WriteProgramFile(L"LogEx.kcsv", "#format,kcsv\r\n#option,MasterVolum:80\r\n#column,keyword\r\nally\r\n");

    install.WriteIni("iLanguage=1\r\n");
    DWORD exitCode = 0;
    std::string output = RunVrlTables(install, &exitCode);
    EXPECT_EQ(exitCode, 1u);
    EXPECT_NE(output.find("LogEx.kcsv:2: 知らないオプション \"MasterVolum\" です。プログラムは無視します "
                          "(MasterVolume のことですか?)"),
              std::string::npos)
        << output;
    EXPECT_NE(output.find("LogEx.kcsv:3: 列 \"color\" がありません。"), std::string::npos) << output;

    install.WriteIni("iLanguage=0\r\n");
    output = RunVrlTables(install, &exitCode);
    EXPECT_NE(output.find("LogEx.kcsv:2: unknown option \"MasterVolum\"; the program ignores it (did you mean "
                          "MasterVolume?)"),
              std::string::npos)
        << output;
}

TEST(VrlTablesE2E, ChecksTheInstallationAndVrlIniInThePlayersLanguage) {
    const e2e::Install install = e2e::MakeInstall();
    install.MakeGameFolders();
    install.WriteIni("iLanguage=0\r\n");
    DWORD exitCode = 99;
    std::string output = RunVrlTables(install, &exitCode);
    EXPECT_EQ(exitCode, 0u) << output;
    EXPECT_EQ(output, "Vrl.ini: no problems found\n"
                      "installation (" + e2e::Utf8(install.programFolder) + "): no problems found\n"
                      "no table files of the program in this folder (" + e2e::Utf8(install.programFolder) + ")\n");

    // As the settings editor writes it (ANSI), with a slip in a key and a game that is not there.
    const std::string wrongGame = e2e::Utf8(install.gameFolder) + "\\Morva.exe";
    for (const char* language : {"0", "1"}) {
        install.WriteProgramFile(L"Vrl.ini", "[Vorrel_v5]\r\nwstrMorva=" + wrongGame + "\r\niLanguage=" + language +
                                                 "\r\nenMusicExtendr=1\r\n");
        output = RunVrlTables(install, &exitCode, install.ProgramFile(L"Vrl.ini"));  // dropped on the program
        EXPECT_EQ(exitCode, 1u);
        const std::string vrlIni = e2e::Utf8(install.ProgramFile(L"Vrl.ini"));
        if (*language == '0') {
            EXPECT_EQ(output, vrlIni + ":2: wstrMorva names \"" + wrongGame + "\", which does not exist: the game does "
                      "not start and after a few seconds the companion says \"Cannot find Morva Window\"; choose "
                      "the game's program in the settings editor (VrlConfig.exe)\n" +
                      vrlIni + ":4: unknown key \"enMusicExtendr\"; the companion ignores it; enMusicExtender stays "
                      "at 0 (did you mean enMusicExtender?)\n"
                      "installation (" + e2e::Utf8(install.programFolder) + "): no problems found\n");
        } else {
            EXPECT_EQ(output, vrlIni + ":2: wstrMorva の \"" + wrongGame + "\" はありません。ゲームは起動せず、数秒後に"
                      "コンパニオンが「Morvaのウィンドウが見つかりません」と表示します。設定エディター (VrlConfig.exe) "
                      "でゲームのプログラムを選んでください\n" +
                      vrlIni + ":4: 知らないキー \"enMusicExtendr\" です。コンパニオンは無視します。enMusicExtender "
                      "は 0 のままです (enMusicExtender のことですか?)\n"
                      "インストール (" + e2e::Utf8(install.programFolder) + "): 問題は見つかりませんでした\n");
        }
    }
}

}  // namespace
