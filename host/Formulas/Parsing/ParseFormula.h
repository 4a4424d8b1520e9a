#pragma once

#include <cstdint>
#include <string_view>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// Form that the text of a whole formula may have.
enum class Whole : std::uint8_t {
  Expression,
  /// Or a union without parentheses around it, as the formulas of defined names may be.
  ExpressionOrUnion,
};

/// parseExpr() and parseDefinedName() with the functions of a table.
[[nodiscard]] DOM::FormulaSyntaxTree::Expr parseFormula(std::string_view text,
                                                        FunctionTable const& functions,
                                                        Whole whole = Whole::Expression);

}  // namespace Zorv::Formulas
