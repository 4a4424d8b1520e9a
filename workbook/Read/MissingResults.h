#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Utils/TableRange.h"
#include "workbook/Read/MissingResult.h"

namespace Zorv::Workbook {

/// Cells without a result, by sheet, column and row; those that have got one are stepped over.
class MissingResults {
public:
  explicit MissingResults(std::vector<MissingResult> results);

  [[nodiscard]] std::size_t size() const noexcept { return _results.size(); }
  [[nodiscard]] MissingResult const& operator[](std::size_t number) const noexcept {
    return _results[number];
  }

  [[nodiscard]] bool isMissing(std::size_t number) const noexcept {
    return _next[number] == number;
  }

  /// The first cell of a range that still has no result. Costs one search for each column of the
  /// range that has cells without results.
  [[nodiscard]] std::optional<std::size_t> findIn(std::size_t sheet, TableRange const& range);

  /// The cell has its result now.
  void finish(std::size_t number) noexcept {
    _next[number] = static_cast<std::uint32_t>(number) + 1;
  }

private:
  [[nodiscard]] std::size_t findFrom(std::size_t sheet, unsigned long column, unsigned long row);

  std::vector<MissingResult> _results;
  /// For each cell itself while it has no result, then some later cell on the way to the next that
  /// has none.
  std::vector<std::uint32_t> _next;
};

}  // namespace Zorv::Workbook
