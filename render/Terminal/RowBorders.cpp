#include "render/Terminal/RowBorders.h"

#include <algorithm>
#include <array>
#include <utility>

#include "render/Terminal/BoxCharacters.h"
#include "render/Terminal/Glyphs.h"

namespace Zorv::Render {

namespace {

using DOM::BorderLine;

bool isBoxLine(BorderLine const& line) noexcept { return line.style != DOM::LineStyle::None; }

void setBoxLine(BorderLine& place, BorderLine const& line) noexcept {
  if (isBoxLine(line)) {
    place = line;
  }
}

/// The line that two rows have between them: the heavier of theirs.
BorderLine const& chooseBoxLine(BorderLine const& below, BorderLine const& above) noexcept {
  return toLineWeight(above.style) > toLineWeight(below.style) ? above : below;
}

/// Lines that meet: left, right, up, down.
struct Crossing {
  std::array<BorderLine const*, 4> arms;

  [[nodiscard]] LineArms getWeights() const noexcept {
    return {toLineWeight(arms[0]->style), toLineWeight(arms[1]->style),
            toLineWeight(arms[2]->style), toLineWeight(arms[3]->style)};
  }
  /// The heaviest of the lines; the character has its colour.
  [[nodiscard]] BorderLine const& getHeaviest() const noexcept {
    return **std::ranges::max_element(
        arms, {}, [](BorderLine const* line) { return toLineWeight(line->style); });
  }
};

}  // namespace

void RowBorders::add(SheetPicture const& sheet, std::size_t row, RowCells const& cells) {
  for (PictureCell const* const cell : cells) {
    if (cell->edges == 0) {
      continue;
    }
    auto const& edges = sheet.edges[cell->edges];
    auto const sides = findSides(sheet, *cell);
    if (sides.left < beside.size()) {
      setBoxLine(beside[sides.left], edges.left);
    }
    if (sides.right < beside.size()) {
      setBoxLine(beside[sides.right], edges.right);
    }
    std::size_t const end = std::min<std::size_t>(cell->column + cell->columnCount, above.size());
    for (std::size_t column = cell->column; column < end; ++column) {
      if (cell->row == row) {
        setBoxLine(above[column], edges.top);
      }
      if (cell->row + cell->rowCount == row + 1) {
        setBoxLine(below[column], edges.bottom);
      }
    }
  }
}

void BorderPainter::paintBeside(Stretch lines, RowBorders const& borders) {
  for (std::size_t column = 0; column < borders.beside.size(); ++column) {
    auto const& border = borders.beside[column];
    auto const place = _grid.findBorderPlace(column);
    if (place && isBoxLine(border)) {
      for (std::size_t line = lines.begin; line < lines.end; ++line) {
        put(line, *place, findLineCharacter(border.style, true), border);
      }
    }
  }
}

void BorderPainter::paintBetween(std::size_t line, RowBorders const& first,
                                 RowBorders const& second) {
  for (std::size_t column = 0; column < first.below.size(); ++column) {
    auto const& border = chooseBoxLine(first.below[column], second.above[column]);
    if (isBoxLine(border)) {
      auto const places = _grid.findPlaces(static_cast<std::uint32_t>(column), 1);
      for (std::size_t place = places.begin; place < places.end; ++place) {
        put(line, place, findLineCharacter(border.style, false), border);
      }
    }
  }
  for (std::size_t column = 0; column < first.beside.size(); ++column) {
    paintCrossing(line, column, first, second);
  }
}

void BorderPainter::paintCrossing(std::size_t line, std::size_t column, RowBorders const& first,
                                  RowBorders const& second) {
  auto const place = _grid.findBorderPlace(column);
  if (!place) {
    return;
  }
  static BorderLine const none;
  auto const across = [&](std::size_t beside, bool exists) {
    return exists ? &chooseBoxLine(first.below[beside], second.above[beside]) : &none;
  };
  auto const* before = across(column - 1, column > 0);
  auto const* after = across(column, column < first.below.size());
  if (_grid.isRightToLeft()) {
    std::swap(before, after);
  }
  Crossing const crossing{{{before, after, &first.beside[column], &second.beside[column]}}};
  if (crossing.getWeights() != LineArms{}) {
    put(line, *place, findBoxCharacter(crossing.getWeights()), crossing.getHeaviest());
  }
}

void BorderPainter::put(std::size_t line, std::size_t place, char32_t character,
                        BorderLine const& border) {
  CharacterStyle style;
  if (_hasColours) {
    style.ink = border.colour.value_or(DOM::Colour{0, 0, 0});
  }
  _canvas.put(line, place, place + 1, {toUtf8(character), 1, 0}, style);
}

}  // namespace Zorv::Render
