#pragma once

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/CellIndex.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::DOM::FormulaSyntaxTree {
class Expr;
}  // namespace Zorv::DOM::FormulaSyntaxTree

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// Evaluates the formulas of a condition for any cell of the condition's ranges.
///
/// The formulas are written relative to one base cell: the smallest first row and, independently,
/// the smallest first column of the format's ranges. For another cell their relative references
/// move by the distance from the base cell to that cell.
///
/// Ownership: borrows the table and the context provider, which must outlive it.
/// Threads: calculate() may run concurrently as far as the engine and the provider may.
class CNDFRMT_EXPORT FormulaExprCalculator {
public:
  /// `baseCell` is the cell relative to which the formulas are written.
  FormulaExprCalculator(DOM::Table const& table, Formulas::ContextProvider const& contextProvider,
                        CellIndex baseCell) noexcept;

  /// The provider that it borrows.
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const noexcept;

  /// The value of `expr` for `cell`; none where the formula's result is a reference and no value.
  /// An array of one value is that value; a larger one stops the process.
  ///
  /// Nothing is cached: each call shifts (except for the base cell itself) and evaluates anew.
  /// Throws BadNumCastError for a position of 2^31 or more, and whatever the engine throws.
  [[nodiscard]] boost::optional<FormulaValue> calculate(DOM::FormulaSyntaxTree::Expr const& expr,
                                                        CellIndex cell) const;

private:
  DOM::Table const* _table;
  Formulas::ContextProvider const* _contextProvider;
  CellIndex _baseCell;
};

}  // namespace Zorv::ConditionalFormatters
