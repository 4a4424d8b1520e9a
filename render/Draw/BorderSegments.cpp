#include "render/Draw/BorderSegments.h"

#include <algorithm>
#include <tuple>

#include "render/Draw/Paper.h"

namespace Zorv::Render::Draw {

namespace {

auto toKey(BorderSegment const& segment) noexcept {
  DOM::Colour const& colour = segment.colour;
  return std::tuple(getLineWidth(segment.style), segment.style, segment.isVertical, segment.edge,
                    colour.red, colour.green, colour.blue, colour.alpha, segment.begin,
                    segment.end);
}

bool goesOn(BorderSegment const& before, BorderSegment const& after) noexcept {
  return before.isVertical == after.isVertical && before.edge == after.edge &&
         before.style == after.style && before.colour == after.colour && after.begin <= before.end;
}

/// Joins those that touch or repeat each other. They are in order.
void joinSegments(std::vector<BorderSegment>& segments) {
  std::size_t last = 0;
  for (std::size_t i = 1; i < segments.size(); ++i) {
    if (goesOn(segments[last], segments[i])) {
      segments[last].end = std::max(segments[last].end, segments[i].end);
    } else {
      segments[++last] = segments[i];
    }
  }
  segments.resize(std::min(segments.size(), last + 1));
}

}  // namespace

double getLineWidth(DOM::LineStyle style) noexcept {
  using enum DOM::LineStyle;
  switch (style) {
    case None:
      return 0;
    case Thin:
    case Dashed:
    case Dotted:
    case Hair:
    case DashDot:
    case DashDotDot:
      return 1;
    case Medium:
    case MediumDashed:
    case MediumDashDot:
    case MediumDashDotDot:
    case SlantDashDot:
      return 2;
    case Thick:
    case Double:
      return 3;
  }
  return 0;
}

std::vector<BorderSegment> findBorderSegments(SheetGeometry const& geometry,
                                              std::vector<PictureCell const*> const& cells) {
  std::vector<BorderSegment> segments;
  auto const add = [&](DOM::BorderLine const& line, bool isVertical, std::uint32_t edge,
                       LineSpan const& along) {
    if (line.style != DOM::LineStyle::None) {
      segments.push_back(
          {isVertical, edge, along.begin, along.end, line.style, line.colour.value_or(inkColour)});
    }
  };
  bool const isMirrored = geometry.getSheet().rightToLeft;
  for (PictureCell const* const cell : cells) {
    if (cell->edges == 0) {
      continue;
    }
    CellEdges const& edges = geometry.getSheet().edges[cell->edges];
    LineBlock const lines = geometry.cover(*cell);
    add(isMirrored ? edges.right : edges.left, true, lines.columns.begin, lines.rows);
    add(isMirrored ? edges.left : edges.right, true, lines.columns.end, lines.rows);
    add(edges.top, false, lines.rows.begin, lines.columns);
    add(edges.bottom, false, lines.rows.end, lines.columns);
  }
  std::ranges::sort(segments, {}, toKey);
  joinSegments(segments);
  return segments;
}

}  // namespace Zorv::Render::Draw
