#pragma once

#include <atomic>
#include <cmath>
#include <exception>
#include <memory>
#include <optional>

#include <boost/optional.hpp>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "DOM/Cell.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/NumberComparison.h"
#include "Utils/CellIndex.h"

namespace Zorv::Formulas {
class ContextProvider;
}  // namespace Zorv::Formulas

namespace Zorv::ConditionalFormatters {

/// Where formulas are evaluated, and the cell relative to which they are written. Borrows the table
/// and the provider.
struct FormulaOrigin {
  DOM::Table const& table;
  Formulas::ContextProvider const& contextProvider;
  CellIndex baseCell;
};

/// A formula of a condition, prepared for the cells of an unchanged document: what is the same for
/// every cell is evaluated once, at the first cell; the rest is evaluated without a shifted copy.
///
/// Ownership: borrows the expression and the origin's objects. Threads: may be asked from several
/// threads, each with a session of its own.
class PreparedFormula {
public:
  PreparedFormula(FormulaOrigin const& origin, DOM::FormulaSyntaxTree::Expr const& expr);

  /// The value that FormulaExprCalculator::calculate() gives for the cell. It is either the one
  /// that all cells share, or is put into `ownValue`, which is empty before. Throws what
  /// calculate() throws.
  [[nodiscard]] boost::optional<FormulaValue> const& evaluate(
      CellIndex cell, Formulas::EvaluationSession& session,
      boost::optional<FormulaValue>& ownValue) const {
    Shared const* const shared = _shared.find();
    return shared != nullptr && _isSameForEveryCell && isShiftable(cell)
               ? shared->value
               : evaluateOwn(cell, session, ownValue);
  }

  /// The same for a formula that is left as a comparison of the cell with a number, if the cell
  /// holds one: without the engine. Nothing for other cells and formulas.
  [[nodiscard]] std::optional<bool> compare(CellIndex cell, DOM::Cell const* held) const noexcept {
    Shared const* const shared = _shared.find();
    if (held == nullptr || shared == nullptr || !shared->comparison || !isInSheet(cell)) {
      return std::nullopt;
    }
    auto const* const number = boost::get<FormulaModel::FormulaNumber>(&held->value);
    return number == nullptr || !std::isfinite(number->value.get())
               ? std::nullopt
               : std::optional(shared->comparison->holds(number->value.get()));
  }

  /// Part that is the same for every cell, as a formula that is followed compares it.
  struct Common {
    /// The value of a formula that has one for all cells; null for others.
    boost::optional<FormulaValue> const* value;
    /// Part that is evaluated for each cell.
    DOM::FormulaSyntaxTree::Expr const* rest;
  };
  /// Nothing before it was evaluated once, or prepareFor() called.
  [[nodiscard]] std::optional<Common> findCommon() const noexcept;
  /// Evaluates what is the same for every cell, as if for a cell. Throws what that throws.
  void prepareFor(CellIndex cell, Formulas::EvaluationSession& session) const;

  /// True once it has met limits of the engine too often: it then throws for every other cell.
  [[nodiscard]] bool hasGivenUp() const noexcept {
    return _limitCount.load(std::memory_order_acquire) >= mostLimits;
  }

private:
  /// Far more work than an ordinary formula, each time: it is done for some cells and not for all.
  static constexpr unsigned mostLimits = 2;

  /// State that is the same for every cell.
  struct Shared {
    boost::optional<FormulaValue> value;                         ///< of a formula that is
    std::unique_ptr<DOM::FormulaSyntaxTree::Expr const> folded;  ///< if parts of the formula are
    std::optional<Formulas::NumberComparison> comparison;        ///< of the evaluated cell
  };

  /// True if references can be moved to a cell; evaluateAt() refuses others.
  [[nodiscard]] static bool isShiftable(CellIndex cell) noexcept {
    return (cell.getRow().get() | cell.getColumn().get()) >> 31U == 0;
  }

  /// True for the cells of a sheet, past the last of which references go on with its first.
  [[nodiscard]] static bool isInSheet(CellIndex cell) noexcept {
    return cell.getRow().get() < DOM::Table::rowCount &&
           cell.getColumn().get() < DOM::Table::columnCount;
  }

  boost::optional<FormulaValue> const& evaluateOwn(CellIndex cell,
                                                   Formulas::EvaluationSession& session,
                                                   boost::optional<FormulaValue>& ownValue) const;
  [[nodiscard]] std::unique_ptr<Shared const> prepare(CellIndex cell,
                                                      Formulas::EvaluationSession& session) const;
  void fold(Shared& shared, CellIndex cell, Formulas::EvaluationSession& session) const;
  /// A comparison of the cell for which the formula is evaluated with a number.
  [[nodiscard]] std::optional<Formulas::NumberComparison> findComparison(
      DOM::FormulaSyntaxTree::Expr const& expr) const;
  /// Puts the value into `value`, which is empty before.
  void evaluateAt(DOM::FormulaSyntaxTree::Expr const& expr, CellIndex cell,
                  Formulas::EvaluationSession& session, boost::optional<FormulaValue>& value) const;

  FormulaOrigin _origin;
  DOM::FormulaSyntaxTree::Expr const& _expr;
  bool _isSameForEveryCell;
  Lazy<Shared> _shared;
  Lazy<std::exception_ptr> _limit;               ///< the first limit of the engine that it met
  mutable std::atomic<unsigned> _limitCount{0};  ///< how often it met one
};

}  // namespace Zorv::ConditionalFormatters
