#include "workbook/Recalculation/MissingResultCalculator.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <new>
#include <utility>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/FindReferences.h"
#include "Formulas/FunctionNames.h"
#include "Formulas/ParseExpr.h"
#include "workbook/Recalculation/Doubts.h"

namespace Zorv::Workbook {

namespace {

FormulaValue errorValue(FormulaModel::FormulaErrorCode code) {
  return FormulaModel::FormulaError{code};
}

/// True for the errors of formulas that refer to something in vain.
bool isLost(FormulaValue const& value) noexcept {
  auto const* const error = boost::get<FormulaModel::FormulaError>(&value);
  return error != nullptr && (error->code == FormulaModel::FormulaErrorCode::Name ||
                              error->code == FormulaModel::FormulaErrorCode::Reference);
}

/// Takes the value of one cell out of a formula's result. The first value of an array belongs to
/// the cell `origin`.
class OneValue : public boost::static_visitor<FormulaValue> {
public:
  OneValue(DocumentContextProvider const& provider, CellIndex place, CellIndex origin) noexcept
      : _provider(provider), _place(place), _origin(origin) {}

  FormulaValue operator()(FormulaValue const& value) const { return value; }
  /// A single row or column is repeated, as a single value is.
  FormulaValue operator()(std::shared_ptr<FormulaModel::FormulaArray const> const& array) const {
    unsigned long const row = array->getHeight() == 1 ? 0 : rowOfPlace() - _origin.getRow().get();
    unsigned long const column =
        array->getWidth() == 1 ? 0 : columnOfPlace() - _origin.getColumn().get();
    return row < array->getHeight() && column < array->getWidth()
               ? array->at(row, column)
               : errorValue(FormulaModel::FormulaErrorCode::NotAvailable);
  }
  /// Implicit intersection: the cell of the reference in the formula's own row or column.
  FormulaValue operator()(std::shared_ptr<Formulas::Reference const> const& reference) const {
    TableRange const& range = reference->range;
    unsigned long const row = range.endRow - range.firstRow == 1 ? range.firstRow : rowOfPlace();
    unsigned long const column =
        range.endColumn - range.firstColumn == 1 ? range.firstColumn : columnOfPlace();
    auto const* const table = _provider.findTableContextAt(reference->table);
    if (!table || !range.contains(row, column)) {
      return errorValue(FormulaModel::FormulaErrorCode::Value);
    }
    DOM::Cell const* const cell = table->getTable().findCell(row, column);
    return cell ? cell->value : FormulaValue();
  }
  template <class Union>
  FormulaValue operator()(Union const& /*areas*/) const {
    return errorValue(FormulaModel::FormulaErrorCode::Value);
  }

private:
  [[nodiscard]] unsigned long rowOfPlace() const noexcept { return _place.getRow().get(); }
  [[nodiscard]] unsigned long columnOfPlace() const noexcept { return _place.getColumn().get(); }

