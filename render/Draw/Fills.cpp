#include "render/Draw/Fills.h"

#include <algorithm>

#include "render/Draw/Gradients.h"
#include "render/Draw/Paper.h"

namespace Zorv::Render::Draw {

namespace {

bool isFilled(CellFill const& fill) noexcept { return fill.pattern != DOM::FillPattern::None; }

bool hasFilledLines(SheetPicture const& sheet) {
  auto const fills = [&](Line const& line) { return isFilled(sheet.looks[line.look].fill); };
  return std::ranges::any_of(sheet.rows, fills) || std::ranges::any_of(sheet.columns, fills);
}

void fillBox(cairo_t* cairo, DOM::Colour const& colour, Box const& box) noexcept {
  setColour(cairo, colour);
  cairo_rectangle(cairo, box.left, box.top, box.width(), box.height());
  cairo_fill(cairo);
}

}  // namespace

FillPainter::FillPainter(SheetGeometry const& geometry, PatternTiles& tiles)
    : _geometry(geometry), _tiles(tiles), _hasFilledLines(hasFilledLines(geometry.getSheet())) {}

void FillPainter::paint(cairo_t* cairo, LineBlock const& lines,
                        std::vector<PictureCell const*> const& cells) {
  for (std::uint32_t row = lines.rows.begin; _hasFilledLines && row < lines.rows.end; ++row) {
    paintRow(cairo, row, lines.columns);
  }
  for (PictureCell const* const cell : cells) {
    paintCell(cairo, *cell);
  }
  flush(cairo);
}

void FillPainter::paintRow(cairo_t* cairo, std::uint32_t row, LineSpan const& columns) {
  std::uint32_t begin = columns.begin;
  for (PictureCell const& cell : _geometry.cellsOfRow(row)) {
    if (cell.column >= columns.end) {
      break;
    }
    if (cell.column > begin) {
      paintGap(cairo, row, {begin, cell.column});
    }
    begin = std::max(begin, _geometry.cover(cell).columns.end);
  }
  paintGap(cairo, row, {begin, columns.end});
}

void FillPainter::paintGap(cairo_t* cairo, std::uint32_t row, LineSpan const& columns) {
  SheetPicture const& sheet = _geometry.getSheet();
  for (std::uint32_t column = columns.begin; column < columns.end; ++column) {
    std::uint32_t const rowLook = sheet.rows[row].look;
    std::uint32_t const look = rowLook != 0 ? rowLook : sheet.columns[column].look;
    if (isFilled(sheet.looks[look].fill)) {
      paintFill(cairo, sheet.looks[look].fill,
                _geometry.place({{row, row + 1}, {column, column + 1}}));
    }
  }
}

void FillPainter::paintCell(cairo_t* cairo, PictureCell const& cell) {
  CellFill const& fill = _geometry.getSheet().looks[cell.look].fill;
  Box const box = _geometry.place(cell);
  if (cell.scaleColour) {
    paintSolid(cairo, *cell.scaleColour, box);
  } else if (isFilled(fill)) {
    paintFill(cairo, fill, box);
  } else if (cell.rowCount > 1 || cell.columnCount > 1) {
    // The grid lines between the positions that it covers.
    double const line = _geometry.getGrid().thickness(gridLineWidth);
    flush(cairo);
    fillBox(cairo, paperColour, {box.left, box.top, box.right - line, box.bottom - line});
  }
}

void FillPainter::paintFill(cairo_t* cairo, CellFill const& fill, Box const& box) {
  if (fill.pattern == DOM::FillPattern::Solid) {
    paintSolid(cairo, fill.colour, box);
    return;
  }
  flush(cairo);
  Box const whole = withGridLines(box, _geometry.getGrid());
  if (fill.pattern == DOM::FillPattern::Gradient) {
    if (fill.gradient) {
      paintGradient(cairo, *fill.gradient, whole);
    }
    return;
  }
  fillBox(cairo, fill.colour, whole);
  cairo_set_source(cairo, _tiles.get(cairo, fill.pattern, fill.patternColour));
  cairo_rectangle(cairo, whole.left, whole.top, whole.width(), whole.height());
  cairo_fill(cairo);
}

void FillPainter::paintSolid(cairo_t* cairo, DOM::Colour const& colour, Box const& box) {
  Box const whole = withGridLines(box, _geometry.getGrid());
  bool const goesOn = colour == _pendingColour && whole.top == _pending.top &&
                      whole.bottom == _pending.bottom && whole.left <= _pending.right &&
                      whole.right >= _pending.left && !_pending.isEmpty();
  if (goesOn) {
    _pending.left = std::min(_pending.left, whole.left);
    _pending.right = std::max(_pending.right, whole.right);
    return;
  }
  flush(cairo);
  _pending = whole;
  _pendingColour = colour;
}

void FillPainter::flush(cairo_t* cairo) noexcept {
  if (!_pending.isEmpty()) {
    fillBox(cairo, _pendingColour, _pending);
    _pending = {};
  }
}

}  // namespace Zorv::Render::Draw
