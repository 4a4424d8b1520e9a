#pragma once

#include <cstddef>
#include <functional>

#include <boost/unordered_set.hpp>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::ConditionalFormatters {

/// The hash of a value's payload. Values of different kinds may share a hash.
///
/// The two zeros, which are equal, have one hash; texts count byte by byte. An empty value has no
/// hash: hashing it stops the process.
struct CNDFRMT_EXPORT FormulaValueHasher {
  /// The hash of a value that is not empty.
  [[nodiscard]] std::size_t operator()(FormulaValue const& value) const;
};

/// Values with their repetitions; equal ones stand next to each other.
using FormulaValueMultiset =
    boost::unordered::unordered_multiset<FormulaValue, FormulaValueHasher,
                                         FormulaModel::FormulaValuesComarator<std::equal_to>>;

}  // namespace Zorv::ConditionalFormatters
