#include "panels/pet_options.h"

#include "settings/table_schema.h"

#include <string>


namespace vrl {
namespace {

namespace names = tables::petinfo;

// Names, defaults and the ratio clamp come from the table schema, which the checker shares.
const TableSchema& Schema() { return SchemaOf(names::kFile); }

std::u16string Decimal(int value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

PetListLook::PetListLook() {
    for (std::size_t i = 0; i < bars.size(); ++i) bars[i].bar = Schema().Option(names::kBarColour[i]).value.fallbackColour;
}

PetListLook PetListLook::Read(const KcsvFile& table) {
    PetListLook look;
    const TableSchema& schema = Schema();
    look.text = schema.OptionColour(table, names::kTextColour);
    look.background = schema.OptionColour(table, names::kBackColour);
    for (std::size_t i = 0; i < look.bars.size(); ++i) {
        PetBarLook& bar = look.bars[i];
        bar.drawn = schema.OptionNumber(table, names::kBarEnabled[i]) != 0;
        bar.ratio = schema.OptionNumber(table, names::kBarRatio[i]);
        bar.bar = schema.OptionColour(table, names::kBarColour[i]);
        bar.background = schema.OptionColour(table, names::kBarBackColour[i]);
        bar.frame = schema.OptionColour(table, names::kBarFrameColour[i]);
    }
    return look;
}

void PetListLook::Write(KcsvFile& table) const {
    table.SetOption(names::kTextColour, FormatColour(text));
    table.SetOption(names::kBackColour, FormatColour(background));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        table.SetOption(names::kBarEnabled[i], Decimal(bars[i].drawn ? 1 : 0));
        table.SetOption(names::kBarRatio[i], Decimal(ClampBarRatio(bars[i].ratio)));
    }
    for (std::size_t i = 0; i < bars.size(); ++i) {
        table.SetOption(names::kBarColour[i], FormatColour(bars[i].bar));
        table.SetOption(names::kBarBackColour[i], FormatColour(bars[i].background));
        table.SetOption(names::kBarFrameColour[i], FormatColour(bars[i].frame));
    }
}

std::array<int, kPetBarCount> PetListLook::Ratios() const {
    std::array<int, kPetBarCount> ratios{};
    for (std::size_t i = 0; i < bars.size(); ++i) ratios[i] = bars[i].ratio;
    return ratios;
}

PetPanelOptions PetPanelOptions::Read(const KcsvFile& table) {
    PetPanelOptions options;
    const TableSchema& schema = Schema();
    options.filterIndex = schema.OptionNumber(table, names::kFilterIndex);
    options.autoAdjust = schema.OptionNumber(table, names::kAutoAdjustColumn) != 0;
    for (std::size_t i = 0; i < options.widths.size(); ++i)
        options.widths[i] = schema.OptionNumber(table, names::kColumnWidth[i]);
    return options;
}

void PetPanelOptions::Write(KcsvFile& table) const {
    table.SetOption(names::kAutoAdjustColumn, Decimal(autoAdjust ? 1 : 0));
    table.SetOption(names::kFilterIndex, Decimal(filterIndex));
    for (std::size_t i = 0; i < widths.size(); ++i) table.SetOption(names::kColumnWidth[i], Decimal(widths[i]));
}

}  // namespace vrl
