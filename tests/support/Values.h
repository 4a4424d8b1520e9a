#pragma once

#include <limits>
#include <string>
#include <utility>

#include "FormulaModel/FormulaValue.h"

namespace Zorv::TestSupport {

inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

[[nodiscard]] inline FormulaValue empty() { return FormulaModel::FormulaEmpty{}; }
[[nodiscard]] inline FormulaValue number(double value) {
  return FormulaModel::FormulaNumber{FloatNumber(value)};
}
[[nodiscard]] inline FormulaValue text(std::string value) {
  return FormulaModel::FormulaString{std::move(value)};
}
[[nodiscard]] inline FormulaValue boolean(bool value) {
  return FormulaModel::FormulaBoolean{value};
}
[[nodiscard]] inline FormulaValue error(FormulaModel::FormulaErrorCode code) {
  return FormulaModel::FormulaError{code};
}

}  // namespace Zorv::TestSupport
