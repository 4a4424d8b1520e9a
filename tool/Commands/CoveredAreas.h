#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "Utils/TableRange.h"
#include "tool/Input/Selection.h"
#include "tool/Output/Report.h"

namespace Zorv::Tool {

/// The positions of one sheet that a command looks at: those in the ranges of rules and in the
/// ranges of the options, with and without cells.
///
/// Whole rows and columns, ranges that end where the sheet ends, and very large ones are clipped to
/// the used range of the sheet. Where even that leaves too many positions, existing cells are
/// looked at alone.
class CoveredAreas {
public:
  /// Above this number of positions, a range is very large, and so is what a pass looks at.
  static constexpr std::uint64_t mostPositions = 5'000'000;

  /// `margin` rows and columns at the end belong to the used range, too. Linear in the cells.
  CoveredAreas(Selection const& selection, std::size_t sheet, unsigned long margin);

  /// A pass over the positions of resolved rules of the sheet, with one thread. Remembers what is
  /// left out.
  [[nodiscard]] ConditionalFormatters::TablePass makePass(
      std::span<Workbook::Rule const* const> rules);

  /// Says what the passes so far leave out.
  void sayLeftOut(Report& report) const;

private:
  using RangeTest = bool (*)(TableRange const&) noexcept;

  /// The areas of some rules. Those that fulfil `mustClip` are clipped.
  [[nodiscard]] std::vector<TableRange> findAreas(std::span<Workbook::Rule const* const> rules,
                                                  RangeTest mustClip);

  std::size_t _sheet;
  TableRange _used;                        ///< with its margin
  std::vector<TableRange> _bounds;         ///< the selected ranges
  std::vector<std::size_t> _clippedRules;  ///< numbers
  std::uint64_t _mostPositionsLeftOut = 0;
};

}  // namespace Zorv::Tool
