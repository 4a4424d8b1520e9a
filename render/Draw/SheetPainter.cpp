#include "render/Draw/SheetPainter.h"

#include <algorithm>

#include "render/Draw/Links.h"
#include "render/Draw/Paper.h"
#include "render/Draw/Visuals.h"

namespace Zorv::Render::Draw {

namespace {

/// How far the lines around a cell stand over its place, at most.
constexpr double reachOfLines = 2;

}  // namespace

SheetPainter::SheetPainter(SheetGeometry const& geometry, PaintResources& resources,
                           PaintSetting const& setting)
    : _geometry(geometry),
      _setting(setting),
      _fills(geometry, resources.tiles),
      _texts(geometry, resources.typesetter, setting.hasGridLines),
      _borders(geometry),
      _steps(setting.budget) {}

void SheetPainter::paint(cairo_t* cairo, Box const& area) {
  LineBlock const lines =
      _geometry.linesIn({area.left - reachOfLines, area.top - reachOfLines,
                         area.right + reachOfLines, area.bottom + reachOfLines});
  if (lines.rows.isEmpty() || lines.columns.isEmpty()) {
    return;
  }
  _geometry.findCells(lines, _cells);
  _steps.count(_cells.size() + (lines.rows.end - lines.rows.begin));
  if (_setting.hasGridLines) {
    paintGridLines(cairo, lines);
  }
  _fills.paint(cairo, lines, _cells);
  for (PictureCell const* const cell : _cells) {
    paintContent(cairo, *cell);
  }
  _borders.paint(cairo, _cells);
  checkStatus(cairo_status(cairo));
}

void SheetPainter::paintGridLines(cairo_t* cairo, LineBlock const& lines) const {
  Box const all = withGridLines(_geometry.place(lines), _geometry.getGrid());
  double const line = _geometry.getGrid().thickness(gridLineWidth);
  for (std::uint32_t edge = lines.rows.begin; edge <= lines.rows.end; ++edge) {
    cairo_rectangle(cairo, all.left, _geometry.getRowEdges()[edge] - line, all.width(), line);
  }
  bool const isMirrored = _geometry.getSheet().rightToLeft;
  for (std::uint32_t edge = lines.columns.begin; edge <= lines.columns.end; ++edge) {
    double const start = _geometry.getColumnEdges()[edge];
    double const x = isMirrored ? _geometry.getWidth() - start : start;
    cairo_rectangle(cairo, x - line, all.top, line, all.height());
  }
  setColour(cairo, gridLineColour);
  cairo_fill(cairo);
}

void SheetPainter::paintContent(cairo_t* cairo, PictureCell const& cell) {
  // A character costs about as much as some dozens of the steps that cells are counted in.
  constexpr std::uint64_t stepsOfContent = 32;
  bool const isRightToLeft = _geometry.getSheet().rightToLeft;
  bool const hasBar = cell.bar && cell.bar->bar != nullptr;
  if (hasBar || cell.icon || !cell.text.empty()) {
    _steps.count(stepsOfContent * (1 + cell.text.size()));
  }
  if (hasBar) {
    paintBar(cairo, *cell.bar, isRightToLeft, _geometry.place(cell), _geometry.getGrid());
  }
  if (cell.icon) {
    Look const& look = _geometry.getSheet().looks[cell.look];
    paintIcon(cairo, *cell.icon, placeIcon(cell, look, isRightToLeft, _geometry.place(cell)));
  }
  _texts.paint(cairo, cell);
  if (_setting.hasLinks && cell.link != 0) {
    markLink(cairo, _geometry.getSheet().links[cell.link - 1], _geometry.place(cell));
  }
}

}  // namespace Zorv::Render::Draw
