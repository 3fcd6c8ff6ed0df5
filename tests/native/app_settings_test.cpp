#include "settings/app_settings.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using vrl::AppSettings;

// A profile held in memory, with the profile integer reading rules.
class FakeProfile : public vrl::ProfileSource {
public:
    std::map<std::u16string, std::u16string> values;  // key -> raw value, section Vorrel_v5 only
    std::vector<std::u16string> readOrder;

    std::u16string ReadString(std::u16string_view section, std::u16string_view key) override {
        readOrder.emplace_back(key);
        if (section != u"Vorrel_v5") return {};
        auto it = values.find(std::u16string(key));
        return it == values.end() ? std::u16string() : it->second;
    }
    int ReadInt(std::u16string_view section, std::u16string_view key, int fallback) override {
        readOrder.emplace_back(key);
        auto it = values.find(std::u16string(key));
        if (section != u"Vorrel_v5" || it == values.end()) return fallback;
        const std::u16string& v = it->second;
        size_t i = 0;
        bool negative = false;
        if (i < v.size() && (v[i] == u'-' || v[i] == u'+')) negative = v[i++] == u'-';
        int n = 0;
        while (i < v.size() && v[i] >= u'0' && v[i] <= u'9') n = n * 10 + (v[i++] - u'0');
        return negative ? -n : n;
    }
};

TEST(AppSettings, TableHasEveryKeyOnceInReadingOrder) {
    const auto& table = AppSettings::KeyTable();
    ASSERT_EQ(table.size(), 78u);
    EXPECT_EQ(table.front().name, u"iLanguage");
    EXPECT_EQ(table[1].name, u"wstrMorva");
    EXPECT_EQ(table[2].name, u"enLogExtender");
    EXPECT_EQ(table[51].name, u"enCheatEngine");
    EXPECT_EQ(table[52].name, u"iStockMK");
    EXPECT_EQ(table.back().name, u"iCharacterWeight");
    std::set<std::u16string_view> names;
    for (const auto& entry : table) {
        EXPECT_TRUE(names.insert(entry.name).second) << "twice in the table";
        EXPECT_EQ(entry.type == AppSettings::KeyType::String, entry.text != nullptr);
        EXPECT_EQ(entry.type == AppSettings::KeyType::Integer, entry.integer != nullptr);
    }
}

TEST(AppSettings, KeyTypesComeFromTheNamePrefix) {
    EXPECT_EQ(AppSettings::TypeOfKey(u"wstrMorva"), AppSettings::KeyType::String);
    EXPECT_EQ(AppSettings::TypeOfKey(u"sName"), AppSettings::KeyType::String);
    EXPECT_EQ(AppSettings::TypeOfKey(u"enPetInfo"), AppSettings::KeyType::Integer);
    EXPECT_EQ(AppSettings::TypeOfKey(u"uCount"), AppSettings::KeyType::Integer);
    EXPECT_EQ(AppSettings::TypeOfKey(u"bFlag"), AppSettings::KeyType::Skipped);
}

TEST(AppSettings, OnlyTheGameGivenLeavesDefaults) {
    FakeProfile profile;
    profile.values[u"wstrMorva"] = u"C:\\Morva\\morva.exe";
    AppSettings settings;
    settings.Load(profile);
    EXPECT_EQ(settings.wstrMorva, u"C:\\Morva\\morva.exe");
    EXPECT_EQ(settings.iLanguage, -1);  // default kept: the locale decides later
    EXPECT_EQ(settings.enLogExtender, 0);
    EXPECT_EQ(settings.iCharacterWeight, 0);
    ASSERT_EQ(profile.readOrder.size(), 78u);
    EXPECT_EQ(profile.readOrder.front(), u"iLanguage");
}

TEST(AppSettings, ValuesAreReadLikeTheProfileFunctionsAndStringsAreCut) {
    FakeProfile profile;
    profile.values[u"enPetInfo"] = u"abc";
    profile.values[u"enQuickSearch"] = u"7";
    profile.values[u"iJpegQuality"] = u"-12px";
    profile.values[u"wstrMorva"] = std::u16string(300, u'x');
    AppSettings settings;
    settings.Load(profile);
    EXPECT_EQ(settings.enPetInfo, 0);
    EXPECT_EQ(settings.enQuickSearch, 7);
    EXPECT_EQ(settings.iJpegQuality, -12);
    EXPECT_EQ(settings.wstrMorva.size(), 255u);
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
