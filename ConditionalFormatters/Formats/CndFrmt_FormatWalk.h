#pragma once

#include <algorithm>
#include <iterator>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "DOM/CellInfo.h"
#include "DOM/ConditionalFormat.h"
#include "Utils/TableRange.h"

// The walk over the formats of a table that decides about a cell. Everything that resolves or
// explains cells takes this walk, so that there is one order of formats, one hold test and one
// stop.
namespace Zorv::ConditionalFormatters {

/// True if one of the ranges contains the cell's current position.
[[nodiscard]] inline bool holdsCell(std::vector<TableRange> const& ranges,
                                    DOM::CellInfo const& cellInfo) {
  return std::any_of(ranges.begin(), ranges.end(), [&](TableRange const& range) {
    return range.contains(cellInfo.getRowIndex(), cellInfo.getColIndex());
  });
}

/// The indices of the formats whose ranges hold a cell, in order of priority. A view: the ranges of
/// a format are tested when the walk comes to it. Borrows its arguments. Throws what the host
/// throws when it is asked for the cell's position.
class FormatsOn {
public:
  class Iterator {
  public:
    explicit Iterator(FormatsOn const& formats) : _formats(formats) { skipOthers(); }

    [[nodiscard]] FormatIndex operator*() const noexcept { return _index; }
    Iterator& operator++() {
      ++_index;
      skipOthers();
      return *this;
    }
    [[nodiscard]] bool operator==(std::default_sentinel_t /*end*/) const noexcept {
      return _index >= _formats._formatRefs.size();
    }

  private:
    void skipOthers() {
      while (_index < _formats._formatRefs.size() &&
             !holdsCell(_formats._formatRefs[_index].first, _formats._cellInfo)) {
        ++_index;
      }
    }

    FormatsOn const& _formats;
    FormatIndex _index = 0;
  };

  FormatsOn(ConditionalFormatRefs const& formatRefs, DOM::CellInfo const& cellInfo) noexcept
      : _formatRefs(formatRefs), _cellInfo(cellInfo) {}

  [[nodiscard]] Iterator begin() const { return Iterator(*this); }
  [[nodiscard]] static std::default_sentinel_t end() noexcept { return {}; }

private:
  ConditionalFormatRefs const& _formatRefs;
  DOM::CellInfo const& _cellInfo;
};

[[nodiscard]] inline FormatsOn findFormatsOn(ConditionalFormatRefs const& formatRefs,
                                             DOM::CellInfo const& cellInfo) noexcept {
  return {formatRefs, cellInfo};
}

/// Asks the conditions of formats about a cell, one after the other, until one that holds has its
/// stop flag set. The stop flag of a format whose condition is false is not read.
///
/// `formats` are the indices of the formats whose ranges hold the cell, in order of priority.
/// `getCondition(index)` gives a format's condition as a predicate; `getData()` then gives what the
/// predicate is asked about. Both results live until the walk goes on. `onHolds(index)` is called
/// for each format whose condition holds.
template <class Formats, class GetCondition, class GetData, class OnHolds>
void walkFormats(ConditionalFormatRefs const& formatRefs, Formats&& formats,
                 GetCondition const& getCondition, GetData const& getData, OnHolds const& onHolds) {
  for (FormatIndex const index : formats) {
    auto const& condition = getCondition(index);
    auto const& data = getData();
    if (condition(data)) {
      onHolds(index);
      if (formatRefs[index].second.get().getStopCalculateConditions()) {
        return;
      }
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
