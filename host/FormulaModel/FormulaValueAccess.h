#pragma once

#include <functional>
#include <string_view>

#include <boost/optional.hpp>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValue.h"
#include "Utils/Export.h"

namespace Zorv::FormulaModel {

[[nodiscard]] inline bool isFormulaEmpty(FormulaValue const& value) noexcept {
  return value.which() == FormulaValueKind::Empty;
}

[[nodiscard]] inline bool isFormulaError(FormulaValue const& value) noexcept {
  return value.which() == FormulaValueKind::Error;
}

/// The number that a value is, and nothing for a value of any other kind: neither booleans nor
/// texts that look like numbers are converted.
[[nodiscard]] inline boost::optional<FormulaNumber> asFormulaNumberOpt(
    FormulaValue const& value) noexcept {
  auto const* number = boost::get<FormulaNumber>(&value);
  return number != nullptr ? boost::optional<FormulaNumber>(*number) : boost::none;
}

/// Compares two values of one kind by their payload with `Compare`; values of different kinds never
/// compare. Two empty values compare as equal ones do. Texts compare byte by byte.
template <template <class> class Compare>
struct FormulaValuesComarator {
  [[nodiscard]] bool operator()(FormulaValue const& a, FormulaValue const& b) const {
    if (a.which() != b.which()) {
      return false;
    }
    switch (a.which()) {
      case FormulaValueKind::Number:
        return compare(boost::get<FormulaNumber>(a).value, boost::get<FormulaNumber>(b).value);
      case FormulaValueKind::String:
        return compare(boost::get<FormulaString>(a).value, boost::get<FormulaString>(b).value);
      case FormulaValueKind::Boolean:
        return compare(boost::get<FormulaBoolean>(a).value, boost::get<FormulaBoolean>(b).value);
      case FormulaValueKind::Error:
        return compare(boost::get<FormulaError>(a).code, boost::get<FormulaError>(b).code);
      default:
        return compare(0, 0);
    }
  }

private:
  template <class Payload>
  static bool compare(Payload const& a, Payload const& b) {
    return Compare<Payload>()(a, b);
  }
};

/// The text of an error as cells show it, such as `#DIV/0!`.
[[nodiscard]] ZORV_HOST_EXPORT std::string_view toText(FormulaErrorCode code) noexcept;

/// The error that a text names, in any case of letters, or nothing.
[[nodiscard]] ZORV_HOST_EXPORT boost::optional<FormulaErrorCode> parseErrorCode(
    std::string_view text) noexcept;

}  // namespace Zorv::FormulaModel
