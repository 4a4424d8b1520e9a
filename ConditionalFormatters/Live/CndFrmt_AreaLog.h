#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

#include "Formulas/CriterionText.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// An area in which only cells whose value is a number may look different, from one number up to
/// another one, both included.
struct NumberArea {
  TableRange area;
  double least;
  double most;
  bool isOfCells = false;  ///< the numbers are those that cells hold, not those of the provider

  friend bool operator==(NumberArea const&, NumberArea const&) noexcept = default;
};

/// An area in which only cells may look different that hold one of some values, as criteria compare
/// them, or a text that is empty or may be more than a value as a criterion.
struct ClassArea {
  TableRange area;
  std::vector<Formulas::CriterionText> values;

  friend bool operator==(ClassArea const&, ClassArea const&) = default;
};

/// Outside of these areas no cell looks different.
struct ReachedAreas {
  std::vector<TableRange> areas;
  std::vector<NumberArea> numbers;
  std::vector<ClassArea> classes;

  void append(ReachedAreas const& others) {
    areas.insert(areas.end(), others.areas.begin(), others.areas.end());
    numbers.insert(numbers.end(), others.numbers.begin(), others.numbers.end());
    classes.insert(classes.end(), others.classes.begin(), others.classes.end());
  }
};

/// The areas that the last changes of a table reached, for readers that come by now and then.
///
/// A reader remembers the version that it has seen. One that stayed away for too long learns that
/// anything may be new.
class AreaLog {
public:
  using Version = std::uint64_t;

  [[nodiscard]] Version getVersion() const noexcept { return _version; }

  /// Makes a new version.
  void add(ReachedAreas reached) {
    _changes.push_back(std::move(reached));
    ++_version;
    if (_changes.size() > mostChanges) {
      _changes.pop_front();
    }
  }

  /// Makes a new version in which anything may be new.
  void addEverything() noexcept {
    _changes.clear();
    ++_version;
  }

  /// Appends the areas that are new since a version. False, and nothing is appended, if anything
  /// may be new.
  [[nodiscard]] bool appendSince(Version seen, ReachedAreas& reached) const {
    std::uint64_t const missed = _version - seen;
    if (missed > _changes.size()) {
      return false;
    }
    for (std::size_t change = _changes.size() - missed; change < _changes.size(); ++change) {
      reached.append(_changes[change]);
    }
    return true;
  }

private:
  static constexpr std::size_t mostChanges = 64;

  Version _version = 0;
  std::deque<ReachedAreas> _changes;  ///< those that led to the last versions
};

}  // namespace Zorv::ConditionalFormatters
