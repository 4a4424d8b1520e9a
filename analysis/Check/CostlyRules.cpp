#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "analysis/Check/ReferenceChecks.h"
#include "workbook/ConditionFormulas.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

using DOM::Table;
using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;

std::uint64_t positionsOf(TableRange const& range) noexcept {
  return range.isEmpty()
             ? 0
             : std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn);
}

CheckFinding makeFinding(CheckedSheet const& sheet, Workbook::Rule const& rule, CheckCode code,
                         std::string reason) {
  return {.code = code,
          .severity = kindOf(code).severity,
          .sheet = sheet.getIndex(),
          .ranges = rule.ranges,
          .rules = {rule.number},
          .reason = std::move(reason)};
}

/// A range that ends far below or right of the data; a few thousand rows for what is to come are
/// not far. Ranges up to the end of the sheet are meant for whatever comes.
bool isFarBeyond(unsigned long end, unsigned long usedEnd, unsigned long last,
                 unsigned long fewest) noexcept {
  constexpr unsigned long manyTimes = 20;
  return end < last && end > usedEnd + fewest && end > usedEnd * manyTimes;
}

void addRangeBeyondData(CheckedSheet const& sheet, Workbook::Rule const& rule,
                        std::vector<CheckFinding>& findings) {
  constexpr unsigned long fewestRows = 5'000;
  constexpr unsigned long fewestColumns = 500;
  TableRange const bounds = Workbook::findBounds(rule.ranges);
  TableRange const& used = sheet.getUsedRange();
  if (used.isEmpty()) {
    return;
  }
  bool const rows = isFarBeyond(bounds.endRow, used.endRow, Table::rowCount, fewestRows);
  bool const columns =
      isFarBeyond(bounds.endColumn, used.endColumn, Table::columnCount, fewestColumns);
  if (rows || columns) {
    findings.push_back(makeFinding(
        sheet, rule, CheckCode::RangeBeyondData,
        fmt::format("its ranges end at {}, and the data of the sheet at {}",
                    DOM::A1Notation::toAddress(
                        CellIndex(RowIndex(bounds.endRow - 1), ColumnIndex(bounds.endColumn - 1))),
                    DOM::A1Notation::toAddress(
                        CellIndex(RowIndex(used.endRow - 1), ColumnIndex(used.endColumn - 1))))));
  }
}

/// Largest number of cells of one range that a formula reads anew for each cell.
class LargestRange {
public:
  LargestRange(ExprParts const& parts, TableRange const& used)
      : _parts(parts), _used(used), _dependsOnCell(parts.nodes.size()) {}

  /// A call without relative references gives the same for every cell, and needs no reading anew.
  [[nodiscard]] std::uint64_t find() {
    std::vector<std::uint64_t> largest(_parts.nodes.size());
    for (std::size_t i = 0; i < _parts.nodes.size(); ++i) {
      Node const& node = _parts.nodes[i];
      if (node.kind == NodeKind::Reference) {
        CellReference const& reference = _parts.references[node.index];
        _dependsOnCell[i] = reference.isRelative();
        largest[i] = countCells(reference);
      }
      std::uint32_t argument = node.firstArgument;
      for (std::uint32_t count = node.argumentCount; count > 0; --count) {
        largest[i] = std::max(largest[i], largest[argument]);
        _dependsOnCell[i] = _dependsOnCell[i] || _dependsOnCell[argument];
        argument = _parts.nodes[argument].next;
      }
      if (node.kind == NodeKind::Function && !_dependsOnCell[i]) {
        largest[i] = 0;
      }
    }
    return largest.empty() ? 0 : largest.back();
  }

private:
  /// Of the used range. Half of a range that grows with the cell, such as `$A$1:A1`, once it has
  /// grown to the end.
  [[nodiscard]] std::uint64_t countCells(CellReference const& reference) const {
    if (reference.isSingleCell()) {
      return 1;
    }
    bool const grows = reference.firstRowIsRelative != reference.lastRowIsRelative ||
                       reference.firstColumnIsRelative != reference.lastColumnIsRelative;
    TableRange range{std::min(reference.firstRow, reference.lastRow),
                     std::min(reference.firstColumn, reference.lastColumn),
                     std::max(reference.firstRow, reference.lastRow) + 1UL,
                     std::max(reference.firstColumn, reference.lastColumn) + 1UL};
    if (grows && reference.firstRowIsRelative != reference.lastRowIsRelative) {
      range.endRow = std::max(range.endRow, _used.endRow);
    }
    if (grows && reference.firstColumnIsRelative != reference.lastColumnIsRelative) {
      range.endColumn = std::max(range.endColumn, _used.endColumn);
    }
    return positionsOf(intersect(range, _used)) / (grows ? 2 : 1);
  }

  ExprParts const& _parts;
  TableRange const& _used;
  std::vector<bool> _dependsOnCell;
};

/// References to other sheets are counted like those to the own one.
void addQuadraticFormula(CheckedSheet const& sheet, CheckedRule const& rule,
                         std::vector<CheckFinding>& findings) {
  constexpr std::uint64_t fewestCells = 1'000;
  constexpr double fewestReads = 25e6;
  std::uint64_t cells = 0;
  for (TableRange const& range : rule.rule->ranges) {
    cells += positionsOf(intersect(range, sheet.getUsedRange()));
  }
  std::uint64_t perCell = 0;
  for (Expr const* const formula : Workbook::listFormulas(rule.getCondition())) {
    perCell = std::max(perCell, LargestRange(formula->getParts(), sheet.getUsedRange()).find());
  }
  double const reads = static_cast<double>(cells) * static_cast<double>(perCell);
  if (perCell >= fewestCells && cells >= fewestCells && reads >= fewestReads) {
    constexpr double million = 1e6;
    findings.push_back(
        makeFinding(sheet, *rule.rule, CheckCode::QuadraticFormula,
                    fmt::format("for each of {} cells it reads {} cells, about {:.0f} million in "
                                "all",
                                cells, perCell, reads / million)));
  }
}

}  // namespace

void addCostlyRules(CheckedSheet const& sheet, StepCounter& steps,
                    std::vector<CheckFinding>& findings) {
  for (CheckedRule const& rule : sheet.getRules()) {
    steps.count(1 + rule.rule->ranges.size());
    addRangeBeyondData(sheet, *rule.rule, findings);
    addQuadraticFormula(sheet, rule, findings);
  }
}

}  // namespace Zorv::Analysis
