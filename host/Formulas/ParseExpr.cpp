#include "Formulas/ParseExpr.h"

#include "Formulas/Functions/BuiltinFunctions.h"
#include "Formulas/Parsing/ParseFormula.h"

namespace Zorv::Formulas {

DOM::FormulaSyntaxTree::Expr parseExpr(std::string_view text) {
  return parseFormula(text, builtinFunctions());
}

DOM::FormulaSyntaxTree::Expr parseDefinedName(std::string_view text) {
  return parseFormula(text, builtinFunctions(), Whole::ExpressionOrUnion);
}

}  // namespace Zorv::Formulas
