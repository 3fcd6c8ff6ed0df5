#include "music/volume_table.h"

#include <string>

#include "settings/decimal_text.h"
#include "settings/kcsv.h"
#include "settings/table_schema.h"

namespace vrl {
namespace {

constexpr std::u16string_view kFileColumn = tables::volume::kFileColumn;
constexpr std::u16string_view kVolumeColumn = tables::volume::kVolume;
constexpr std::u16string_view kMasterOption = tables::volume::kMasterVolume;

const TableSchema& Schema() { return SchemaOf(tables::volume::kFile); }

}  // namespace

void VolumeTable::Load(const KcsvFile& table) {
    const int file = table.ColumnIndex(kFileColumn);
    const int volume = table.ColumnIndex(kVolumeColumn);
    for (unsigned row = 0; row < table.RowCount(); ++row) {
        const std::u16string key = file < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(file), u"");
        const std::u16string cell = volume < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(volume), u"");
        Set(key, Schema().Column(kVolumeColumn).value.NumberOf(cell, volume >= 0));
    }
}

int VolumeTable::MasterVolumeOf(const KcsvFile& table) {
    return Schema().OptionNumber(table, kMasterOption);
}

void VolumeTable::AddColumnsTo(KcsvFile& table) {
    if (table.ColumnIndex(kFileColumn) < 0) table.AddColumn(kFileColumn);
    if (table.ColumnIndex(kVolumeColumn) < 0) table.AddColumn(kVolumeColumn);
}

void VolumeTable::WriteTo(KcsvFile& table, int masterVolume) const {
    AddColumnsTo(table);
    const auto file = static_cast<unsigned>(table.ColumnIndex(kFileColumn));
    const auto volume = static_cast<unsigned>(table.ColumnIndex(kVolumeColumn));
    table.ClearRows();
    table.SetOption(kMasterOption, DecimalText(masterVolume));
    for (unsigned row = 0; row < order_.size(); ++row) {
        table.InsertRow(row);
        table.SetCell(row, file, order_[row]);
        table.SetCell(row, volume, DecimalText(volumes_.at(order_[row])));
    }
}

int VolumeTable::VolumeOf(const std::u16string& file) const {
    const auto it = volumes_.find(file);
    return it == volumes_.end() ? kDefault : it->second;
}

void VolumeTable::Set(const std::u16string& file, int volume) {
    auto [it, added] = volumes_.emplace(file, volume);
    if (added) {
        order_.push_back(file);
    } else {
        it->second = volume;
    }
}

}  // namespace vrl
