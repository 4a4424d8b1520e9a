#pragma once

#include <boost/none.hpp>
#include <boost/optional.hpp>

#include "DOM/Ids.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Utils/CellIndex.h"
#include "Utils/NumCast.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

// Evaluation of a condition's formula for a cell: the steps that the formula engine's callers
// share.
namespace Zorv::ConditionalFormatters {

/// The context of an evaluation for a cell of the table, not as an array formula. Asks the provider
/// for the table's context.
[[nodiscard]] inline Formulas::Context makeContext(Formulas::ContextProvider const& provider,
                                                   DOM::Table const& table, CellIndex cell) {
  return {provider.getTableContext(table),
          cell.getRow(),
          cell.getColumn(),
          boost::none,
          DOM::RowID(0),
          DOM::ColumnID(0)};
}

/// The distance by which relative references move.
struct Offsets {
  int column;
  int row;
};

/// The distance from the base cell to a cell. Throws BadNumCastError for a position of 2^31 or
/// more.
[[nodiscard]] inline Offsets calculateOffsets(CellIndex cell, CellIndex baseCell) {
  unsigned long const column = cell.getColumn().get();
  unsigned long const baseColumn = baseCell.getColumn().get();
  unsigned long const row = cell.getRow().get();
  unsigned long const baseRow = baseCell.getRow().get();
  if ((column | baseColumn | row | baseRow) >> 31U != 0) {
    // The first one that does not fit is the one reported.
    for (unsigned long const position : {column, baseColumn, row, baseRow}) {
      static_cast<void>(numCast<int>(position));
    }
  }
  return {static_cast<int>(column) - static_cast<int>(baseColumn),
          static_cast<int>(row) - static_cast<int>(baseRow)};
}

/// The one value of an engine's result; none where the result is a reference. An array of one value
/// is that value; a larger one, or a null one, stops the process.
[[nodiscard]] boost::optional<FormulaValue> reduceToValue(Formulas::CalcResult result);

/// The same, made in its place, which is empty before.
void reduceInto(boost::optional<FormulaValue>& value, Formulas::CalcResult&& result);

}  // namespace Zorv::ConditionalFormatters
