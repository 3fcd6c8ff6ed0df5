// The package a player downloads (scripts/package.sh win64), unpacked into a fresh game folder by
// the test's fixture: the companion starts from there with the module stand-in, a line of the
// game's log reaches the extracted log through a starter rule, and vrltables finds the
// installation clean.

#include <gtest/gtest.h>

#include "e2e_support.h"
#include "log/log_rules.h"
#include "settings/kcsv.h"

namespace {

constexpr UINT kLogViewHandle = 0x9000;

// A line of the game's log that the first plain starter rule (no expression, sound or speech)
// takes; empty when the table has none.
std::string LineForAStarterRule(const e2e::Install& install) {
    const std::string bytes = vrltest::ReadFileBytes(install.ProgramFile(L"LogEx.kcsv"));
    vrl::KcsvFile table;
    if (bytes.empty() || !table.ParseUtf8(bytes)) return {};
    vrl::LogRuleSet rules;
    rules.Load(table);
    for (const vrl::LogRule& rule : rules.Rules()) {
        if (rule.regex || rule.talk || !rule.sound.empty() || rule.keyword.empty()) continue;
        const std::string keyword = e2e::Utf8(std::wstring(rule.keyword.begin(), rule.keyword.end()));
        return rule.exact ? keyword : "[12] " + keyword + " (Lv 12)";
    }
    return {};
}

TEST(PackageE2E, StartsFromTheUnpackedPackageWithItsStarterRulesAndChecksClean) {
    const e2e::Install install = e2e::CompleteUnpackedPackage();
    ASSERT_TRUE(install.ProgramFileExists(L"VrlBoot.exe") && install.ProgramFileExists(L"vrltables.exe"));
    const std::string line = LineForAStarterRule(install);
    ASSERT_FALSE(line.empty()) << "no plain rule in the starter LogEx.kcsv";
    install.WriteIni("iLanguage=0\r\nenLogExtender=1\r\n");
    install.WriteScenario("waitfor extractedlog\nlog " + line + "\n");
    {
        e2e::Companion companion(install);
        const HWND frame = e2e::WaitForFrame();
        ASSERT_TRUE(frame);
        install.WaitForScenarioEnd();
        const HWND extracted = reinterpret_cast<HWND>(::SendMessageW(frame, kLogViewHandle, 1, 0));
        EXPECT_NE(e2e::WindowText(extracted).find(line), std::string::npos) << line;
    }

    DWORD exitCode = 99;
    const std::string output = e2e::RunInFolder(install.ProgramFile(L"vrltables.exe"), install.programFolder, &exitCode);
    EXPECT_EQ(exitCode, 0u) << output;
}

}  // namespace
