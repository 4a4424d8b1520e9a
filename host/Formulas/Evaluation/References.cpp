#include "Formulas/Evaluation/References.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

#include "Formulas/Evaluation/SheetRange.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::Operator;

// So that moving around an edge is taking bits.
static_assert((DOM::Table::rowCount & (DOM::Table::rowCount - 1)) == 0);
static_assert((DOM::Table::columnCount & (DOM::Table::columnCount - 1)) == 0);

template <unsigned long size>
std::uint32_t move(std::uint32_t position, bool isRelative, long offset) noexcept {
  if (!isRelative) {
    return position;
  }
  return static_cast<std::uint32_t>((position + static_cast<unsigned long>(offset)) & (size - 1));
}

constexpr auto moveRow = move<DOM::Table::rowCount>;
constexpr auto moveColumn = move<DOM::Table::columnCount>;

/// How many areas a union may have.
constexpr std::size_t mostAreas = 65'536;

Value makeReference(Arena& arena, std::span<Area const> areas) {
  if (areas.empty()) {
    return Value::error(FormulaErrorCode::Null);
  }
  return areas.size() == 1 ? Value::reference(areas.front())
                           : Value::references(arena.make(AreaList{areas.data(), areas.size()}));
}

/// The cells of a reference whose relative corners are moved.
Area areaOf(CellReference const& reference, Offset offset, TableContext const* table) {
  auto const rows =
      std::minmax({moveRow(reference.firstRow, reference.firstRowIsRelative, offset.rows),
                   moveRow(reference.lastRow, reference.lastRowIsRelative, offset.rows)});
  auto const columns = std::minmax(
      {moveColumn(reference.firstColumn, reference.firstColumnIsRelative, offset.columns),
       moveColumn(reference.lastColumn, reference.lastColumnIsRelative, offset.columns)});
  return {table, rows.first, columns.first, rows.second + 1, columns.second + 1};
}

/// The same cells of each sheet of a range; `#REF!` where the text names none.
Value resolveOverSheets(Evaluator& evaluator, std::string_view sheets, Area const& area) {
  auto const tables = findSheetRange(evaluator.provider(), sheets);
  if (tables.empty()) {
    return Value::error(FormulaErrorCode::Reference);
  }
  evaluator.steps().spend(tables.size());
  std::span<Area> const areas = evaluator.arena().makeArray<Area>(tables.size());
  std::ranges::transform(tables, areas.begin(), [&](TableContext const* table) {
    Area ofSheet = area;
    ofSheet.table = table;
    return ofSheet;
  });
  return makeReference(evaluator.arena(), areas);
}

/// The smallest area that holds two references.
Value enclose(std::span<Area const> left, std::span<Area const> right) noexcept {
  Area result = left.front();
  auto const include = [&](Area const& area) {
    result.firstRow = std::min(result.firstRow, area.firstRow);
    result.firstColumn = std::min(result.firstColumn, area.firstColumn);
    result.endRow = std::max(result.endRow, area.endRow);
    result.endColumn = std::max(result.endColumn, area.endColumn);
    return area.table == result.table;
  };
  bool const isOneTable = std::ranges::all_of(left, include) && std::ranges::all_of(right, include);
  return isOneTable ? Value::reference(result) : Value::error(FormulaErrorCode::Value);
}

Value intersect(Arena& arena, std::span<Area const> left, std::span<Area const> right) {
  arena.steps().spend(left.size() * right.size());
  std::span<Area> const results = arena.makeArray<Area>(left.size() * right.size());
  std::size_t count = 0;
  for (Area const& a : left) {
    for (Area const& b : right) {
      TableRange const common = Zorv::intersect(a.toTableRange(), b.toTableRange());
      if (a.table == b.table && !common.isEmpty()) {
        results[count++] = Area::of(*a.table, common);
      }
    }
  }
  return makeReference(arena, results.first(count));
}

Value unite(Arena& arena, std::span<Area const> left, std::span<Area const> right) {
  if (left.size() + right.size() > mostAreas) {
    throw EvaluationLimitError(fmt::format("the formula needs more than {} areas", mostAreas));
  }
  std::span<Area> const results = arena.makeArray<Area>(left.size() + right.size());
  std::ranges::copy(right, std::ranges::copy(left, results.begin()).out);
  return makeReference(arena, results);
}

}  // namespace

TableContext const* resolveSheet(Evaluator const& evaluator, Frame const& frame,
                                 std::uint32_t sheetText) {
  if (sheetText == noIndex) {
    return evaluator.context().getTableContext();
  }
  std::string const& name = frame.parts->texts[sheetText];
  return name.empty() ? nullptr : evaluator.provider().findTableContext(name);
}

Value resolveReference(Evaluator& evaluator, Frame const& frame, CellReference const& reference) {
  TableContext const* const table = resolveSheet(evaluator, frame, reference.sheet);
  Area const area = areaOf(reference, frame.offset, table);
  return table != nullptr ? Value::reference(area)
                          : resolveOverSheets(evaluator, frame.parts->texts[reference.sheet], area);
}

Value readOwnCell(Evaluator const& evaluator, Frame const& frame, CellReference const& reference) {
  std::uint32_t const row =
      moveRow(reference.firstRow, reference.firstRowIsRelative, frame.offset.rows);
  std::uint32_t const column =
      moveColumn(reference.firstColumn, reference.firstColumnIsRelative, frame.offset.columns);
  DOM::Cell const* const cell = evaluator.findOwnCell(row, column);
  return cell == nullptr ? Value() : fromFormulaValue(cell->value);
}

std::span<Area const> areasOf(Value const& value) noexcept {
  if (value.isReference()) {
    return {&value.asArea(), 1};
  }
  return value.isReferences() ? std::span(value.asAreas().areas, value.asAreas().count)
                              : std::span<Area const>();
}

Value combineReferences(Arena& arena, Operator op, Value const& left, Value const& right) {
  if (left.isError() || right.isError()) {
    return left.isError() ? left : right;
  }
  std::span<Area const> const leftAreas = areasOf(left);
  std::span<Area const> const rightAreas = areasOf(right);
  if (leftAreas.empty() || rightAreas.empty()) {
    return Value::error(FormulaErrorCode::Value);
  }
  switch (op) {
    case Operator::Range:
      return enclose(leftAreas, rightAreas);
    case Operator::Intersection:
      return intersect(arena, leftAreas, rightAreas);
    default:
      return unite(arena, leftAreas, rightAreas);
  }
}

}  // namespace Zorv::Formulas
