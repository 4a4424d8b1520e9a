#pragma once

#include <cstddef>
#include <tuple>

#include "Formulas/Lookups/CallResult.h"
#include "Formulas/Lookups/ClassAggregates.h"
#include "Formulas/Lookups/EqualTuples.h"
#include "Formulas/Lookups/EqualValues.h"
#include "Formulas/Lookups/LookupMap.h"
#include "Formulas/Lookups/OrderedValues.h"

namespace Zorv::Formulas {

/// The indexes that several threads share, by type, under one memory budget.
///
/// Threads: each map may be used by several at once. Indexes stay valid as long as the store does.
class LookupStore {
public:
  /// Takes the bytes that all indexes together may take; tests give less.
  explicit LookupStore(std::size_t memoryLimit = LookupBudget::defaultLimit) noexcept
      : _budget(memoryLimit), _maps(_budget, _budget, _budget, _budget, _budget) {}

  template <class Index>
  [[nodiscard]] LookupMap<Index>& map() noexcept {
    return std::get<LookupMap<Index>>(_maps);
  }

private:
  LookupBudget _budget;
  std::tuple<LookupMap<EqualValues>, LookupMap<EqualTuples>, LookupMap<OrderedValues>,
             LookupMap<ClassAggregates>, LookupMap<CallResult>>
      _maps;
};

}  // namespace Zorv::Formulas
