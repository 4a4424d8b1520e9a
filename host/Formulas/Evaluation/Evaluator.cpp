#include "Formulas/Evaluation/Evaluator.h"

#include <array>

#include <fmt/format.h>

#include "Formulas/Evaluation/ByElement.h"
#include "Formulas/Evaluation/FunctionCall.h"
#include "Formulas/Evaluation/Lambda.h"
#include "Formulas/Evaluation/Operators.h"
#include "Formulas/Evaluation/References.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/Text/Texts.h"
#include "Formulas/Values/Cells.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

/// How deeply a formula may nest, together with those of the defined names that it uses.
constexpr std::uint32_t maximalDepth = 512;

/// How many characters a cell may hold.
constexpr std::size_t maximalTextLength = 32767;

/// Not inlined: its message would cost each evaluation of a node a larger stack frame.
[[noreturn]] [[gnu::noinline]] void failDepth() {
  throw EvaluationLimitError(fmt::format(
      "the formula nests deeper than {} levels, its defined names included", maximalDepth));
}

/// A level of nesting. It ends by itself, so that a value can be returned in its place: a copy of
/// what was just stored in parts would wait for the stores.
class Level {
public:
  explicit Level(std::uint32_t& depth) : _depth(depth) {
    if (depth == maximalDepth) {
      failDepth();
    }
    ++_depth;
  }
  Level(Level const&) = delete;
  Level& operator=(Level const&) = delete;
  ~Level() { --_depth; }

private:
  std::uint32_t& _depth;
};

}  // namespace

OfficeUtils::DateTime Evaluator::now() const {
  return OfficeUtils::readNow(_workspace->moment, _provider->getTimeZone(), locale());
}

OfficeUtils::Clock::TimePoint Evaluator::readMoment() const {
  return _workspace->moment != nullptr ? _workspace->moment->getTimePoint()
                                       : OfficeUtils::PinnedMoment::readMoment();
}

Value Evaluator::evaluate(ExprParts const& parts, Offset offset, Mode mode) {
  if (parts.nodes.empty()) {
    return {};
  }
  steps().spend(parts.nodes.size());
  Frame const frame{&parts, offset, arena().makeArray<Value>(parts.localNames.size())};
  return evaluateNode(frame, static_cast<std::uint32_t>(parts.nodes.size() - 1), mode);
}

Value Evaluator::evaluateNode(Frame const& frame, std::uint32_t node, Mode mode) {
  Node const& entry = frame.nodeAt(node);
  if (entry.kind == NodeKind::Reference) {
    return resolveReference(*this, frame, frame.parts->references[entry.index]);
  }
  if (entry.argumentCount == 0 && entry.kind < NodeKind::Name) {
    return evaluateLeaf(frame, entry);
  }
  Level const level(_depth);
  return evaluateInner(frame, node, mode);
}

Value Evaluator::evaluateInner(Frame const& frame, std::uint32_t node, Mode mode) {
  Node const& entry = frame.nodeAt(node);
  switch (entry.kind) {
    case NodeKind::Function:
      return callFunction(*this, frame, node, mode);
    case NodeKind::Unary:
      return evaluateUnary(frame, entry, mode);
    case NodeKind::Binary:
      return isReferenceOperator(entry.op) ? evaluateReferenceOperator(frame, entry, mode)
                                           : evaluateValueOperators(frame, node, mode);
    case NodeKind::Name:
      return evaluateName(frame, entry, mode);
    case NodeKind::ArrayConstant:
      return evaluateArrayConstant(frame, entry);
    case NodeKind::Call:
      return evaluateCall(*this, frame, node, mode);
    default:
      return evaluateCallOfName(*this, frame, entry, mode);
  }
}

