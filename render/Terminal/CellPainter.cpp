#include "render/Terminal/CellPainter.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

#include "render/Terminal/BarPainter.h"
#include "render/Terminal/CellGlyphs.h"
#include "render/Terminal/FillColour.h"
#include "render/Terminal/IconGlyphs.h"
#include "words/Printable.h"

namespace Zorv::Render {

namespace {

using DOM::HorizontalAlignment;

constexpr double middle = 0.5;        // of a cell
constexpr double pixelsOfIndent = 7;  // one character

std::size_t countIndent(Look const& look, std::size_t most) noexcept {
  double const count = std::round(look.indent / pixelsOfIndent);
  return count >= 1 ? static_cast<std::size_t>(std::min(count, static_cast<double>(most))) : 0;
}

bool isCentred(HorizontalAlignment alignment) noexcept {
  return alignment == HorizontalAlignment::Center ||
         alignment == HorizontalAlignment::CenterContinuous ||
         alignment == HorizontalAlignment::Distributed;
}

/// The first line of a text of some lines.
std::size_t findFirstLine(DOM::VerticalAlignment alignment, Stretch lines, std::size_t count) {
  std::size_t const spare = lines.size() > count ? lines.size() - count : 0;
  switch (alignment) {
    case DOM::VerticalAlignment::Top:
    case DOM::VerticalAlignment::Justify:
      return lines.begin;
    case DOM::VerticalAlignment::Center:
    case DOM::VerticalAlignment::Distributed:
      return lines.begin + spare / 2;
    case DOM::VerticalAlignment::Bottom:
      break;
  }
  return lines.begin + spare;
}

/// A line that is repeated as often as it fits.
GlyphLine repeatLine(GlyphLine const& line, std::size_t width) {
  GlyphLine repeated;
  std::size_t const lineWidth = measureWidth(line);
  for (std::size_t used = lineWidth; lineWidth > 0 && used <= width; used += lineWidth) {
    repeated.insert(repeated.end(), line.begin(), line.end());
  }
  return repeated.empty() ? line : repeated;
}

/// Where a line of text begins.
std::size_t findStart(TextPlace const& text, std::size_t width, std::size_t indent) noexcept {
  auto const signedOf = [](std::size_t number) { return static_cast<std::ptrdiff_t>(number); };
  auto start = signedOf(text.own.begin + indent);
  if (isCentred(text.alignment)) {
    start = (signedOf(text.own.begin + text.own.end) - signedOf(width)) / 2;
  } else if (text.alignment == HorizontalAlignment::Right) {
    start = signedOf(text.own.end) - signedOf(width + indent);
  }
  std::size_t const spare = text.room.size() - std::min(text.room.size(), width);
  return static_cast<std::size_t>(
      std::clamp(start, signedOf(text.room.begin), signedOf(text.room.begin + spare)));
}

double findMiddle(std::size_t place, Stretch const& places) noexcept {
  return (static_cast<double>(place - places.begin) + 0.5) / static_cast<double>(places.size());
}

}  // namespace

CellPainter::CellPainter(SheetPicture const& sheet, CharacterGrid const& grid,
                         RowBorders const& borders, RowCells const& cells, bool hasColours,
                         Canvas& canvas)
    : _sheet(sheet),
      _grid(grid),
      _borders(borders),
      _isFree(grid.getColumnCount(), true),
      _hasColours(hasColours),
      _canvas(canvas) {
  for (PictureCell const* const cell : cells) {
    bool const isMerged = cell->rowCount > 1 || cell->columnCount > 1;
    if (isMerged || !cell->text.empty() || cell->bar || cell->icon) {
      auto const end = std::min<std::size_t>(cell->column + cell->columnCount, _isFree.size());
      std::fill(_isFree.begin() + cell->column, _isFree.begin() + static_cast<std::ptrdiff_t>(end),
                false);
    }
  }
}

void CellPainter::paintLine(std::size_t row) {
  auto const lines = _grid.findLines(static_cast<std::uint32_t>(row), 1);
  for (std::uint32_t column = 0; column < _grid.getColumnCount(); ++column) {
    auto const& fill = findLineFill(row, column);
    if (fill.pattern != DOM::FillPattern::None) {
      paintFill(fill, withBorderAfter(_grid.findPlaces(column, 1), column + 1), lines);
    }
  }
}

CellFill const& CellPainter::findLineFill(std::size_t row, std::size_t column) const noexcept {
  auto const own = _sheet.rows[row].look;
  return _sheet.looks[own != 0 ? own : _sheet.columns[column].look].fill;
}

CellFill CellPainter::findFill(PictureCell const& cell) const {
  auto fill = _sheet.looks[cell.look].fill;
  if (cell.scaleColour) {
    fill.pattern = DOM::FillPattern::Solid;
    fill.colour = *cell.scaleColour;
  }
  return fill;
}

std::vector<DOM::Colour> CellPainter::findColours(std::size_t row, RowCells const& cells) const {
  std::vector<DOM::Colour> colours;
  for (std::size_t column = 0; column < _grid.getColumnCount(); ++column) {
    colours.push_back(findFillColour(findLineFill(row, column), middle, middle));
  }
  for (PictureCell const* const cell : cells) {
    auto const end = std::min<std::size_t>(cell->column + cell->columnCount, colours.size());
    std::fill(colours.begin() + cell->column, colours.begin() + static_cast<std::ptrdiff_t>(end),
              findFillColour(findFill(*cell), middle, middle));
  }
  return colours;
}

void CellPainter::paintBorderLine(std::size_t row, RowCells const& cells,
                                  RowCells const& nextCells) {
  auto const line = _grid.findBorderLine(row + 1);
  if (!line || row + 1 == _sheet.rows.size()) {
    return;
  }
  auto const above = findColours(row, cells);
  auto const below = findColours(row + 1, nextCells);
  for (std::uint32_t column = 0; column < above.size(); ++column) {
    if (above[column] == below[column]) {
      auto const places = withBorderAfter(_grid.findPlaces(column, 1), column + 1);
      for (std::size_t place = places.begin; place < places.end; ++place) {
        _canvas.setGround(*line, place, above[column]);
      }
    }
  }
}

void CellPainter::paintGround(PictureCell const& cell) {
  auto const places = _grid.findPlaces(cell.column, cell.columnCount);
  if (places.size() == 0) {
    return;
  }
  paintFill(findFill(cell), withBorderAfter(places, cell.column + cell.columnCount),
            _grid.findLines(cell.row, cell.rowCount));
}

void CellPainter::paintFill(CellFill const& fill, Stretch places, Stretch lines) {
  std::size_t const begin = std::max(lines.begin, _canvas.getLines().begin);
  std::size_t const end = std::min(lines.end, _canvas.getLines().end);
  bool const isEven = fill.pattern != DOM::FillPattern::Gradient;
  auto colour = findFillColour(fill, 0, 0);
  for (std::size_t line = begin; line < end; ++line) {
    for (std::size_t place = places.begin; place < places.end; ++place) {
      if (!isEven) {
        colour = findFillColour(fill, findMiddle(place, places), findMiddle(line, lines));
      }
      _canvas.setGround(line, place, colour);
    }
  }
}

void CellPainter::paintContent(PictureCell const& cell) {
  auto places = _grid.findPlaces(cell.column, cell.columnCount);
  if (places.size() == 0) {
    return;
  }
  auto const lines = _grid.findLines(cell.row, cell.rowCount);
  if (cell.horizontal == HorizontalAlignment::CenterContinuous) {
    places = _grid.findPlaces(cell.column, cell.columnCount + cell.freeLeft + cell.freeRight);
  }
  if (cell.bar) {
    auto const direction = cell.bar->bar->direction;
    bool const fromRight = direction == Visuals::BarDirection::Context
                               ? _sheet.rightToLeft
                               : direction == Visuals::BarDirection::RightToLeft;
    paintBar(*cell.bar, {findBarPlaces(cell, places), lines, fromRight}, _hasColours, _canvas);
  }
  leaveGap(places);
  if (cell.icon) {
    paintIcon(cell, places, findFirstLine(_sheet.looks[cell.look].vertical, lines, 1));
  }
  if (!cell.text.empty() && places.size() > 0) {
    paintText(cell, places, lines);
  }
}

/// Without colours a bar stands beside the texts of its column, which would hide where it ends.
Stretch CellPainter::findBarPlaces(PictureCell const& cell, Stretch places) const noexcept {
  std::size_t const taken = std::min(_grid.getTextWidthBesideBars(cell.column), places.size());
  return cell.horizontal == HorizontalAlignment::Left ? Stretch{places.begin + taken, places.end}
                                                      : Stretch{places.begin, places.end - taken};
}

/// Takes from the places what the icon needs.
void CellPainter::paintIcon(PictureCell const& cell, Stretch& places, std::size_t line) {
  if (cell.icon->index >= Visuals::countIcons(cell.icon->set)) {
    return;
  }
  auto const [character, colour] = findIconGlyph(*cell.icon);
  auto place = _sheet.rightToLeft ? places.end - 1 : places.begin;
  if (cell.text.empty() && isCentred(cell.horizontal)) {
    place = places.begin + places.size() / 2;
  } else if (cell.text.empty() && cell.horizontal == HorizontalAlignment::Right) {
    place = places.end - 1;
  }
  CharacterStyle style;
  if (_hasColours) {
    style.ink = colour;
  }
  _canvas.put(line, place, places.end, {toUtf8(character), 1, 0}, style);
  std::size_t const taken = std::min(iconWidth, places.size());
  places = _sheet.rightToLeft ? Stretch{places.begin, places.end - taken}
                              : Stretch{places.begin + taken, places.end};
}

void CellPainter::paintText(PictureCell const& cell, Stretch own, Stretch lines) {
  auto const room = findRoom(cell, own);
  bool const isCut = Words::displayWidth(cell.text) > room.size();
  if (cell.content != CellContent::Text && isCut) {
    // A number that is cut is another number.
    GlyphLine const hashes(room.size(), Glyph{"#", 1, 0});
    paintTextLine(cell, {own, room, cell.horizontal}, lines.end - 1, hashes);
  } else if (cell.splitAt && *cell.splitAt <= cell.text.size()) {
    paintPieces(cell, own, lines);
  } else {
    auto text = layOutCell(_sheet, cell, room.size(), lines.size());
    auto line = findFirstLine(_sheet.looks[cell.look].vertical, lines, text.size());
    for (GlyphLine const& glyphs : text) {
      bool const repeats = cell.horizontal == HorizontalAlignment::Fill;
      paintTextLine(cell, {own, room, cell.horizontal}, line++,
                    repeats ? repeatLine(glyphs, own.size()) : glyphs);
    }
  }
}

/// The text of an accounting format: the currency at the left, the number at the right.
void CellPainter::paintPieces(PictureCell const& cell, Stretch own, Stretch lines) {
  std::string_view const text = cell.text;
  TextSpace const space{.width = own.size()};
  auto const line = findFirstLine(_sheet.looks[cell.look].vertical, lines, 1);
  paintTextLine(cell, {own, own, HorizontalAlignment::Left}, line,
                breakIntoLines({text.substr(0, *cell.splitAt)}, space).front());
  paintTextLine(cell, {own, own, HorizontalAlignment::Right}, line,
                breakIntoLines({text.substr(*cell.splitAt)}, space).front());
}

void CellPainter::paintTextLine(PictureCell const& cell, TextPlace const& text, std::size_t line,
                                GlyphLine const& glyphs) {
  std::size_t const width = measureWidth(glyphs);
  std::size_t const spare = text.room.size() - std::min(text.room.size(), width);
  std::size_t const indent = countIndent(_sheet.looks[cell.look], spare);
  auto place = findStart(text, width, indent);
  for (Glyph const& glyph : glyphs) {
    _canvas.put(line, place, text.room.end, glyph, findStyle(cell, glyph.run));
    place += glyph.width;
  }
}

/// The places of the text, with those of empty neighbours up to the next border. The picture says
/// which of them its texts need; with characters they may need more.
Stretch CellPainter::findRoom(PictureCell const& cell, Stretch own) const noexcept {
  auto const& look = _sheet.looks[cell.look];
  if (cell.content != CellContent::Text || wraps(look, cell) || isUpright(look)) {
    return own;
  }
  bool const runsLeft = isCentred(cell.horizontal) || cell.horizontal == HorizontalAlignment::Right;
  bool const runsRight = isCentred(cell.horizontal) || cell.horizontal == HorizontalAlignment::Left;
  bool const runsBack = _sheet.rightToLeft ? runsRight : runsLeft;
  bool const runsOn = _sheet.rightToLeft ? runsLeft : runsRight;
  std::uint32_t const before = runsBack ? countFreeBefore(cell) : 0;
  std::uint32_t const after = runsOn ? countFreeAfter(cell) : 0;
  auto all = _grid.findPlaces(cell.column - before, before + cell.columnCount + after);
  leaveGap(all);
  bool const reachesLeft = (_sheet.rightToLeft ? after : before) > 0;
  bool const reachesRight = (_sheet.rightToLeft ? before : after) > 0;
  return {reachesLeft ? all.begin : own.begin, reachesRight ? all.end : own.end};
}

std::uint32_t CellPainter::countFreeBefore(PictureCell const& cell) const noexcept {
  std::uint32_t count = 0;
  while (count < cell.column && _isFree[cell.column - count - 1] &&
         !hasBorder(cell.column - count)) {
    ++count;
  }
  return count;
}

std::uint32_t CellPainter::countFreeAfter(PictureCell const& cell) const noexcept {
  std::uint32_t count = 0;
  std::uint32_t const end = cell.column + cell.columnCount;
  while (end + count < _isFree.size() && _isFree[end + count] && !hasBorder(end + count)) {
    ++count;
  }
  return count;
}

bool CellPainter::hasBorder(std::uint32_t column) const noexcept {
  return column < _borders.beside.size() && _borders.beside[column].style != DOM::LineStyle::None;
}

/// Leaves a character to the next column.
void CellPainter::leaveGap(Stretch& places) const noexcept {
  if (places.size() > 1) {
    places = _sheet.rightToLeft ? Stretch{places.begin + 1, places.end}
                                : Stretch{places.begin, places.end - 1};
  }
}

Stretch CellPainter::withBorderAfter(Stretch places, std::size_t endColumn) const noexcept {
  if (!_grid.findBorderPlace(std::min(endColumn, _grid.getColumnCount()))) {
    return places;
  }
  return _sheet.rightToLeft ? Stretch{places.begin - 1, places.end}
                            : Stretch{places.begin, places.end + 1};
}

CharacterStyle CellPainter::findStyle(PictureCell const& cell, std::size_t run) const {
  if (!_hasColours) {
    return {};
  }
  auto const& font =
      cell.runs != 0 ? _sheet.richTexts[cell.runs - 1][run].font : _sheet.looks[cell.look].font;
  return {.ink = cell.textColour.value_or(font.colour),
          .bold = font.bold,
          .italic = font.italic,
          .underline = font.underline,
          .strikethrough = font.strikethrough};
}

}  // namespace Zorv::Render
