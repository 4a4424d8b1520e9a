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
#include "workbook/DocumentContextProvider.h"
#include "workbook/Read/LoadState.h"
#include "workbook/Read/MissingResults.h"
#include "workbook/Read/UncalculatedReport.h"

namespace Zorv::Workbook {

/// Calculates the formulas whose results the file does not have, each after those on which it
/// depends, and says which ones could not be calculated and why.
///
/// The cells of an array formula are calculated together, but where it asks for the place of each.
/// A formula that needs the result of one that is under way, itself for instance, finds an empty
/// cell there. Results that the file has are never changed. Nothing recurses, however long a chain
/// of formulas is.
class MissingResultCalculator {
public:
  /// Borrows the state, of which it takes what the readers kept.
  /// Throws BaseRuntimeError for an unknown locale.
  MissingResultCalculator(LoadState& state, std::string const& localeName,
                          DOM::TimeZone const& timeZone);

  void calculate();

private:
  using ExprPtr = std::shared_ptr<DOM::FormulaSyntaxTree::Expr const>;
  using Ranges = std::vector<Formulas::Reference>;

  /// A formula as seen from one of its cells.
  struct Placed {
    ExprPtr expr;
    int columnOffset;
    int rowOffset;
    Formulas::Context context;
  };
  /// Whether some ranges hold cells without results: one of them, or what stands for it.
  struct Search {
    std::optional<std::size_t> missing;
    bool foundUnderWay = false;
  };

  void takeStep(std::size_t number);
  void calculate(std::size_t number);
  [[nodiscard]] Search search(Ranges const& ranges);
  void waitFor(std::size_t number);
  void finish(std::size_t number, Placed const& formula, Formulas::CalcResult const& result,
              bool isCircular);
  void store(std::size_t number, FormulaValue value);
  void leave(std::size_t number);
  void giveUp(std::size_t number, Uncalculated reason,
              std::vector<std::string> const& details = {});
  void report(std::size_t number, Uncalculated reason,
              std::vector<std::string> const& details = {});
  void findArrays();
  /// The cell that stands for a cell: itself, but for the others of an array.
  [[nodiscard]] std::size_t leaderOf(std::size_t number) const;
  /// Calls `visit(CELL)` for the cells that a cell stands for, itself among them.
  template <class Visit>
  void forEachCellOf(std::size_t number, Visit const& visit) const;
  [[nodiscard]] FormulaSource const& sourceOf(std::size_t number) const noexcept;
  [[nodiscard]] ExprPtr parse(std::size_t number);
  [[nodiscard]] Placed place(std::size_t number);
  [[nodiscard]] std::uint64_t countPositions(Ranges const& ranges) const;

  LoadState& _state;
  DocumentContextProvider _provider;
  std::vector<FormulaSource> _formulas;
  std::vector<ExprPtr> _sharedExprs;  ///< by formula; null until one is needed
  MissingResults _missing;
  /// The cells of an array, by formula, which are calculated together; the first stands for all.
  std::unordered_map<std::uint32_t, std::vector<std::size_t>> _arrays;
  std::vector<bool> _isUnderWay;
  /// Each waits for the one above it. No more than a number is kept of each, since a chain may be
  /// as long as the file.
  std::vector<std::size_t> _underWay;
  std::vector<TableRange> _usedRanges;  ///< by sheet
  std::uint64_t _work = 0;
  UncalculatedReport _report;
};

}  // namespace Zorv::Workbook
