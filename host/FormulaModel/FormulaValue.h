#pragma once

#include <cstdint>
#include <string>

#include <boost/variant/variant.hpp>

#include "Utils/FloatNumber.h"

namespace Zorv::FormulaModel {

/// Value of an empty cell, or an empty result.
struct FormulaEmpty {};

/// Number. Dates are numbers, too: see OfficeUtils::SerialDate.
struct FormulaNumber {
  FloatNumber value;  ///< the number
};

/// Text in UTF-8.
struct FormulaString {
  std::string value;  ///< the text
};

/// Truth value.
struct FormulaBoolean {
  bool value = false;  ///< true or false
};

/// Spreadsheet errors, numbered as the formula function ERROR.TYPE numbers them
/// (ISO/IEC 29500-1, 18.17.7.104). Later programs added Spill and Calculation.
enum class FormulaErrorCode : std::uint8_t {
  Null = 1,
  DivisionByZero = 2,
  Value = 3,
  Reference = 4,
  Name = 5,
  Number = 6,
  NotAvailable = 7,
  GettingData = 8,
  Spill = 9,
  Calculation = 14,
};

/// Error as a value.
struct FormulaError {
  FormulaErrorCode code = FormulaErrorCode::Value;  ///< which error
};

/// Value of a cell or of a formula. The order of the alternatives is part of the contract:
/// `which()` is the kind.
using FormulaValue =
    boost::variant<FormulaEmpty, FormulaNumber, FormulaString, FormulaBoolean, FormulaError>;

/// Kinds of FormulaValue, as `FormulaValue::which()` numbers them.
enum FormulaValueKind : int { Empty = 0, Number = 1, String = 2, Boolean = 3, Error = 4 };

}  // namespace Zorv::FormulaModel

namespace Zorv {
using FormulaModel::FormulaValue;
}
