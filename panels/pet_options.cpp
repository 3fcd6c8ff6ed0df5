#include "panels/pet_options.h"

#include <string>

#include "settings/decimal_text.h"
#include "settings/table_schema.h"

namespace vrl {
namespace {

namespace names = tables::petinfo;

const TableSchema& Schema() { return SchemaOf(names::kFile); }

}  // namespace

PetListLook PetListLook::Read(const KcsvFile& table) {
    const TableSchema& schema = Schema();
    PetListLook look;
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

int PetListLook::RatioOf(int bar, std::u16string_view text) {
    return Schema().Option(names::kBarRatio[static_cast<std::size_t>(bar)]).value.NumberOf(text);
}

void PetListLook::Write(KcsvFile& table) const {
    table.SetOption(names::kTextColour, FormatColour(text));
    table.SetOption(names::kBackColour, FormatColour(background));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        table.SetOption(names::kBarEnabled[i], DecimalText(bars[i].drawn ? 1 : 0));
        table.SetOption(names::kBarRatio[i], DecimalText(bars[i].ratio));
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
    const TableSchema& schema = Schema();
    PetPanelOptions options;
    options.filterIndex = schema.OptionNumber(table, names::kFilterIndex);
    options.autoAdjust = schema.OptionNumber(table, names::kAutoAdjustColumn) != 0;
    for (std::size_t i = 0; i < options.widths.size(); ++i)
        options.widths[i] = schema.OptionNumber(table, names::kColumnWidth[i]);
    return options;
}

void PetPanelOptions::Write(KcsvFile& table) const {
    table.SetOption(names::kAutoAdjustColumn, DecimalText(autoAdjust ? 1 : 0));
    table.SetOption(names::kFilterIndex, DecimalText(filterIndex));
    for (std::size_t i = 0; i < widths.size(); ++i) table.SetOption(names::kColumnWidth[i], DecimalText(widths[i]));
}

}  // namespace vrl
