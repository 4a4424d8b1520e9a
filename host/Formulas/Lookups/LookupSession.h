#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "Formulas/Evaluation/Area.h"
#include "Formulas/Evaluation/Criterion.h"
#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/EqualTuples.h"
#include "Formulas/Lookups/Gathered.h"
#include "Formulas/Lookups/LookupKey.h"
#include "Formulas/Lookups/LookupStore.h"
#include "Formulas/Lookups/OrderedValues.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Formulas {

/// An area of which each cell must fulfil a criterion.
struct Condition {
  Area area;
  Criterion criterion;
};

/// Cells that fulfil conditions, told by an index.
struct MatchingCells {
  ClassesOfArea area;
  std::uint32_t width = 1;              ///< of the area
  std::optional<std::uint32_t> number;  ///< their class; nothing where there are none
  Few<TableArea> areas;                 ///< those of the conditions

  [[nodiscard]] std::size_t count() const noexcept { return number ? area.countOf(*number) : 0; }
  [[nodiscard]] std::span<std::uint32_t const> cells() const noexcept {
    return number ? area.membersOf(*number) : std::span<std::uint32_t const>();
  }
  /// Visits them row by row: `visit(row, column)`, counted from the area's first cell; false stops.
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

/// One thread's way to the indexes of a store, which must outlive it.
///
/// Each operation answers exactly what a walk over the cells would give, or nothing where that walk
/// has to be done: for small areas, for patterns, and as long as an index does not pay. The thread
/// may make an index meanwhile, or help another one to.
class LookupSession {
public:
  explicit LookupSession(LookupStore& store) noexcept : _store(&store) {}

  /// How many positions of an area fulfil a criterion, those without a cell included.
  [[nodiscard]] std::optional<std::uint64_t> count(Condition const& condition,
                                                   OfficeUtils::LocaleContext const& locale);

  /// The cells that fulfil several conditions, each of which requires an equal value (see
  /// Criterion::isEquality()), over areas of one size.
  [[nodiscard]] std::optional<MatchingCells> findMatching(
      std::span<Condition const* const> conditions, OfficeUtils::LocaleContext const& locale);

  /// What is gathered from the counterparts of matching cells in an area that is not larger.
  [[nodiscard]] Gathered const* findTotals(MatchingCells const& matching, Area const& values);

  /// Where an area of one row or one column holds the first value equal to a key, or the last one;
  /// nothing in the inner optional where there is none. The key is neither empty nor an error.
  [[nodiscard]] std::optional<std::optional<std::uint32_t>> findEqual(
      Area const& line, Value const& key, bool isBackwards,
      OfficeUtils::LocaleContext const& locale);

  /// Where a number stands among those of an area that holds no error.
  [[nodiscard]] std::optional<Standing> findStanding(Area const& area, double number);

  /// What a function gives for arguments that are areas and numbers, calculated by `calculate()`
  /// once for all that ask. Nothing where that does not pay, as it does not for small areas alone,
  /// and where the value is not a single one: then the caller calculates. The value lasts as long
  /// as the store.
  [[nodiscard]] std::optional<Value> obtainResult(std::uint16_t function,
                                                  std::span<Value const> arguments,
                                                  std::function<Value()> const& calculate);

private:
  /// An index that was found before, and where its classes were asked for last.
  struct Known {
    LookupKey key;
    LookupIndex const* index = nullptr;
    std::uint32_t lastCell = 0;
    TableArea lastArea;
    ClassesOfArea lastClasses;
  };

  /// The index of a key; null where there is none. The result is overwritten some calls later.
  template <class Make>
  [[nodiscard]] Known* obtain(LookupKey const& key, LookupStore::Effort effort, Make const& make);
  /// The values of an area in their order; null where there is no such index.
  [[nodiscard]] OrderedValues const* obtainOrder(Area const& area);
  [[nodiscard]] Known* remember(LookupKey const& key, LookupIndex const* index);

  /// The classes of the values in an area, beside the index that has them.
  [[nodiscard]] Known* obtainClasses(Area const& area, LookupKind kind,
                                     OfficeUtils::LocaleContext const& locale);
  [[nodiscard]] std::optional<MatchingCells> findTuple(std::span<Condition const* const> conditions,
                                                       OfficeUtils::LocaleContext const& locale);

  static constexpr std::size_t knownCount = 16;

  LookupStore* _store;
  std::array<Known, knownCount> _known;
  std::size_t _nextKnown = 0;
};

}  // namespace Zorv::Formulas
