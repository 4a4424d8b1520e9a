#include "Formulas/Evaluation/Lambda.h"

#include <algorithm>
#include <cstddef>

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

std::span<Value> copyLocals(Evaluator& evaluator, Frame const& frame) {
  std::span<Value> const copy = evaluator.arena().makeArray<Value>(frame.locals.size());
  std::ranges::copy(frame.locals, copy.begin());
  return copy;
}

/// Calls a value with arguments that follow each other from a node on.
Value callValue(Evaluator& evaluator, Value const& callee, Frame const& frame,
                std::uint32_t firstArgument, std::uint32_t count, Mode mode) {
  if (!callee.isLambda()) {
    return callee.isError() ? callee : wrongValue();
  }
  std::span<Value> const arguments = evaluator.arena().makeArray<Value>(count);
  std::uint32_t node = firstArgument;
  for (Value& argument : arguments) {
    argument = evaluator.evaluateNode(frame, node, mode);
    node = frame.nodeAt(node).next;
  }
  return callLambda(evaluator, callee.asLambda(), arguments, mode);
}

}  // namespace

Value makeLambda(Evaluator& evaluator, Frame const& frame, std::uint32_t node) {
  Node const& lambda = frame.nodeAt(node);
  std::uint32_t parameter = lambda.firstArgument;
  for (std::uint32_t i = 0; i + 1 < lambda.argumentCount; ++i) {
    if (frame.nodeAt(parameter).kind != NodeKind::LocalName) {
      return Value::error(FormulaErrorCode::Name);
    }
    parameter = frame.nodeAt(parameter).next;
  }
  Frame const captured{frame.parts, frame.offset, copyLocals(evaluator, frame)};
  return Value::lambda(evaluator.arena().make(Lambda{captured, node}));
}

Value callLambda(Evaluator& evaluator, Lambda const& lambda, std::span<Value const> arguments,
                 Mode mode) {
  if (arguments.size() != lambda.parameterCount()) {
    return wrongValue();
  }
  Frame const frame{lambda.frame.parts, lambda.frame.offset, copyLocals(evaluator, lambda.frame)};
  std::uint32_t const first = frame.nodeAt(lambda.node).firstArgument;
  std::uint32_t body = first;
  for (Value const& argument : arguments) {
    frame.locals[frame.nodeAt(body).index] = argument;
    body = frame.nodeAt(body).next;
  }
  // The nodes of the body lie between those of the parameters and its own.
  constexpr std::uint64_t stepsOfCall = 128;
  evaluator.steps().spend(stepsOfCall + (body - first));
  return evaluator.evaluateNode(frame, body, mode);
}

Value evaluateCall(Evaluator& evaluator, Frame const& frame, std::uint32_t node, Mode mode) {
  Node const& call = frame.nodeAt(node);
  Value const callee = evaluator.evaluateNode(frame, call.firstArgument, mode);
  return callValue(evaluator, callee, frame, frame.nodeAt(call.firstArgument).next,
                   call.argumentCount - 1, mode);
}

Value evaluateCallOfName(Evaluator& evaluator, Frame const& frame, Node const& node, Mode mode) {
  Value const callee = evaluator.evaluateDefinedName(frame.parts->texts[node.index],
                                                     *evaluator.context().getTableContext(), mode);
  return callValue(evaluator, callee, frame, node.firstArgument, node.argumentCount, mode);
}

}  // namespace Zorv::Formulas
