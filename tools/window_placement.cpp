#include "tools/window_placement.h"

#include <string>

#include "settings/table_schema.h"

namespace vrl::placement {
namespace {

constexpr int kMissingSide = 2147483647;
constexpr int kMissingShow = 5;

namespace names = tables::placement;

// The file's columns (id, the four sides, showCmd), in file order.
const TableSchema& Schema() { return SchemaOf(names::kFile); }

std::u16string Number(int value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

KcsvFile ToTable(const SavedLayout& layout) {
    KcsvFile table;
    table.SetOption(names::kDocked, Number(layout.logDocked));
    table.SetOption(names::kTabPage, Number(layout.logTabPage));
    if (layout.windows.empty()) return table;
    for (const ColumnSpec& column : Schema().columns) table.AddColumn(column.name);
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
    layout.logDocked = ReadInt(table.OptionValue(names::kDocked));
    layout.logTabPage = ReadInt(table.OptionValue(names::kTabPage));
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

PixelRect AboveWorkAreaRect(const DefaultPlace& place, const WorkArea& area, int dpi) {
    const int left = ScaleToDpi(place.rect.left, dpi);
    const int top = area.bottom - ScaleToDpi(place.rect.top, dpi);
    return {left, top, left + ScaleToDpi(place.rect.right, dpi), top + ScaleToDpi(place.rect.bottom, dpi)};
}

}  // namespace vrl::placement
