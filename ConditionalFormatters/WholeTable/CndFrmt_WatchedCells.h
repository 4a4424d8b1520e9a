#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_WatchedValues.h"
#include "DOM/Table.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Which of a few cells repeat a value.
struct RepeatedAmongWatched {
  CellSet known;     ///< the cells whose answer is known
  CellSet repeated;  ///< those of them that repeat a value
};

/// The few cells that a small request asks about, with their values, so that a first view need not
/// compare all cells with each other.
class WatchedCells {
public:
  /// A request is small up to so many cells, and up to this part of the table's cells.
  static constexpr std::size_t mostCells = 4096;
  static constexpr std::size_t leastOthers = 8;

  /// The existing cells of the ranges that lie in the areas. Null if the request is not small, or
  /// if the provider throws: a walk over all cells then meets the same failure in its own order.
  [[nodiscard]] static std::unique_ptr<WatchedCells const> find(
      ValueContextProvider const& provider, DOM::Table const& table,
      std::vector<TableRange> const& ranges, std::span<TableRange const> areas);

  [[nodiscard]] WatchedValues const& getValues() const noexcept { return _values; }

  /// The answers, by how often each watched value occurs.
  [[nodiscard]] RepeatedAmongWatched findRepeated(std::vector<std::uint32_t> const& counts) const;

private:
  struct Watched {
    CellIndex cell;
    WatchedValues::Index value;
  };

  explicit WatchedCells(std::size_t cellCount) : _values(cellCount) {}

  /// False if too many values share a hash. A value that cannot be compared is passed over.
  [[nodiscard]] bool add(CellIndex cell, FormulaValue const& value);

  WatchedValues _values;
  std::vector<Watched> _cells;
};

}  // namespace Zorv::ConditionalFormatters
