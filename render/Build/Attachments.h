#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "render/Build/AreaSweep.h"
#include "render/Build/CellRows.h"
#include "render/Build/Looks.h"
#include "render/Picture.h"
#include "workbook/Sheet.h"

namespace Zorv::Render {

/// The hyperlinks of a picture's cells, row by row from the top.
class CellLinks {
public:
  explicit CellLinks(PictureParts const& parts);

  /// Goes on to the next row.
  void advance(std::uint32_t row) { static_cast<void>(_areas.advance(row)); }

  /// Index of the link of a column in the current row, plus one; 0 for none.
  [[nodiscard]] std::uint32_t find(std::uint32_t column);

  [[nodiscard]] std::vector<std::string> take() && noexcept { return std::move(_links); }

private:
  std::vector<Workbook::Hyperlink> const& _hyperlinks;
  AreaSweep _areas;
  std::vector<std::uint32_t> _indices;  ///< by hyperlink: its index in `_links`, plus one
  std::vector<std::string> _links;
};

/// The texts with runs of a picture's cells.
class RichTexts {
public:
  /// Borrows both.
  RichTexts(Workbook::Sheet const& sheet, Looks const& looks) noexcept
      : _cells(sheet.richCells), _looks(looks) {}

  /// Most runs of all cells together: cells share a text, but writers write each of its runs again
  /// for each cell.
  static constexpr std::size_t mostRuns = 500'000;

  /// Index of the runs of a cell's text in a look, plus one; 0 for a text without runs, and beyond
  /// the limit. Cells of the same text and look share them. Logarithmic.
  [[nodiscard]] std::uint32_t find(unsigned long row, unsigned long column, std::string const& text,
                                   StyleLook const& look);

  /// Cells whose runs lie beyond the limit.
  [[nodiscard]] std::size_t countPlain() const noexcept { return _plainCount; }

  [[nodiscard]] std::vector<std::vector<TextRun>> take() && noexcept { return std::move(_texts); }

private:
  std::vector<Workbook::RichCell> const& _cells;
  Looks const& _looks;
  std::map<std::pair<Workbook::RichText const*, std::uint32_t>, std::uint32_t> _known;
  std::vector<std::vector<TextRun>> _texts;
  std::size_t _runCount = 0;  ///< of all cells
  std::size_t _plainCount = 0;
};

}  // namespace Zorv::Render
