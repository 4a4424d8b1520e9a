#pragma once

#include <cstdint>
#include <optional>

#include "FormulaModel/FormulaValue.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::Formulas {

/// Property of an area as a whole that functions ask for.
enum class AreaAspect : std::uint8_t {
  Summary,  ///< sum and counts: AVERAGE, COUNT, COUNTA, SUM
  Order,    ///< the numbers in their order: LARGE, MAX, MEDIAN, PERCENTILE, RANK and their kin
  Classes,  ///< how often each value occurs: COUNTIF
};

/// Several aspects of one area.
struct AreaAspects {
  bool summary = false;  ///< AreaAspect::Summary is among them
  bool order = false;    ///< AreaAspect::Order is among them
  bool classes = false;  ///< AreaAspect::Classes is among them

  /// Adds the aspects of others.
  AreaAspects& operator|=(AreaAspects const& others) noexcept {
    summary = summary || others.summary;
    order = order || others.order;
    classes = classes || others.classes;
    return *this;
  }
  /// True if no aspect is among them.
  [[nodiscard]] bool isEmpty() const noexcept { return *this == AreaAspects(); }
  friend bool operator==(AreaAspects const&, AreaAspects const&) noexcept = default;
};

/// The values of an area in a few numbers.
struct AreaSummary {
  double sum = 0.0;               ///< of the numbers, added one after the other, row by row
  std::uint64_t numberCount = 0;  ///< how many numbers there are
  std::uint64_t valueCount = 0;   ///< how many values there are that are not empty
  std::optional<FormulaModel::FormulaErrorCode> firstError;  ///< row by row
};

/// How many numbers are below a number, equal to it, and above it.
struct RankCounts {
  std::uint64_t below = 0;  ///< numbers below
  std::uint64_t equal = 0;  ///< numbers equal to it
  std::uint64_t above = 0;  ///< numbers above
};

/// The values of one area, kept up to date while the document is edited. Answers what a walk over
/// the area's existing cells would give, to the bit.
///
/// Threads: may be asked from several threads while nothing is edited.
class ZORV_HOST_EXPORT FollowedArea {
public:
  FollowedArea() = default;
  FollowedArea(FollowedArea const&) = delete;
  FollowedArea& operator=(FollowedArea const&) = delete;
  virtual ~FollowedArea();

  /// Good for each aspect. Constant time.
  [[nodiscard]] virtual AreaSummary const& getSummary() const noexcept = 0;
  /// The number at an index of the sorted numbers, from 0. For AreaAspect::Order; requires an index
  /// below the number of numbers. Logarithmic.
  [[nodiscard]] virtual double numberAt(std::uint64_t index) const noexcept = 0;
  /// Counts the numbers around a number. For AreaAspect::Order; requires that the number is not
  /// NaN. Logarithmic.
  [[nodiscard]] virtual RankCounts countAround(double number) const noexcept = 0;
  /// How many values equal a value as criteria compare: a text that reads as a number is that
  /// number, and other texts are equal without regard to letter case. For AreaAspect::Classes;
  /// requires a value that is neither empty nor NaN, and no text that reads as a number. Constant
  /// time.
  [[nodiscard]] virtual std::uint64_t countEqual(FormulaValue const& value) const = 0;
};

/// Areas whose values somebody keeps up to date, so that functions need not walk over them; see
/// LookupCache::follow().
///
/// Threads: may be asked from several threads while nothing is edited.
class ZORV_HOST_EXPORT FollowedAreas {
public:
  FollowedAreas() = default;
  FollowedAreas(FollowedAreas const&) = delete;
  FollowedAreas& operator=(FollowedAreas const&) = delete;
  virtual ~FollowedAreas();

  /// The area of a table, if an aspect of it is up to date; else null. Good until the next edit.
  /// Constant time.
  [[nodiscard]] virtual FollowedArea const* find(DOM::Table const& table, TableRange const& area,
                                                 AreaAspect aspect) const noexcept = 0;
};

}  // namespace Zorv::Formulas
