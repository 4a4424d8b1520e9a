#include "Formulas/Tracing/TraceWriter.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/Text/ExprText.h"
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

void TraceWriter::addRoot(ObservedFormula const& root, KnownParts& known, Expr const& shifted) {
  _known = &known;
  add(root, shifted, 0);
  _trace.text = _formulas.front().texts.back();
}

Expr const* TraceWriter::findObserved(std::string_view name, Expr const& formula) {
  auto const [place, isNew] = _names.try_emplace(&formula);
  if (isNew && !formula.getParts().nodes.empty()) {
    auto const outer = _depths.find(name);
    std::uint32_t const depth = outer == _depths.end() ? 1 : outer->second + 1;
    if (depth > _limits.depth || _chosenCount >= _limits.steps) {
      _trace.isCut = true;
      return nullptr;
    }
    TraceLimits const left{.steps = _limits.steps - _chosenCount,
                           .depth = _limits.depth - depth,
                           .firstValues = _limits.firstValues};
    place->second = std::make_unique<ObservedFormula const>(formula.getParts(), left,
                                                            _formulas.back().observed->getEndId());
    auto const shifted =
        shiftExpr(formula, _table, static_cast<int>(_cell.getColumn().get()),
                  static_cast<int>(_cell.getRow().get()), _table.getDocTableIndex(), true);
    add(*place->second, *shifted, depth);
  }
  return place->second ? &place->second->getObserved() : nullptr;
}

void TraceWriter::add(ObservedFormula const& observed, Expr const& shifted, std::uint32_t depth) {
  NodeChoice const& choice = observed.getChoice();
  _trace.isCut = _trace.isCut || choice.isCut;
  _chosenCount += static_cast<std::size_t>(std::ranges::count(choice.isChosen, true));
  auto isWanted = choice.isChosen;
  isWanted.back() = isWanted.back() || _formulas.empty();
  std::vector<bool> const none(choice.isChosen.size(), false);
  noteNames(_formulas.emplace_back(
      Formula{&observed, writeNodes(shifted.getParts(), isWanted), none, none, depth}));
}

void TraceWriter::noteNames(Formula const& formula) {
  ExprParts const& parts = formula.observed->getParts();
  NodeChoice const& choice = formula.observed->getChoice();
  for (std::uint32_t node = 0; node < parts.nodes.size(); ++node) {
    Node const& entry = parts.nodes[node];
    bool const isName = entry.kind == NodeKind::Name;
    if (choice.isChosen[node] && (isName || entry.kind == NodeKind::UnknownFunction)) {
      auto const text = isName ? parts.names[entry.index].name : entry.index;
      _depths.try_emplace(parts.texts[text], formula.depth + choice.depths[node]);
    }
  }
}

bool TraceWriter::isOfRoot(std::uint32_t id) const noexcept {
  return id < _formulas.front().observed->getEndId();
}

TraceWriter::Formula& TraceWriter::findFormula(std::uint32_t id) {
  auto const firstId = [](Formula const& formula) { return formula.observed->getFirstId(); };
  return *(std::ranges::upper_bound(_formulas, id, {}, firstId) - 1);
}

Value const* TraceWriter::findKnown(std::uint32_t id) {
  if (!isOfRoot(id) || !_known->isWanted(id)) {
    return nullptr;
  }
  KnownParts::Part const* const part = _known->find(id);
  if (part == nullptr) {
    _openCalls.push_back(_told.size());
    return nullptr;
  }
  for (ToldNode const& told : part->told) {
    tell(_formulas.front(), told.node, told.step);
  }
  return &part->value;
}

void TraceWriter::observe(std::uint32_t id, Value const& value) {
  Formula& formula = findFormula(id);
  std::uint32_t const node = id - formula.observed->getFirstId();
  if (!formula.isTold[node]) {
    tell(formula, node, makeStep(formula, node, value));
  }
  if (isOfRoot(id) && _known->isWanted(id)) {
    // Calls end in the order opposite to that in which they begin.
    auto const begin = _told.begin() + static_cast<std::ptrdiff_t>(_openCalls.back());
    _openCalls.pop_back();
    _known->keep(id, value, {begin, _told.end()});
  }
}

TraceStep TraceWriter::makeStep(Formula& formula, std::uint32_t node, Value const& value) const {
  TraceStep step{std::move(formula.texts[node]),
                 formula.depth + formula.observed->getChoice().depths[node],
                 summariseValue(value, _limits.firstValues)};
  step.value.isDate = isNumber(step.value) && (step.value.isDate || givesDate(formula, node));
  return step;
}

void TraceWriter::tell(Formula& formula, std::uint32_t node, TraceStep step) {
  formula.isTold[node] = true;
  formula.isDate[node] = step.value.isDate;
  if (!_openCalls.empty()) {
    _told.push_back({node, step});
  }
  for (TraceStep const& earlier : _trace.steps) {
    if (earlier.text == step.text && areAlike(earlier.value, step.value)) {
      return;
    }
  }
  _trace.steps.push_back(std::move(step));
}

/// True if a number is a date because of how it came about.
bool TraceWriter::givesDate(Formula const& formula, std::uint32_t node) {
  auto const& nodes = formula.observed->getParts().nodes;
  Node const& entry = nodes[node];
  if (auto const* const traits = findTraits(entry)) {
    return traits->givesDate;
  }
  if (entry.kind != NodeKind::Binary) {
    return false;
  }
  bool const isLeftDate = formula.isDate[entry.firstArgument];
  bool const isRightDate = formula.isDate[nodes[entry.firstArgument].next];
  return (entry.op == Operator::Add && isLeftDate != isRightDate) ||
         (entry.op == Operator::Subtract && isLeftDate && !isRightDate);
}

}  // namespace Zorv::Formulas
