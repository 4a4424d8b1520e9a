#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "Formulas/Limits/StepMeter.h"
#include "Formulas/Lookups/LookupStore.h"
#include "Formulas/Values/Area.h"
#include "Formulas/Values/Criterion.h"
#include "Formulas/Values/Value.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// A range and the criterion that each of its cells has to fulfil: one pair of arguments of
/// COUNTIFS.
struct RangeCriterion {
  Area area;
  Criterion criterion;
};

/// The cells that fulfil criteria, found in an index.
struct MatchingCells {
  ClassesOfArea area;
  std::uint32_t width = 1;                  ///< of the area
  std::optional<std::uint32_t> classIndex;  ///< of the cells; nothing where no cell matches
  TableAreas areas;                         ///< of the criteria

  [[nodiscard]] std::size_t count() const noexcept {
    return classIndex ? area.countOf(*classIndex) : 0;
  }
  [[nodiscard]] std::span<std::uint32_t const> cells() const noexcept {
    return classIndex ? area.membersOf(*classIndex) : std::span<std::uint32_t const>();
  }
  /// Visits the cells row by row: `visit(row, column)`, counted from the area's first cell. Stops
  /// when `visit` returns false.
  template <class Visit>
  void forEach(Visit&& visit) const {
    for (std::uint32_t const cell : cells()) {
      std::uint32_t const position = area.positionOf(cell);
      if (!visit(position / width, position % width)) {
        return;
      }
    }
  }
};

/// One thread's access to the indexes of a store.
///
/// Each operation answers exactly what a walk over the cells would give, or nothing where that walk
/// has to be done: for small areas, for patterns, and as long as an index does not pay. The thread
/// may build an index meanwhile, or help another one to. The steps of building an index
/// are counted by the thread that begins it. Ownership: borrows the store and the meter, which must
/// outlive it. Threads: for one thread.
class LookupSession {
public:
  LookupSession(LookupStore& store, StepMeter& steps) noexcept : _store(&store), _steps(&steps) {}

  /// An area of which somebody keeps an aspect up to date; null for others, and for small ones.
  [[nodiscard]] FollowedArea const* findFollowed(Area const& area, AreaAspect aspect) const;

  /// How many positions of an area fulfil a criterion, those without a cell included.
  [[nodiscard]] std::optional<std::uint64_t> count(RangeCriterion const& criterion,
                                                   OfficeUtils::LocaleContext const& locale);

  /// The cells that fulfil several criteria, each of which requires an equal value (see
  /// Criterion::isEquality()), over areas of one size.
  [[nodiscard]] std::optional<MatchingCells> findMatching(
      std::span<RangeCriterion const* const> criteria, OfficeUtils::LocaleContext const& locale);

  /// The aggregate of the counterparts of matching cells, in an area that is not larger; null where
  /// a walk has to be done.
  [[nodiscard]] Aggregate const* findAggregate(MatchingCells const& matching, Area const& values);

  /// The position of the first value, or the last one, in an area of one row or one column that
  /// equals a key; nothing in the inner optional where there is none. Requires a key that is
  /// neither empty nor an error.
  [[nodiscard]] std::optional<std::optional<std::uint32_t>> findEqual(
      Area const& line, Value const& key, bool isBackwards,
      OfficeUtils::LocaleContext const& locale);

  /// Counts the numbers of an area around a number; nothing, too, for an area that holds an error.
  [[nodiscard]] std::optional<RankCounts> countAround(Area const& area, double number);

  /// The result of a call whose arguments are areas and numbers, computed by `compute()` once for
  /// all threads. Nothing where that does not pay, as for small areas, and where the result is no
  /// single value: then the caller computes it. The value lasts as long as the store.
  [[nodiscard]] std::optional<Value> getOrCompute(std::uint16_t function,
                                                  std::span<Value const> arguments,
                                                  std::function<Value()> const& compute);

private:
  /// The use of the classes of an area so far.
  struct ClassesUse {
    std::uint32_t lastCell = 0;
    TableArea lastArea;
    ClassesOfArea lastClasses;
  };
  struct NoUse {};

  /// The indexes of one type that this thread asked for last, so that it need not lock the store.
  template <class Index, class Use = NoUse>
  class Recent {
  public:
    struct Entry {
      typename Index::Key key;
      Index const* index = nullptr;
      Use use;
    };

    /// The entry of a key, made if the store has the index, or null. The entry is overwritten
    /// `capacity` calls later at the earliest.
    template <class Build>
    [[nodiscard]] Entry* getOrCreate(LookupStore& store, typename Index::Key const& key,
                                     LookupCost cost, Build const& build);

  private:
    static constexpr std::size_t capacity = 16;

    [[nodiscard]] Entry* find(typename Index::Key const& key) noexcept;

    std::array<Entry, capacity> _entries;
    std::size_t _next = 0;
  };

  using RecentValues = Recent<EqualValues, ClassesUse>;

  /// count() by an area that somebody keeps up to date.
  [[nodiscard]] std::optional<std::uint64_t> countFollowed(RangeCriterion const& criterion) const;

  /// The classes of the values in an area, as last used; null where a walk has to be done.
  [[nodiscard]] RecentValues::Entry* findClasses(Area const& area, Equality equality,
                                                 OfficeUtils::LocaleContext const& locale);
  /// The sorted values of an area; null where a walk has to be done.
  [[nodiscard]] OrderedValues const* findOrder(Area const& area);
  [[nodiscard]] std::optional<MatchingCells> findTuples(
      std::span<RangeCriterion const* const> criteria, OfficeUtils::LocaleContext const& locale);

  LookupStore* _store;
  StepMeter* _steps;
  RecentValues _values;
  Recent<EqualTuples> _tuples;
  Recent<OrderedValues> _orders;
  Recent<ClassAggregates> _aggregates;
  Recent<CallResult> _results;
};

}  // namespace Zorv::Formulas
