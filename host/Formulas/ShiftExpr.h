#pragma once

#include <memory>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/DocTableIndex.h"
#include "Formulas/TableContext.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// A copy of an expression with its relative references moved.
///
/// `tableContext` and `table` are the table of the expression: references without a sheet name are
/// references into it. With `wrapAround` a reference that leaves the sheet at one edge
/// comes in at the opposite one; without it, it becomes the error `#REF!`. The result is never
/// null.
[[nodiscard]] ZORV_HOST_EXPORT std::unique_ptr<DOM::FormulaSyntaxTree::Expr> shiftExpr(
    DOM::FormulaSyntaxTree::Expr const& expr, TableContext const& tableContext, int columnOffset,
    int rowOffset, FormulaModel::DocTableIndex table, bool wrapAround);

}  // namespace Zorv::Formulas
