#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include <boost/optional.hpp>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/CalcResult.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/EvaluationSession.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The value of a sub-expression, summed up.
struct TracedValue {
  /// Kind of a sub-expression's value.
  enum class Kind : std::uint8_t {
    Single,    ///< one value: `value`
    Range,     ///< the cells of `reference`: `rows`, `columns`, `firstValues`
    Ranges,    ///< a union of `rangeCount` ranges
    Array,     ///< an array of values: `rows`, `columns`, `firstValues`
    Function,  ///< a function that LAMBDA made
  };

  Kind kind = Kind::Single;  ///< says which of the other members count
  FormulaValue value;        ///< of Kind::Single
  /// Of a reference to one range; for Kind::Single, the cell that has the value.
  boost::optional<Reference> reference;
  std::uint64_t rows = 1;                 ///< of a range or an array
  std::uint64_t columns = 1;              ///< of a range or an array
  std::uint64_t rangeCount = 1;           ///< of a union
  std::vector<FormulaValue> firstValues;  ///< row by row, from the first cell
  /// The single value is a number that stands for a date: one of a cell that shows it as a date,
  /// the result of a function that gives dates, or such a date moved by a number of days.
  bool isDate = false;
};

/// A sub-expression that was evaluated.
struct TraceStep {
  std::string text;         ///< at the place of the evaluation, such as `D7<TODAY()`
  std::uint32_t depth = 0;  ///< in the formula's tree; 0 for the whole formula
  TracedValue value;        ///< the value
};

/// How an expression came to its value.
struct ExprTrace {
  std::string text;  ///< the expression at the place of the evaluation; see writeExpr()
  /// In the order in which their evaluation ended. Equal texts with equal values are there once.
  std::vector<TraceStep> steps;
  bool isCut = false;          ///< sub-expressions are left out because of the limits
  std::exception_ptr failure;  ///< what the evaluation threw, after these steps; null if it did not
};

/// How much a trace may tell. Sub-expressions near the root come first.
struct TraceLimits {
  std::size_t steps = 40;       ///< most sub-expressions
  std::uint32_t depth = 10;     ///< of the deepest sub-expression
  std::size_t firstValues = 5;  ///< most values of a range or an array
};

/// Evaluates an expression as calcShiftedExpr() does, and tells the value of each of its
/// sub-expressions, but for constants.
///
/// What is not evaluated, such as the branch of an IF that is not taken, is not in the trace. The
/// formula of a defined name is told below the name, the body of a LAMBDA below the LAMBDA. A
/// sub-expression that is evaluated more than once, as such a body is, is told once: with its first
/// value.
///
/// The evaluation is the engine's own: the formula gets an observer around each sub-expression. So
/// an evaluation without a trace costs nothing for it. Throws what WorkBudget::spend() throws, and
/// for a lack of memory. Threads: as calcShiftedExpr().
[[nodiscard]] ZORV_HOST_EXPORT ExprTrace traceExpr(DOM::FormulaSyntaxTree::Expr const& expr,
                                                   int columnOffset, int rowOffset,
                                                   Context const& context,
                                                   ContextProvider const& contextProvider,
                                                   EvaluationSession& session,
                                                   TraceLimits const& limits = {});

}  // namespace Zorv::Formulas
