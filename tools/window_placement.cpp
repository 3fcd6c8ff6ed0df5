#include "tools/window_placement.h"

#include <string>

#include "settings/decimal_text.h"
#include "settings/table_schema.h"

namespace vrl::placement {
namespace {

constexpr int kMissingSide = 2147483647;
constexpr int kMissingShow = 5;

namespace names = tables::placement;

// The file's columns (id, the four sides, showCmd), in file order.
const TableSchema& Schema() { return SchemaOf(names::kFile); }

}  // namespace

KcsvFile ToTable(const SavedLayout& layout) {
    KcsvFile table;
    table.SetOption(names::kDocked, DecimalText(layout.logDocked));
    table.SetOption(names::kTabPage, DecimalText(layout.logTabPage));
    if (layout.windows.empty()) return table;
    for (const ColumnSpec& column : Schema().columns) table.AddColumn(column.name);
    for (const SavedWindow& window : layout.windows) {
        const unsigned row = table.RowCount();
        table.InsertRow(row);
        const std::u16string cells[] = {window.id,
                                        DecimalText(window.normal.left),
                                        DecimalText(window.normal.top),
                                        DecimalText(window.normal.right),
                                        DecimalText(window.normal.bottom),
                                        DecimalText(window.showCmd)};
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

DefaultPlace DefaultPlaceOf(std::u16string_view id) {
    static const struct {
        std::u16string_view id;
        DefaultPlace place;
    } kLayout[] = {
        {kGameId, AtScreenOrigin()},
        {kFullLogId, AboveWorkArea(0, 360, 640, 360)},
        {kExtractedLogId, AboveWorkArea(640, 360, 640, 360)},
        {kMusicPanelId, AnchoredInArea({-276, -222, 0, 0})},
        {kQuickSearchId, AboveWorkArea(0, 390, 541, 30)},
        {kPetPanelId, AnchoredInArea({-520, 0, 0, 400})},
        {kItemPanelId, AnchoredInArea({-700, 0, -520, 240})},
    };
    for (const auto& entry : kLayout) {
        if (entry.id == id) return entry.place;
    }
    return AtScreenOrigin();
}

PixelRect ScreenFromWorkspace(const PixelRect& workspace, int workLeft, int workTop) {
    return {workspace.left + workLeft, workspace.top + workTop, workspace.right + workLeft,
            workspace.bottom + workTop};
}

PixelRect AboveWorkAreaRect(const DefaultPlace& place, const WorkArea& area, int dpi) {
    const int left = ScaleToDpi(place.rect.left, dpi);
    const int top = area.bottom - ScaleToDpi(place.rect.top, dpi);
    return {left, top, left + ScaleToDpi(place.rect.right, dpi), top + ScaleToDpi(place.rect.bottom, dpi)};
}

}  // namespace vrl::placement
