#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/FindUnresolved.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Recalculation/CellFormulas.h"
#include "workbook/Recalculation/MissingResults.h"
#include "workbook/Recalculation/PlacedFormula.h"
#include "workbook/Recalculation/Recalculate.h"
#include "workbook/Recalculation/UncalculatedReport.h"

namespace Zorv::Workbook {

/// Calculates formulas that have no result in the file, or one that depends on the current date or
/// time, each after the formulas that it depends on, and reports those that cannot be calculated.
///
/// The cells of an array formula are calculated together, unless the formula asks for the position
/// of its cell. A formula that depends on itself, directly or not, reads an empty cell there.
/// A cell that has a result keeps it if its formula cannot be calculated. The stack of unfinished
/// formulas is a vector, so that a chain may be as long as memory allows.
class MissingResultCalculator {
public:
  /// Borrows the document and the options. Throws BaseRuntimeError for an unknown locale.
  MissingResultCalculator(Document& document, CellFormulas missing,
                          RecalculationOptions const& options);

  void calculate();

private:
  using ExprPtr = std::shared_ptr<DOM::FormulaSyntaxTree::Expr const>;
  using Ranges = std::vector<Formulas::Reference>;

  /// A formula at the place of one of its cells.
  struct Placed {
    ExprPtr expr;
    Placement placement;
  };
  /// Result of looking for cells without results in some ranges.
  struct Search {
    std::optional<std::size_t> missing;  ///< the leader of the first such cell
    bool foundUnderWay = false;          ///< there is one, and its leader is being calculated
  };

  void takeStep(std::size_t index);
  [[nodiscard]] bool isBeyondLimits() const noexcept;
  void calculate(std::size_t index);
  [[nodiscard]] Formulas::CalcResult evaluate(Placed const& formula,
                                              Formulas::RuntimeDependenciesResolver& dependencies);
  [[nodiscard]] Search search(Ranges const& ranges);
  void waitFor(std::size_t index);
  void finish(std::size_t index, Placed const& formula, Formulas::CalcResult const& result,
              bool isCircular);
  void store(std::size_t index, FormulaValue value);
  void reportUnresolved(std::size_t index, std::vector<Formulas::Unresolved> const& unresolved);
  void addWork(std::uint64_t amount);
  void reportRenewed();
  void leave(std::size_t index);
  void giveUp(std::size_t index, Uncalculated reason, std::vector<std::string> const& details = {});
  void report(std::size_t index, Uncalculated reason, std::vector<std::string> const& details = {});
  void findArrays();
  /// The cell whose calculation gives a cell its result: the first of its array, or the cell
  /// itself.
  [[nodiscard]] std::size_t leaderOf(std::size_t index) const;
  /// Calls `visit(index)` for the cells that a leader's calculation gives results.
  template <class Visit>
  void forEachCellOf(std::size_t index, Visit const& visit) const;
  [[nodiscard]] FormulaSource const& sourceOf(std::size_t index) const noexcept;
  [[nodiscard]] ExprPtr parse(std::size_t index);
  [[nodiscard]] Placed place(std::size_t index);
  [[nodiscard]] std::uint64_t countPositions(Ranges const& ranges) const;

  Document& _document;
  DocumentContextProvider _provider;
  std::vector<FormulaSource> _formulas;
  std::vector<ExprPtr> _sharedExprs;  ///< by formula; null until one is needed
  MissingResults _missing;
  /// By formula: the cells of an array, which are calculated together; the first is their leader.
  std::unordered_map<std::uint32_t, std::vector<std::size_t>> _arrays;
  std::vector<bool> _isUnderWay;
  std::vector<bool> _hasResult;  ///< in the file
  /// Stack of leaders; each waits for the result of the one above it. Indices alone, since a chain
  /// may be as long as the file.
  std::vector<std::size_t> _underWay;
  std::vector<TableRange> _usedRanges;  ///< by DocTableIndex
  RecalculationOptions const& _limits;
  std::uint64_t _work = 0;  ///< positions that formulas referred to, and bytes of their own texts
  std::uint64_t _steps = 0;
  std::uint64_t _textBytes = 0;  ///< of results
  WorkBudget* _budget;
  StepCounter _counter;
  std::uint64_t _renewedCount = 0;  ///< cells whose results were replaced
  UncalculatedReport _report;
};

}  // namespace Zorv::Workbook
