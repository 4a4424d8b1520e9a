#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Utils/Exceptions.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// A formula's text that is no formula.
class ZORV_HOST_EXPORT FormulaParseError : public BaseRuntimeError {
public:
  /// `position` counts the bytes of the text before the place of the error.
  FormulaParseError(std::string const& reason, std::size_t position);
  FormulaParseError(FormulaParseError const&) = default;
  FormulaParseError& operator=(FormulaParseError const&) = default;
  ~FormulaParseError() override;

  /// The reason alone; what() tells the position too.
  [[nodiscard]] std::string const& getReason() const noexcept { return _reason; }
  [[nodiscard]] std::size_t getPosition() const noexcept { return _position; }

private:
  std::string _reason;
  std::size_t _position;
};

/// Parses a formula as workbook files write it: English function names, comma between arguments,
/// `.` in numbers, A1 references (ISO/IEC 29500-1, 18.17.2); a leading `=` is allowed.
///
/// Throws FormulaParseError where the text is no formula, is longer than 8,192 characters, or nests
/// deeper than 256 levels. A function that is not known is no error here: it evaluates to `#NAME?`.
[[nodiscard]] ZORV_HOST_EXPORT DOM::FormulaSyntaxTree::Expr parseExpr(std::string_view text);

}  // namespace Zorv::Formulas
