#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The text of single coordinates and cells in A1 notation (ISO/IEC 29500-1, 18.17.2.3).
namespace Zorv::Formulas::A1Text {

/// A row or a column; positions count from 0.
struct Coordinate {
  std::uint32_t position = 0;
  bool isRelative = true;
};

struct Cell {
  Coordinate row;
  Coordinate column;
};

enum class Shape : std::uint8_t {
  Other,        ///< no cell at all: a name
  Inside,       ///< a cell of the sheet
  PastColumns,  ///< written as a cell, but right of the last column
  PastRows,     ///< written as a cell, but below the last row
};

struct CellText {
  Shape shape = Shape::Other;
  Cell cell;
};

/// Reads a whole text as a cell such as `B7` or `$B$7`.
[[nodiscard]] CellText readCell(std::string_view text) noexcept;
/// Reads a whole text as a column such as `B` or `$B`; nothing when it is none of the sheet.
[[nodiscard]] std::optional<Coordinate> readColumn(std::string_view text) noexcept;
/// Reads a whole text as a row such as `7` or `$7`; nothing when it is none of the sheet.
[[nodiscard]] std::optional<Coordinate> readRow(std::string_view text) noexcept;

}  // namespace Zorv::Formulas::A1Text
