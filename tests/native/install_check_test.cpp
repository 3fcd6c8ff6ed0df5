#include "settings/install_check.h"

#include "app/pe_image.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace {

using vrl::AppSettings;
using vrl::CheckIniText;
using vrl::IniCheck;

std::u16string Latin1(std::string_view bytes) { return std::u16string(bytes.begin(), bytes.end()); }

IniCheck Check(std::string_view bytes, int language = 0) { return CheckIniText(bytes, Latin1, language); }

// "LINE: message" per finding, joined by newlines.
std::string Report(const IniCheck& check) {
    std::string out;
    for (const auto& p : check.problems) out += std::to_string(p.line) + ": " + p.message + "\n";
    return out;
}

bool Mentions(const std::string& report, const std::string& part) { return report.find(part) != std::string::npos; }

TEST(IniCheck, ReadsTheFileAsTheProfileFunctionsDo) {
    // Names in any case, white space around names and values, a quoted value, the first of two
    // keys and of two sections, a line before any section, digits followed by other text.
    IniCheck check = Check(
        "enLogExtender=5\r\n"
        "  [ vorrel_V5 ]  \r\n"
        "  WSTRMORVA =  \"C:\\Morva\\morva.exe\"  \r\n"
        "enpetinfo = 7abc\r\n"
        "enPetInfo=0\r\n"
        "iLanguage=\r\n"
        "iJpegQuality=-12\r\n"
        "[Vorrel_v5]\r\n"
        "enQuickSearch=1\r\n");
    EXPECT_EQ(check.settings.wstrMorva, u"C:\\Morva\\morva.exe");
    EXPECT_EQ(check.settings.enPetInfo, 7);
    EXPECT_EQ(check.settings.enLogExtender, 0);
    EXPECT_EQ(check.settings.enQuickSearch, 0);
    EXPECT_EQ(check.settings.iLanguage, -1);
    EXPECT_EQ(Report(check),
              "1: enLogExtender stands before any section header; the companion does not read it (move it below "
              "[Vorrel_v5])\n"
              "4: enPetInfo = \"7abc\" is not a whole number; the companion reads 7\n"
              "5: enPetInfo is set again (first on line 4); the companion uses the first\n"
              "6: iLanguage has no value; the companion uses -1\n"
              "7: iJpegQuality = -12 is outside 0 to 100; JPEG screenshots may not be saved\n"
              "8: section [Vorrel_v5] again (the first is on line 2); the companion reads only the first, so it "
              "ignores the keys here\n");

    // A file with the Unicode mark is UTF-16; one with the UTF-8 mark hides a header on line 1.
    const std::u16string wide = u"[Vorrel_v5]\r\nwstrMorva=D:\\ゲーム\\morva.exe\r\n";
    std::string utf16("\xFF\xFE");
    for (char16_t c : wide) utf16 += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    EXPECT_EQ(Check(utf16).settings.wstrMorva, u"D:\\ゲーム\\morva.exe");
    check = Check("\xEF\xBB\xBF[Vorrel_v5]\r\nwstrMorva=C:\\m.exe\r\n");
    EXPECT_EQ(check.settings.wstrMorva, u"");
    EXPECT_EQ(Report(check).rfind("1: the file begins with a UTF-8 byte-order mark", 0), 0u) << Report(check);
    EXPECT_EQ(check.problems.size(), 1u);
    EXPECT_TRUE(Mentions(Report(Check("[Vorrel_v5]\r\nwstrMorva=C:\\\xE3\x82\xB2.exe\r\n")),
                         "2: the file is saved as UTF-8 without a byte-order mark"));
}

