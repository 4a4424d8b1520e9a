#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassRequest.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/ValueKey.h"

namespace Zorv::ConditionalFormatters {

/// Counts how often a value occurs in ranges, by a walk over all of their cells. Throws what the
/// provider and the budget throw.
[[nodiscard]] OccurrenceOperand countOccurrences(RangeOperands const& operands,
                                                 FormulaValue const& value,
                                                 PassResources const& resources);

/// Index of the values that occur in ranges more than once: how often, and where first.
///
/// Immutable. Memory: an entry for each different value, and its text; while it is made, one for
/// each cell that repeats a value.
class OccurrenceIndex {
public:
  /// Reads each cell of the ranges once. Throws what the provider and the budget throw.
  OccurrenceIndex(RangeOperands const& operands, PassResources const& resources);

  /// Result of countOccurrences() for a value; null for one that occurs once or not at all.
  /// Requires a value that can be compared; see isComparable(). Logarithmic.
  [[nodiscard]] OccurrenceOperand const* find(FormulaValue const& value) const;

private:
  struct Entry {
    FormulaModel::ValueKey key;
    std::string text;  ///< of a text, whose key is a hash
    OccurrenceOperand operand;
  };

  static bool isLess(Entry const& entry, FormulaModel::ValueKey key,
                     std::string_view text) noexcept;
  /// Makes one entry of equal ones, which are neighbours.
  void joinEqual();

  std::vector<Entry> _entries;  ///< by key, then by text
};

}  // namespace Zorv::ConditionalFormatters
