#pragma once

#include <bit>
#include <cstdint>

#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// A cell's value as an Aggregate sees it, in eight bytes: a number, an error, or nothing that
/// counts. A number is its own bits. Since it is finite, the others lie among the NaNs.
class SummedValue {
public:
  SummedValue() = default;
  explicit SummedValue(Value const& value) noexcept : _bits(bitsOf(value)) {}

  /// The number or the error; the empty value for anything else.
  [[nodiscard]] Value toValue() const noexcept {
    if (_bits == nothingBits) {
      return {};
    }
    return _bits > nothingBits ? Value::error(static_cast<FormulaErrorCode>(_bits - nothingBits))
                               : Value::number(std::bit_cast<double>(_bits));
  }

private:
  /// The last NaNs with a sign. Errors come behind.
  static constexpr std::uint64_t nothingBits = 0xFFFF'FFFF'FFFF'0000;

  [[nodiscard]] static std::uint64_t bitsOf(Value const& value) noexcept {
    if (value.isError()) {
      return nothingBits + static_cast<std::uint64_t>(value.asError());
    }
    return value.isNumber() ? std::bit_cast<std::uint64_t>(value.asNumber()) : nothingBits;
  }

  std::uint64_t _bits = nothingBits;
};

}  // namespace Zorv::Formulas
