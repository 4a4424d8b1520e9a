#pragma once

#include <utility>
#include <vector>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_FormulaValueMultiset.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "Utils/FloatNumber.h"

// What of a visited cell's value enters a collection; see OperatorsFactory::collectValuesFromRange.
namespace Zorv::ConditionalFormatters {

/// Appends the number that a value is; a value of another kind is passed over, also a boolean and a
/// text that looks like a number.
inline void pushNumber(std::vector<FloatNumber>& numbers, FormulaValue value) {
  if (auto* number = boost::get<FormulaModel::FormulaNumber>(&value)) {
    numbers.push_back(number->value);
  }
}

/// Inserts a value of any kind but the empty one.
inline void insertNonEmpty(FormulaValueMultiset& values, FormulaValue value) {
  if (!FormulaModel::isFormulaEmpty(value)) {
    values.insert(std::move(value));
  }
}

}  // namespace Zorv::ConditionalFormatters
