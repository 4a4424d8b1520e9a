#include "render/Draw/TextPlace.h"

#include <algorithm>

#include "render/Draw/Paper.h"
#include "render/Draw/Visuals.h"

namespace Zorv::Render::Draw {

namespace {

using DOM::HorizontalAlignment;

constexpr double textPadding = 2;

/// Makes room for an indent and for an icon.
void makeRoom(TextPlace& place, bool rightToLeft) noexcept {
  Box& inner = place.inner;
  bool const isDistributed = place.horizontal == HorizontalAlignment::Distributed;
  double const indent = place.look.indent > 0 ? std::min(place.look.indent, inner.width()) : 0;
  if (place.horizontal == HorizontalAlignment::Left || isDistributed) {
    inner.left += indent;
  }
  if (place.horizontal == HorizontalAlignment::Right || isDistributed) {
    inner.right -= indent;
  }
  if (place.cell.icon) {
    Box const icon = placeIcon(place.cell, place.look, rightToLeft, place.whole);
    if (rightToLeft) {
      inner.right = std::min(inner.right, icon.left - textPadding);
    } else {
      inner.left = std::max(inner.left, icon.right + textPadding);
    }
  }
  inner.right = std::max(inner.left, inner.right);
}

}  // namespace

TextPlace findTextPlace(SheetGeometry const& geometry, PictureCell const& cell) noexcept {
  Box const whole = geometry.place(cell);
  double const line = geometry.getGrid().thickness(gridLineWidth);
  Box const inside{whole.left, whole.top, whole.right - line, whole.bottom - line};
  TextPlace place{cell,
                  geometry.getSheet().looks[cell.look],
                  cell.horizontal,
                  whole,
                  shrink(inside, textPadding, 0),
                  geometry.place({geometry.cover(cell).rows, geometry.findReach(cell)})};
  makeRoom(place, geometry.getSheet().rightToLeft);
  return place;
}

}  // namespace Zorv::Render::Draw
