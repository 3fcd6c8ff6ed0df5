#pragma once
// AppSettings: the player's settings from Vrl.ini, section Vorrel_v5. Loaded once while the main
// frame is created and read-only afterwards; the settings editor writes the file, we never do.
// The key table fixes the order of reading; a key's type comes from its name's prefix.

#include <climits>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vrl {

// Where the values come from: the Windows profile functions in the program, a fake in tests.
class ProfileSource {
public:
    virtual ~ProfileSource() = default;
    // The value of the key, cut to 255 characters; empty when absent.
    virtual std::u16string ReadString(std::u16string_view section, std::u16string_view key) = 0;
    // The profile integer reading: optional sign and leading digits; no digits gives 0;
    // `fallback` when the key is absent.
    virtual int ReadInt(std::u16string_view section, std::u16string_view key, int fallback) = 0;
};

struct AppSettings {
    enum class KeyType { String, Integer, Skipped };
    // A key's type by its name: "wstr"/"s" string, "en"/"i"/"u" integer, anything else skipped.
    static KeyType TypeOfKey(std::u16string_view name);

    static constexpr const char16_t* kSection = u"Vorrel_v5";
    static constexpr std::size_t kMaxStringLength = 255;

    std::u16string section = kSection;
    std::u16string filePath;

    int iLanguage = -1;
    std::u16string wstrMorva;
    int enLogExtender = 0, enLogExtender_FullLog = 0, enItemInfo = 0, enPetInfo = 0, enTreasureMap = 0,
        enLabel = 0, enEnchantFinder = 0, enColorizeIdentifiedItem = 0, enColorizeNotOwnedItem = 0,
        enWeightGraph = 0, enShowPiggyBank = 0, enShowFoodRemainingTime = 0, enShowFoodRank = 0,
        enShowQuestItem = 0, enQuestCounter = 0, enListExtender = 0, enStockMK = 0, enQuestStatus = 0,
        enQuestNpcDir = 0, enShowUnappraised = 0, enFrameCounter = 0, enEtherwindAlert = 0, enSetInfoPos = 0,
        enShowRestock = 0, enUseComma = 0, enShowWeight = 0, enShowSleepiness = 0, enShowWet = 0,
        enShowSatiety = 0, enShowStamina = 0, enDateFormat = 0, enCharacterCreateHelper = 0, enCasinoFix = 0,
        enHideNoParty = 0, enEquipSet = 0, enScreenshot = 0, enScreenshotIncludeFrame = 0, enQuickSearch = 0,
        enRestoreWindowPlacement = 0, enNumlockOff = 0, enMorvaScaler = 0, enMusicExtender = 0,
        enMusicExtender_NoReplace = 0, enMusicExtender_SupressRestart = 0, enWeightAdjust = 0, enNoZip = 0,
        enCustomRealDate = 0, enSaveBackup = 0, enDangerCheat = 0, enCheatEngine = 0;
    int iStockMK = 0, iScreenshotRange = 0, iScreenshotFormat = 0, iJpegQuality = 0, iInfoLayerFrame = 0,
        iInfoLayerStamina = 0, iInfoLayerSatiety = 0, iInfoLayerEtherwind = 0, iInfoLayerQuestCount = 0,
        iInfoLayerQuestNpcDir = 0, iDateFormat = 0, iSatietyFormat = 0, iSatietyPos = 0,
        iWeightGraphPosition_Right = 0, iWeightGraphColor_Gain = 0, iWeightGraphColor_Current = 0,
        iWeightGraphColor_Lose = 0, iCustomRealDate_Month = 0, iCustomRealDate_Day = 0,
        iMorvaScaler_Fullscreen = 0, iMorvaScaler_Nearest = 0, iMorvaScaler_Magnification = 0,
        iSaveFolders = 0, iInterval = 0, iCharacterLevel = 0, iCharacterWeight = 0;

    struct Entry {
        std::u16string_view name;
        KeyType type;
        int AppSettings::*integer;           // for Integer keys
        std::u16string AppSettings::*text;   // for String keys
        // The values the program gives a meaning to (Integer keys); any value is taken for the
        // flags, which count as on when nonzero.
        int low = INT_MIN, high = INT_MAX;
    };
    // The 78 keys in reading order.
    static const std::vector<Entry>& KeyTable();
    // The entry of that key (case of A to Z ignored, as the profile functions compare), or null.
    static const Entry* FindKey(std::u16string_view name);
    // The value an Integer key has when the file does not set it.
    static int DefaultOf(const Entry& entry) { return AppSettings().*entry.integer; }

    // Reads every key in table order; integers default to their current value.
    void Load(ProfileSource& source);

    // The language after loading: -1 follows the user's locale (0x0411 Japanese); 0 and 1 stand;
    // any other value counts as English.
    static int ResolveLanguage(int iLanguage, unsigned userLocale);
};

}  // namespace vrl
