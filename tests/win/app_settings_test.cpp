// Vrl.ini as players and editors leave it: read through the real profile functions.

#include "settings/app_settings_win.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/common/test_files_win.h"
#include "ui/wide_win.h"

namespace {

std::u16string WriteIni(const char* name, const std::string& bytes) {
    static const vrltest::ScratchFolder folder(L"vrl-settings");
    const std::wstring path = folder / (std::wstring(name, name + std::strlen(name)) + L".ini");
    vrltest::WriteFileBytes(path, bytes);
    return vrl::U16(path);
}

vrl::AppSettings Load(const std::u16string& path) {
    vrl::AppSettings settings;
    settings.filePath = path;
    vrl::LoadAppSettings(settings);
    return settings;
}

TEST(AppSettingsFile, GarbageValuesOtherSectionsLongStringsAndAMissingFile) {
    const std::string longPath(400, 'p');
    const auto path = WriteIni("garbage",
                               "[Other]\r\nenPetInfo=1\r\nwstrMorva=C:\\wrong.exe\r\n"
                               "[vorrel_V5]\r\n"
                               "wstrMorva=C:\\" + longPath + "\r\n"
                               "enPetInfo=abc\r\nenLogExtender=7\r\nENQUICKSEARCH=1\r\n"
                               "iJpegQuality= -40 percent\r\niScreenshotRange=99999999999\r\n"
                               "enMusicExtender\r\n=5\r\nnot a line at all\r\n\x01\x02\xff\xfe\r\n"
                               "[Third]\r\nenEquipSet=1\r\n");
    const vrl::AppSettings settings = Load(path);
    EXPECT_EQ(settings.wstrMorva.size(), 255u) << "cut to 255 characters";
    EXPECT_EQ(settings.wstrMorva.substr(0, 4), u"C:\\p");
    EXPECT_EQ(settings.enPetInfo, 0) << "no digits read as 0";
    EXPECT_EQ(settings.enLogExtender, 7) << "any nonzero value enables";
    EXPECT_EQ(settings.enQuickSearch, 1) << "key names ignore case";
    EXPECT_EQ(settings.iJpegQuality, -40);
    EXPECT_EQ(settings.enMusicExtender, 0);
    EXPECT_EQ(settings.enEquipSet, 0) << "keys of other sections are ignored";
    EXPECT_EQ(settings.iLanguage, -1);

    const vrl::AppSettings missing = Load(u"C:\\nowhere\\Vrl.ini");
    EXPECT_TRUE(missing.wstrMorva.empty()) << "a missing file keeps the defaults";
    EXPECT_EQ(missing.enLogExtender, 0);
}

TEST(AppSettingsFile, ByteOrderMarksAndJapanese) {
    const std::u16string text = u"[Vorrel_v5]\r\nwstrMorva=C:\\モル\\g.exe\r\niLanguage=1\r\n";
    std::string utf16le("\xFF\xFE", 2);
    utf16le.append(reinterpret_cast<const char*>(text.data()), text.size() * 2);
    const vrl::AppSettings wide = Load(WriteIni("utf16", utf16le));
    EXPECT_EQ(wide.wstrMorva, u"C:\\モル\\g.exe");
    EXPECT_EQ(wide.iLanguage, 1);

    const vrl::AppSettings utf8 = Load(WriteIni("utf8bom", "\xEF\xBB\xBF[Vorrel_v5]\r\niLanguage=0\r\nenPetInfo=3\r\n"));
    // Whatever the profile functions make of the mark, reading goes on and nothing breaks.
    EXPECT_TRUE(utf8.iLanguage == 0 || utf8.iLanguage == -1);
    EXPECT_TRUE(utf8.enPetInfo == 3 || utf8.enPetInfo == 0);
}

}  // namespace