  DocumentContextProvider const& _provider;
  CellIndex _place;
  CellIndex _origin;
};

void include(FormulaCell const& missing, TableRange& range) noexcept {
  range.firstRow = std::min<unsigned long>(range.firstRow, missing.row);
  range.firstColumn = std::min<unsigned long>(range.firstColumn, missing.column);
  range.endRow = std::max<unsigned long>(range.endRow, missing.row + 1UL);
  range.endColumn = std::max<unsigned long>(range.endColumn, missing.column + 1UL);
}

}  // namespace

MissingResultCalculator::MissingResultCalculator(Document& document, CellFormulas missing,
                                                 RecalculationOptions const& options)
    : _document(document),
      _provider(document, options.localeName, options.timeZone),
      _formulas(std::move(missing.formulas)),
      _sharedExprs(_formulas.size()),
      _missing(std::move(missing.cells)),
      _isUnderWay(_missing.size(), false),
      _hasResult(_missing.size(), false),
      _limits(options),
      _budget(options.budget),
      _counter(options.budget) {
  findArrays();
  for (std::size_t index = 0; index < _missing.size(); ++index) {
    FormulaCell const& place = _missing[index];
    DOM::Cell const* const cell =
        document.getSheets()[place.sheet].table->findCell(place.row, place.column);
    _hasResult[index] = cell != nullptr && !FormulaModel::isFormulaEmpty(cell->value);
  }
}

void MissingResultCalculator::calculate() {
  if (_missing.size() == 0) {
    return;
  }
  for (Sheet const& sheet : _document.getSheets()) {
    _usedRanges.push_back(sheet.table->getUsedRange());
  }
  for (ExternalSheet const& sheet : _document.getExternalSheets()) {
    _usedRanges.push_back(sheet.table->getUsedRange());
  }
  for (std::size_t index = 0; index < _missing.size(); ++index) {
    include(_missing[index], _usedRanges[_missing[index].sheet]);
  }
  for (std::size_t index = 0; index < _missing.size(); ++index) {
    while (_missing.isMissing(index)) {
      waitFor(leaderOf(index));
      while (!_underWay.empty()) {
        takeStep(_underWay.back());
      }
    }
  }
  _report.writeTo(_document);
  reportRenewed();
}

void MissingResultCalculator::reportRenewed() {
  if (_renewedCount > 0) {
    _document.addFinding(
        {.part = {},
         .sheet = {},
         .range = {},
         .message = fmt::format("{} on the current date or time and {} calculated again",
                                _renewedCount == 1 ? std::string("1 cell depends")
                                                   : fmt::format("{} cells depend", _renewedCount),
                                _renewedCount == 1 ? "was" : "were"),
         .isNote = true});
  }
}

void MissingResultCalculator::addWork(std::uint64_t amount) {
  _work += amount;
  _counter.count(amount);
}

bool MissingResultCalculator::isBeyondLimits() const noexcept {
  return _work > _limits.positionLimit || _steps > _limits.stepLimit ||
         _textBytes > _limits.textByteLimit;
}

/// Calculates the cell on top of the stack, or pushes a cell whose result it needs first.
void MissingResultCalculator::takeStep(std::size_t index) {
  FormulaSource const& source = sourceOf(index);
  addWork(source.text.size());
  try {
    if (source.text.empty()) {
      giveUp(index, Uncalculated::NoText);
    } else if (source.isTooLarge || isBeyondLimits()) {
      giveUp(index, Uncalculated::TooMuch);
    } else {
      calculate(index);
    }
  } catch (Formulas::FormulaParseError const& error) {
    giveUp(index, Uncalculated::Unreadable, {error.what()});
  } catch (WorkEnded const&) {
    throw;
  } catch (std::bad_alloc const&) {
    giveUp(index, Uncalculated::TooMuch);
  } catch (std::exception const& error) {
    giveUp(index, Uncalculated::Failed, {error.what()});
  }
}

void MissingResultCalculator::calculate(std::size_t index) {
  Placed const formula = place(index);
  if (Formulas::asksPosition(*formula.expr)) {
    // Each cell of an array is calculated by itself.
    _arrays.erase(_missing[index].formula);
  }
  auto const& [columnOffset, rowOffset, context] = formula.placement;
  auto const references =
      Formulas::findReferences(*formula.expr, columnOffset, rowOffset, context, _provider);
  Search found = search(references);
  if (found.missing) {
    waitFor(*found.missing);
    return;
  }
  forEachCellOf(index, [this](std::size_t) { addWork(1); });
  addWork(countPositions(references));
  Formulas::RuntimeDependenciesResolver dependencies;
  auto const result = evaluate(formula, dependencies);
  if (!found.foundUnderWay) {
    // References made by the evaluation (OFFSET, INDIRECT) may lead to cells without results. Then
    // the formula is calculated again after them.
    Ranges ranges;
    for (auto const& dependency : dependencies.getDependencies()) {
      ranges.push_back({dependency.table, dependency.range});
    }
    addWork(countPositions(ranges));
    found = search(ranges);
    if (found.missing) {
      waitFor(*found.missing);
      return;
    }
  }
  finish(index, formula, result, found.foundUnderWay);
}

Formulas::CalcResult MissingResultCalculator::evaluate(
    Placed const& formula, Formulas::RuntimeDependenciesResolver& dependencies) {
  auto const& [columnOffset, rowOffset, context] = formula.placement;
  // One session for each evaluation: values change between two of them.
  Formulas::EvaluationSession session;
  session.setBudget(_budget);
  try {
    auto result = Formulas::calcShiftedExpr(*formula.expr, columnOffset, rowOffset, context,
                                            _provider, dependencies, session);
    _steps += session.countSteps();
    return result;
  } catch (Formulas::EvaluationLimitError const&) {
    _steps += session.countSteps();
    throw;
  }
}

/// Stops at the first cell that is being calculated: the formula is circular, and a circle may have
/// as many cells as the file.
MissingResultCalculator::Search MissingResultCalculator::search(Ranges const& ranges) {
  for (auto const& [table, range] : ranges) {
    if (auto const found = _missing.findIn(table.get(), range)) {
      std::size_t const leader = leaderOf(*found);
      return _isUnderWay[leader] ? Search{std::nullopt, true} : Search{leader, false};
    }
  }
  return {};
}

void MissingResultCalculator::waitFor(std::size_t index) {
  _isUnderWay[index] = true;
  _underWay.push_back(index);
}

void MissingResultCalculator::finish(std::size_t index, Placed const& formula,
                                     Formulas::CalcResult const& result, bool isCircular) {
  CellIndex const origin = sourceOf(index).place;
  std::optional<std::vector<Formulas::Unresolved>> unresolved;
  forEachCellOf(index, [&](std::size_t cell) {
    CellIndex const place = _missing[cell].getPlace();
    auto value = boost::apply_visitor(OneValue(_provider, place, origin), result);
    if (isLost(value) && !unresolved) {
      unresolved = Formulas::findUnresolved(*formula.expr, _provider,
                                            FormulaModel::DocTableIndex(_missing[cell].sheet));
    }
    bool const isDoubtful = isCircular || (isLost(value) && !unresolved->empty());
    if (!_hasResult[cell] || !isDoubtful) {
      store(cell, std::move(value));
      _renewedCount += _hasResult[cell] ? 1 : 0;
    }
  });
  if (isCircular) {
    report(index, Uncalculated::Circular);
  }
  if (unresolved) {
    reportUnresolved(index, *unresolved);
  }
  leave(index);
}

void MissingResultCalculator::reportUnresolved(
    std::size_t index, std::vector<Formulas::Unresolved> const& unresolved) {
  std::vector<std::string> functions;
  std::vector<std::string> others;
  for (Formulas::Unresolved const& one : unresolved) {
    if (one.kind == Formulas::UnresolvedKind::Function) {
      functions.push_back(one.text);
    } else {
      others.push_back(describe(one));
    }
  }
  if (!functions.empty()) {
    report(index, Uncalculated::UnknownFunctions, functions);
  }
  if (!others.empty()) {
    report(index, Uncalculated::Lost, others);
  }
}

/// A formula whose value is that of an empty cell gives 0.
void MissingResultCalculator::store(std::size_t index, FormulaValue value) {
  FormulaCell const& missing = _missing[index];
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&value)) {
    _textBytes += text->value.size();
  }
  auto& cell = _document.getSheets()[missing.sheet].table->obtainCell(missing.row, missing.column);
  cell.value = FormulaModel::isFormulaEmpty(value) ? FormulaModel::FormulaNumber{FloatNumber(0.0)}
                                                   : std::move(value);
}

