#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/ValueKey.h"

namespace Zorv::ConditionalFormatters {

/// A few different values that are looked for among many: open addressing, by the equality of
/// FormulaValueMultiset. Small enough for a processor's cache.
class WatchedValues {
public:
  using Index = std::uint32_t;
  static constexpr Index none = ~Index{0};

  /// Room for so many values.
  explicit WatchedValues(std::size_t capacity);

  /// Adds a value unless it is there, and gives its index, from 0. None, and nothing is added, if
  /// too many texts share a hash: each look-up would compare them all. Requires a value that can be
  /// compared; see isComparable().
  Index insert(FormulaValue const& value);

  /// The index of a value; none for one that is not watched.
  [[nodiscard]] Index find(FormulaValue const& value) const;

  [[nodiscard]] std::size_t size() const noexcept { return _values.size(); }

private:
  struct Slot {
    FormulaModel::ValueKey key;
    Index index = none;
  };

  /// Where a value is, or belongs, and how many different ones with its key come before.
  struct Place {
    std::size_t slot;
    unsigned othersOfKey;
  };

  static constexpr unsigned mostOfOneKey = 32;
  static constexpr unsigned filterBits = 16;

  [[nodiscard]] static std::size_t filterIndexOf(std::uint64_t hash) noexcept {
    return hash >> (64U - filterBits);
  }
  [[nodiscard]] Place findPlace(FormulaModel::ValueKey key, FormulaValue const& value) const;

  /// One bit for each hash's upper bits, set if a watched value has them: most other values need no
  /// search.
  std::bitset<std::size_t{1} << filterBits> _filter;
  std::vector<Slot> _slots;           ///< a power of two
  std::vector<FormulaValue> _values;  ///< by index
};

}  // namespace Zorv::ConditionalFormatters
