#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "analysis/Check/ReferenceChecks.h"
#include "workbook/ConditionFormulas.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

using DOM::Table;
using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::Operator;

/// Distance from the base cell to a relative reference. Files write a reference beyond one edge as
/// one at the other edge, so the shorter way is meant.
long findShortestDistance(std::uint32_t position, unsigned long base,
                          unsigned long count) noexcept {
  auto const size = static_cast<long>(count);
  long const distance = static_cast<long>(position) - static_cast<long>(base);
  return distance > size / 2 ? distance - size : distance < -size / 2 ? distance + size : distance;
}

/// A whole row or column stays inside the sheet wherever it moves.
bool isWholeRowOrColumn(CellReference const& reference) noexcept {
  return (reference.firstRow == 0 && reference.lastRow == Table::rowCount - 1) ||
         (reference.firstColumn == 0 && reference.lastColumn == Table::columnCount - 1);
}

/// Looks at the relative references of one rule.
class ReferenceAuditor {
public:
  ReferenceAuditor(CheckedRule const& rule, CheckedSheet const& sheet, StepCounter& steps,
                   std::vector<CheckFinding>& findings)
      : _rule(*rule.rule),
        _condition(rule.getCondition()),
        _sheet(sheet),
        _steps(steps),
        _findings(findings),
        _base(Workbook::findBaseCell(_rule.ranges)) {}

  void run() {
    for (Expr const* const formula : Workbook::listFormulas(_condition)) {
      for (CellReference const& reference : formula->getParts().references) {
        if (reference.isRelative() && !isWholeRowOrColumn(reference)) {
          checkEdges(reference);
        }
      }
      checkWandering(*formula);
    }
  }

private:
  /// The cells with data for which a relative reference leaves the sheet.
  void checkEdges(CellReference const& reference) {
    TableRange const data = intersect(Workbook::findBounds(_rule.ranges), _sheet.getUsedRange());
    if (data.isEmpty() || _hasEdgeFinding) {
      return;
    }
    long lowestRow = 0;
    long lowestColumn = 0;
    if (reference.firstRowIsRelative) {
      lowestRow = findShortestDistance(reference.firstRow, _base.getRow().get(), Table::rowCount);
    }
    if (reference.firstColumnIsRelative) {
      lowestColumn =
          findShortestDistance(reference.firstColumn, _base.getColumn().get(), Table::columnCount);
    }
    if (static_cast<long>(data.firstRow) + lowestRow < 0) {
      addEdge(data, "above the first row", "the last row");
    } else if (static_cast<long>(data.firstColumn) + lowestColumn < 0) {
      addEdge(data, "left of the first column", "the last column");
    }
  }

  void addEdge(TableRange const& data, char const* edge, char const* otherEdge) {
    _hasEdgeFinding = true;
    CellIndex const first{RowIndex(data.firstRow), ColumnIndex(data.firstColumn)};
    add(CheckCode::OffSheetReference,
        fmt::format("for {} a relative reference lies {}, and is taken from {}",
                    DOM::A1Notation::toAddress(first), edge, otherEdge));
  }

  void checkWandering(Expr const& formula) {
    for (CellReference const& reference : formula.getParts().references) {
      if (isOwnRangeMoving(reference)) {
        addWandering(reference, "is the rule's own range for the first cell, and moves with each");
        return;
      }
    }
    if (auto const bound = findBound(formula); bound && isFilledForFirstCellAlone(*bound)) {
      addWandering(*bound, "has a value for the first cell, and is empty for all others");
    }
  }

  /// `A1>AVERAGE(A1:A9)` on A1:A9.
  [[nodiscard]] bool isOwnRangeMoving(CellReference const& reference) const {
    constexpr unsigned long fewest = 3;
    if (_rule.ranges.size() != 1 || reference.sheet != noIndex || reference.isSingleCell()) {
      return false;
    }
    TableRange const& own = _rule.ranges.front();
    bool const sameRows = reference.firstRow == own.firstRow && reference.lastRow + 1 == own.endRow;
    bool const sameColumns =
        reference.firstColumn == own.firstColumn && reference.lastColumn + 1 == own.endColumn;
    bool const rowsMove = reference.firstRowIsRelative && reference.lastRowIsRelative &&
                          own.endRow - own.firstRow >= fewest;
    bool const columnsMove = reference.firstColumnIsRelative && reference.lastColumnIsRelative &&
                             own.endColumn - own.firstColumn >= fewest;
    return sameRows && sameColumns && (rowsMove || columnsMove);
  }