/// Pops the leader on top of the stack; its cells have their final values.
void MissingResultCalculator::leave(std::size_t index) {
  forEachCellOf(index, [this](std::size_t cell) { _missing.finish(cell); });
  _isUnderWay[index] = false;
  _underWay.pop_back();
}

void MissingResultCalculator::giveUp(std::size_t index, Uncalculated reason,
                                     std::vector<std::string> const& details) {
  report(index, reason, details);
  leave(index);
}

void MissingResultCalculator::report(std::size_t index, Uncalculated reason,
                                     std::vector<std::string> const& details) {
  forEachCellOf(index, [&](std::size_t cell) {
    _report.add({_missing[cell].sheet, reason, _hasResult[cell]}, _missing[cell].getPlace(),
                details);
  });
}

void MissingResultCalculator::findArrays() {
  for (std::size_t index = 0; index < _missing.size(); ++index) {
    if (sourceOf(index).area) {
      _arrays[_missing[index].formula].push_back(index);
    }
  }
}

std::size_t MissingResultCalculator::leaderOf(std::size_t index) const {
  auto const array = _arrays.find(_missing[index].formula);
  return array == _arrays.end() ? index : array->second.front();
}

template <class Visit>
void MissingResultCalculator::forEachCellOf(std::size_t index, Visit const& visit) const {
  auto const array = _arrays.find(_missing[index].formula);
  if (array == _arrays.end()) {
    visit(index);
  } else {
    std::ranges::for_each(array->second, visit);
  }
}

FormulaSource const& MissingResultCalculator::sourceOf(std::size_t index) const noexcept {
  return _formulas[_missing[index].formula];
}

MissingResultCalculator::ExprPtr MissingResultCalculator::parse(std::size_t index) {
  FormulaSource const& source = sourceOf(index);
  ExprPtr& shared = _sharedExprs[_missing[index].formula];
  if (shared) {
    return shared;
  }
  auto expr =
      std::make_shared<DOM::FormulaSyntaxTree::Expr const>(Formulas::parseExpr(source.text));
  if (source.isShared || source.area) {
    shared = expr;
  }
  return expr;
}

MissingResultCalculator::Placed MissingResultCalculator::place(std::size_t index) {
  return {parse(index), findPlacement(_document, _provider, sourceOf(index), _missing[index])};
}

std::uint64_t MissingResultCalculator::countPositions(Ranges const& ranges) const {
  std::uint64_t count = 0;
  for (auto const& [table, range] : ranges) {
    TableRange const used = intersect(range, _usedRanges[table.get()]);
    count += std::uint64_t{used.endRow - used.firstRow} * (used.endColumn - used.firstColumn);
  }
  return count;
}

}  // namespace Zorv::Workbook
