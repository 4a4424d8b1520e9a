#pragma once

#include <optional>
#include <utility>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/NumberOrder.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// A formula that compares one cell of its own table with a number, such as `A1>2.5`.
///
/// Value type.
class NumberComparison {
public:
  /// Nothing for other formulas.
  [[nodiscard]] ZORV_HOST_EXPORT static std::optional<NumberComparison> find(
      DOM::FormulaSyntaxTree::Expr const& expr);

  /// The compared cell.
  [[nodiscard]] DOM::FormulaSyntaxTree::CellReference const& getCell() const noexcept {
    return _cell;
  }

  /// The value of the formula where the cell holds a finite number.
  [[nodiscard]] bool holds(double number) const noexcept {
    return holdsFor(_operator, _isCellFirst ? compareRoughly(number, _number)
                                            : compareRoughly(_number, number));
  }

  /// The least and the largest number of a cell for which this comparison and another one may have
  /// different values. Nothing if they differ in more than the number.
  [[nodiscard]] ZORV_HOST_EXPORT std::optional<std::pair<double, double>> findDifferent(
      NumberComparison const& other) const noexcept;

private:
  NumberComparison(DOM::FormulaSyntaxTree::CellReference const& cell,
                   DOM::FormulaSyntaxTree::Operator comparison, bool isCellFirst,
                   double number) noexcept
      : _cell(cell), _operator(comparison), _isCellFirst(isCellFirst), _number(number) {}

  DOM::FormulaSyntaxTree::CellReference _cell;
  DOM::FormulaSyntaxTree::Operator _operator;
  bool _isCellFirst;  ///< it stands to the left of the operator
  double _number;
};

}  // namespace Zorv::Formulas
