// vrltables.exe as a player runs it in the companion's folder: without arguments it checks the
// tables there, in the language that Vrl.ini beside it sets.

#include <gtest/gtest.h>

#include "e2e_support.h"

namespace {

// Runs the copy of vrltables.exe in the program folder, from that folder; what it printed.
std::string RunVrlTables(const e2e::Install& install, DWORD* exitCode) {
    const std::wstring exe = install.ProgramFile(L"vrltables.exe");
    if (!::CopyFileW((e2e::BinFolder() + L"\\vrltables.exe").c_str(), exe.c_str(), FALSE)) return "(not copied)";
    return e2e::RunInFolder(exe, install.programFolder, exitCode);
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

}  // namespace
