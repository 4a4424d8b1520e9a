#pragma once

#include <utility>

#include <boost/optional.hpp>

#include "DOM/Ids.h"
#include "FormulaModel/ArrayFormulaIndices.h"
#include "Formulas/TableContext.h"
#include "Utils/CellIndex.h"

namespace Zorv::Formulas {

/// The place at which a formula is evaluated. A small value; it borrows the table context.
class Context {
public:
  /// Row ID and column ID 0 mean a place of unknown identity.
  Context(TableContext const* tableContext, RowIndex row, ColumnIndex column,
          boost::optional<FormulaModel::ArrayFormulaIndices> arrayFormulaIndices, DOM::RowID rowID,
          DOM::ColumnID columnID) noexcept
      : _tableContext(tableContext),
        _row(row),
        _column(column),
        _arrayFormulaIndices(std::move(arrayFormulaIndices)),
        _rowID(rowID),
        _columnID(columnID) {}

  /// The table of the place.
  [[nodiscard]] TableContext const* getTableContext() const noexcept { return _tableContext; }
  /// The row of the place.
  [[nodiscard]] RowIndex getRow() const noexcept { return _row; }
  /// The column of the place.
  [[nodiscard]] ColumnIndex getColumn() const noexcept { return _column; }
  /// Set where the formula is evaluated as an array formula.
  [[nodiscard]] boost::optional<FormulaModel::ArrayFormulaIndices> const& getArrayFormulaIndices()
      const noexcept {
    return _arrayFormulaIndices;
  }
  /// The row's identity; 0 if unknown.
  [[nodiscard]] DOM::RowID getRowID() const noexcept { return _rowID; }
  /// The column's identity; 0 if unknown.
  [[nodiscard]] DOM::ColumnID getColumnID() const noexcept { return _columnID; }

private:
  TableContext const* _tableContext;
  RowIndex _row;
  ColumnIndex _column;
  boost::optional<FormulaModel::ArrayFormulaIndices> _arrayFormulaIndices;
  DOM::RowID _rowID;
  DOM::ColumnID _columnID;
};

}  // namespace Zorv::Formulas
