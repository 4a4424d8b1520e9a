#include "Formulas/PositionDependence.h"

#include "Formulas/Functions/BuiltinFunctions.h"
#include "Formulas/Parsing/ExprAnalysis.h"

namespace Zorv::Formulas {

PositionDependence findPositionDependence(DOM::FormulaSyntaxTree::Expr const& expr) {
  return analysePosition(expr.getParts(), builtinFunctions());
}

}  // namespace Zorv::Formulas
