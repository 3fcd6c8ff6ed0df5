#include "settings/app_settings.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace {

using vrl::AppSettings;

// A profile held in memory (section Vorrel_v5 only) that remembers the order of the reads.
class FakeProfile : public vrl::ProfileSource {
public:
    std::map<std::u16string, std::u16string> values;
    std::vector<std::u16string> readOrder;

    std::u16string ReadString(std::u16string_view section, std::u16string_view key) override {
        readOrder.emplace_back(key);
        const auto it = values.find(std::u16string(key));
        return section != u"Vorrel_v5" || it == values.end() ? std::u16string() : it->second;
    }
    int ReadInt(std::u16string_view section, std::u16string_view key, int fallback) override {
        const std::u16string text = ReadString(section, key);
        return text.empty() ? fallback : std::stoi(std::string(text.begin(), text.end()));
    }
};

// Every key in its place: the settings editor writes them under these names.
const char16_t* const kKeys[] = {
    u"iLanguage", u"wstrMorva", u"enLogExtender", u"enLogExtender_FullLog", u"enItemInfo", u"enPetInfo",
    u"enTreasureMap", u"enLabel", u"enEnchantFinder", u"enColorizeIdentifiedItem", u"enColorizeNotOwnedItem",
    u"enWeightGraph", u"enShowPiggyBank", u"enShowFoodRemainingTime", u"enShowFoodRank", u"enShowQuestItem",
    u"enQuestCounter", u"enListExtender", u"enStockMK", u"enQuestStatus", u"enQuestNpcDir",
    u"enShowUnappraised", u"enFrameCounter", u"enEtherwindAlert", u"enSetInfoPos", u"enShowRestock",
    u"enUseComma", u"enShowWeight", u"enShowSleepiness", u"enShowWet", u"enShowSatiety", u"enShowStamina",
    u"enDateFormat", u"enCharacterCreateHelper", u"enCasinoFix", u"enHideNoParty", u"enEquipSet",
    u"enScreenshot", u"enScreenshotIncludeFrame", u"enQuickSearch", u"enRestoreWindowPlacement",
    u"enNumlockOff", u"enMorvaScaler", u"enMusicExtender", u"enMusicExtender_NoReplace",
    u"enMusicExtender_SupressRestart", u"enWeightAdjust", u"enNoZip", u"enCustomRealDate", u"enSaveBackup",
    u"enDangerCheat", u"enCheatEngine", u"iStockMK", u"iScreenshotRange", u"iScreenshotFormat",
    u"iJpegQuality", u"iInfoLayerFrame", u"iInfoLayerStamina", u"iInfoLayerSatiety", u"iInfoLayerEtherwind",
    u"iInfoLayerQuestCount", u"iInfoLayerQuestNpcDir", u"iDateFormat", u"iSatietyFormat", u"iSatietyPos",
    u"iWeightGraphPosition_Right", u"iWeightGraphColor_Gain", u"iWeightGraphColor_Current",
    u"iWeightGraphColor_Lose", u"iCustomRealDate_Month", u"iCustomRealDate_Day", u"iMorvaScaler_Fullscreen",
    u"iMorvaScaler_Nearest", u"iMorvaScaler_Magnification", u"iSaveFolders", u"iInterval", u"iCharacterLevel",
    u"iCharacterWeight",
};

TEST(AppSettings, ReadsEveryKeyByNameInItsPlaceIntoAValueOfItsOwn) {
    FakeProfile profile;
    for (int i = 0; i < 78; ++i) {
        const std::string number = std::to_string(i + 1);
        profile.values[kKeys[i]] = std::u16string(number.begin(), number.end());
    }
    profile.values[u"wstrMorva"] = u"C:\\Morva\\morva.exe";
    AppSettings settings;
    settings.Load(profile);
    EXPECT_EQ(profile.readOrder, std::vector<std::u16string>(std::begin(kKeys), std::end(kKeys)));

    const auto& table = AppSettings::KeyTable();
    ASSERT_EQ(table.size(), 78u);
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i].type == AppSettings::KeyType::Integer) {
            EXPECT_EQ(settings.*table[i].integer, static_cast<int>(i) + 1) << i;
        }
    }
    EXPECT_EQ(settings.wstrMorva, u"C:\\Morva\\morva.exe");
    // The values the program acts on, by name.
    const std::pair<int, int> used[] = {
        {settings.iLanguage, 1},         {settings.enLogExtender, 3},   {settings.enLogExtender_FullLog, 4},
        {settings.enItemInfo, 5},        {settings.enPetInfo, 6},       {settings.enTreasureMap, 7},
        {settings.enEquipSet, 37},       {settings.enScreenshot, 38},   {settings.enScreenshotIncludeFrame, 39},
        {settings.enQuickSearch, 40},    {settings.enRestoreWindowPlacement, 41},
        {settings.enNumlockOff, 42},     {settings.enMusicExtender, 44}, {settings.iScreenshotRange, 54},
        {settings.iScreenshotFormat, 55}, {settings.iJpegQuality, 56},  {settings.iCharacterWeight, 78},
    };
    for (const auto& [value, position] : used) EXPECT_EQ(value, position);
}

TEST(AppSettings, LanguageFollowsTheLocaleOnlyWhenUnset) {
    EXPECT_EQ(AppSettings::ResolveLanguage(-1, 0x0411), 1);
    EXPECT_EQ(AppSettings::ResolveLanguage(-1, 0x0409), 0);
    EXPECT_EQ(AppSettings::ResolveLanguage(1, 0x0409), 1);
    EXPECT_EQ(AppSettings::ResolveLanguage(0, 0x0411), 0);
    EXPECT_EQ(AppSettings::ResolveLanguage(2, 0x0411), 0);
    EXPECT_EQ(AppSettings::ResolveLanguage(-2, 0x0411), 0);
}

}  // namespace
