#include "music/volume_table.h"

#include <string>

#include "settings/kcsv.h"
#include "settings/table_schema.h"

namespace vrl {
namespace {

constexpr std::u16string_view kFileColumn = tables::volume::kFileColumn;
constexpr std::u16string_view kVolumeColumn = tables::volume::kVolume;
constexpr std::u16string_view kMasterOption = tables::volume::kMasterVolume;

std::u16string NumberText(int n) {
    const std::string digits = std::to_string(n);
    return std::u16string(digits.begin(), digits.end());
}

// The clamp the table's schema gives a volume read from the file.
int Ranged(std::u16string_view column, int value, bool option) {
    if (const TableSchema* schema = FindTableSchema(tables::volume::kFile)) {
        if (option) {
            if (const OptionSpec* spec = FindOption(*schema, column)) return ApplyRange(spec->value.range, value);
        } else if (const ColumnSpec* spec = FindColumn(*schema, column)) {
            return ApplyRange(spec->value.range, value);
        }
    }
    return VolumeTable::Clamp(value);
}

}  // namespace

void VolumeTable::Load(const KcsvFile& table) {
    const int file = table.ColumnIndex(kFileColumn);
    const int volume = table.ColumnIndex(kVolumeColumn);
    for (unsigned row = 0; row < table.RowCount(); ++row) {
        const std::u16string key = file < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(file), u"");
        const std::u16string cell = volume < 0 ? std::u16string() : table.Cell(row, static_cast<unsigned>(volume), u"");
        Set(key, cell.empty() ? kDefault : Ranged(kVolumeColumn, ReadInt(cell), false));
    }
}

int VolumeTable::MasterVolumeOf(const KcsvFile& table) {
    if (table.OptionIndex(kMasterOption) < 0) return kDefault;
    return Ranged(kMasterOption, ReadInt(table.OptionValue(kMasterOption)), true);
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
    table.SetOption(kMasterOption, NumberText(masterVolume));
    for (unsigned row = 0; row < order_.size(); ++row) {
        table.InsertRow(row);
        table.SetCell(row, file, order_[row]);
        table.SetCell(row, volume, NumberText(volumes_.at(order_[row])));
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
