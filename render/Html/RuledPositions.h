#pragma once

#include <cstdint>
#include <vector>

#include "render/Picture.h"

namespace Zorv::Render {

/// The positions of a sheet that lie in ranges of its rules, row by row from the top.
///
/// Borrows the sheet. Cost of a row: linear in the ranges that reach it and in the columns; nothing
/// to speak of where no range reaches it.
class RuledPositions {
public:
  explicit RuledPositions(SheetPicture const& sheet);

  /// The columns of a row, as ascending indices in SheetPicture::columns. Rows must be asked for in
  /// their order. Valid until the next call.
  [[nodiscard]] std::vector<std::uint32_t> const& findColumns(std::uint32_t row);

private:
  /// A range in the picture's lines: half-open.
  struct Area {
    std::uint32_t rowBegin;
    std::uint32_t rowEnd;
    std::uint32_t columnBegin;
    std::uint32_t columnEnd;
  };

  std::vector<Area> _areas;            ///< by first row
  std::vector<Area> _reaching;         ///< those that reach the row
  std::size_t _next = 0;               ///< the first of `_areas` that begins further down
  std::vector<std::int32_t> _changes;  ///< by column: areas that begin less those that end
  std::vector<std::uint32_t> _columns;
};

}  // namespace Zorv::Render
