#include "ConditionalFormatters/Live/CndFrmt_FormatDependencies.h"

#include <algorithm>
#include <memory>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "ConditionalFormatters/Formats/CndFrmt_FormulaBaseCell.h"
#include "ConditionalFormatters/Live/CndFrmt_DependentLines.h"
#include "ConditionalFormatters/Predicates/CndFrmt_DatePeriod.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ContextProvider.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;

/// Dependencies of the conditions of each kind.
class DependencyVisitor : public boost::static_visitor<> {
public:
  DependencyVisitor(DOM::Table const& table, Formulas::ContextProvider const& provider,
                    Formulas::Dependencies& formulas, bool& onRanges) noexcept
      : _table(table), _provider(provider), _formulas(formulas), _onRanges(onRanges) {}

  void operator()(DOM::NullaryConditionalFormatOperator const& record) const {
    _formulas.onDay = findDatePeriod(record.getType()).has_value();
  }
  void operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    add(record.getArgument());
  }
  void operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    add(record.getFirstArgument());
    add(record.getSecondArgument());
  }
  void operator()(DOM::TextConditionalFormatOperator const& record) const {
    if (auto const* formula = boost::get<std::unique_ptr<Expr>>(&record.getArgument())) {
      add(PtrUtils::derefHeld(*formula));
    }
  }
  void operator()(DOM::TopBottomConditionalFormatOperator const& /*record*/) const {
    _onRanges = true;
  }
  void operator()(DOM::AboveAverageConditionalFormatOperator const& /*record*/) const {
    _onRanges = true;
  }
  void operator()(DOM::UniquenessConditionalFormatOperator const& /*record*/) const {
    _onRanges = true;
  }

private:
  void add(Expr const& expr) const {
    auto const* const context = _provider.getTableContext(_table);
    auto const found =
        Formulas::findDependencies(expr, PtrUtils::derefObtained(context), _provider);
    _formulas.references.insert(_formulas.references.end(), found.references.begin(),
                                found.references.end());
    _formulas.onAnyCell = _formulas.onAnyCell || found.onAnyCell;
    _formulas.onDay = _formulas.onDay || found.onDay;
    _formulas.onMoment = _formulas.onMoment || found.onMoment;
  }

  DOM::Table const& _table;
  Formulas::ContextProvider const& _provider;
  Formulas::Dependencies& _formulas;
  bool& _onRanges;
};

ReferenceLines rowsOf(CellReference const& corners) noexcept {
  return {corners.firstRow, corners.lastRow, corners.firstRowIsRelative, corners.lastRowIsRelative};
}

ReferenceLines columnsOf(CellReference const& corners) noexcept {
  return {corners.firstColumn, corners.lastColumn, corners.firstColumnIsRelative,
          corners.lastColumnIsRelative};
}

TableRange rangeOf(CellReference const& corners) noexcept {
  return {std::min(corners.firstRow, corners.lastRow),
          std::min(corners.firstColumn, corners.lastColumn),
          std::max(corners.firstRow, corners.lastRow) + 1UL,
          std::max(corners.firstColumn, corners.lastColumn) + 1UL};
}

/// The table of a reference of a formula of a table.
DOM::Table const* tableOf(Formulas::Dependencies::Reference const& reference,
                          DOM::Table const& table) noexcept {
  return reference.table == nullptr ? &table : reference.table;
}

void addIntersections(TableRange const& area, std::vector<TableRange> const& ranges,
                      std::vector<TableRange>& areas) {
  for (TableRange const& range : ranges) {
    TableRange const common = intersect(area, range);
    if (!common.isEmpty()) {
      areas.push_back(common);
    }
  }
}

}  // namespace

bool isFixedReached(Formulas::Dependencies::Reference const& reference, DOM::Table const& table,
                    std::span<ChangedCells const> changes) {
  TableRange const range = rangeOf(reference.corners);
  return std::ranges::any_of(changes, [&](ChangedCells const& changed) {
    return tableOf(reference, table) == changed.table &&
           std::ranges::any_of(changed.fewAreas, [&](TableRange const& area) {
             return !intersect(range, area).isEmpty();
           });
  });
}

FormatDependencies::FormatDependencies(ConditionalFormatRef const& formatRef,
                                       DOM::Table const& table,
                                       ValueContextProvider const& provider)
    : _table(&table), _baseCell(formulaBaseCell(formatRef.first)) {
  DependencyVisitor const visitor(table, provider.getFormulasContextProvider(), _formulas,
                                  _onRanges);
  boost::apply_visitor(visitor, formatRef.second.get().getOperator());
}

FormulaArea FormatDependencies::areaOf(Formulas::Dependencies::Reference const& reference) const {
  return {tableOf(reference, *_table), rangeOf(reference.corners), reference.aspects};
}

void FormatDependencies::appendAreas(std::vector<FormulaArea>& areas) const {
  for (auto const& reference : _formulas.references) {
    if (!reference.aspects.isEmpty()) {
      areas.push_back(areaOf(reference));
    }
  }
}

void FormatDependencies::reach(std::span<ChangedCells const> changes,
                               std::vector<TableRange> const& ranges, Reach& reach) const {
  if (_formulas.onAnyCell && !changes.empty()) {
    reach.areas.insert(reach.areas.end(), ranges.begin(), ranges.end());
    reach.operandsChange = true;
    return;
  }
  for (ChangedCells const& changed : changes) {
    if (changed.table == _table) {
      for (TableRange const& area : changed.fewAreas) {
        addIntersections(area, ranges, reach.areas);
      }
    }
  }
  for (auto const& reference : _formulas.references) {
    if (reference.corners.isRelative()) {
      addDependents(reference, changes, ranges, reach);
    } else if (isFixedReached(reference, *_table, changes)) {
      reach.fixed.push_back(&reference);
      // A part of a formula that no cell moves is evaluated once for all cells.
      reach.operandsChange = true;
    }
  }
}

void FormatDependencies::addDependents(Formulas::Dependencies::Reference const& reference,
                                       std::span<ChangedCells const> changes,
                                       std::vector<TableRange> const& ranges, Reach& reach) const {
  for (ChangedCells const& changed : changes) {
    if (tableOf(reference, *_table) == changed.table) {
      for (TableRange const& area : changed.fewAreas) {
        addDependents(reference, area, ranges, reach.areas);
      }
    }
  }
}

void FormatDependencies::addDependents(Formulas::Dependencies::Reference const& reference,
                                       TableRange const& area,
                                       std::vector<TableRange> const& ranges,
                                       std::vector<TableRange>& areas) const {
  CellIndex const base =
      reference.isFromFirstCell ? CellIndex(RowIndex(0), ColumnIndex(0)) : _baseCell;
  auto const rows =
      findDependentLines(rowsOf(reference.corners), {DOM::Table::rowCount, base.getRow().get()},
                         {area.firstRow, area.endRow});
  if (rows.empty()) {
    return;
  }
  auto const columns = findDependentLines(columnsOf(reference.corners),
                                          {DOM::Table::columnCount, base.getColumn().get()},
                                          {area.firstColumn, area.endColumn});
  for (LineInterval const& row : rows) {
    for (LineInterval const& column : columns) {
      addIntersections({row.first, column.first, row.end, column.end}, ranges, areas);
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
