#pragma once

#include <functional>
#include <string_view>

#include <boost/optional.hpp>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValue.h"
#include "Utils/Export.h"

namespace Zorv::FormulaModel {

/// True for the value of an empty cell.
[[nodiscard]] inline bool isFormulaEmpty(FormulaValue const& value) noexcept {
  return value.which() == FormulaValueKind::Empty;
}

/// True for an error.
[[nodiscard]] inline bool isFormulaError(FormulaValue const& value) noexcept {
  return value.which() == FormulaValueKind::Error;
}

/// The number of a numeric value; nothing for any other kind. Booleans and texts that look like
/// numbers are not converted.
[[nodiscard]] inline boost::optional<FormulaNumber> asFormulaNumberOpt(
    FormulaValue const& value) noexcept {
  auto const* number = boost::get<FormulaNumber>(&value);
  return number != nullptr ? boost::optional<FormulaNumber>(*number) : boost::none;
}

/// Compares the payloads of two values of one kind with `Compare`. The result is false for values
/// of different kinds. Two empty values compare as equals. Texts compare byte by byte.
template <template <class> class Compare>
struct FormulaValuesComarator {
  /// True if both are of one kind and their payloads compare so.
  [[nodiscard]] bool operator()(FormulaValue const& a, FormulaValue const& b) const {
    if (a.which() != b.which()) {
      return false;
    }
    return a.which() == FormulaValueKind::Number
               ? compare(boost::get<FormulaNumber>(a).value, boost::get<FormulaNumber>(b).value)
               : compareOthers(a, b);
  }

private:
  /// Values of one kind that are no numbers. Not inlined: what texts need would be set up for each
  /// pair of numbers.
  [[nodiscard]] [[gnu::noinline]] static bool compareOthers(FormulaValue const& a,
                                                            FormulaValue const& b) {
    switch (a.which()) {
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

  template <class Payload>
  static bool compare(Payload const& a, Payload const& b) {
    return Compare<Payload>()(a, b);
  }
};

/// Text of an error as cells show it, such as `#DIV/0!`.
[[nodiscard]] ZORV_HOST_EXPORT std::string_view toText(FormulaErrorCode code) noexcept;

/// The error that a text names, in any letter case, or nothing.
[[nodiscard]] ZORV_HOST_EXPORT boost::optional<FormulaErrorCode> parseErrorCode(
    std::string_view text) noexcept;

}  // namespace Zorv::FormulaModel
