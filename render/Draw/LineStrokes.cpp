#include "render/Draw/LineStrokes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace Zorv::Render::Draw {

namespace {

constexpr std::array hairDashes{1.0, 1.0};
constexpr std::array dottedDashes{2.0, 2.0};
constexpr std::array dashedDashes{4.0, 2.0};
constexpr std::array mediumDashes{8.0, 3.0};
constexpr std::array dashDotDashes{8.0, 3.0, 3.0, 3.0};
constexpr std::array dashDotDotDashes{8.0, 3.0, 3.0, 3.0, 3.0, 3.0};
constexpr std::array slantDashes{9.0, 2.0, 4.0, 2.0};

/// Lengths of dashes and gaps in turn; empty for a line without gaps.
std::span<double const> findDashes(DOM::LineStyle style) noexcept {
  using enum DOM::LineStyle;
  switch (style) {
    case Hair:
      return hairDashes;
    case Dotted:
      return dottedDashes;
    case Dashed:
      return dashedDashes;
    case MediumDashed:
      return mediumDashes;
    case DashDot:
    case MediumDashDot:
      return dashDotDashes;
    case DashDotDot:
    case MediumDashDotDot:
      return dashDotDotDashes;
    case SlantDashDot:
      return slantDashes;
    case None:
    case Thin:
    case Medium:
    case Thick:
    case Double:
      break;
  }
  return {};
}

void strokeDashes(cairo_t* cairo, std::span<double const> dashes, Stroke const& stroke,
                  double offset, PixelGrid const& grid) {
  std::array<double, 6> lengths{};
  std::ranges::transform(dashes, lengths.begin(),
                         [&](double length) { return grid.thickness(length); });
  cairo_set_dash(cairo, lengths.data(), static_cast<int>(dashes.size()), offset);
  cairo_set_line_width(cairo, stroke.width);
  cairo_move_to(cairo, stroke.fromX, stroke.fromY);
  cairo_line_to(cairo, stroke.toX, stroke.toY);
  cairo_stroke(cairo);
}

/// Two thin lines side by side, whose dashes are shifted.
void strokeSlanted(cairo_t* cairo, Stroke const& stroke, double offset, PixelGrid const& grid) {
  double const length = std::hypot(stroke.toX - stroke.fromX, stroke.toY - stroke.fromY);
  double const aside = length > 0 ? stroke.width / 4 / length : 0;
  double const x = (stroke.toY - stroke.fromY) * aside;
  double const y = (stroke.fromX - stroke.toX) * aside;
  for (double const side : {-1.0, 1.0}) {
    Stroke const half{stroke.fromX + side * x, stroke.fromY + side * y, stroke.toX + side * x,
                      stroke.toY + side * y, stroke.width / 2};
    strokeDashes(cairo, slantDashes, half, offset + (side > 0 ? grid.thickness(1) : 0), grid);
  }
}

}  // namespace

void strokeLine(cairo_t* cairo, DOM::LineStyle style, Stroke const& stroke, PixelGrid const& grid) {
  bool const isVertical = stroke.fromX == stroke.toX;
  double const offset = isVertical ? stroke.fromY : stroke.fromX;
  if (style == DOM::LineStyle::SlantDashDot) {
    strokeSlanted(cairo, stroke, offset, grid);
  } else {
    strokeDashes(cairo, findDashes(style), stroke, offset, grid);
  }
}

}  // namespace Zorv::Render::Draw
