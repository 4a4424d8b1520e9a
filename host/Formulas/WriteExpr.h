#pragma once

#include <string>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The text of a formula as workbook files write it, without a leading `=`: what parseExpr() reads
/// as the same formula. Spaces and parentheses that change nothing are left out. To see a formula
/// at another cell, write what shiftExpr() makes.
///
/// Linear in the text, for formulas that nest as deeply as parseExpr() allows.
[[nodiscard]] ZORV_HOST_EXPORT std::string writeExpr(DOM::FormulaSyntaxTree::Expr const& expr);

}  // namespace Zorv::Formulas
