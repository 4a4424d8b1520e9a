#include "render/Draw/SheetGeometry.h"

#include <algorithm>
#include <cstddef>

#include "Utils/Exceptions.h"

namespace Zorv::Render::Draw {

namespace {

constexpr std::uint32_t rowsOfBlock = 64;

std::vector<double> findEdges(std::vector<Line> const& lines, PixelGrid const& grid) {
  constexpr double largest = 16384;
  std::vector<double> edges{0};
  edges.reserve(lines.size() + 1);
  double end = 0;
  for (Line const& line : lines) {
    // The comparison is false for what is not a number.
    end += line.size > 0 ? std::min(line.size, largest) : 0;
    edges.push_back(grid.snap(end));
  }
  return edges;
}

/// The lines between two places.
LineSpan findSpan(std::vector<double> const& edges, double from, double to) noexcept {
  auto const begin = std::ranges::upper_bound(edges, from);
  auto const end = std::ranges::lower_bound(edges, to);
  auto const last = static_cast<std::ptrdiff_t>(edges.size()) - 1;
  auto const first = std::clamp<std::ptrdiff_t>(begin - edges.begin() - 1, 0, last);
  return {static_cast<std::uint32_t>(first),
          static_cast<std::uint32_t>(std::clamp(end - edges.begin(), first, last))};
}

/// The end of a cell's lines, which hostile counts cannot push beyond the last line.
std::uint32_t endOf(std::uint32_t first, std::uint32_t count, std::size_t lines) noexcept {
  return static_cast<std::uint32_t>(std::min<std::uint64_t>(std::uint64_t{first} + count, lines));
}

/// Can a cell beyond this one not reach over it?
bool endsReach(PictureCell const& cell) noexcept {
  return !cell.text.empty() || cell.columnCount > 1;
}

}  // namespace

SheetGeometry::SheetGeometry(SheetPicture const& sheet, PixelGrid const& grid)
    : _sheet(sheet),
      _grid(grid),
      _rowEdges(findEdges(sheet.rows, grid)),
      _columnEdges(findEdges(sheet.columns, grid)) {
  indexCells();
}

void SheetGeometry::indexCells() {
  auto const& cells = _sheet.cells;
  auto const hasLook = [&](Line const& line) { return line.look < _sheet.looks.size(); };
  if (!std::ranges::all_of(_sheet.rows, hasLook) || !std::ranges::all_of(_sheet.columns, hasLook)) {
    throw BaseRuntimeError("cannot draw: a line of the picture has no look");
  }
  _firstCells.assign(_sheet.rows.size() + 1, 0);
  _tallCells.resize(_sheet.rows.size() / rowsOfBlock + 1);
  for (std::uint32_t i = 0; i < cells.size(); ++i) {
    PictureCell const& cell = cells[i];
    bool const isBehind = i == 0 || cells[i - 1].row < cell.row ||
                          (cells[i - 1].row == cell.row && cells[i - 1].column < cell.column);
    if (!isBehind || cell.row >= _sheet.rows.size() || cell.column >= _sheet.columns.size() ||
        cell.look >= _sheet.looks.size() || cell.edges >= _sheet.edges.size() ||
        cell.runs > _sheet.richTexts.size() || cell.link > _sheet.links.size()) {
      throw BaseRuntimeError("cannot draw: a cell of the picture is out of place");
    }
    ++_firstCells[cell.row + 1];
    if (cell.rowCount > 1) {
      indexTallCell(i);
    }
  }
  std::partial_sum(_firstCells.begin(), _firstCells.end(), _firstCells.begin());
}

void SheetGeometry::indexTallCell(std::uint32_t index) {
  LineSpan const rows = cover(_sheet.cells[index]).rows;
  for (std::uint32_t block = rows.begin / rowsOfBlock; block <= (rows.end - 1) / rowsOfBlock;
       ++block) {
    _tallCells[block].push_back(index);
  }
}

Box SheetGeometry::place(LineBlock const& lines) const noexcept {
  double const begin = _columnEdges[lines.columns.begin];
  double const end = _columnEdges[lines.columns.end];
  double const top = _rowEdges[lines.rows.begin];
  double const bottom = _rowEdges[lines.rows.end];
  return _sheet.rightToLeft ? Box{getWidth() - end, top, getWidth() - begin, bottom}
                            : Box{begin, top, end, bottom};
}

LineBlock SheetGeometry::cover(PictureCell const& cell) const noexcept {
  return {{cell.row, endOf(cell.row, std::max(cell.rowCount, 1U), _sheet.rows.size())},
          {cell.column, endOf(cell.column, std::max(cell.columnCount, 1U), _sheet.columns.size())}};
}

LineSpan SheetGeometry::findReach(PictureCell const& cell) const noexcept {
  LineSpan const columns = cover(cell).columns;
  FreeColumns const free = freeColumnsOf(_sheet, cell);
  return {columns.begin - std::min(columns.begin, free.before),
          endOf(columns.end, free.after, _sheet.columns.size())};
}

bool SheetGeometry::isIn(PictureCell const& cell, LineSpan const& columns) const noexcept {
  LineSpan const reach = findReach(cell);
  return reach.begin < columns.end && columns.begin < reach.end;
}

LineBlock SheetGeometry::linesIn(Box const& box) const noexcept {
  bool const isMirrored = _sheet.rightToLeft;
  return {findSpan(_rowEdges, box.top, box.bottom),
          findSpan(_columnEdges, isMirrored ? getWidth() - box.right : box.left,
                   isMirrored ? getWidth() - box.left : box.right)};
}

std::span<PictureCell const> SheetGeometry::cellsOfRow(std::uint32_t row) const noexcept {
  return std::span(_sheet.cells).subspan(_firstCells[row], _firstCells[row + 1] - _firstCells[row]);
}

void SheetGeometry::findCells(LineBlock const& lines,
                              std::vector<PictureCell const*>& cells) const {
  cells.clear();
  for (std::uint32_t const index : _tallCells[lines.rows.begin / rowsOfBlock]) {
    PictureCell const& cell = _sheet.cells[index];
    if (cell.row < lines.rows.begin && cover(cell).rows.end > lines.rows.begin &&
        isIn(cell, lines.columns)) {
      cells.push_back(&cell);
    }
  }
  for (std::uint32_t row = lines.rows.begin; row < lines.rows.end; ++row) {
    auto const candidates = cellsOfRow(row);
    auto first =
        std::ranges::lower_bound(candidates, lines.columns.begin, {}, &PictureCell::column);
    while (first != candidates.begin()) {
      --first;
      if (endsReach(*first)) {
        break;
      }
    }
    for (; first != candidates.end(); ++first) {
      if (isIn(*first, lines.columns)) {
        cells.push_back(&*first);
      }
      if (first->column >= lines.columns.end && endsReach(*first)) {
        break;
      }
    }
  }
}

}  // namespace Zorv::Render::Draw
