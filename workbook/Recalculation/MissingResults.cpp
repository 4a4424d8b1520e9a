#include "workbook/Recalculation/MissingResults.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace Zorv::Workbook {

namespace {

auto placeOf(FormulaCell const& result) noexcept {
  return std::tuple<std::size_t, unsigned long, unsigned long>(result.sheet, result.column,
                                                               result.row);
}

bool standsEarlier(FormulaCell const& a, FormulaCell const& b) noexcept {
  return placeOf(a) < placeOf(b);
}

bool standsAtOnePlace(FormulaCell const& a, FormulaCell const& b) noexcept {
  return placeOf(a) == placeOf(b);
}

}  // namespace

MissingResults::MissingResults(std::vector<FormulaCell> results) : _results(std::move(results)) {
  std::stable_sort(_results.begin(), _results.end(), standsEarlier);
  // A damaged file may have a cell twice.
  _results.erase(std::unique(_results.begin(), _results.end(), standsAtOnePlace), _results.end());
  _next.resize(_results.size() + 1);
  std::iota(_next.begin(), _next.end(), std::uint32_t{0});
}

std::optional<std::size_t> MissingResults::findIn(std::size_t sheet, TableRange const& range) {
  unsigned long column = range.firstColumn;
  unsigned long row = range.firstRow;
  for (;;) {
    std::size_t const index = findFrom(sheet, column, row);
    if (index == _results.size() || _results[index].sheet != sheet ||
        _results[index].column >= range.endColumn) {
      return std::nullopt;
    }
    FormulaCell const& found = _results[index];
    if (range.contains(found.row, found.column)) {
      return index;
    }
    column = found.row < range.firstRow ? found.column : found.column + 1;
    row = range.firstRow;
  }
}

/// The first cell without a result at a place or after it, or the end.
std::size_t MissingResults::findFrom(std::size_t sheet, unsigned long column, unsigned long row) {
  auto const first = std::lower_bound(
      _results.begin(), _results.end(), std::tuple(sheet, column, row),
      [](FormulaCell const& result, auto const& place) { return placeOf(result) < place; });
  auto index = static_cast<std::size_t>(first - _results.begin());
  while (_next[index] != index) {
    // Path halving: the next search takes half as many steps.
    _next[index] = _next[_next[index]];
    index = _next[index];
  }
  return index;
}

}  // namespace Zorv::Workbook