Value Evaluator::evaluateLeaf(Frame const& frame, Node const& node) const {
  switch (node.kind) {
    case NodeKind::Number:
      return Value::number(node.number);
    case NodeKind::Text:
      return Value::text(frame.parts->texts[node.index]);
    case NodeKind::Boolean:
      return Value::boolean(node.index != 0);
    case NodeKind::Error:
      return Value::error(static_cast<FormulaErrorCode>(node.index));
    case NodeKind::Missing:
      return Value::missing();
    case NodeKind::StructuredReference:
      return resolveStructuredReference(*this, frame,
                                        frame.parts->structuredReferences[node.index]);
    case NodeKind::LocalName:
      return frame.locals[node.index];
    default:
      return {};
  }
}

Value Evaluator::evaluateOperand(Frame const& frame, std::uint32_t node, Mode mode) {
  Node const& entry = frame.nodeAt(node);
  if (entry.kind == NodeKind::Number) {
    return Value::number(entry.number);
  }
  if (entry.kind == NodeKind::Reference) {
    // Most operands are single cells of the formula's own table.
    auto const& reference = frame.parts->references[entry.index];
    if (reference.isSingleCell() && reference.sheet == DOM::FormulaSyntaxTree::noIndex) {
      return readOwnCell(*this, frame, reference);
    }
  }
  Value value = evaluateNode(frame, node, mode);
  if (value.needsReading()) {
    value = toOperand(value, mode);
  }
  return value;
}

Value Evaluator::toOperand(Value const& value, Mode mode) {
  if (value.isReference()) {
    Area const& area = value.asArea();
    if (area.isSingleCell()) {
      return readCell(area, 0, 0);
    }
    return mode == Mode::ByElement ? Value::array(toArray(value)) : intersect(area);
  }
  if (value.isLambda()) {
    return Value::error(FormulaErrorCode::Calculation);
  }
  return value.isReferences() ? Value::error(FormulaErrorCode::Value) : value;
}

Array const& Evaluator::toArray(Value const& value) {
  if (value.isArray()) {
    return value.asArray();
  }
  if (value.isReference()) {
    return readArray(arena(), value.asArea());
  }
  Value const single = toOperand(value, Mode::Single);
  return arena().make(Array{1, 1, 1, &arena().make(single)});
}

Outcome<std::string_view> Evaluator::toText(Value const& value) {
  switch (value.kind()) {
    case Value::Kind::Text:
      return value.asText();
    case Value::Kind::Number:
      return writeNumber(value.asNumber());
    case Value::Kind::Boolean:
      return std::string_view(value.asBoolean() ? "TRUE" : "FALSE");
    case Value::Kind::Empty:
    case Value::Kind::Missing:
      return std::string_view();
    case Value::Kind::Error:
      return value.asError();
    default:
      return FormulaErrorCode::Value;
  }
}

std::string_view Evaluator::writeNumber(double number) {
  constexpr std::uint64_t stepsOfWriting = 32;
  steps().spend(stepsOfWriting);
  FormulaValue const value = FormulaModel::FormulaNumber{FloatNumber(number)};
  return arena().copyText(OfficeUtils::FormulaValueCast::toString(value, locale(), nullptr));
}

Value Evaluator::makeText(std::string_view text) { return checkText(arena().copyText(text)); }

Value Evaluator::checkText(std::string_view text) noexcept {
  bool const isTooLong =
      text.size() > maximalTextLength && countCharacters(text) > maximalTextLength;
  return isTooLong ? Value::error(FormulaErrorCode::Value) : Value::text(text);
}

Value Evaluator::intersect(Area const& area) const {
  bool const holdsRow = area.firstRow <= row() && row() < area.endRow;
  bool const holdsColumn = area.firstColumn <= column() && column() < area.endColumn;
  if (area.width() == 1 && holdsRow) {
    return readCell(area, row() - area.firstRow, 0);
  }
  if (area.height() == 1 && holdsColumn) {
    return readCell(area, 0, column() - area.firstColumn);
  }
  return Value::error(FormulaErrorCode::Value);
}

