#include "render/Html/SheetTable.h"

#include <algorithm>
#include <map>
#include <utility>

#include <fmt/format.h>

#include "render/Html/LookCss.h"
#include "render/Html/Markup.h"

namespace Zorv::Render {

namespace {

constexpr double pixelsOfDigit = 8;
constexpr double headingPadding = 14;
/// Grid lines of CSS count from 1, and the first column holds the headings.
constexpr std::uint32_t firstGridLine = 2;

/// The size that most lines have.
double findCommonSize(std::vector<Line> const& lines) {
  std::map<double, std::size_t> counts;
  for (auto const& line : lines) {
    ++counts[line.size];
  }
  auto const most =
      std::ranges::max_element(counts, {}, &std::pair<double const, std::size_t>::second);
  return most == counts.end() ? 0 : most->first;
}

double findHeadingWidth(SheetPicture const& sheet) {
  auto const last = sheet.rows.empty() ? 0 : sheet.rows.back().index + 1;
  return static_cast<double>(std::to_string(last).size()) * pixelsOfDigit + headingPadding;
}

/// The widths of the columns as tracks of a grid, equal neighbours together.
std::string describeTracks(SheetPicture const& sheet) {
  std::string tracks = toPixels(findHeadingWidth(sheet));
  for (auto line = sheet.columns.begin(); line != sheet.columns.end();) {
    auto const next = std::find_if(line, sheet.columns.end(),
                                   [&](Line const& other) { return other.size != line->size; });
    tracks += fmt::format(" repeat({},{})", next - line, toPixels(line->size));
    line = next;
  }
  return tracks;
}

std::string nameColumn(unsigned long index) {
  constexpr unsigned long letters = 26;
  std::string name;
  for (auto rest = index + 1; rest > 0; rest = (rest - 1) / letters) {
    name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % letters));
  }
  return name;
}

}  // namespace

SheetTable::SheetTable(SheetPicture const& sheet, std::string className, StyleSheet& styles,
                       PageGraphics& graphics)
    : _sheet(sheet),
      _className(std::move(className)),
      _styles(styles),
      _cells(sheet, styles, graphics),
      _rowHeight(findCommonSize(sheet.rows)),
      _occupiedUntil(sheet.columns.size()) {
  double start = findHeadingWidth(sheet);
  for (std::uint32_t column = 0;
       column < std::min<std::size_t>(sheet.frozenColumns, sheet.columns.size()); ++column) {
    _frozenClasses.push_back("f " + _styles.classOf("--at:" + toPixels(start)));
    start += sheet.columns[column].size;
  }
}

void SheetTable::append(std::string& out) {
  addGridStyles();
  auto const& indices = _sheet.rows;
  auto const lastRow = indices.empty() ? 0 : indices.back().index + 1;
  out +=
      fmt::format("<div class=\"canvas {}{}\"{}>", _className, _sheet.showsGridLines ? "" : " bare",
                  _sheet.rightToLeft ? " dir=\"rtl\"" : "");
  if (_sheet.showsGridLines) {
    out += "<div class=\"lines\" aria-hidden=\"true\">";
    for (std::size_t column = 0; column <= _sheet.columns.size(); ++column) {
      out += "<i></i>";
    }
    out += "</div>";
  }
  out +=
      fmt::format("<table role=\"table\" aria-rowcount=\"{}\" aria-colcount=\"{}\" aria-label=\"",
                  lastRow + 1, _sheet.columns.size() + 1);
  appendText(out, _sheet.name);
  out += "\">\n";
  appendHeadings(out);
  auto const rowCount = static_cast<std::uint32_t>(_sheet.rows.size());
  for (std::uint32_t begin = 0; begin < rowCount;) {
    auto const end = findBlockEnd(begin);
    beginBlock(out, begin, end);
    for (; begin < end; ++begin) {
      appendRow(out, begin);
    }
    out += "</tbody>\n";
  }
  out += "</table></div>";
}

