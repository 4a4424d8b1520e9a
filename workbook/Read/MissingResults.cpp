#include "workbook/Read/MissingResults.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace Zorv::Workbook {

namespace {

auto placeOf(MissingResult const& result) noexcept {
  return std::tuple<std::size_t, unsigned long, unsigned long>(result.sheet, result.column,
                                                               result.row);
}

bool standsEarlier(MissingResult const& a, MissingResult const& b) noexcept {
  return placeOf(a) < placeOf(b);
}

bool standsAtOnePlace(MissingResult const& a, MissingResult const& b) noexcept {
  return placeOf(a) == placeOf(b);
}

}  // namespace

MissingResults::MissingResults(std::vector<MissingResult> results) : _results(std::move(results)) {
  std::stable_sort(_results.begin(), _results.end(), standsEarlier);
  // A cell that a damaged file has twice counts once.
  _results.erase(std::unique(_results.begin(), _results.end(), standsAtOnePlace), _results.end());
  _next.resize(_results.size() + 1);
  std::iota(_next.begin(), _next.end(), std::uint32_t{0});
}

std::optional<std::size_t> MissingResults::findIn(std::size_t sheet, TableRange const& range) {
  unsigned long column = range.firstColumn;
  unsigned long row = range.firstRow;
  for (;;) {
    std::size_t const number = findFrom(sheet, column, row);
    if (number == _results.size() || _results[number].sheet != sheet ||
        _results[number].column >= range.endColumn) {
      return std::nullopt;
    }
    MissingResult const& found = _results[number];
    if (range.contains(found.row, found.column)) {
      return number;
    }
    column = found.row < range.firstRow ? found.column : found.column + 1;
    row = range.firstRow;
  }
}

/// The first cell without a result from a place on, or the end.
std::size_t MissingResults::findFrom(std::size_t sheet, unsigned long column, unsigned long row) {
  auto const first = std::lower_bound(
      _results.begin(), _results.end(), std::tuple(sheet, column, row),
      [](MissingResult const& result, auto const& place) { return placeOf(result) < place; });
  auto number = static_cast<std::size_t>(first - _results.begin());
  while (_next[number] != number) {
    // Halves the way for the next search.
    _next[number] = _next[_next[number]];
    number = _next[number];
  }
  return number;
}

}  // namespace Zorv::Workbook
