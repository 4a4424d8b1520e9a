#include "render/Draw/Visuals.h"

#include <algorithm>
#include <cmath>

#include "render/Draw/LineStrokes.h"
#include "render/Draw/Paper.h"
#include "render/Icons.h"

namespace Zorv::Render::Draw {

namespace {

using DOM::Colour;
using DOM::HorizontalAlignment;

constexpr double barPadding = 2;

/// A colour that is a tenth of this one and white else, for the far end of a bar.
Colour fade(Colour const& colour) noexcept {
  auto const mix = [](std::uint8_t part) {
    constexpr double rest = 0.1;
    constexpr double white = 255;
    return static_cast<std::uint8_t>(std::lround(white + (part - white) * rest));
  };
  return {mix(colour.red), mix(colour.green), mix(colour.blue), colour.alpha};
}

void addStop(cairo_pattern_t* pattern, double place, Colour const& colour) noexcept {
  constexpr double most = 255;
  cairo_pattern_add_color_stop_rgba(pattern, place, colour.red / most, colour.green / most,
                                    colour.blue / most, colour.alpha / most);
}

/// `begin` and `end` are the places where the bar starts and where it points to.
void fillBar(cairo_t* cairo, Colour const& colour, bool isGradient, double begin, double end,
             Box const& box) {
  cairo_rectangle(cairo, box.left, box.top, box.width(), box.height());
  if (isGradient) {
    PatternPtr const pattern(cairo_pattern_create_linear(begin, 0, end, 0));
    addStop(pattern.get(), 0, colour);
    addStop(pattern.get(), 1, fade(colour));
    cairo_set_source(cairo, pattern.get());
  } else {
    setColour(cairo, colour);
  }
  cairo_fill(cairo);
}

void strokeFrame(cairo_t* cairo, Colour const& colour, Box const& box, PixelGrid const& grid) {
  double const line = grid.thickness(1);
  Box const middle = shrink(box, line / 2, line / 2);
  setColour(cairo, colour);
  cairo_set_dash(cairo, nullptr, 0, 0);
  cairo_set_line_width(cairo, line);
  cairo_rectangle(cairo, middle.left, middle.top, middle.width(), middle.height());
  cairo_stroke(cairo);
}

void strokeAxis(cairo_t* cairo, Colour const& colour, double x, Box const& place,
                PixelGrid const& grid) {
  double const line = grid.thickness(1);
  setColour(cairo, colour);
  strokeLine(cairo, DOM::LineStyle::Dotted,
             {x - line / 2, place.top, x - line / 2, place.bottom - line, line}, grid);
}

/// A part of the width, from hostile records, too.
double toWidthShare(double value) noexcept { return value > 0 ? std::min(value, 1.0) : 0; }

}  // namespace

void paintBar(cairo_t* cairo, Visuals::ShownBar const& bar, bool rightToLeft, Box const& place,
              PixelGrid const& grid) {
  using enum Visuals::BarDirection;
  Visuals::DataBar const& format = *bar.bar;
  bool const isMirrored =
      format.direction == RightToLeft || (format.direction == Context && rightToLeft);
  double const line = grid.thickness(gridLineWidth);
  Box const room = shrink({place.left, place.top, place.right - line, place.bottom - line},
                          barPadding, barPadding);
  auto const xOf = [&](double share) {
    double const part = toWidthShare(share) * room.width();
    return grid.snap(isMirrored ? room.right - part : room.left + part);
  };
  auto const [left, right] = std::minmax({xOf(bar.extent.from), xOf(bar.extent.to)});
  Box const box{left, grid.snap(room.top), right, grid.snap(room.bottom)};
  if (!box.isEmpty()) {
    if (auto const& fill = bar.getFill()) {
      // Bars of negative numbers point away from the axis, too.
      bool const pointsBack = bar.isNegative && bar.extent.axis.has_value();
      bool const pointsLeft = pointsBack != isMirrored;
      fillBar(cairo, *fill, format.isGradient, pointsLeft ? right : left, pointsLeft ? left : right,
              box);
    }
    if (auto const& border = bar.getBorder()) {
      strokeFrame(cairo, *border, box, grid);
    }
  }
  if (bar.extent.axis && format.axisColour) {
    strokeAxis(cairo, *format.axisColour, xOf(*bar.extent.axis), place, grid);
  }
}

Box placeIcon(PictureCell const& cell, Look const& look, bool rightToLeft,
              Box const& place) noexcept {
  constexpr double pixelsPerPoint = 96.0 / 72.0;
  constexpr double ofFont = 1.1;
  constexpr double padding = 2;
  double const asFont = look.font.size > 0 ? look.font.size * pixelsPerPoint * ofFont : 0;
  double const most = std::min(place.width(), place.height()) - 2 * padding;
  double const side = std::max(0.0, std::min(std::round(asFont), most));
  double left = rightToLeft ? place.right - padding - side : place.left + padding;
  if (cell.text.empty()) {
    if (cell.horizontal == HorizontalAlignment::Center) {
      left = (place.left + place.right - side) / 2;
    } else if (cell.horizontal == HorizontalAlignment::Right) {
      left = place.right - padding - side;
    }
  }
  double top = (place.top + place.bottom - side) / 2;
  if (look.vertical == DOM::VerticalAlignment::Top) {
    top = place.top + padding;
  } else if (look.vertical == DOM::VerticalAlignment::Bottom) {
    top = place.bottom - padding - side;
  }
  return {left, top, left + side, top + side};
}

void paintIcon(cairo_t* cairo, Visuals::Icon const& icon, Box const& box) {
  SavedState const saved(cairo);
  cairo_translate(cairo, box.left, box.top);
  if (box.isEmpty()) {
    return;
  }
  cairo_scale(cairo, box.width() / iconBox, box.height() / iconBox);
  for (IconOutline const& outline : outlineIcon(icon)) {
    setColour(cairo, outline.colour);
    visitIconSteps(outline.path, [&](IconStep const& step) {
      auto const& [x1, y1, x2, y2, x3, y3] = step.coordinates;
      switch (step.kind) {
        case IconStep::Kind::Move:
          cairo_move_to(cairo, x1, y1);
          break;
        case IconStep::Kind::Line:
          cairo_line_to(cairo, x1, y1);
          break;
        case IconStep::Kind::Curve:
          cairo_curve_to(cairo, x1, y1, x2, y2, x3, y3);
          break;
        case IconStep::Kind::Close:
          cairo_close_path(cairo);
          break;
      }
    });
    cairo_fill(cairo);
  }
}

}  // namespace Zorv::Render::Draw
