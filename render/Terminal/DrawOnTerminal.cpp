#include "render/Terminal/DrawOnTerminal.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "render/Terminal/Canvas.h"
#include "render/Terminal/CellPainter.h"
#include "render/Terminal/CharacterGrid.h"
#include "render/Terminal/RowBorders.h"

namespace Zorv::Render {

namespace {

constexpr DOM::Colour sheetInk{0, 0, 0};
constexpr DOM::Colour sheetGround{255, 255, 255};
constexpr DOM::Colour headingGround{0xE6, 0xE6, 0xE6};
constexpr DOM::Colour headingInk{0x44, 0x44, 0x44};

struct RowContent {
  RowCells cells;
  RowBorders borders;
};

/// Draws one sheet, row by row.
class SheetDrawing {
public:
  SheetDrawing(SheetPicture const& sheet, TerminalOptions const& options, LineSink const& sink)
      : _sheet(sheet),
        _grid(sheet, options.width, options.colours == ColourDepth::None),
        _depth(options.colours),
        _sink(sink),
        _steps(options.budget) {}

  [[nodiscard]] std::size_t getColumnCount() const noexcept { return _grid.getColumnCount(); }

  void draw() {
    drawHeadings();
    auto row = findRow(0, {});
    drawTop(row.borders);
    for (std::size_t index = 0; index < _sheet.rows.size(); ++index) {
      auto next = findRow(index + 1, row.cells);
      drawRow(index, row, next);
      row = std::move(next);
    }
  }

private:
  [[nodiscard]] bool hasColours() const noexcept { return _depth != ColourDepth::None; }

  [[nodiscard]] CharacterStyle makeStyle(DOM::Colour const& ink, DOM::Colour const& ground) const {
    return hasColours() ? CharacterStyle{.ink = ink, .ground = ground} : CharacterStyle{};
  }

  /// A row, given the cells of the row above. Rows are asked for one after the other.
  RowContent findRow(std::size_t row, RowCells const& above) {
    RowContent content{{}, RowBorders(_grid.getColumnCount())};
    std::ranges::copy_if(above, std::back_inserter(content.cells), [row](PictureCell const* cell) {
      return cell->row + cell->rowCount > row;
    });
    for (; _next < _sheet.cells.size() && _sheet.cells[_next].row == row; ++_next) {
      if (_sheet.cells[_next].column < _grid.getColumnCount()) {
        content.cells.push_back(&_sheet.cells[_next]);
      }
    }
    content.borders.add(_sheet, row, content.cells);
    _steps.count(content.cells.size() + 1);
    return content;
  }

  void drawHeadings() {
    auto const style = makeStyle(headingInk, headingGround);
    Canvas canvas(_grid.getWidth(), {0, 1}, style);
    for (std::uint32_t column = 0; column < _grid.getColumnCount(); ++column) {
      auto const letters = toColumnLetters(_sheet.columns[column].index);
      auto const places = _grid.findPlaces(column, 1);
      putText(canvas, 0,
              places.begin + (places.size() - std::min(places.size(), letters.size())) / 2, letters,
              style);
    }
    write(canvas);
  }

  void drawTop(RowBorders const& borders) {
    if (auto const line = _grid.findBorderLine(0)) {
      Canvas canvas(_grid.getWidth(), {*line, *line + 1}, makeStyle(sheetInk, sheetGround));
      drawNumber(canvas, *line, std::string());
      BorderPainter(_grid, hasColours(), canvas)
          .paintBetween(*line, RowBorders(_grid.getColumnCount()), borders);
      write(canvas);
    }
  }

  void drawRow(std::size_t row, RowContent const& own, RowContent const& next) {
    auto const lines = _grid.findLines(static_cast<std::uint32_t>(row), 1);
    auto const borderLine = _grid.findBorderLine(row + 1);
    Canvas canvas(_grid.getWidth(), {lines.begin, lines.end + (borderLine ? 1 : 0)},
                  makeStyle(sheetInk, sheetGround));
    drawCells(row, own, next, canvas);
    BorderPainter painter(_grid, hasColours(), canvas);
    painter.paintBeside(lines, own.borders);
    if (borderLine) {
      painter.paintBetween(*borderLine, own.borders, next.borders);
    }
    for (std::size_t line = canvas.getLines().begin; line < canvas.getLines().end; ++line) {
      drawNumber(canvas, line,
                 line == lines.begin ? std::to_string(_sheet.rows[row].index + 1) : std::string());
    }
    write(canvas);
  }

  void drawCells(std::size_t row, RowContent const& own, RowContent const& next, Canvas& canvas) {
    CellPainter painter(_sheet, _grid, own.borders, own.cells, hasColours(), canvas);
    if (hasColours()) {
      painter.paintLine(row);
      painter.paintBorderLine(row, own.cells, next.cells);
      for (PictureCell const* const cell : own.cells) {
        painter.paintGround(*cell);
      }
    }
    for (PictureCell const* const cell : own.cells) {
      painter.paintContent(*cell);
    }
  }

  void drawNumber(Canvas& canvas, std::size_t line, std::string const& number) {
    auto const style = makeStyle(headingInk, headingGround);
    auto const places = _grid.getNumberPlaces();
    for (std::size_t place = places.begin; place < places.end; ++place) {
      canvas.putOnGround(line, place, {" ", 1, 0}, style);
    }
    // The gap is towards the columns.
    std::size_t const end = places.end - (_sheet.rightToLeft ? 0 : 1);
    putText(canvas, line, end - number.size(), number, style);
  }

  static void putText(Canvas& canvas, std::size_t line, std::size_t place, std::string_view plain,
                      CharacterStyle const& style) {
    for (char const letter : plain) {
      canvas.putOnGround(line, place++, {std::string(1, letter), 1, 0}, style);
    }
  }

  void write(Canvas const& canvas) {
    for (std::size_t line = canvas.getLines().begin; line < canvas.getLines().end; ++line) {
      _sink(canvas.writeLine(line, _depth));
    }
  }

  SheetPicture const& _sheet;
  CharacterGrid const _grid;
  ColourDepth _depth;
  LineSink const& _sink;
  StepCounter _steps;
  std::size_t _next = 0;  ///< index of the first cell below the rows so far
};

}  // namespace

std::size_t drawOnTerminal(SheetPicture const& sheet, TerminalOptions const& options,
                           LineSink const& sink) {
  SheetDrawing drawing(sheet, options, sink);
  drawing.draw();
  return drawing.getColumnCount();
}

}  // namespace Zorv::Render
