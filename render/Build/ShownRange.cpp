#include "render/Build/ShownRange.h"

#include <algorithm>

#include "DOM/Table.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "render/Build/ShownLines.h"
#include "render/Build/TableStyles.h"

namespace Zorv::Render {

namespace {

using DOM::Table;

void extend(TableRange& range, TableRange const& part) noexcept {
  if (part.isEmpty()) {
    return;
  }
  range = range.isEmpty() ? part
                          : TableRange{std::min(range.firstRow, part.firstRow),
                                       std::min(range.firstColumn, part.firstColumn),
                                       std::max(range.endRow, part.endRow),
                                       std::max(range.endColumn, part.endColumn)};
}

void extend(TableRange& range, unsigned long row, unsigned long column) noexcept {
  extend(range, {row, column, row + 1, column + 1});
}

bool isShown(DOM::Cell const& cell, Looks& looks) {
  return !FormulaModel::isFormulaEmpty(cell.value) ||
         (cell.style && looks.find(cell.style.get(), nullptr).isVisible());
}

/// A merged cell that goes to the end of the sheet counts with its first row or column
/// there.
TableRange withoutEndless(TableRange range) noexcept {
  range.endRow = range.endRow == Table::rowCount ? range.firstRow + 1 : range.endRow;
  range.endColumn = range.endColumn == Table::columnCount ? range.firstColumn + 1 : range.endColumn;
  return range;
}

/// The last values of rows, whose texts may run out of the range.
class LastTexts {
public:
  LastTexts(Looks& looks, CellTexts const& texts) noexcept : _looks(looks), _texts(texts) {}

  /// Cells with values, row by row.
  void add(DOM::CellInfo const& cell) {
    if (!_cells.empty() && _cells.back().getRowIndex() == cell.getRowIndex()) {
      _cells.back() = cell;
    } else {
      _cells.push_back(cell);
    }
  }

  /// The column after the last one that a text reaches.
  [[nodiscard]] unsigned long findEnd(TableRange const& range,
                                      Workbook::SheetLayout const& layout) {
    constexpr unsigned long mostColumns = 40;
    auto const columns =
        ShownLines::ofColumns(layout, findDigitWidth(_looks.get(0).font), range.firstColumn,
                              std::min(range.endColumn + mostColumns, Table::columnCount));
    std::vector<double> ends;
    double at = 0;
    for (auto const& column : columns.get()) {
      at += column.size;
      ends.push_back(at);
    }
    double reached = 0;
    std::uint32_t const shown = columns.atOrAfter(range.endColumn);
    double const inside = shown > 0 ? ends[shown - 1] : 0;
    for (DOM::CellInfo const& cell : _cells) {
      if (auto const place = columns.find(cell.getColIndex())) {
        double const begin = ends[*place] - columns[*place].size;
        reached = std::max(reached, begin + measure(cell, inside - begin));
      }
    }
    auto const last = std::ranges::lower_bound(ends, reached);
    auto const line = static_cast<std::uint32_t>(last - ends.begin());
    unsigned long const end =
        columns.size() == 0 ? 0 : columns[std::min(line, columns.size() - 1)].index + 1;
    return std::max(end, range.endColumn);
  }

private:
  /// Width that a text takes to the right of its cell's left edge; 0 for one that is surely not
  /// wider than `room`.
  [[nodiscard]] double measure(DOM::CellInfo const& cell, double room) {
    auto const* const text = boost::get<FormulaModel::FormulaString>(&cell.getCell()->value);
    StyleLook const& look = _looks.find(cell.getCell()->style.get(), nullptr);
    bool const runsOver = text != nullptr && look.isFixedInWidth && !look.wraps;
    if (!runsOver || static_cast<double>(text->value.size()) * look.measures.digit * 2 < room) {
      return 0;
    }
    CellText const shown = _texts.write(cell.getCell()->value, look, 0);
    bool const runsRight = shown.horizontal == DOM::HorizontalAlignment::Left;
    // Real fonts may be wider than the estimate.
    constexpr double fontAllowance = 1.15;
    return runsRight ? measureText(shown.text, look.measures) * fontAllowance : 0;
  }

  Looks& _looks;
  CellTexts const& _texts;
  std::vector<DOM::CellInfo> _cells;
};

}  // namespace

TableRange findShownRange(Workbook::Sheet const& sheet, Resolution const& resolution, Looks& looks,
                          CellTexts const& texts) {
  TableRange range;
  LastTexts lastTexts(looks, texts);
  auto [cell, end] = sheet.table->getRangeIterators({0, 0, Table::rowCount, Table::columnCount});
  for (; cell != end; ++cell) {
    DOM::CellInfo const info = cell.getCellInfo();
    if (isShown(*info.getCell(), looks)) {
      extend(range, info.getRowIndex(), info.getColIndex());
    }
    if (!FormulaModel::isFormulaEmpty(info.getCell()->value)) {
      lastTexts.add(info);
    }
  }
  for (DecidedPosition const& position : resolution.positions) {
    if (position.visuals > 0 || looks.find(nullptr, position.style.get()).isVisible()) {
      extend(range, position.row, position.column);
    }
  }
  for (TableRange const& merged : sheet.layout.mergedRanges) {
    extend(range, withoutEndless(merged));
  }
  for (Workbook::StyledTable const& table : sheet.styledTables) {
    if (TableStyles::coversEmptyCells(table)) {
      extend(range, table.range);
    }
  }
  if (range.isEmpty()) {
    return {};
  }
  constexpr unsigned long farRow = 1'000;
  constexpr unsigned long farColumn = 100;
  range.firstRow = range.firstRow < farRow ? 0 : range.firstRow;
  range.firstColumn = range.firstColumn < farColumn ? 0 : range.firstColumn;
  range.endColumn = lastTexts.findEnd(range, sheet.layout);
  return range;
}

TableRange limitPositions(TableRange const& range, std::uint64_t most) noexcept {
  if (range.isEmpty() || most == 0) {
    return {};
  }
  TableRange limited = range;
  std::uint64_t const columns = std::min<std::uint64_t>(range.endColumn - range.firstColumn, most);
  std::uint64_t const rows = std::min<std::uint64_t>(range.endRow - range.firstRow, most / columns);
  limited.endColumn = range.firstColumn + columns;
  limited.endRow = range.firstRow + rows;
  return limited;
}

}  // namespace Zorv::Render
