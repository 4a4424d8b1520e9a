#pragma once

#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/CalcResult.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The ranges to which an expression refers at a place, its relative references moved as
/// calcShiftedExpr() does: those that are written in it and in the defined names that it uses, each
/// as often as it is written.
///
/// These are the cells that its value may depend on, besides those that it finds only when it is
/// evaluated (see RuntimeDependenciesResolver). Left out are references of which only the place is
/// asked, as in `ROW(A1)`, and those that lead nowhere. Evaluates nothing. Threads: as calcExpr().
[[nodiscard]] ZORV_HOST_EXPORT std::vector<Reference> findReferences(
    DOM::FormulaSyntaxTree::Expr const& expr, int columnOffset, int rowOffset,
    Context const& context, ContextProvider const& contextProvider);

}  // namespace Zorv::Formulas
