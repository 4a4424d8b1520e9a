#pragma once

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Analysis {

/// True if a formula cannot be true, since its value is an error whatever the cells hold: an error
/// value is written in it, such as the `#REF!` of a deleted cell, and nothing around it handles
/// errors. AND counts, although it may be FALSE. False says nothing.
[[nodiscard]] bool isAlwaysError(DOM::FormulaSyntaxTree::Expr const& formula);

}  // namespace Zorv::Analysis