Value Evaluator::evaluateUnary(Frame const& frame, Node const& node, Mode mode) {
  switch (node.op) {
    case Operator::Spill:
      // Where the array of a cell's formula ends is not known here.
      return Value::error(FormulaErrorCode::Reference);
    case Operator::Single:
      return evaluateOperand(frame, node.firstArgument, Mode::Single);
    case Operator::Plus:
      return evaluateNode(frame, node.firstArgument, mode);
    default:
      break;
  }
  Value const argument = evaluateOperand(frame, node.firstArgument, mode);
  if (!argument.isArray()) {
    return applyUnary(node.op, argument, *this);
  }
  return mapArray(arena(), argument.asArray(),
                  [&](Value const& element) { return applyUnary(node.op, element, *this); });
}

/// Walks along a chain of operators, from the operand furthest to the left upwards.
Value Evaluator::evaluateValueOperators(Frame const& frame, std::uint32_t node, Mode mode) {
  std::uint32_t at = node;
  while (isValueOperator(frame.nodeAt(at))) {
    at = frame.nodeAt(at).firstArgument;
  }
  Value value = evaluateOperand(frame, at, mode);
  while (true) {
    std::uint32_t const rightNode = frame.nodeAt(at).next;
    at = frame.nodeAt(rightNode).next;
    Value const right = evaluateOperand(frame, rightNode, mode);
    if (at == node) {
      return combine(frame.nodeAt(at).op, value, right);
    }
    value = combine(frame.nodeAt(at).op, value, right);
  }
}

Value Evaluator::combine(Operator op, Value const& left, Value const& right) {
  if (!left.isArray() && !right.isArray()) {
    return applyBinary(op, left, right, *this);
  }
  std::array operands = {left, right};
  return mapElements(*this, operands, [&](std::span<Value const> elements) {
    return applyBinary(op, elements[0], elements[1], *this);
  });
}

Value Evaluator::evaluateReferenceOperator(Frame const& frame, Node const& node, Mode mode) {
  Value const left = evaluateNode(frame, node.firstArgument, mode);
  Value const right = evaluateNode(frame, frame.nodeAt(node.firstArgument).next, mode);
  Value const result = combineReferences(arena(), node.op, left, right);
  if (node.op == Operator::Range && result.isReference()) {
    // What lies between the two is in neither; ranges of plain corners are parsed as one reference.
    _dependencies->add(result.asArea().table->getDocTableIndex(), result.asArea().toTableRange());
  }
  return result;
}

Value Evaluator::evaluateArrayConstant(Frame const& frame, Node const& node) {
  std::span<Value> const values = arena().makeArray<Value>(node.argumentCount);
  std::uint32_t argument = node.firstArgument;
  for (Value& value : values) {
    value = evaluateLeaf(frame, frame.nodeAt(argument));
    argument = frame.nodeAt(argument).next;
  }
  std::uint32_t const rows = node.index;
  return Value::array(arena().make(Array{rows, node.argumentCount / rows, rows, values.data()}));
}

Value Evaluator::evaluateName(Frame const& frame, Node const& node, Mode mode) {
  auto const& name = frame.parts->names[node.index];
  TableContext const* const table = resolveSheet(*this, frame, name.sheet);
  if (table == nullptr) {
    return Value::error(FormulaErrorCode::Reference);
  }
  return evaluateDefinedName(frame.parts->texts[name.name], *table, mode);
}

Value Evaluator::evaluateDefinedName(std::string_view name, TableContext const& table, Mode mode) {
  constexpr std::uint64_t stepsOfSearch = 32;
  steps().spend(stepsOfSearch);
  auto const* const expr = _provider->findDefinedName(name, table.getDocTableIndex());
  if (expr == nullptr) {
    return Value::error(FormulaErrorCode::Name);
  }
  // Names are written as seen from the sheet's first cell.
  Offset const offset{static_cast<long>(row()), static_cast<long>(column())};
  return evaluate(expr->getParts(), offset, mode);
}

}  // namespace Zorv::Formulas
