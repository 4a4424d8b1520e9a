#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Utils/TableRange.h"
#include "workbook/Recalculation/CellFormulas.h"

namespace Zorv::Workbook {

/// Cells without a result, ordered by sheet, column and row. A search skips those that have got
/// their result since, like a disjoint-set forest: `_next` is compressed as it is followed.
class MissingResults {
public:
  explicit MissingResults(std::vector<FormulaCell> results);

  [[nodiscard]] std::size_t size() const noexcept { return _results.size(); }
  [[nodiscard]] FormulaCell const& operator[](std::size_t index) const noexcept {
    return _results[index];
  }

  [[nodiscard]] bool isMissing(std::size_t index) const noexcept { return _next[index] == index; }

  /// The first cell of a range that still has no result. Costs one binary search for each column of
  /// the range that has such cells.
  [[nodiscard]] std::optional<std::size_t> findIn(std::size_t sheet, TableRange const& range);

  /// Marks a cell: it has its result now.
  void finish(std::size_t index) noexcept { _next[index] = static_cast<std::uint32_t>(index) + 1; }

private:
  [[nodiscard]] std::size_t findFrom(std::size_t sheet, unsigned long column, unsigned long row);

  std::vector<FormulaCell> _results;
  /// For each cell: its own index while it has no result, then that of some later cell that is not
  /// behind the next cell without one.
  std::vector<std::uint32_t> _next;
};

}  // namespace Zorv::Workbook
