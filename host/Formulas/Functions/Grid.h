#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "Formulas/Values/Arena.h"
#include "Formulas/Values/Cells.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// One reference, one array or one single value, seen as a rectangle of values. Rows and columns
/// count from 0.
class Grid {
public:
  /// Nothing for what is no such rectangle: an error, an argument left out, several areas.
  [[nodiscard]] static std::optional<Grid> of(Value const& value) noexcept;

  /// The result for an argument that is no grid: the argument's own error, or `#VALUE!`.
  [[nodiscard]] static Value refuse(Value const& value) noexcept {
    return value.isError() ? value : Value::error(FormulaErrorCode::Value);
  }

  [[nodiscard]] std::uint32_t rows() const noexcept { return _rows; }
  [[nodiscard]] std::uint32_t columns() const noexcept { return _columns; }
  [[nodiscard]] std::uint64_t size() const noexcept { return std::uint64_t{_rows} * _columns; }
  [[nodiscard]] bool isReference() const noexcept { return _value.isReference(); }
  /// The area of a rectangle inside; requires a reference.
  [[nodiscard]] Area areaOf(std::uint32_t firstRow, std::uint32_t endRow, std::uint32_t firstColumn,
                            std::uint32_t endColumn) const noexcept;

  /// The value at a position inside.
  [[nodiscard]] Value at(std::uint32_t row, std::uint32_t column) const {
    return _value.isReference() ? readCell(_value.asArea(), row, column)
           : _value.isArray()   ? _value.asArray().at(row, column)
                                : _value;
  }

  /// A rectangle inside, of at least one row and one column: of a reference a reference, otherwise
  /// an array or a single value.
  [[nodiscard]] Value part(Arena& arena, std::uint32_t firstRow, std::uint32_t firstColumn,
                           std::uint32_t rowCount, std::uint32_t columnCount) const;

  /// Visits the values of a rectangle inside, row by row: `visit(row, column, value)`, which
  /// returns false to stop; row and column count from the grid's first ones. Of a reference the
  /// existing cells are visited; of an array's rows that repeat the one above them only the first
  /// and the last. Counts the steps.
  template <class Visit>
  void visit(StepMeter& steps, std::uint32_t firstRow, std::uint32_t endRow,
             std::uint32_t firstColumn, std::uint32_t endColumn, Visit&& visit) const;

private:
  Grid(Value const& value, std::uint32_t rows, std::uint32_t columns) noexcept
      : _value(value), _rows(rows), _columns(columns) {}

  /// The first row below which all rows are alike.
  [[nodiscard]] std::uint32_t storedRows() const noexcept {
    return _value.isArray() ? _value.asArray().storedRows : 1;
  }

  Value _value;
  std::uint32_t _rows;
  std::uint32_t _columns;
};

template <class Visit>
void Grid::visit(StepMeter& steps, std::uint32_t firstRow, std::uint32_t endRow,
                 std::uint32_t firstColumn, std::uint32_t endColumn, Visit&& visit) const {
  if (firstRow >= endRow || firstColumn >= endColumn) {
    return;
  }
  if (_value.isReference()) {
    forEachCell(steps, areaOf(firstRow, endRow, firstColumn, endColumn),
                [&](std::uint32_t row, std::uint32_t column, Value const& value) {
                  return visit(firstRow + row, firstColumn + column, value);
                });
    return;
  }
  StepRun run(steps);
  for (std::uint32_t row = firstRow; row < endRow;) {
    for (std::uint32_t column = firstColumn; column < endColumn; ++column) {
      Value const value = at(row, column);
      run.count(stepsOf(value));
      if (!visit(row, column, value)) {
        run.end();
        return;
      }
    }
    row = row < storedRows() || row + 1 >= endRow ? row + 1 : endRow - 1;
  }
  run.end();
}

/// One row or one column of a grid. Places count from 0.
class Line {
public:
  [[nodiscard]] static Line ofColumn(Grid const& grid, std::uint32_t column) noexcept {
    return {grid, column, true};
  }
  [[nodiscard]] static Line ofRow(Grid const& grid, std::uint32_t row) noexcept {
    return {grid, row, false};
  }
  /// The only row or column of a grid; nothing where it has several of both.
  [[nodiscard]] static std::optional<Line> of(Grid const& grid) noexcept {
    if (grid.columns() == 1) {
      return ofColumn(grid, 0);
    }
    return grid.rows() == 1 ? std::optional(ofRow(grid, 0)) : std::nullopt;
  }

  [[nodiscard]] std::uint32_t size() const noexcept {
    return _isColumn ? _grid.rows() : _grid.columns();
  }
  [[nodiscard]] bool isColumn() const noexcept { return _isColumn; }
  [[nodiscard]] bool isReference() const noexcept { return _grid.isReference(); }
  /// Its cells; requires a reference.
  [[nodiscard]] Area area() const noexcept {
    return _isColumn ? _grid.areaOf(0, _grid.rows(), _line, _line + 1)
                     : _grid.areaOf(_line, _line + 1, 0, _grid.columns());
  }
  [[nodiscard]] Value at(std::uint32_t position) const {
    return _isColumn ? _grid.at(position, _line) : _grid.at(_line, position);
  }

  /// Visits the values of some positions in their order, as Grid::visit() does: `visit(position,
  /// value)`.
  template <class Visit>
  void visit(StepMeter& steps, std::uint32_t first, std::uint32_t end, Visit&& visit) const {
    if (_isColumn) {
      _grid.visit(steps, first, end, _line, _line + 1,
                  [&](std::uint32_t row, std::uint32_t /*column*/, Value const& value) {
                    return visit(row, value);
                  });
    } else {
      _grid.visit(steps, _line, _line + 1, first, end,
                  [&](std::uint32_t /*row*/, std::uint32_t column, Value const& value) {
                    return visit(column, value);
                  });
    }
  }

private:
  Line(Grid const& grid, std::uint32_t line, bool isColumn) noexcept
      : _grid(grid), _line(line), _isColumn(isColumn) {}

  Grid _grid;
  std::uint32_t _line;
  bool _isColumn;
};

}  // namespace Zorv::Formulas
