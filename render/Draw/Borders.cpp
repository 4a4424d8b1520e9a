#include "render/Draw/Borders.h"

#include <algorithm>
#include <cmath>

#include "render/Draw/LineStrokes.h"
#include "render/Draw/Paper.h"

namespace Zorv::Render::Draw {

void BorderPainter::paint(cairo_t* cairo, std::vector<PictureCell const*> const& cells) {
  for (PictureCell const* const cell : cells) {
    if (cell->edges != 0) {
      paintDiagonals(cairo, *cell);
    }
  }
  auto const segments = findBorderSegments(_geometry, cells);
  if (segments.empty()) {
    return;
  }
  collectMeetings(segments);
  SavedState const saved(cairo);
  openDoubleLines(cairo, segments, false);
  openDoubleLines(cairo, segments, true);
  for (BorderSegment const& segment : segments) {
    paintSegment(cairo, segment);
  }
}

void BorderPainter::paintDiagonals(cairo_t* cairo, PictureCell const& cell) const {
  CellEdges const& edges = _geometry.getSheet().edges[cell.edges];
  Box const box = _geometry.place(cell);
  auto const stroke = [&](DOM::BorderLine const& line, double fromY, double toY) {
    if (line.style == DOM::LineStyle::None) {
      return;
    }
    SavedState const saved(cairo);
    cairo_rectangle(cairo, box.left, box.top, box.width(), box.height());
    cairo_clip(cairo);
    setColour(cairo, line.colour.value_or(inkColour));
    bool const isDouble = line.style == DOM::LineStyle::Double;
    for (double const side : {-1.5, 1.5}) {
      double const aside = isDouble ? side : 0;
      strokeLine(cairo, line.style,
                 {box.left, fromY + aside, box.right, toY + aside,
                  isDouble ? 1 : getLineWidth(line.style)},
                 _geometry.getGrid());
      if (!isDouble) {
        break;
      }
    }
  };
  stroke(edges.diagonalUp, box.bottom, box.top);
  stroke(edges.diagonalDown, box.top, box.bottom);
}

void BorderPainter::collectMeetings(std::vector<BorderSegment> const& segments) {
  _meetings.clear();
  for (BorderSegment const& segment : segments) {
    double const width = getLineWidth(segment.style);
    bool const isDouble = segment.style == DOM::LineStyle::Double;
    for (std::uint32_t const end : {segment.begin, segment.end}) {
      Meeting& meeting =
          _meetings[segment.isVertical ? Crossing{segment.edge, end} : Crossing{end, segment.edge}];
      double& widest = segment.isVertical ? meeting.down : meeting.across;
      bool& hasDouble = segment.isVertical ? meeting.isDoubleDown : meeting.isDoubleAcross;
      widest = std::max(widest, width);
      hasDouble = hasDouble || isDouble;
    }
  }
}

BorderPainter::Meeting BorderPainter::meetAt(BorderSegment const& segment,
                                             std::uint32_t end) const {
  return _meetings.at(segment.isVertical ? Crossing{segment.edge, end}
                                         : Crossing{end, segment.edge});
}

/// The thinnest line lies on the grid line before the edge; thicker ones grow from there to both
/// sides.
BorderPainter::Reach BorderPainter::findReach(double width) const noexcept {
  PixelGrid const& grid = _geometry.getGrid();
  double const thickness = grid.thickness(width);
  double const thinnest = grid.thickness(gridLineWidth);
  double const pixels = std::floor((thickness + thinnest) / 2 * grid.getScale() + 0.25);
  double const before = width > 0 ? pixels / grid.getScale() : 0;
  return {before, width > 0 ? thickness - before : 0};
}

/// Along a sheet from right to left, its columns go the other way.
Box BorderPainter::orient(BorderSegment const& segment, Reach const& along,
                          Reach const& across) const noexcept {
  bool const isMirrored = _geometry.getSheet().rightToLeft;
  auto const xOf = [&](std::uint32_t edge) {
    double const start = _geometry.getColumnEdges()[edge];
    return isMirrored ? _geometry.getWidth() - start : start;
  };
  auto const yOf = [&](std::uint32_t edge) { return _geometry.getRowEdges()[edge]; };
  if (segment.isVertical) {
    return {xOf(segment.edge) - across.before, yOf(segment.begin) - along.before,
            xOf(segment.edge) + across.after, yOf(segment.end) + along.after};
  }
  auto const [left, right] = std::minmax({xOf(segment.begin), xOf(segment.end)});
  return {left - along.before, yOf(segment.edge) - across.before, right + along.after,
          yOf(segment.edge) + across.after};
}

Box BorderPainter::findGap(BorderSegment const& segment) const noexcept {
  double const line = _geometry.getGrid().thickness(1);
  // Also from right to left, since the middle of any line lies before its edge.
  bool const isMirrored = _geometry.getSheet().rightToLeft && !segment.isVertical;
  Meeting const first = meetAt(segment, isMirrored ? segment.end : segment.begin);
  bool const meetsDouble = segment.isVertical ? first.isDoubleAcross : first.isDoubleDown;
  double const before = findReach(getLineWidth(segment.style)).before - line;
  return orient(segment, {meetsDouble ? line : 0, 0}, {before, line - before});
}

/// A double line is a thick one without its middle. Leaving out the middles of all of them at once
/// opens them into each other where they meet.
void BorderPainter::openDoubleLines(cairo_t* cairo, std::vector<BorderSegment> const& segments,
                                    bool isVertical) const {
  auto const isOpened = [&](BorderSegment const& segment) {
    return segment.style == DOM::LineStyle::Double && segment.isVertical == isVertical;
  };
  if (std::ranges::none_of(segments, isOpened)) {
    return;
  }
  Box all;
  cairo_clip_extents(cairo, &all.left, &all.top, &all.right, &all.bottom);
  cairo_rectangle(cairo, all.left, all.top, all.width(), all.height());
  for (BorderSegment const& segment : segments) {
    if (isOpened(segment)) {
      Box const gap = findGap(segment);
      cairo_rectangle(cairo, gap.left, gap.top, gap.width(), gap.height());
    }
  }
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_clip(cairo);
}

void BorderPainter::paintSegment(cairo_t* cairo, BorderSegment const& segment) const {
  bool const isMirrored = _geometry.getSheet().rightToLeft && !segment.isVertical;
  Meeting const first = meetAt(segment, isMirrored ? segment.end : segment.begin);
  Meeting const last = meetAt(segment, isMirrored ? segment.begin : segment.end);
  Reach const along{findReach(segment.isVertical ? first.across : first.down).before,
                    findReach(segment.isVertical ? last.across : last.down).after};
  Box const band = orient(segment, along, findReach(getLineWidth(segment.style)));
  double const middleX = (band.left + band.right) / 2;
  double const middleY = (band.top + band.bottom) / 2;
  setColour(cairo, segment.colour);
  strokeLine(cairo, segment.style,
             segment.isVertical ? Stroke{middleX, band.top, middleX, band.bottom, band.width()}
                                : Stroke{band.left, middleY, band.right, middleY, band.height()},
             _geometry.getGrid());
}

}  // namespace Zorv::Render::Draw
