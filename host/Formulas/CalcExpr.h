#pragma once

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/CalcResult.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Evaluates an expression at a place.
///
/// Spreadsheet errors are values of the result. Throws EvaluationLimitError where the evaluation
/// meets a limit of the engine. The expression is evaluated as an array formula where the context
/// says so; elsewhere an array that is left over yields its first value. Threads: may be called
/// from several threads at once while the document stays unchanged.
[[nodiscard]] ZORV_HOST_EXPORT CalcResult calcExpr(DOM::FormulaSyntaxTree::Expr const& expr,
                                                   Context const& context,
                                                   ContextProvider const& contextProvider,
                                                   RuntimeDependenciesResolver& resolver);

}  // namespace Zorv::Formulas
