#pragma once

#include <string_view>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// parseExpr() with the functions of a table.
[[nodiscard]] DOM::FormulaSyntaxTree::Expr parseFormula(std::string_view text,
                                                        FunctionTable const& functions);

}  // namespace Zorv::Formulas
