#pragma once

#include <cstddef>
#include <vector>

#include "DOM/StyleProps.h"
#include "render/Picture.h"
#include "render/Terminal/Canvas.h"
#include "render/Terminal/CharacterGrid.h"

namespace Zorv::Render {

/// The cells that are seen in one row: those of the row, and those of rows above that reach it.
using RowCells = std::vector<PictureCell const*>;

/// Borders of the cells in one row.
struct RowBorders {
  std::vector<DOM::BorderLine> above;   ///< of each column
  std::vector<DOM::BorderLine> below;   ///< of each column
  std::vector<DOM::BorderLine> beside;  ///< before each column, and after the last

  explicit RowBorders(std::size_t columnCount)
      : above(columnCount), below(columnCount), beside(columnCount + 1) {}

  /// Takes the borders of the cells of a row; those of columns that are left out are left out.
  void add(SheetPicture const& sheet, std::size_t row, RowCells const& cells);
};

/// Draws the borders between the columns of a row, and below it.
class BorderPainter {
public:
  /// Borrows everything.
  BorderPainter(CharacterGrid const& grid, bool hasColours, Canvas& canvas)
      : _grid(grid), _hasColours(hasColours), _canvas(canvas) {}

  void paintBeside(Stretch lines, RowBorders const& borders);

  /// The border between two rows. The first lies above the line.
  void paintBetween(std::size_t line, RowBorders const& first, RowBorders const& second);

private:
  void paintCrossing(std::size_t line, std::size_t column, RowBorders const& first,
                     RowBorders const& second);
  void put(std::size_t line, std::size_t place, char32_t character, DOM::BorderLine const& border);

  CharacterGrid const& _grid;
  bool _hasColours;
  Canvas& _canvas;
};

}  // namespace Zorv::Render