  /// The cell that each cell is compared with: the operand of a comparison, or the other side of
  /// the tested cell in `A2>F1`.
  [[nodiscard]] std::optional<CellReference> findBound(Expr const& formula) const {
    auto const& parts = formula.getParts();
    Node const& root = parts.nodes.back();
    if (!isFormulaCondition()) {
      return asSingleCell(parts, root);
    }
    bool const isComparison = root.kind == NodeKind::Binary && Operator::Equal <= root.op &&
                              root.op <= Operator::GreaterOrEqual;
    if (!isComparison) {
      return std::nullopt;
    }
    Node const& left = parts.nodes[root.firstArgument];
    auto const first = asSingleCell(parts, left);
    auto const second = asSingleCell(parts, parts.nodes[left.next]);
    if (!first || !second) {
      return std::nullopt;
    }
    return isTestedCell(*first) ? second : isTestedCell(*second) ? first : std::nullopt;
  }

  [[nodiscard]] bool isFormulaCondition() const noexcept {
    auto const* const unary = boost::get<DOM::UnaryConditionalFormatOperator>(&_condition);
    return unary != nullptr && unary->getType() == DOM::UnaryConditionalFormatType::FormulaIsTrue;
  }

  [[nodiscard]] static std::optional<CellReference> asSingleCell(
      DOM::FormulaSyntaxTree::ExprParts const& parts, Node const& node) {
    return node.kind == NodeKind::Reference && parts.references[node.index].isSingleCell()
               ? std::optional(parts.references[node.index])
               : std::nullopt;
  }

  [[nodiscard]] bool isTestedCell(CellReference const& reference) const noexcept {
    return reference.firstRow == _base.getRow().get() &&
           reference.firstColumn == _base.getColumn().get() && reference.sheet == noIndex;
  }

  /// True for a bound that moves down a column, or along a row, off its only value, while the cells
  /// that are compared with it go on. Looks at the first range.
  [[nodiscard]] bool isFilledForFirstCellAlone(CellReference const& bound) {
    if (bound.sheet != noIndex || isTestedCell(bound)) {
      return false;
    }
    TableRange const own = intersect(_rule.ranges.front(), _sheet.getUsedRange());
    bool const isColumn = own.endColumn - own.firstColumn == 1 && bound.firstRowIsRelative;
    bool const isRow = own.endRow - own.firstRow == 1 && bound.firstColumnIsRelative;
    if (own.isEmpty() || (!isColumn && !isRow) || own.firstRow != _base.getRow().get() ||
        own.firstColumn != _base.getColumn().get()) {
      return false;
    }
    unsigned long const length =
        isColumn ? own.endRow - own.firstRow : own.endColumn - own.firstColumn;
    TableRange const rest{
        bound.firstRow + (isColumn ? 1UL : 0UL), bound.firstColumn + (isColumn ? 0UL : 1UL),
        bound.firstRow + (isColumn ? length : 1UL), bound.firstColumn + (isColumn ? 1UL : length)};
    constexpr std::size_t fewest = 3;
    return hasValue(bound) && countValues(rest) == 0 && countValues(own) > fewest;
  }

  [[nodiscard]] bool hasValue(CellReference const& cell) const {
    DOM::Cell const* const found = _sheet.getTable().findCell(cell.firstRow, cell.firstColumn);
    return found != nullptr && !FormulaModel::isFormulaEmpty(found->value);
  }

  [[nodiscard]] std::size_t countValues(TableRange const& range) {
    std::size_t count = 0;
    auto const [begin, end] = _sheet.getTable().getRangeIterators(range);
    for (auto cell = begin; cell != end; ++cell) {
      _steps.count();
      count += FormulaModel::isFormulaEmpty(cell.getCellInfo().getCell()->value) ? 0 : 1;
    }
    return count;
  }

  void addWandering(CellReference const& reference, char const* problem) {
    TableRange const range{reference.firstRow, reference.firstColumn, reference.lastRow + 1UL,
                           reference.lastColumn + 1UL};
    add(CheckCode::WanderingReference,
        fmt::format("{} {}", DOM::A1Notation::toAddress(range), problem));
  }

  void add(CheckCode code, std::string reason) {
    _findings.push_back({.code = code,
                         .severity = kindOf(code).severity,
                         .sheet = _sheet.getIndex(),
                         .ranges = _rule.ranges,
                         .rules = {_rule.number},
                         .reason = std::move(reason)});
  }

  Workbook::Rule const& _rule;
  DOM::ConditionalFormatOperator const& _condition;
  CheckedSheet const& _sheet;
  StepCounter& _steps;
  std::vector<CheckFinding>& _findings;
  CellIndex _base;
  bool _hasEdgeFinding = false;
};

}  // namespace

void addMovingReferences(CheckedSheet const& sheet, StepCounter& steps,
                         std::vector<CheckFinding>& findings) {
  for (CheckedRule const& rule : sheet.getRules()) {
    steps.count(1 + rule.rule->ranges.size());
    ReferenceAuditor(rule, sheet, steps, findings).run();
  }
}

}  // namespace Zorv::Analysis
