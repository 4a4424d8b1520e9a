#include "render/Build/RowBuilder.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "FormulaModel/FormulaValueAccess.h"
#include "render/Build/FormatColours.h"

namespace Zorv::Render {

namespace {

using DOM::HorizontalAlignment;
using DOM::LineStyle;

FormulaModel::FormulaValue const& valueOf(PlacedCell const& placed) noexcept {
  static FormulaModel::FormulaValue const empty;
  return placed.cell != nullptr ? placed.cell->value : empty;
}

bool hasEdgedStyle(ShownLines const& lines, Looks& looks) {
  return std::ranges::any_of(lines.get(), [&looks](ShownLines::Entry const& line) {
    return line.style != nullptr && looks.find(line.style, nullptr).hasEdges;
  });
}

/// The lines of a merged cell that one of its positions has.
CellEdges takePart(CellEdges const& edges, PictureArea const& area, std::uint32_t row,
                   std::uint32_t column) {
  CellEdges part;
  part.left = column == area.columnBegin ? edges.left : part.left;
  part.right = column + 1 == area.columnEnd ? edges.right : part.right;
  part.top = row == area.rowBegin ? edges.top : part.top;
  part.bottom = row + 1 == area.rowEnd ? edges.bottom : part.bottom;
  return part;
}

DOM::BorderLine preferLine(DOM::BorderLine const& first, DOM::BorderLine const& second) {
  return first.style != LineStyle::None ? first : second;
}

/// Height of a text that is rotated, in pixels.
double measureRotated(double width, double lineHeight, int degrees) noexcept {
  constexpr double halfTurn = 180;
  double const angle = std::abs(degrees) * std::numbers::pi / halfTurn;
  return width * std::sin(angle) + lineHeight * std::cos(angle);
}

}  // namespace

RowBuilder::RowBuilder(BuildState const& state, PictureParts const& parts, RowTools const& tools,
                       SheetPicture& picture)
    : _state(state),
      _parts(parts),
      _tools(tools),
      _picture(picture),
      _cellRows(parts, hasEdgedStyle(parts.rows, tools.looks) ||
                           hasEdgedStyle(parts.columns, tools.looks)),
      _links(parts),
      _richTexts(parts.sheet, tools.looks),
      _edges(parts.columns.size(), _edgeTable, picture.cells),
      _steps(state.options.budget) {}

double RowBuilder::addRow(std::uint32_t row) {
  _row.clear();
  _rooms.assign(_parts.columns.size(), Room::Free);
  _partEdges[row % _partEdges.size()].clear();
  std::erase_if(_openMerged,
                [row](MergedEdges const& merged) { return merged.area.rowEnd <= row; });
  _steps.count(_parts.columns.size());
  std::size_t const before = _picture.cells.size();
  auto const& placed = _cellRows.advance(row);
  _links.advance(row);
  for (PlacedCell const& position : placed) {
    addPlaced(row, position);
  }
  addMergedEdges(row);
  _edges.endRow();
  findFree();
  if (_state.options.budget != nullptr) {
    _state.options.budget->takeMemory((_picture.cells.size() - before) * sizeof(PictureCell));
  }
  return _parts.rows[row].hasOwnSize || _parts.sheet.layout.rowsAreFixed ? 0 : measureHeight(row);
}

void RowBuilder::finish() {
  _edges.finish();
  _picture.edges = std::move(_edgeTable).take();
  // The file names the sides by the order of the columns, the picture by what is seen.
  if (_parts.sheet.layout.rightToLeft) {
    for (CellEdges& edges : _picture.edges) {
      std::swap(edges.left, edges.right);
    }
  }
  _picture.links = std::move(_links).take();
  _picture.richTexts = std::move(_richTexts).take();
}

void RowBuilder::addPlaced(std::uint32_t row, PlacedCell const& placed) {
  auto const* const conditional = placed.decided != nullptr ? placed.decided->style.get() : nullptr;
  StyleLook const& look = _tools.looks.find(placed.style, conditional);
  bool const hasValue = !FormulaModel::isFormulaEmpty(valueOf(placed));
  markRoom(placed, look, hasValue);
  bool const isShown =
      hasValue || look.isVisible() || placed.decided != nullptr || placed.merged != nullptr;
  if (!isShown) {
    return;
  }
  auto const index = static_cast<std::uint32_t>(_picture.cells.size());
  PictureCell& cell = _picture.cells.emplace_back();
  cell.row = row;
  cell.column = placed.column;
  cell.look = look.look;
  cell.link = _links.find(placed.column);
  if (placed.decided != nullptr) {
    addDecided(*placed.decided, cell);
  }
  if (hasValue) {
    addText(row, placed, look, cell);
  }
  if (placed.merged != nullptr) {
    beginMerged(placed, look, cell);
  } else {
    _edges.add(placed.column, look.edges, look.hasConditionalEdges, index);
  }
}

void RowBuilder::addDecided(DecidedPosition const& decided, PictureCell& cell) {
  cell.decision = decided.decision;
  _tools.decisions.countCell(decided.decision);
  if (decided.visuals == 0) {
    return;
  }
  Visuals::CellVisuals const& visuals = _parts.resolution.visuals[decided.visuals - 1];
  cell.bar = visuals.bar;
  if (visuals.scale && !visuals.scale->isBehindFill) {
    cell.scaleColour = visuals.scale->colour;
  }
  if (visuals.icon) {
    cell.icon = visuals.icon->icon;
  }
}

void RowBuilder::addText(std::uint32_t row, PlacedCell const& placed, StyleLook const& look,
                         PictureCell& cell) {
  CellText text = _tools.texts.write(valueOf(placed), look, widthOf(placed));
  cell.content = text.content;
  cell.horizontal = text.horizontal;
  bool const isHidden = placed.decided != nullptr && placed.decided->visuals > 0 &&
                        !_parts.resolution.visuals[placed.decided->visuals - 1].showValue;
  if (isHidden) {
    return;
  }
  cell.text = std::move(text.text);
  cell.splitAt = text.splitAt;
  cell.textColour = findFormatColour(_state.document, text.colour);
  auto const* const string = boost::get<FormulaModel::FormulaString>(&valueOf(placed));
  if (string != nullptr && text.isAsStored && !_parts.sheet.richCells.empty()) {
    unsigned long const tableRow =
        placed.merged != nullptr ? _parts.sheet.layout.mergedRanges[placed.merged->index].firstRow
                                 : _parts.rows[row].index;
    unsigned long const tableColumn =
        placed.merged != nullptr
            ? _parts.sheet.layout.mergedRanges[placed.merged->index].firstColumn
            : _parts.columns[placed.column].index;
    cell.runs = _richTexts.find(tableRow, tableColumn, string->value, look);
  }
  if (placed.merged == nullptr) {
    bool const isString = cell.content == CellContent::Text;
    _row.push_back(
        {_picture.cells.size() - 1, &look, isString ? measureText(cell.text, look.measures) : 0});
  }
}

double RowBuilder::widthOf(PlacedCell const& placed) const noexcept {
  std::uint32_t const end = placed.merged != nullptr ? placed.merged->columnEnd : placed.column + 1;
  double width = 0;
  for (std::uint32_t column = placed.column; column < end; ++column) {
    width += _parts.columns[column].size;
  }
  return width;
}

void RowBuilder::beginMerged(PlacedCell const& placed, StyleLook const& look, PictureCell& cell) {
  PictureArea const& area = *placed.merged;
  cell.rowCount = area.rowEnd - area.rowBegin;
  cell.columnCount = area.columnEnd - area.columnBegin;
  CellEdges const edges = findMergedEdges(area, look);
  cell.edges = _edgeTable.intern(edges);
  if (edges != CellEdges()) {
    _openMerged.push_back({area, edges});
  }
}

/// Each side has the line of the cell in its corner, as programs write it, else that of the first
/// cell.
CellEdges RowBuilder::findMergedEdges(PictureArea const& area, StyleLook const& look) {
  TableRange const& range = _parts.sheet.layout.mergedRanges[area.index];
  auto const edgesAt = [&](unsigned long row, unsigned long column) {
    DOM::Cell const* const cell = _parts.sheet.table->findCell(row, column);
    return cell != nullptr ? _tools.looks.find(cell->style.get(), nullptr).edges : CellEdges();
  };
  CellEdges edges = look.edges;
  edges.right = preferLine(edgesAt(range.firstRow, range.endColumn - 1).right, edges.right);
  edges.bottom = preferLine(edgesAt(range.endRow - 1, range.firstColumn).bottom, edges.bottom);
  return edges;
}

/// Lets the neighbours of merged cells meet their lines.
void RowBuilder::addMergedEdges(std::uint32_t row) {
  auto& pool = _partEdges[row % _partEdges.size()];
  for (auto const& [area, edges] : _openMerged) {
    bool const isAtEnd = row == area.rowBegin || row + 1 == area.rowEnd;
    for (std::uint32_t column = area.columnBegin; column < area.columnEnd; ++column) {
      pool.push_back(takePart(edges, area, row, column));
      _edges.add(column, pool.back(), false, EdgeRows::noCell);
      // Between the sides there are no lines.
      column = isAtEnd ? column : std::max(column, area.columnEnd - 2);
    }
  }
}

void RowBuilder::markRoom(PlacedCell const& placed, StyleLook const& look, bool hasValue) noexcept {
  if (hasValue) {
    _rooms[placed.column] = Room::Occupied;
  } else if (look.horizontal == HorizontalAlignment::CenterContinuous) {
    _rooms[placed.column] = Room::Centred;
  }
}

/// Texts alone run over: those in one line, at their own size and upright.
void RowBuilder::findFree() {
  for (std::uint32_t column = 0; column < _rooms.size(); ++column) {
    if (_cellRows.findMerged(column) != nullptr) {
      _rooms[column] = Room::Occupied;
    }
  }
  for (Measured const& measured : _row) {
    PictureCell& cell = _picture.cells[measured.cell];
    bool const runsOver = cell.content == CellContent::Text && measured.look->isFixedInWidth &&
                          !measured.look->wraps && !cell.splitAt &&
                          measured.look->horizontal != HorizontalAlignment::Fill;
    if (runsOver) {
      findFreeColumns({&cell, measured.width}, _rooms, _parts.columns,
                      _parts.sheet.layout.rightToLeft);
    }
  }
}

/// The height of the highest text. Rounding of fonts does not make a row higher.
double RowBuilder::measureHeight(std::uint32_t row) const {
  constexpr double padding = 5;
  constexpr double highest = 546;
  constexpr double tolerance = 2;
  double height = 0;
  for (Measured const& measured : _row) {
    PictureCell const& cell = _picture.cells[measured.cell];
    Look const& look = _tools.looks.get(cell.look);
    double const line = measured.look->measures.lineHeight;
    double const room = _parts.columns[cell.column].size - padding - look.indent;
    double needed = line;
    if (look.rotation != 0) {
      needed = measureRotated(measured.width, line, look.rotation);
    } else if (look.wraps) {
      needed = line * countWrappedLines(cell.text, measured.look->measures, room);
    }
    height = std::max(height, needed);
  }
  return height > _parts.rows[row].size + tolerance ? std::min(height, highest) : 0;
}

}  // namespace Zorv::Render
