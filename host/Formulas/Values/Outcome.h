#pragma once

#include <utility>

#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// Result of a conversion: a plain value, or a spreadsheet error.
template <class T>
class [[nodiscard]] Outcome {
public:
  Outcome(T value) noexcept : _value(std::move(value)) {}
  Outcome(FormulaErrorCode error) noexcept : _error(error), _isError(true) {}

  [[nodiscard]] bool isError() const noexcept { return _isError; }
  [[nodiscard]] T const& operator*() const noexcept { return _value; }
  /// Requires an error.
  [[nodiscard]] Value error() const noexcept { return Value::error(_error); }

private:
  T _value{};
  FormulaErrorCode _error{};
  bool _isError = false;
};

}  // namespace Zorv::Formulas
