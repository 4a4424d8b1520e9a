#pragma once

#include <string_view>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/FormulaParseError.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Parses a formula as workbook files write it (ISO/IEC 29500-1, 18.17.2).
///
/// Function names are English, arguments are separated by commas, numbers have a decimal point,
/// references are in A1 notation. A leading `=` is allowed.
///
/// Throws FormulaParseError where the text is no formula, is longer than 8,192 characters, or nests
/// deeper than 256 levels. A function that is not known is no error here: it evaluates to `#NAME?`.
[[nodiscard]] ZORV_HOST_EXPORT DOM::FormulaSyntaxTree::Expr parseExpr(std::string_view text);

/// Parses the formula of a defined name. The same, but a union needs no parentheses around it:
/// `Sheet1!$A$1,Sheet1!$A$3`.
[[nodiscard]] ZORV_HOST_EXPORT DOM::FormulaSyntaxTree::Expr parseDefinedName(std::string_view text);

}  // namespace Zorv::Formulas
