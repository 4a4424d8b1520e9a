#pragma once

#include <cstdint>
#include <vector>

#include "render/Draw/SheetGeometry.h"

namespace Zorv::Render::Draw {

/// Piece of a sheet along one direction, in CSS pixels: half-open.
struct Extent {
  double from = 0;
  double to = 0;

  [[nodiscard]] double length() const noexcept { return to - from; }
  friend bool operator==(Extent const&, Extent const&) = default;
};

/// Content of a page. Columns are counted from the edge of the first one, also in sheets from right
/// to left.
struct Page {
  Extent rows;
  Extent columns;
  Extent titleRows;     ///< repeated above; empty on pages that show them anyway
  Extent titleColumns;  ///< repeated before the columns
};

/// The pages of a sheet.
struct PageList {
  std::vector<Page> pages;
  double scale = 1;
};

/// Divides a sheet into pages as its page setup says.
///
/// Breaks lie between lines; a line that is longer than a page is divided. Margins that leave no
/// room count as none. Titles that take more than half of a page are not repeated. A sheet without
/// rows or columns has no pages. Throws BaseRuntimeError if there are more pages than `limit`.
[[nodiscard]] PageList findPages(SheetGeometry const& geometry, std::uint64_t limit);

/// The part of the paper that is printed on, in CSS pixels.
[[nodiscard]] Box findPrintedPaper(PageSetup const& setup) noexcept;
/// The paper, in CSS pixels; a size that cannot be becomes one that can.
[[nodiscard]] Box findPaper(PageSetup const& setup) noexcept;

}  // namespace Zorv::Render::Draw
