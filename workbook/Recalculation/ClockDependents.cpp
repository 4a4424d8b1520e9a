#include "workbook/Recalculation/ClockDependents.h"

#include <utility>

#include "Formulas/ParseExpr.h"
#include "workbook/Recalculation/PlacedFormula.h"

namespace Zorv::Workbook {

ClockDependents::ClockDependents(Document const& document, DocumentContextProvider const& provider,
                                 CellFormulas const& formulas, WorkBudget* budget)
    : _document(document),
      _provider(provider),
      _formulas(formulas.formulas),
      _words(document.getDefinedNames()),
      _counter(budget),
      _candidates(formulas.cells),
      _states(_candidates.size(), State::Unknown) {}

std::vector<FormulaCell> ClockDependents::find() {
  for (std::size_t cell = 0; cell < _candidates.size(); ++cell) {
    if (_candidates.isMissing(cell) && _states[cell] == State::Unknown) {
      search(cell);
    }
  }
  std::vector<FormulaCell> dependents;
  for (std::size_t cell = 0; cell < _candidates.size(); ++cell) {
    if (_states[cell] == State::Dependent) {
      dependents.push_back(_candidates[cell]);
    }
  }
  return dependents;
}

void ClockDependents::search(std::size_t cell) {
  if (!begin(cell)) {
    return;
  }
  while (!_steps.empty()) {
    takeStep();
  }
}

/// Decides a cell by its own formula, or adds a step for the cells that the formula refers to and
/// returns true.
bool ClockDependents::begin(std::size_t cell) {
  std::string const& text = _formulas[_candidates[cell].formula].text;
  _counter.count(1 + text.size());
  VolatileUse const use = _words.findIn(text);
  if (use.random || text.empty()) {
    _candidates.finish(cell);
    return false;
  }
  if (use.clock || use.place) {
    _states[cell] = State::Dependent;
    return false;
  }
  try {
    _steps.push_back({cell, findRanges(_candidates[cell])});
  } catch (Formulas::FormulaParseError const&) {
    _candidates.finish(cell);
    return false;
  }
  _states[cell] = State::UnderWay;
  return true;
}

/// Looks for one cell that may be dependent in the ranges of the step on top of the stack.
void ClockDependents::takeStep() {
  Step& step = _steps.back();
  while (step.range < step.ranges.size()) {
    auto const& [table, range] = step.ranges[step.range];
    _counter.count();
    auto const found = _candidates.findIn(table.get(), range);
    if (!found) {
      ++step.range;
    } else if (_states[*found] == State::Unknown) {
      static_cast<void>(begin(*found));
      return;
    } else {
      // A cell under way is a circle, whose results stay.
      endStep(_states[*found] == State::Dependent);
      return;
    }
  }
  endStep(false);
}

void ClockDependents::endStep(bool isDependent) {
  std::size_t const cell = _steps.back().cell;
  _steps.pop_back();
  _states[cell] = isDependent ? State::Dependent : State::Unknown;
  if (!isDependent) {
    _candidates.finish(cell);
  }
}

ClockDependents::Ranges ClockDependents::findRanges(FormulaCell const& cell) {
  Placement const placement = findPlacement(_document, _provider, _formulas[cell.formula], cell);
  return Formulas::findReferences(parse(cell), placement.columnOffset, placement.rowOffset,
                                  placement.context, _provider);
}

DOM::FormulaSyntaxTree::Expr const& ClockDependents::parse(FormulaCell const& cell) {
  if (_parsedFormula != cell.formula) {
    _parsedFormula.reset();
    _expr = Formulas::parseExpr(_formulas[cell.formula].text);
    _parsedFormula = cell.formula;
  }
  return _expr;
}

}  // namespace Zorv::Workbook
