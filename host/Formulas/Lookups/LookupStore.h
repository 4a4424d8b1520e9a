#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <tuple>
#include <unordered_map>

#include "Formulas/FollowedAreas.h"
#include "Formulas/Lookups/CallResult.h"
#include "Formulas/Lookups/ClassAggregates.h"
#include "Formulas/Lookups/EqualTuples.h"
#include "Formulas/Lookups/EqualValues.h"
#include "Formulas/Lookups/LookupMap.h"
#include "Formulas/Lookups/OrderedValues.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// The indexes that several threads share, by type, under one memory budget.
///
/// Threads: each map may be used by several at once. Indexes stay valid until they are forgotten.
class LookupStore {
public:
  /// Takes the bytes that all indexes together may take; tests give less.
  explicit LookupStore(std::size_t memoryLimit = LookupBudget::defaultLimit) noexcept
      : _budget(memoryLimit), _maps(_budget, _budget, _budget, _budget, _budget) {}

  template <class Index>
  [[nodiscard]] LookupMap<Index>& map() noexcept {
    return std::get<LookupMap<Index>>(_maps);
  }

  /// Areas that somebody keeps up to date; null if there are none.
  [[nodiscard]] FollowedAreas const* getFollowed() const noexcept { return _followed; }
  void follow(FollowedAreas const& areas) noexcept { _followed = &areas; }

  /// Forgets what new values in some areas of a table make out of date. Requires that no thread
  /// uses the store.
  void valuesChanged(DOM::Table const& table, std::span<TableRange const> areas);

private:
  /// The layout of a table for which texts were borrowed.
  [[nodiscard]] bool haveCellsMoved(DOM::Table const& table);

  FollowedAreas const* _followed = nullptr;
  LookupBudget _budget;
  std::tuple<LookupMap<EqualValues>, LookupMap<EqualTuples>, LookupMap<OrderedValues>,
             LookupMap<ClassAggregates>, LookupMap<CallResult>>
      _maps;
  std::unordered_map<DOM::Table const*, std::uint64_t> _layoutVersions;  ///< at the last change
};

}  // namespace Zorv::Formulas
