#include "Formulas/Tracing/TraceWriter.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/Text/ExprText.h"
#include "Formulas/Tracing/Observers.h"
#include "Formulas/Tracing/ValueSummary.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

bool isNumber(TracedValue const& value) noexcept {
  return value.kind == TracedValue::Kind::Single &&
         value.value.which() == FormulaModel::FormulaValueKind::Number;
}

bool areAlike(TracedValue const& a, TracedValue const& b) {
  return a.kind == b.kind &&
         FormulaModel::FormulaValuesComarator<std::equal_to>()(a.value, b.value);
}

}  // namespace

TraceWriter::TraceWriter(TableContext const& table, CellIndex cell, TraceLimits const& limits,
                         ExprTrace& trace)
    : _table(table), _cell(cell), _limits(limits), _trace(trace) {}

TraceWriter::~TraceWriter() = default;

Expr TraceWriter::addRoot(Expr const& shifted) {
  Expr observed = add(shifted, shifted, 0);
  _trace.text = _formulas.front().texts.back();
  return observed;
}

Expr const* TraceWriter::findObserved(std::string_view name, Expr const& formula) {
  auto const [place, isNew] = _names.try_emplace(&formula);
  if (!isNew || formula.getParts().nodes.empty()) {
    return place->second.get();
  }
  auto const outer = _depths.find(name);
  std::uint32_t const depth = outer == _depths.end() ? 1 : outer->second + 1;
  if (depth > _limits.depth || _chosenCount >= _limits.steps) {
    _trace.isCut = true;
    return nullptr;
  }
  auto const shifted =
      shiftExpr(formula, _table, static_cast<int>(_cell.getColumn().get()),
                static_cast<int>(_cell.getRow().get()), _table.getDocTableIndex(), true);
  place->second = std::make_unique<Expr const>(add(formula, *shifted, depth));
  return place->second.get();
}

Expr TraceWriter::add(Expr const& written, Expr const& shifted, std::uint32_t depth) {
  TraceLimits const left{.steps = _limits.steps - _chosenCount,
                         .depth = _limits.depth - depth,
                         .firstValues = _limits.firstValues};
  ExprParts const& parts = shifted.getParts();
  NodeChoice choice = chooseNodes(parts, left);
  _trace.isCut = _trace.isCut || choice.isCut;
  _chosenCount += static_cast<std::size_t>(std::ranges::count(choice.isChosen, true));
  auto isWanted = choice.isChosen;
  isWanted.back() = isWanted.back() || _formulas.empty();
  auto texts = writeNodes(parts, isWanted);
  std::uint32_t const firstId =
      _formulas.empty()
          ? 0
          : _formulas.back().firstId + static_cast<std::uint32_t>(_formulas.back().isTold.size());
  std::vector<bool> const none(parts.nodes.size(), false);
  Expr observed(addObservers(written.getParts(), choice.isChosen, firstId));
  noteNames(_formulas.emplace_back(
      Formula{parts, std::move(choice), std::move(texts), none, none, depth, firstId}));
  return observed;
}

void TraceWriter::noteNames(Formula const& formula) {
  for (std::uint32_t node = 0; node < formula.parts.nodes.size(); ++node) {
    Node const& entry = formula.parts.nodes[node];
    bool const isName = entry.kind == NodeKind::Name;
    if (formula.choice.isChosen[node] && (isName || entry.kind == NodeKind::UnknownFunction)) {
      auto const text = isName ? formula.parts.names[entry.index].name : entry.index;
      _depths.try_emplace(formula.parts.texts[text], formula.depth + formula.choice.depths[node]);
    }
  }
}

TraceWriter::Formula& TraceWriter::findFormula(std::uint32_t id) {
  return *(std::ranges::upper_bound(_formulas, id, {}, &Formula::firstId) - 1);
}

void TraceWriter::observe(std::uint32_t id, Value const& value) {
  Formula& formula = findFormula(id);
  std::uint32_t const node = id - formula.firstId;
  if (formula.isTold[node]) {
    return;
  }
  formula.isTold[node] = true;
  TraceStep step{std::move(formula.texts[node]), formula.depth + formula.choice.depths[node],
                 summariseValue(value, _limits.firstValues)};
  step.value.isDate = isNumber(step.value) && (step.value.isDate || givesDate(formula, node));
  formula.isDate[node] = step.value.isDate;
  for (TraceStep const& earlier : _trace.steps) {
    if (earlier.text == step.text && areAlike(earlier.value, step.value)) {
      return;
    }
  }
  _trace.steps.push_back(std::move(step));
}

/// True if a number is a date because of how it came about.
bool TraceWriter::givesDate(Formula const& formula, std::uint32_t node) {
  Node const& entry = formula.parts.nodes[node];
  if (auto const* const traits = findTraits(entry)) {
    return traits->givesDate;
  }
  if (entry.kind != NodeKind::Binary) {
    return false;
  }
  bool const isLeftDate = formula.isDate[entry.firstArgument];
  bool const isRightDate = formula.isDate[formula.parts.nodes[entry.firstArgument].next];
  return (entry.op == Operator::Add && isLeftDate != isRightDate) ||
         (entry.op == Operator::Subtract && isLeftDate && !isRightDate);
}

}  // namespace Zorv::Formulas