TEST(IniCheck, NamesTheKeyOrSectionMeantAndWhatTheCompanionDoesInstead) {
    const IniCheck check = Check(
        "[Vorrel_v5]\r\nwstrMorva=C:\\m.exe\r\nenMusicExtendr=1\r\niLanguage=3\r\nenQuickSerch=1\r\nenQuickSearch=1\r\n"
        "iScreenshotFormat=png\r\nnonsense=1\r\nenLabel\r\n");
    EXPECT_EQ(Report(check),
              "3: unknown key \"enMusicExtendr\"; the companion ignores it; enMusicExtender stays at 0 (did you mean "
              "enMusicExtender?)\n"
              "4: iLanguage = 3 is outside -1 to 1; the companion shows English (-1 follows Windows, 0 English, 1 "
              "Japanese)\n"
              "5: unknown key \"enQuickSerch\"; the companion ignores it (did you mean enQuickSearch?)\n"
              "7: iScreenshotFormat = \"png\" is not a whole number; the companion reads 0\n"
              "8: unknown key \"nonsense\"; the companion ignores it\n"
              "9: \"enLabel\" has no '='; the companion reads no value from this line\n");
    EXPECT_EQ(Report(Check("[Vorrel_v5]\r\nenMusicExtendr=1\r\n", 1)),
              "1: wstrMorva が空です。コンパニオンはゲームの代わりに設定エディターを起動します。そこでゲームのプログラムを"
              "選んでください (VrlConfig.exe)\n"
              "2: 知らないキー \"enMusicExtendr\" です。コンパニオンは無視します。enMusicExtender は 0 のままです "
              "(enMusicExtender のことですか?)\n");
    EXPECT_EQ(Report(Check("[Vorrel_v4]\r\nwstrMorva=C:\\m.exe\r\n")),
              "1: no section [Vorrel_v5]: the companion reads no setting from this file and starts the settings "
              "editor instead of the game; choose the game there (VrlConfig.exe) or name the section [Vorrel_v5]\n"
              "1: section [Vorrel_v4] is not read (did you mean [Vorrel_v5]?)\n");
}

// A disk held in memory: paths as the checker forms them, with backslashes.
class FakeFiles : public vrl::InstallFiles {
public:
    std::set<std::u16string> files, folders, games, elevated;
    std::map<std::u16string, std::string> contents;
    std::map<std::u16string, std::uint16_t> machines;

    bool FileExists(const std::u16string& path) override { return files.count(path) || contents.count(path); }
    bool FolderExists(const std::u16string& path) override { return folders.count(path) > 0; }
    bool CarriesHspMarker(const std::u16string& path) override { return games.count(path) > 0; }
    std::uint16_t MachineOf(const std::u16string& path) override { return machines.count(path) ? machines[path] : 0; }
    bool AsksForAdministrator(const std::u16string& path) override { return elevated.count(path) > 0; }
    bool ReadFileBytes(const std::u16string& path, std::string& bytes) override {
        const auto it = contents.find(path);
        if (it == contents.end()) return false;
        bytes = it->second;
        return true;
    }
};

// A player's installation as it should be: the game with its folders, Vorrel inside it.
FakeFiles PlayersDisk() {
    FakeFiles disk;
    disk.files = {u"C:\\Morva\\Vorrel\\VrlBoot.exe", u"C:\\Morva\\Vorrel\\VrlDLL.dll",
                  u"C:\\Morva\\Vorrel\\VrlConfig.exe", u"C:\\Morva\\morva.exe"};
    disk.games = {u"C:\\Morva\\morva.exe"};
    disk.folders = {u"C:\\Morva\\sound", u"C:\\Morva\\save", u"C:\\Morva\\user", u"C:\\Morva\\user\\music",
                    u"C:\\Morva\\user\\sound"};
    return disk;
}

std::string InstallReport(FakeFiles& disk, const std::string& ini, const std::u16string& program = u"C:\\Morva\\Vorrel") {
    IniCheck check = Check(ini);
    vrl::CheckGamePath(&check, program, vrl::FolderOf(program), disk, 0);
    std::string out = Report(check);
    for (const auto& finding : vrl::CheckInstallFolder(program, &check.settings, disk, 0)) {
        out += vrl::Utf16ToUtf8(finding.subject) + ": " + finding.message.substr(0, finding.message.find(':')) + "\n";
    }
    return out;
}

