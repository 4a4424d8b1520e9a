#pragma once

#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The functions that a formula calls.
///
/// Names are in upper case without prefixes such as `_xlfn.`, in alphabetical order, each once.
struct FunctionNames {
  std::vector<std::string> known;    ///< the engine has these
  std::vector<std::string> unknown;  ///< calls of these evaluate to `#NAME?`
};

[[nodiscard]] ZORV_HOST_EXPORT FunctionNames
/// The functions that a formula calls. Linear in the formula.
findFunctionNames(DOM::FormulaSyntaxTree::Expr const& expr);

/// True for a formula with a call such as `ROW()`, which asks for the position of the formula's own
/// cell: each cell of an array formula then has a value of its own.
[[nodiscard]] ZORV_HOST_EXPORT bool asksPosition(DOM::FormulaSyntaxTree::Expr const& expr);

}  // namespace Zorv::Formulas
