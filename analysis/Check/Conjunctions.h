#pragma once

#include <optional>
#include <string>

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Analysis {

/// A formula of comparisons that exclude each other, or leave nothing out.
struct Conjunction {
  bool isContradiction = false;  ///< else it holds for every cell without an error
  std::string reason;
};

/// Looks at `AND(...)` and `OR(...)` of comparisons of one cell with constants: `AND(A1>5,A1<3)`
/// never holds, and `OR(A1<>"x",A1<>"y")` always does. Nothing for any other formula, and for
/// comparisons that leave something open. Evaluates nothing.
[[nodiscard]] std::optional<Conjunction> findConjunction(DOM::FormulaSyntaxTree::Expr const& expr);

}  // namespace Zorv::Analysis
