#include "panels/pet_options.h"

#include <string>


namespace vrl {
namespace {

constexpr const char16_t* kFilterIndex = u"iFilterIndex";
constexpr const char16_t* kAutoAdjust = u"bAutoAdjustColumn";
constexpr const char16_t* kWidthOptions[kPetColumnCount] = {
    u"iChipColumnWidth", u"iNameColumnWidth",   u"iStatColumnWidth", u"iLvColumnWidth",
    u"iToLvXpColumnWidth", u"iHpColumnWidth", u"iMpColumnWidth",   u"iStColumnWidth"};
constexpr const char16_t* kTextColour = u"colText";
constexpr const char16_t* kBackground = u"colBk";

struct BarOptions {
    const char16_t* drawn;
    const char16_t* ratio;
    const char16_t* bar;
    const char16_t* background;
    const char16_t* frame;
};
constexpr BarOptions kBarOptions[kPetBarCount] = {
    {u"bXpBarEnabled", u"iXpColumnWidthRatio", u"colXpBar", u"colXpBarBk", u"colXpBarFrame"},
    {u"bHpBarEnabled", u"iHpColumnWidthRatio", u"colHpBar", u"colHpBarBk", u"colHpBarFrame"},
    {u"bMpBarEnabled", u"iMpColumnWidthRatio", u"colMpBar", u"colMpBarBk", u"colMpBarFrame"},
    {u"bStBarEnabled", u"iStColumnWidthRatio", u"colStBar", u"colStBarBk", u"colStBarFrame"},
};
constexpr Colour kDefaultBarColours[kPetBarCount] = {MakeColour(255, 255, 255), MakeColour(255, 155, 155),
                                                     MakeColour(0, 0, 255), MakeColour(175, 255, 175)};

bool Has(const KcsvFile& table, const char16_t* name) { return table.OptionIndex(name) >= 0; }

int IntOption(const KcsvFile& table, const char16_t* name, int fallback) {
    return Has(table, name) ? ReadInt(table.OptionValue(name)) : fallback;
}

Colour ColourOption(const KcsvFile& table, const char16_t* name, Colour fallback) {
    return ParseColour(table.OptionValue(name), fallback);
}

std::u16string Decimal(int value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

PetListLook::PetListLook() {
    for (int i = 0; i < kPetBarCount; ++i) bars[static_cast<std::size_t>(i)].bar = kDefaultBarColours[i];
}

PetListLook PetListLook::Read(const KcsvFile& table) {
    PetListLook look;
    look.text = ColourOption(table, kTextColour, look.text);
    look.background = ColourOption(table, kBackground, look.background);
    for (std::size_t i = 0; i < look.bars.size(); ++i) {
        const BarOptions& names = kBarOptions[i];
        PetBarLook& bar = look.bars[i];
        bar.drawn = IntOption(table, names.drawn, 1) != 0;
        bar.ratio = ClampBarRatio(IntOption(table, names.ratio, 1));
        bar.bar = ColourOption(table, names.bar, bar.bar);
        bar.background = ColourOption(table, names.background, bar.background);
        bar.frame = ColourOption(table, names.frame, bar.frame);
    }
    return look;
}

void PetListLook::Write(KcsvFile& table) const {
    table.SetOption(kTextColour, FormatColour(text));
    table.SetOption(kBackground, FormatColour(background));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        table.SetOption(kBarOptions[i].drawn, Decimal(bars[i].drawn ? 1 : 0));
        table.SetOption(kBarOptions[i].ratio, Decimal(ClampBarRatio(bars[i].ratio)));
    }
    for (std::size_t i = 0; i < bars.size(); ++i) {
        table.SetOption(kBarOptions[i].bar, FormatColour(bars[i].bar));
        table.SetOption(kBarOptions[i].background, FormatColour(bars[i].background));
        table.SetOption(kBarOptions[i].frame, FormatColour(bars[i].frame));
    }
}

std::array<int, kPetBarCount> PetListLook::Ratios() const {
    std::array<int, kPetBarCount> ratios{};
    for (std::size_t i = 0; i < bars.size(); ++i) ratios[i] = bars[i].ratio;
    return ratios;
}

PetPanelOptions PetPanelOptions::Read(const KcsvFile& table) {
    PetPanelOptions options;
    options.filterIndex = IntOption(table, kFilterIndex, options.filterIndex);
    options.autoAdjust = IntOption(table, kAutoAdjust, 1) != 0;
    for (std::size_t i = 0; i < options.widths.size(); ++i)
        options.widths[i] = IntOption(table, kWidthOptions[i], options.widths[i]);
    return options;
}

void PetPanelOptions::Write(KcsvFile& table) const {
    table.SetOption(kAutoAdjust, Decimal(autoAdjust ? 1 : 0));
    table.SetOption(kFilterIndex, Decimal(filterIndex));
    for (std::size_t i = 0; i < widths.size(); ++i) table.SetOption(kWidthOptions[i], Decimal(widths[i]));
}

}  // namespace vrl
