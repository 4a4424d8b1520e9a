#include "Formulas/ShiftExpr.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "DOM/Table.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using FormulaModel::FormulaErrorCode;

/// Moves coordinates of one axis.
class Shift {
public:
  Shift(int offset, unsigned long size, bool wrapsAround) noexcept
      : _offset(offset), _size(static_cast<long>(size)), _wrapsAround(wrapsAround) {}

  /// False where the coordinate leaves the sheet.
  bool apply(std::uint32_t& position, bool isRelative) const noexcept {
    if (!isRelative) {
      return true;
    }
    long moved = static_cast<long>(position) + _offset;
    if (moved < 0 || moved >= _size) {
      if (!_wrapsAround) {
        return false;
      }
      moved = ((moved % _size) + _size) % _size;
    }
    position = static_cast<std::uint32_t>(moved);
    return true;
  }

private:
  long _offset;
  long _size;
  bool _wrapsAround;
};

bool shiftReference(CellReference& reference, Shift const& rows, Shift const& columns) noexcept {
  return rows.apply(reference.firstRow, reference.firstRowIsRelative) &&
         rows.apply(reference.lastRow, reference.lastRowIsRelative) &&
         columns.apply(reference.firstColumn, reference.firstColumnIsRelative) &&
         columns.apply(reference.lastColumn, reference.lastColumnIsRelative);
}

}  // namespace

std::unique_ptr<Expr> shiftExpr(Expr const& expr, TableContext const& /*tableContext*/,
                                int columnOffset, int rowOffset,
                                FormulaModel::DocTableIndex /*table*/, bool wrapAround) {
  Shift const rows(rowOffset, DOM::Table::rowCount, wrapAround);
  Shift const columns(columnOffset, DOM::Table::columnCount, wrapAround);
  ExprParts parts = expr.getParts();
  for (Node& node : parts.nodes) {
    bool const leaves = node.kind == NodeKind::Reference &&
                        !shiftReference(parts.references[node.index], rows, columns);
    if (leaves) {
      node.kind = NodeKind::Error;
      node.index = static_cast<std::uint32_t>(FormulaErrorCode::Reference);
    }
  }
  return std::make_unique<Expr>(std::move(parts));
}

}  // namespace Zorv::Formulas
