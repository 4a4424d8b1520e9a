#include "ConditionalFormatters/Live/CndFrmt_FormatDependencies.h"

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

/// What the conditions of each kind depend on.
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

FormatDependencies::FormatDependencies(ConditionalFormatRef const& formatRef,
                                       DOM::Table const& table,
                                       ValueContextProvider const& provider)
    : _table(&table), _baseCell(formulaBaseCell(formatRef.first)) {
  DependencyVisitor const visitor(table, provider.getFormulasContextProvider(), _formulas,
                                  _onRanges);
  boost::apply_visitor(visitor, formatRef.second.get().getOperator());
}

void FormatDependencies::reach(ChangedCells const& changed, std::vector<TableRange> const& ranges,
                               Reach& reach) const {
  if (_formulas.onAnyCell) {
    reach.areas.insert(reach.areas.end(), ranges.begin(), ranges.end());
    reach.operandsChange = true;
    reach.lookupsChange = true;
    return;
  }
  for (TableRange const& area : changed.fewAreas) {
    if (changed.table == _table) {
      addIntersections(area, ranges, reach.areas);
    }
    for (auto const& reference : _formulas.references) {
      if ((reference.table == nullptr ? _table : reference.table) == changed.table) {
        addDependents(reference, area, ranges, reach);
        reach.lookupsChange = reach.lookupsChange || !reference.corners.isSingleCell();
      }
    }
  }
}

void FormatDependencies::addDependents(Formulas::Dependencies::Reference const& reference,
                                       TableRange const& area,
                                       std::vector<TableRange> const& ranges, Reach& reach) const {
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
      addIntersections({row.first, column.first, row.end, column.end}, ranges, reach.areas);
    }
  }
  // A part of a formula that no cell moves is evaluated once for all cells.
  reach.operandsChange =
      reach.operandsChange || (!columns.empty() && !reference.corners.isRelative());
}

}  // namespace Zorv::ConditionalFormatters
