#pragma once

#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The functions that a formula calls: names in upper case without prefixes such as `_xlfn.`, in
/// alphabetical order, each once.
struct FunctionNames {
  std::vector<std::string> known;
  std::vector<std::string> unknown;  ///< calls of these evaluate to `#NAME?`
};

[[nodiscard]] ZORV_HOST_EXPORT FunctionNames
findFunctionNames(DOM::FormulaSyntaxTree::Expr const& expr);

}  // namespace Zorv::Formulas
