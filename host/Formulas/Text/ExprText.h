#pragma once

#include <string>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Formulas {

/// The text of each node of a formula, by its index in the tree, where `isWanted[node]` holds; the
/// others are empty. See writeExpr().
[[nodiscard]] std::vector<std::string> writeNodes(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                                  std::vector<bool> const& isWanted);

}  // namespace Zorv::Formulas
