#include "render/Terminal/CharacterGrid.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "DOM/A1Notation.h"
#include "Utils/CellIndex.h"
#include "render/Terminal/BoxCharacters.h"
#include "render/Terminal/CellGlyphs.h"
#include "words/Printable.h"

namespace Zorv::Render {

namespace {

constexpr double pixelsOfCharacter = 7;  // the digit 0 of the usual font
constexpr double pixelsOfLine = 20;      // a row of the default height
constexpr std::size_t widestColumn = 255;
constexpr std::size_t mostLinesOfRow = 30;
constexpr std::size_t mostWidth =
    32'768;  // of all columns, where nobody says how wide the output is

std::size_t countCells(double pixels, double pixelsOfCell, std::size_t most) noexcept {
  double const count = std::round(pixels / pixelsOfCell);
  // Not a number counts as nothing.
  return count >= 1 ? static_cast<std::size_t>(std::min(count, static_cast<double>(most))) : 1;
}

/// Widths of a column, in characters.
struct ColumnNeed {
  std::size_t natural = 1;  ///< as wide as its pixels, or as its cells need at least
  std::size_t compact = 1;  ///< as narrow as its cells allow
};

/// Width of what stands in a cell, with the gap to the next column.
std::size_t measureContent(PictureCell const& cell) {
  return Words::displayWidth(cell.text) + 1 + (cell.icon ? iconWidth : 0);
}

std::size_t measureLongestWord(std::string_view text) {
  std::size_t longest = 0;
  while (!text.empty()) {
    auto const end = std::min(text.find_first_of(" \n"), text.size());
    longest = std::max(longest, Words::displayWidth(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return longest;
}

constexpr std::size_t shortestBarRoom = 4;
constexpr std::size_t usualBarRoom = 8;

/// Makes room for a bar beside the text.
void widenForBar(std::size_t textWidth, ColumnNeed& need) {
  need.natural = std::max(need.natural, textWidth + usualBarRoom);
  need.compact = std::max(need.compact, textWidth + shortestBarRoom);
}

void widenFor(PictureCell const& cell, Look const& look, std::size_t pixelWidth, ColumnNeed& need) {
  if (cell.columnCount > 1 || isUpright(look) || (cell.text.empty() && !cell.icon)) {
    return;
  }
  std::size_t const content = std::min(measureContent(cell), widestColumn);
  if (cell.content != CellContent::Text) {
    // A number that is cut is another number.
    need.natural = std::max(need.natural, content);
    need.compact = std::max(need.compact, content);
    return;
  }
  // The letters of a proportional font are narrower than a digit on average.
  std::size_t const generous = pixelWidth + pixelWidth / 3;
  bool const runsOver = cell.freeLeft > 0 || cell.freeRight > 0;
  std::size_t wanted = std::min(content, runsOver ? pixelWidth : generous);
  if (wraps(look, cell)) {
    wanted = std::min(content, std::clamp(measureLongestWord(cell.text) + 1, pixelWidth, generous));
  }
  need.natural = std::max(need.natural, wanted);
  need.compact = std::max(need.compact, wanted);
}

/// Of each column the widest text that stands beside a bar, with a gap on both sides.
std::vector<std::size_t> findTextWidths(SheetPicture const& sheet) {
  constexpr std::size_t gaps = 2;
  std::vector<std::size_t> widths(sheet.columns.size());
  for (PictureCell const& cell : sheet.cells) {
    if (cell.bar && cell.columnCount == 1 && !cell.text.empty()) {
      auto& width = widths[cell.column];
      width = std::max(width, std::min(Words::displayWidth(cell.text), widestColumn) + gaps);
    }
  }
  return widths;
}

std::vector<ColumnNeed> findColumnNeeds(SheetPicture const& sheet,
                                        std::vector<std::size_t> const& textWidths) {
  std::vector<ColumnNeed> needs;
  std::vector<std::size_t> pixelWidths;
  for (Line const& column : sheet.columns) {
    auto const heading = toColumnLetters(column.index).size();
    pixelWidths.push_back(countCells(column.size, pixelsOfCharacter, widestColumn));
    needs.push_back({std::max(pixelWidths.back(), heading), heading});
  }
  for (PictureCell const& cell : sheet.cells) {
    widenFor(cell, sheet.looks[cell.look], pixelWidths[cell.column], needs[cell.column]);
  }
  for (std::size_t column = 0; column < needs.size(); ++column) {
    if (textWidths[column] > 0) {
      widenForBar(textWidths[column], needs[column]);
    }
  }
  return needs;
}

/// The characters of all columns, with the borders between them.
std::size_t sumWidths(std::vector<std::size_t> const& widths, std::vector<bool> const& hasBorder) {
  std::size_t sum = hasBorder.back() ? 1 : 0;
  for (std::size_t column = 0; column < widths.size(); ++column) {
    sum += widths[column] + (hasBorder[column] ? 1 : 0);
  }
  return sum;
}

/// Widens columns to their natural width, from the first on, as far as there is room.
void widenColumns(std::vector<std::size_t>& widths, std::vector<ColumnNeed> const& needs,
                  std::size_t room) {
  for (std::size_t column = 0; column < widths.size(); ++column) {
    std::size_t const more = std::min(room, needs[column].natural - widths[column]);
    widths[column] += more;
    room -= more;
  }
}

std::vector<std::size_t> findColumnWidths(std::vector<ColumnNeed> const& needs,
                                          std::vector<bool> const& hasBorder, std::size_t room) {
  std::vector<std::size_t> widths(needs.size());
  std::ranges::transform(needs, widths.begin(), &ColumnNeed::natural);
  if (sumWidths(widths, hasBorder) > room) {
    std::ranges::transform(needs, widths.begin(), &ColumnNeed::compact);
    std::size_t const used = sumWidths(widths, hasBorder);
    widenColumns(widths, needs, used < room ? room - used : 0);
  }
  return widths;
}

/// The weights of the lines above each row, and below the last, by columns. Empty where there are
/// none.
using RulesOfRows = std::vector<std::vector<LineWeight>>;

void addRule(std::vector<LineWeight>& weights, PictureCell const& cell, DOM::BorderLine const& line,
             std::size_t columnCount) {
  auto const weight = toLineWeight(line.style);
  if (weight == LineWeight::None) {
    return;
  }
  weights.resize(columnCount);
  for (std::size_t column = cell.column; column < cell.column + cell.columnCount; ++column) {
    weights[column] = std::max(weights[column], weight);
  }
}

/// How many lines a cell's text gets at most. Upright letters lie as close as in a line.
std::size_t findMostLines(Look const& look, double height) noexcept {
  return isUpright(look) ? countCells(height, pixelsOfCharacter, mostLinesOfRow)
                         : 2 * countCells(height, pixelsOfLine, mostLinesOfRow / 2);
}

}  // namespace

std::string toColumnLetters(unsigned long column) {
  auto address = DOM::A1Notation::toAddress(CellIndex{RowIndex(0UL), ColumnIndex(column)});
  address.pop_back();  // the 1 of the first row
  return address;
}

CellSides findSides(SheetPicture const& sheet, PictureCell const& cell) noexcept {
  std::size_t const before = cell.column;
  std::size_t const after = before + cell.columnCount;
  return sheet.rightToLeft ? CellSides{after, before} : CellSides{before, after};
}

CharacterGrid::CharacterGrid(SheetPicture const& sheet, std::optional<std::size_t> width,
                             bool barsStandApart)
    : _rightToLeft(sheet.rightToLeft),
      _textWidths(barsStandApart ? findTextWidths(sheet)
                                 : std::vector<std::size_t>(sheet.columns.size())) {
  findBorders(sheet);
  findRowBorders(sheet);
  placeColumns(sheet, width);
  placeRows(sheet);
}

Stretch CharacterGrid::getNumberPlaces() const noexcept {
  return _rightToLeft ? Stretch{_bodyWidth, getWidth()} : Stretch{0, _numberWidth};
}

Stretch CharacterGrid::findPlaces(std::uint32_t column, std::uint32_t count) const noexcept {
  std::size_t const end = std::min<std::size_t>(std::size_t{column} + count, _columnCount);
  if (column >= end) {
    return {};
  }
  std::size_t const stop = _columnStarts[end] - (_hasColumnBorder[end] ? 1 : 0);
  std::size_t const width = stop - _columnStarts[column];
  std::size_t const begin = toPlace(_columnStarts[column], width);
  return {begin, begin + width};
}

Stretch CharacterGrid::findLines(std::uint32_t row, std::uint32_t count) const noexcept {
  std::size_t const end = std::min<std::size_t>(std::size_t{row} + count, _rowStarts.size() - 1);
  return {_rowStarts[row], _rowStarts[end] - (_hasRowBorder[end] ? 1 : 0)};
}

std::optional<std::size_t> CharacterGrid::findBorderPlace(std::size_t column) const noexcept {
  return _hasColumnBorder[column] ? std::optional(toPlace(_columnStarts[column] - 1, 1))
                                  : std::nullopt;
}

std::optional<std::size_t> CharacterGrid::findBorderLine(std::size_t row) const noexcept {
  return _hasRowBorder[row] ? std::optional(_rowStarts[row] - 1) : std::nullopt;
}

void CharacterGrid::findBorders(SheetPicture const& sheet) {
  _hasColumnBorder.resize(sheet.columns.size() + 1);
  auto const isDrawn = [](DOM::BorderLine const& line) {
    return line.style != DOM::LineStyle::None;
  };
  for (PictureCell const& cell : sheet.cells) {
    if (cell.edges == 0) {
      continue;
    }
    auto const& edges = sheet.edges[cell.edges];
    auto const sides = findSides(sheet, cell);
    if (isDrawn(edges.left)) {
      _hasColumnBorder[sides.left] = true;
    }
    if (isDrawn(edges.right)) {
      _hasColumnBorder[sides.right] = true;
    }
  }
}

void CharacterGrid::findRowBorders(SheetPicture const& sheet) {
  RulesOfRows rules(sheet.rows.size() + 1);
  for (PictureCell const& cell : sheet.cells) {
    auto const& edges = sheet.edges[cell.edges];
    addRule(rules[cell.row], cell, edges.top, sheet.columns.size());
    addRule(rules[cell.row + cell.rowCount], cell, edges.bottom, sheet.columns.size());
  }
  for (std::size_t row = 0; row < rules.size(); ++row) {
    bool const isLikeNeighbours = row > 0 && row + 1 < rules.size() &&
                                  rules[row] == rules[row - 1] && rules[row] == rules[row + 1];
    _hasRowBorder.push_back(!rules[row].empty() && !isLikeNeighbours);
  }
}

void CharacterGrid::placeColumns(SheetPicture const& sheet, std::optional<std::size_t> width) {
  auto const lastRow = sheet.rows.empty() ? 0 : sheet.rows.back().index + 1;
  _numberWidth = std::to_string(lastRow).size() + 1;
  std::size_t const room = std::max(width.value_or(mostWidth), _numberWidth + 2) - _numberWidth;
  std::size_t at = _hasColumnBorder.front() ? 1 : 0;
  auto widths = findColumnWidths(findColumnNeeds(sheet, _textWidths), _hasColumnBorder, room);
  if (!widths.empty()) {
    widths.front() = std::min(widths.front(), room - at);
  }
  _columnStarts = {at};
  for (std::size_t const columnWidth : widths) {
    at += columnWidth + (_hasColumnBorder[_columnCount + 1] ? 1 : 0);
    if (at > room && _columnCount > 0) {
      break;
    }
    ++_columnCount;
    _columnStarts.push_back(at);
  }
  _bodyWidth = _columnStarts.back();
}

void CharacterGrid::placeRows(SheetPicture const& sheet) {
  std::vector<std::size_t> lines(sheet.rows.size(), 1);
  for (PictureCell const& cell : sheet.cells) {
    auto const& look = sheet.looks[cell.look];
    auto const places = findPlaces(cell.column, cell.columnCount);
    if (cell.rowCount > 1 || places.size() == 0 || !(isUpright(look) || wraps(look, cell))) {
      continue;
    }
    auto const most = findMostLines(look, sheet.rows[cell.row].size);
    std::size_t const width = places.size() > 1 ? places.size() - 1 : 1;
    lines[cell.row] = std::max(lines[cell.row], layOutCell(sheet, cell, width, most).size());
  }
  std::size_t at = _hasRowBorder.front() ? 1 : 0;
  _rowStarts = {at};
  for (std::size_t row = 0; row < lines.size(); ++row) {
    at += lines[row] + (_hasRowBorder[row + 1] ? 1 : 0);
    _rowStarts.push_back(at);
  }
}

std::size_t CharacterGrid::toPlace(std::size_t logical, std::size_t width) const noexcept {
  return _rightToLeft ? _bodyWidth - logical - width : _numberWidth + logical;
}

}  // namespace Zorv::Render
