#pragma once

#include <boost/optional.hpp>

#include "FormulaModel/FormulaValue.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/Context.h"
#include "Utils/CellIndex.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

// Evaluation of a condition's formula for a cell: the steps that the formula engine's callers
// share.
namespace Zorv::ConditionalFormatters {

/// The context of an evaluation for a cell of the table, not as an array formula. Asks the provider
/// for the table's context.
[[nodiscard]] Formulas::Context makeContext(Formulas::ContextProvider const& provider,
                                            DOM::Table const& table, CellIndex cell);

/// The distance by which relative references move.
struct Offsets {
  int column;
  int row;
};

/// The distance from the base cell to a cell. Throws BadNumCastError for a position of 2^31 or
/// more.
[[nodiscard]] Offsets calculateOffsets(CellIndex cell, CellIndex baseCell);

/// The one value of an engine's result; none where the result is a reference. An array of one value
/// is that value; a larger one, or a null one, stops the process.
[[nodiscard]] boost::optional<FormulaValue> reduceToValue(Formulas::CalcResult result);

}  // namespace Zorv::ConditionalFormatters
