#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "render/Draw/Box.h"
#include "render/Draw/PixelGrid.h"
#include "render/Picture.h"

namespace Zorv::Render::Draw {

/// Lines of a picture, as indices of its rows or columns: half-open.
struct LineSpan {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  [[nodiscard]] bool isEmpty() const noexcept { return begin >= end; }
  friend bool operator==(LineSpan const&, LineSpan const&) = default;
};

/// Rows and columns.
struct LineBlock {
  LineSpan rows;
  LineSpan columns;
};

/// Where the lines and cells of a sheet lie. Its origin is the top left corner of what is drawn,
/// also for sheets from right to left, whose first column lies at the right edge.
///
/// Ownership: borrows the sheet, which must outlive it.
/// Threads: const members may run concurrently.
class SheetGeometry {
public:
  /// Throws BaseRuntimeError if cells are out of order or lie outside of the lines, or if an index
  /// is that of nothing. Sizes that are no numbers or negative count as 0, and very large ones as
  /// 16,384 pixels.
  SheetGeometry(SheetPicture const& sheet, PixelGrid const& grid);

  [[nodiscard]] SheetPicture const& getSheet() const noexcept { return _sheet; }
  [[nodiscard]] PixelGrid const& getGrid() const noexcept { return _grid; }
  [[nodiscard]] double getWidth() const noexcept { return _columnEdges.back(); }
  [[nodiscard]] double getHeight() const noexcept { return _rowEdges.back(); }
  /// Edges of rows from the top, and of columns from the edge of the first one: one more than
  /// lines.
  [[nodiscard]] std::span<double const> getRowEdges() const noexcept { return _rowEdges; }
  [[nodiscard]] std::span<double const> getColumnEdges() const noexcept { return _columnEdges; }

  /// The place of rows and columns.
  [[nodiscard]] Box place(LineBlock const& lines) const noexcept;
  /// The place of a cell with all that it covers.
  [[nodiscard]] Box place(PictureCell const& cell) const noexcept { return place(cover(cell)); }
  /// The rows and columns of a cell.
  [[nodiscard]] LineBlock cover(PictureCell const& cell) const noexcept;
  /// The columns of a cell, and the free ones beside it.
  [[nodiscard]] LineSpan findReach(PictureCell const& cell) const noexcept;

  /// The rows and columns that lie in a box, at least in part.
  [[nodiscard]] LineBlock linesIn(Box const& box) const noexcept;
  /// Fills `cells` with those that lie in the rows and columns at least in part, or whose texts may
  /// run into them. Those that begin above the rows come first, then row by row.
  void findCells(LineBlock const& lines, std::vector<PictureCell const*>& cells) const;
  /// The cells that begin in a row.
  [[nodiscard]] std::span<PictureCell const> cellsOfRow(std::uint32_t row) const noexcept;

private:
  void indexCells();
  void indexTallCell(std::uint32_t index);
  [[nodiscard]] bool isIn(PictureCell const& cell, LineSpan const& columns) const noexcept;

  SheetPicture const& _sheet;
  PixelGrid _grid;
  std::vector<double> _rowEdges;
  std::vector<double> _columnEdges;
  std::vector<std::uint32_t> _firstCells;  ///< by row; one more at the end
  /// By block of rows: the cells of several rows that begin above the block or in it.
  std::vector<std::vector<std::uint32_t>> _tallCells;
};

}  // namespace Zorv::Render::Draw
