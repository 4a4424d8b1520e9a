#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "DOM/Cell.h"
#include "DOM/Table.h"
#include "render/Build/AreaSweep.h"
#include "render/Build/Looks.h"
#include "render/Build/Resolution.h"
#include "render/Build/ShownLines.h"
#include "render/Build/TableStyles.h"

namespace Zorv::Render {

/// Position of a picture's row that has a cell, gets something from conditional formats, or is the
/// first one of a merged cell.
struct PlacedCell {
  std::uint32_t column = 0;                  ///< of the picture
  DOM::Cell const* cell = nullptr;           ///< null where there is none
  DecidedPosition const* decided = nullptr;  ///< null where formats give nothing
  Looks::Style const* style = nullptr;       ///< without conditional formats; may be null
  PictureArea const* merged = nullptr;       ///< null where it is not merged
};

/// Parts from which a sheet's picture is made.
struct PictureParts {
  Workbook::Sheet const& sheet;
  Resolution const& resolution;
  ShownLines const& rows;
  ShownLines const& columns;
  TableRange range;
  DOM::CellStyle const* usual = nullptr;  ///< of cells without a style; may be null
};

/// The positions of a picture, row by row from the top. The positions of tables with a style
/// are among them, as they may show something without a cell. A merged cell stands at its first
/// position that is seen, and hides the others. Borrows the parts.
class CellRows {
public:
  /// `fillsRows`: every position is listed, since rows or columns have lines of their own.
  CellRows(PictureParts const& parts, bool fillsRows);

  /// The positions of a row, which must be the next one, from the left; valid until the next call.
  [[nodiscard]] std::vector<PlacedCell> const& advance(std::uint32_t row);

  /// The merged cell at a column of the current row, or null.
  [[nodiscard]] PictureArea const* findMerged(std::uint32_t column) const noexcept {
    return _merged.find(column);
  }
  /// Merged cells that were left out since they overlap others.
  [[nodiscard]] std::size_t getOverlapCount() const noexcept { return _merged.getOverlapCount(); }

private:
  void add(unsigned long column, DOM::Cell const* cell, DecidedPosition const* decided,
           std::uint32_t row);
  void addMerged(PictureArea const& area);
  void addMissing(std::uint32_t row);
  [[nodiscard]] Looks::Style const* findStyle(DOM::Cell const* cell, std::uint32_t row,
                                              std::uint32_t column);

  PictureParts const& _parts;
  bool _fillsRows;
  AreaSweep _merged;
  TableStyles _tables;
  DOM::CellRangeIt<true> _cell;
  DOM::CellRangeIt<true> _cellsEnd;
  std::vector<DecidedPosition>::const_iterator _decided;
  std::vector<PlacedCell> _placed;
  std::vector<PlacedCell> _withMissing;
};

}  // namespace Zorv::Render