void SheetTable::addGridStyles() {
  _styles.add(fmt::format(".{} tr,.{} .lines{{grid-template-columns:{}}}\n", _className, _className,
                          describeTracks(_sheet)));
  _styles.add(fmt::format(".{}{{width:{};{}}}\n", _className,
                          toPixels(findHeadingWidth(_sheet) + _sheet.width),
                          describeFont(_sheet.looks[0].font)));
  _styles.add(fmt::format(".{} tr{{height:{}}}\n", _className, toPixels(_rowHeight)));
}

void SheetTable::appendHeadings(std::string& out) {
  out += "<thead role=\"rowgroup\"><tr role=\"row\" aria-rowindex=\"1\"><td class=\"corner\"></td>";
  for (std::uint32_t column = 0; column < _sheet.columns.size(); ++column) {
    out += "<th scope=\"col\" role=\"columnheader\"";
    if (column < _frozenClasses.size()) {
      out += " class=\"" + _frozenClasses[column] + "\"";
    }
    out += ">" + nameColumn(_sheet.columns[column].index) + "</th>";
  }
  out += "</tr></thead>\n";
}

std::uint32_t SheetTable::findBlockEnd(std::uint32_t begin) {
  constexpr std::size_t positions = 1'024;
  constexpr std::size_t fewestRows = 8;
  constexpr std::size_t mostRows = 32;
  auto const rowCount = static_cast<std::uint32_t>(_sheet.rows.size());
  if (begin < _sheet.frozenRows) {
    return std::min(_sheet.frozenRows, rowCount);
  }
  auto const wanted =
      std::clamp(positions / std::max<std::size_t>(_sheet.columns.size(), 1), fewestRows, mostRows);
  auto end = std::min<std::uint32_t>(begin + static_cast<std::uint32_t>(wanted), rowCount);
  // Merged cells of these rows push the end down, and so may those of the rows that come with it.
  for (auto index = _nextCell; index < _sheet.cells.size() && _sheet.cells[index].row < end;
       ++index) {
    auto const& cell = _sheet.cells[index];
    end = std::max(end, std::min(cell.row + cell.rowCount, rowCount));
  }
  return end;
}

void SheetTable::beginBlock(std::string& out, std::uint32_t begin, std::uint32_t end) {
  bool const isFrozen = begin < _sheet.frozenRows;
  out += "<tbody role=\"rowgroup\" class=\"";
  out += isFrozen ? std::string("frozen")
                  : "block " + _styles.classOf("contain-intrinsic-block-size:auto " +
                                               toPixels(sumHeights(begin, end)));
  out += "\">\n";
}

void SheetTable::appendRow(std::string& out, std::uint32_t row) {
  _row = row;
  _nextColumn = 0;
  _isInSequence = true;
  auto const& line = _sheet.rows[row];
  auto const begin = _nextCell;
  auto end = begin;
  bool isTouched = false;
  for (; end < _sheet.cells.size() && _sheet.cells[end].row == row; ++end) {
    isTouched = isTouched || _sheet.cells[end].decision != 0;
  }
  std::string classes = isTouched ? "" : " z";
  if (line.size != _rowHeight) {
    classes += " " + _styles.classOf("height:" + toPixels(line.size) + "!important");
  }
  out += fmt::format("<tr role=\"row\" aria-rowindex=\"{}\"", line.index + 2);
  out += classes.empty() ? ">" : " class=\"" + classes.substr(1) + "\">";
  out += fmt::format("<th scope=\"row\" role=\"rowheader\">{}</th>", line.index + 1);
  for (; _nextCell < end; ++_nextCell) {
    auto const& cell = _sheet.cells[_nextCell];
    appendGap(out, cell.column);
    appendCell(out, cell);
  }
  appendGap(out, static_cast<std::uint32_t>(_sheet.columns.size()));
  out += "</tr>\n";
}

