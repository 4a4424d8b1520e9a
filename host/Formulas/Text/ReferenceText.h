#pragma once

#include <string>

#include "DOM/FormulaSyntaxTree/Expr.h"

/// Writes references of a formula, with their sheets, as formulas have them.
namespace Zorv::Formulas {

[[nodiscard]] std::string writeReference(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                         DOM::FormulaSyntaxTree::CellReference const& reference);
[[nodiscard]] std::string writeReference(
    DOM::FormulaSyntaxTree::ExprParts const& parts,
    DOM::FormulaSyntaxTree::StructuredReference const& reference);
/// A defined name.
[[nodiscard]] std::string writeReference(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                         DOM::FormulaSyntaxTree::NameReference const& name);

}  // namespace Zorv::Formulas
