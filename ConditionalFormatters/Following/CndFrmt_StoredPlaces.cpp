#include "ConditionalFormatters/Following/CndFrmt_StoredPlaces.h"

#include <algorithm>
#include <iterator>

namespace Zorv::ConditionalFormatters {

std::vector<StoredColumns> StoredPlaces::list(LineInterval const& columns) const {
  std::vector<StoredColumns> parts;
  for (StoredColumns const& run : _runs) {
    unsigned long const first = std::max(columns.first, run.column);
    unsigned long const end = std::min(columns.end, run.column + (run.end - run.first));
    if (first < end) {
      auto const identity = run.first + static_cast<std::uint32_t>(first - run.column);
      parts.push_back({identity, identity + static_cast<std::uint32_t>(end - first), first});
    }
  }
  return parts;
}

StoredColumns const* StoredPlaces::findColumns(std::span<StoredColumns const> columns,
                                               StoredPlace stored) noexcept {
  auto const identity = static_cast<std::uint32_t>(stored) & storedColumnMask;
  auto const next = std::ranges::upper_bound(columns, identity, {}, &StoredColumns::first);
  return next != columns.begin() && std::prev(next)->contains(identity) ? &*std::prev(next)
                                                                        : nullptr;
}

void StoredPlaces::follow(LineMoves const& moves) {
  _columns.follow(moves);
  _runs.clear();
  for (LineIdentities::Run const& run : _columns.listByIdentity()) {
    auto const first = static_cast<std::uint32_t>(run.identity);
    _runs.push_back({first, first + static_cast<std::uint32_t>(run.end - run.first), run.first});
  }
  _areInOrder = std::ranges::is_sorted(_runs, {}, &StoredColumns::column);
}

}  // namespace Zorv::ConditionalFormatters