void SheetTable::appendCell(std::string& out, PictureCell const& cell) {
  auto const column = cell.column;
  auto const columnEnd =
      std::min(column + cell.columnCount, static_cast<std::uint32_t>(_sheet.columns.size()));
  Neighbours const neighbours{.left = column > 0 && (_occupiedUntil[column - 1] > _row),
                              .above = _row > 0 && _occupiedUntil[column] == _row};
  std::string classes;
  _cells.appendClasses(classes, cell, neighbours);
  if (column < _frozenClasses.size()) {
    classes += " " + _frozenClasses[column];
  }
  out += "<td";
  if (cell.rowCount > 1 || cell.columnCount > 1) {
    classes += " m";
  }
  if (cell.rowCount > 1) {
    auto const rowEnd = std::min<std::size_t>(_row + cell.rowCount, _sheet.rows.size());
    classes += " " + _styles.classOf("height:" + toPixels(sumHeights(_row, rowEnd)));
    out += fmt::format(" rowspan=\"{}\"", rowEnd - _row);
  }
  if (!_isInSequence || cell.columnCount > 1) {
    classes += " " + classOfPlace(column, columnEnd - column);
    appendPlace(out, column, columnEnd - column);
  }
  out += classes.empty() ? ">" : " class=\"" + classes.substr(1) + "\">";
  _cells.appendContent(out, cell);
  out += "</td>";
  std::fill(_occupiedUntil.begin() + column, _occupiedUntil.begin() + columnEnd,
            _row + cell.rowCount);
  _nextColumn = columnEnd;
  _isInSequence = true;
}

void SheetTable::appendGap(std::string& out, std::uint32_t end) {
  while (_nextColumn < end) {
    if (isCovered(_nextColumn)) {
      ++_nextColumn;
      _isInSequence = false;
      continue;
    }
    constexpr std::uint32_t longGap = 16;
    auto const column = _nextColumn;
    auto next = column + 1;
    if (column >= _frozenClasses.size() && lookAt(_row, column) == 0) {
      while (next < end && !isCovered(next) && lookAt(_row, next) == 0) {
        ++next;
      }
    }
    // A short gap is a position each, so that the keyboard reaches each.
    if (next - column < longGap) {
      next = column + 1;
    }
    appendEmpty(out, column, next - column);
    _nextColumn = next;
    _isInSequence = true;
  }
}

void SheetTable::appendEmpty(std::string& out, std::uint32_t column, std::uint32_t count) {
  std::string classes;
  _cells.appendClass(classes, lookAt(_row, column));
  if (column < _frozenClasses.size()) {
    classes += " " + _frozenClasses[column];
  }
  out += "<td";
  if (!_isInSequence || count > 1) {
    classes += " " + classOfPlace(column, count);
    appendPlace(out, column, count);
  }
  out += classes.empty() ? "></td>" : " class=\"" + classes.substr(1) + "\"></td>";
}

void SheetTable::appendPlace(std::string& out, std::uint32_t column,
                             std::uint32_t columnCount) const {
  if (!_isInSequence) {
    out += fmt::format(" aria-colindex=\"{}\"", column + 2);
  }
  if (columnCount > 1) {
    out += fmt::format(" colspan=\"{}\"", columnCount);
  }
}

std::string const& SheetTable::classOfPlace(std::uint32_t column, std::uint32_t columnCount) {
  auto const span = columnCount > 1 ? fmt::format("span {}", columnCount) : std::string();
  if (_isInSequence) {
    return _styles.classOf("grid-column:" + span);
  }
  return _styles.classOf(
      fmt::format("grid-column:{}{}{}", column + firstGridLine, span.empty() ? "" : "/", span));
}

double SheetTable::sumHeights(std::size_t begin, std::size_t end) const noexcept {
  double sum = 0;
  for (auto row = begin; row < end; ++row) {
    sum += _sheet.rows[row].size;
  }
  return sum;
}

std::uint32_t SheetTable::lookAt(std::uint32_t row, std::uint32_t column) const noexcept {
  auto const look = _sheet.rows[row].look;
  return look != 0 ? look : _sheet.columns[column].look;
}

}  // namespace Zorv::Render
