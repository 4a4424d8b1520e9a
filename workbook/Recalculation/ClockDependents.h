#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/FindReferences.h"
#include "Utils/WorkBudget.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Recalculation/CellFormulas.h"
#include "workbook/Recalculation/MissingResults.h"
#include "workbook/Recalculation/VolatileWords.h"

namespace Zorv::Workbook {

/// Search for the cells whose formulas depend on the current date and time, directly or through
/// other cells.
///
/// A formula that calls a random function is none of them: its result stays. Nor is one that
/// depends on itself, or one that cannot be parsed. A formula that calls OFFSET or INDIRECT counts
/// as one of them, since it makes its references at run time: they may lead to any cell. The search
/// is depth first; cells that are known not to depend on the clock are skipped from then on, so
/// that each cell of a range is looked at once, however many formulas refer to the range.
class ClockDependents {
public:
  /// Borrows everything; the budget may be null. `formulas` are those of the whole document.
  ClockDependents(Document const& document, DocumentContextProvider const& provider,
                  CellFormulas const& formulas, WorkBudget* budget);

  /// The cells, in no order.
  [[nodiscard]] std::vector<FormulaCell> find();

private:
  using Ranges = std::vector<Formulas::Reference>;

  enum class State : std::uint8_t { Unknown, UnderWay, Dependent };

  /// A cell that is being searched.
  struct Step {
    std::size_t cell;
    Ranges ranges;          ///< that its formula refers to
    std::size_t range = 0;  ///< the ones before it hold no cell that may be dependent
  };

  void search(std::size_t cell);
  [[nodiscard]] bool begin(std::size_t cell);
  void takeStep();
  void endStep(bool isDependent);
  [[nodiscard]] Ranges findRanges(FormulaCell const& cell);
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const& parse(FormulaCell const& cell);

  Document const& _document;
  DocumentContextProvider const& _provider;
  std::vector<FormulaSource> const& _formulas;
  VolatileWords _words;
  StepCounter _counter;
  MissingResults _candidates;  ///< cells that are not known to be independent of the clock
  std::vector<State> _states;
  std::vector<Step> _steps;
  /// The parsed formula of the last cell: neighbours often share one.
  std::optional<std::uint32_t> _parsedFormula;
  DOM::FormulaSyntaxTree::Expr _expr;
};

}  // namespace Zorv::Workbook