TEST(InstallationCheck, ACorrectInstallationIsCleanAndEachMissingPieceIsNamed) {
    const std::string ini = "[Vorrel_v5]\r\nwstrMorva=C:\\Morva\\morva.exe\r\nenMusicExtender=1\r\nenLogExtender=1\r\n";
    FakeFiles disk = PlayersDisk();
    disk.files.insert(u"C:\\Morva\\Vorrel\\bass.dll");
    disk.contents[u"C:\\Morva\\Vorrel\\LogEx.kcsv"] =
        "#format,kcsv\r\n#option,EnableRemoteTalk:1\r\n#column,keyword,sound,color\r\nlevel,up.wav,#ffffff\r\n";
    disk.files.insert(u"C:\\Morva\\Vorrel\\RemoteTalk.exe");
    EXPECT_EQ(InstallReport(disk, ini), "");
    FakeFiles fresh = PlayersDisk();  // no Vrl.ini yet: nothing is on, nothing more is needed
    EXPECT_TRUE(vrl::CheckInstallFolder(u"C:\\Morva\\Vorrel", nullptr, fresh, 0).empty());

    disk.files = {u"C:\\Morva\\Vorrel\\VrlBoot.exe", u"C:\\Morva\\morva.exe"};
    disk.folders = {u"C:\\Morva\\save"};
    EXPECT_EQ(InstallReport(disk, ini),
              "C:\\Morva\\Vorrel\\VrlDLL.dll: the in-game module VrlDLL.dll is missing\n"
              "C:\\Morva\\Vorrel\\VrlConfig.exe: the settings editor VrlConfig.exe is missing\n"
              "C:\\Morva\\Vorrel\\bass.dll: the audio library bass.dll is missing while the music extender is on\n"
              "C:\\Morva\\Vorrel\\RemoteTalk.exe: LogEx.kcsv switches speech on (EnableRemoteTalk), but the speech "
              "program RemoteTalk.exe is missing\n"
              "C:\\Morva\\sound: the game's sound folder is missing\n"
              "C:\\Morva\\user\\music: the game's user\\music folder is missing\n"
              "C:\\Morva\\user\\sound: the game's user\\sound folder is missing\n");
    disk.folders.clear();
    EXPECT_TRUE(Mentions(InstallReport(disk, ini), "C:\\Morva: this is not the game's folder (it has no sound, save or "
                                                   "user folder)"));
}

TEST(InstallationCheck, TriesTheGameAsTheLauncherDoes) {
    FakeFiles disk = PlayersDisk();
    disk.files.insert(u"C:\\Morva\\readme.txt");
    disk.folders.insert(u"C:\\Other");
    disk.files.insert(u"C:\\Other\\morva.exe");
    disk.games.insert(u"C:\\Other\\morva.exe");
    const auto reportFor = [&](const std::string& game) {
        return InstallReport(disk, "[Vorrel_v5]\r\nwstrMorva=" + game + "\r\n");
    };
    EXPECT_EQ(reportFor("morva.exe"), "");  // opened while the game folder is the current folder
    EXPECT_TRUE(Mentions(reportFor("C:\\Morva\\morva.ex"), "2: wstrMorva names \"C:\\Morva\\morva.ex\", which does not exist"));
    EXPECT_TRUE(Mentions(reportFor("C:\\Morva\\readme.txt"), "which is not the game (it lacks the mark"));
    EXPECT_TRUE(Mentions(reportFor("C:\\Other"), "wstrMorva names the folder \"C:\\Other\", not a program"));
    EXPECT_TRUE(Mentions(reportFor("C:\\Other\\morva.exe"), "wstrMorva names a game outside the folder Vorrel is in"));

    // What the launch cannot do for a game that is the game: load the module into a program of
    // another processor type, or start a program that asks for administrator rights.
    disk.machines = {{u"C:\\Morva\\Vorrel\\VrlBoot.exe", 0x14C}, {u"C:\\Morva\\morva.exe", 0x8664}};
    EXPECT_TRUE(Mentions(reportFor("morva.exe"), "a program for another processor type than VrlBoot.exe"));
    disk.machines[u"C:\\Morva\\morva.exe"] = 0x14C;
    disk.elevated.insert(u"C:\\Morva\\morva.exe");
    EXPECT_TRUE(Mentions(reportFor("morva.exe"), "which asks Windows for administrator rights"));
    EXPECT_TRUE(vrl::ManifestAsksForAdministrator("<requestedExecutionLevel level=\"requireAdministrator\" uiAccess=\"false\"/>"));
    EXPECT_FALSE(vrl::ManifestAsksForAdministrator("<requestedExecutionLevel level=\"asInvoker\" uiAccess=\"false\"/>"));
}

}  // namespace
