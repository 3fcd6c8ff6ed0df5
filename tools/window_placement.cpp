#include "tools/window_placement.h"

#include <string>

#include "settings/table_schema.h"

namespace vrl::placement {
namespace {

constexpr int kMissingSide = 2147483647;
constexpr int kMissingShow = 5;

// The file's columns (id, the four sides, showCmd) and options (docked, tab page), in file order.
const TableSchema& Schema() { return *FindTableSchema(kFileName); }

std::u16string Number(int value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

KcsvFile ToTable(const SavedLayout& layout) {
    const TableSchema& schema = Schema();
    KcsvFile table;
    table.SetOption(schema.options[0].name, Number(layout.logDocked));
    table.SetOption(schema.options[1].name, Number(layout.logTabPage));
    if (layout.windows.empty()) return table;
    for (const ColumnSpec& column : schema.columns) table.AddColumn(column.name);
    for (const SavedWindow& window : layout.windows) {
        const unsigned row = table.RowCount();
        table.InsertRow(row);
        const std::u16string cells[] = {window.id,
                                        Number(window.normal.left),
                                        Number(window.normal.top),
                                        Number(window.normal.right),
                                        Number(window.normal.bottom),
                                        Number(window.showCmd)};
        for (unsigned column = 0; column < 6; ++column) table.SetCell(row, column, cells[column]);
    }
    return table;
}

SavedLayout FromTable(const KcsvFile& table) {
    const TableSchema& schema = Schema();
    const auto name = [&](int column) { return schema.columns[column].name; };
    SavedLayout layout;
    layout.logDocked = ReadInt(table.OptionValue(schema.options[0].name));
    layout.logTabPage = ReadInt(table.OptionValue(schema.options[1].name));
    const int idColumn = table.ColumnIndex(name(0));
    for (unsigned row = 0; row < table.RowCount(); ++row) {
        SavedWindow window;
        if (idColumn >= 0) window.id = table.Cell(row, static_cast<unsigned>(idColumn), u"");
        window.normal = {table.CellInt(row, name(1), kMissingSide), table.CellInt(row, name(2), kMissingSide),
                         table.CellInt(row, name(3), kMissingSide), table.CellInt(row, name(4), kMissingSide)};
        window.showCmd = table.CellInt(row, name(5), kMissingShow);
        layout.windows.push_back(std::move(window));
    }
    return layout;
}

PixelRect AboveWorkAreaRect(const DefaultPlace& place, const WorkArea& area) {
    const int top = area.bottom - place.rect.top;
    return {place.rect.left, top, place.rect.left + place.rect.right, top + place.rect.bottom};
}

}  // namespace vrl::placement
