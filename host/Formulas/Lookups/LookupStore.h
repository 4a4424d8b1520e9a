#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <tuple>
#include <unordered_map>
#include <vector>

#include <boost/container_hash/hash.hpp>

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

  /// Has classes of equal values and what is made of them follow new values in some areas of a
  /// table, and forgets what else is out of date. Requires that no thread uses the store.
  void valuesChanged(DOM::Table const& table, std::span<TableRange const> areas);

private:
  /// The cells of a table that have new values.
  struct NewValues {
    DOM::Table const& table;
    std::span<TableRange const> areas;
    bool haveCellsMoved;  ///< all borrowed texts of the table are lost
  };
  /// The edits of indexes that have followed a change, by key.
  template <class Index>
  using Edits = std::unordered_map<typename Index::Key, std::vector<ClassEdit>,
                                   boost::hash<typename Index::Key>>;

  [[nodiscard]] bool haveCellsMoved(DOM::Table const& table);
  // Each of the next steps forgets an index without the one of which it was made.
  [[nodiscard]] Edits<EqualValues> followValues(NewValues const& values);
  [[nodiscard]] Edits<EqualTuples> followTuples(Edits<EqualValues> const& edits);
  void followAggregates(NewValues const& values, Edits<EqualValues> const& editsOfValues,
                        Edits<EqualTuples> const& editsOfTuples);

  FollowedAreas const* _followed = nullptr;
  LookupBudget _budget;
  std::tuple<LookupMap<EqualValues>, LookupMap<EqualTuples>, LookupMap<OrderedValues>,
             LookupMap<ClassAggregates>, LookupMap<CallResult>>
      _maps;
  /// Of each table at the last change: that for which texts were borrowed.
  std::unordered_map<DOM::Table const*, std::uint64_t> _layoutVersions;
};

}  // namespace Zorv::Formulas
