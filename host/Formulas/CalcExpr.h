#pragma once

#include <memory>
#include <vector>

#include <boost/variant/variant.hpp>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/DocTableIndex.h"
#include "FormulaModel/FormulaArray.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// A rectangle of one table's cells, as the result of a formula.
struct Reference {
  FormulaModel::DocTableIndex table;
  TableRange range;
};

/// The result of a formula. The order of the alternatives is part of the contract: a value, an
/// array of values, a list of references (a union), one reference to more than one cell.
using CalcResult =
    boost::variant<FormulaValue, std::shared_ptr<FormulaModel::FormulaArray const>,
                   std::vector<std::shared_ptr<Reference const>>, std::shared_ptr<Reference const>>;

/// Evaluates an expression at a place.
///
/// Spreadsheet errors are values of the result. Throws FormulaException where the expression cannot
/// be evaluated at all. The expression is evaluated as an array formula where the context says so;
/// elsewhere an array that is left over yields its first value. Threads: may be called from several
/// threads at once while the document stays unchanged.
[[nodiscard]] ZORV_HOST_EXPORT CalcResult calcExpr(DOM::FormulaSyntaxTree::Expr const& expr,
                                                   Context const& context,
                                                   ContextProvider const& contextProvider,
                                                   RuntimeDependenciesResolver& resolver);

}  // namespace Zorv::Formulas
