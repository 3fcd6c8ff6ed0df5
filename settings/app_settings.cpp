#include "settings/app_settings.h"

#include "settings/kcsv.h"

namespace vrl {
namespace {

bool StartsWith(std::u16string_view text, std::u16string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

}  // namespace

AppSettings::KeyType AppSettings::TypeOfKey(std::u16string_view name) {
    if (StartsWith(name, u"wstr") || StartsWith(name, u"s")) return KeyType::String;
    if (StartsWith(name, u"en") || StartsWith(name, u"i") || StartsWith(name, u"u")) return KeyType::Integer;
    return KeyType::Skipped;
}

const std::vector<AppSettings::Entry>& AppSettings::KeyTable() {
    // Filled once, in the order the settings are read; the type comes from the name, as for any key.
    static const std::vector<Entry> table = [] {
        std::vector<Entry> t;
        auto integer = [&t](std::u16string_view name, int AppSettings::*field) {
            t.push_back({name, TypeOfKey(name), field, nullptr});
        };
        auto text = [&t](std::u16string_view name, std::u16string AppSettings::*field) {
            t.push_back({name, TypeOfKey(name), nullptr, field});
        };
        auto ranged = [&t](std::u16string_view name, int AppSettings::*field, int low, int high) {
            t.push_back({name, TypeOfKey(name), field, nullptr, low, high});
        };
        ranged(u"iLanguage", &AppSettings::iLanguage, -1, 1);
        text(u"wstrMorva", &AppSettings::wstrMorva);
#define VRL_KEY(name) integer(u## #name, &AppSettings::name)
        VRL_KEY(enLogExtender); VRL_KEY(enLogExtender_FullLog); VRL_KEY(enItemInfo); VRL_KEY(enPetInfo);
        VRL_KEY(enTreasureMap); VRL_KEY(enLabel); VRL_KEY(enEnchantFinder); VRL_KEY(enColorizeIdentifiedItem);
        VRL_KEY(enColorizeNotOwnedItem); VRL_KEY(enWeightGraph); VRL_KEY(enShowPiggyBank);
        VRL_KEY(enShowFoodRemainingTime); VRL_KEY(enShowFoodRank); VRL_KEY(enShowQuestItem);
        VRL_KEY(enQuestCounter); VRL_KEY(enListExtender); VRL_KEY(enStockMK); VRL_KEY(enQuestStatus);
        VRL_KEY(enQuestNpcDir); VRL_KEY(enShowUnappraised); VRL_KEY(enFrameCounter); VRL_KEY(enEtherwindAlert);
        VRL_KEY(enSetInfoPos); VRL_KEY(enShowRestock); VRL_KEY(enUseComma); VRL_KEY(enShowWeight);
        VRL_KEY(enShowSleepiness); VRL_KEY(enShowWet); VRL_KEY(enShowSatiety); VRL_KEY(enShowStamina);
        VRL_KEY(enDateFormat); VRL_KEY(enCharacterCreateHelper); VRL_KEY(enCasinoFix); VRL_KEY(enHideNoParty);
        VRL_KEY(enEquipSet); VRL_KEY(enScreenshot); VRL_KEY(enScreenshotIncludeFrame); VRL_KEY(enQuickSearch);
        VRL_KEY(enRestoreWindowPlacement); VRL_KEY(enNumlockOff); VRL_KEY(enMorvaScaler);
        VRL_KEY(enMusicExtender); VRL_KEY(enMusicExtender_NoReplace); VRL_KEY(enMusicExtender_SupressRestart);
        VRL_KEY(enWeightAdjust); VRL_KEY(enNoZip); VRL_KEY(enCustomRealDate); VRL_KEY(enSaveBackup);
        VRL_KEY(enDangerCheat); VRL_KEY(enCheatEngine);
        VRL_KEY(iStockMK);
        ranged(u"iScreenshotRange", &AppSettings::iScreenshotRange, 0, 11);
        ranged(u"iScreenshotFormat", &AppSettings::iScreenshotFormat, 0, 3);
        ranged(u"iJpegQuality", &AppSettings::iJpegQuality, 0, 100);
        VRL_KEY(iInfoLayerFrame); VRL_KEY(iInfoLayerStamina); VRL_KEY(iInfoLayerSatiety);
        VRL_KEY(iInfoLayerEtherwind); VRL_KEY(iInfoLayerQuestCount); VRL_KEY(iInfoLayerQuestNpcDir);
        VRL_KEY(iDateFormat); VRL_KEY(iSatietyFormat); VRL_KEY(iSatietyPos); VRL_KEY(iWeightGraphPosition_Right);
        VRL_KEY(iWeightGraphColor_Gain); VRL_KEY(iWeightGraphColor_Current); VRL_KEY(iWeightGraphColor_Lose);
        VRL_KEY(iCustomRealDate_Month); VRL_KEY(iCustomRealDate_Day); VRL_KEY(iMorvaScaler_Fullscreen);
        VRL_KEY(iMorvaScaler_Nearest); VRL_KEY(iMorvaScaler_Magnification); VRL_KEY(iSaveFolders);
        VRL_KEY(iInterval); VRL_KEY(iCharacterLevel); VRL_KEY(iCharacterWeight);
#undef VRL_KEY
        return t;
    }();
    return table;
}

const AppSettings::Entry* AppSettings::FindKey(std::u16string_view name) {
    const std::u16string lower = AsciiLower(name);
    for (const Entry& entry : KeyTable()) {
        if (AsciiLower(entry.name) == lower) return &entry;
    }
    return nullptr;
}

void AppSettings::Load(ProfileSource& source) {
    for (const Entry& entry : KeyTable()) {
        switch (entry.type) {
        case KeyType::String: {
            std::u16string value = source.ReadString(section, entry.name);
            if (value.size() > kMaxStringLength) value.resize(kMaxStringLength);
            this->*entry.text = std::move(value);
            break;
        }
        case KeyType::Integer:
            this->*entry.integer = source.ReadInt(section, entry.name, this->*entry.integer);
            break;
        case KeyType::Skipped:
            break;
        }
    }
}

int AppSettings::ResolveLanguage(int language, unsigned userLocale) {
    if (language == -1) return userLocale == 0x0411 ? 1 : 0;
    return language == 1 ? 1 : 0;
}

}  // namespace vrl
