#include "Formulas/Evaluation/FunctionCall.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <new>
#include <span>

#include "Formulas/Evaluation/ByElement.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Node;

bool isSingle(Parameter parameter) noexcept { return parameter <= Parameter::ValueOrError; }

/// An argument on its way to the function.
Value evaluateArgument(Evaluator& evaluator, Frame const& frame, std::uint32_t node, Mode mode,
                       Parameter parameter) {
  switch (parameter) {
    case Parameter::Expression:
      return Value::missing();
    case Parameter::Range:
      return evaluator.evaluateNode(frame, node, mode);
    case Parameter::Array:
      return evaluator.evaluateNode(frame, node, Mode::ByElement);
    default:
      return evaluator.evaluateOperand(frame, node, mode);
  }
}

/// Wraps the text, which has been converted already, in a value.
Value fromText(Outcome<std::string_view> const& text) {
  return text.isError() ? text.error() : Value::text(*text);
}

Value fromTruth(Outcome<bool> const& truth) {
  return truth.isError() ? truth.error() : Value::boolean(*truth);
}

Value fromNumber(Outcome<double> const& number) {
  return number.isError() ? number.error() : Value::number(*number);
}

/// A single argument as its parameter demands it; an error that the function must not see is the
/// result.
Value convert(Evaluator& evaluator, Value const& argument, Parameter parameter) {
  switch (parameter) {
    case Parameter::Number:
      evaluator.steps().spend(argument.isText() ? stepsOfReading(argument.asText()) : 0);
      return fromNumber(toNumber(argument, evaluator.locale()));
    case Parameter::Text:
      evaluator.steps().spend(argument.isText() ? stepsOfBytes(argument.asText().size()) : 0);
      return fromText(evaluator.toText(argument));
    case Parameter::Truth:
      return fromTruth(toTruth(argument));
    default:
      return argument;
  }
}

/// True for an argument that needs no conversion.
bool isOfKind(Value const& argument, Parameter parameter) noexcept {
  return parameter == Parameter::Number ? argument.isNumber()
                                        : parameter == Parameter::Truth && argument.isBoolean();
}

bool isRefused(Value const& argument, Parameter parameter) noexcept {
  return argument.isError() && parameter < Parameter::ValueOrError;
}

/// Calls the function with arguments none of which is an array in the place of a single value.
Value callOnce(Evaluator& evaluator, FunctionEntry const& entry, Frame const& frame,
               std::uint32_t node, Mode mode, std::span<Value> arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    Parameter const parameter = entry.signature.at(i);
    if (!isSingle(parameter) || isOfKind(arguments[i], parameter)) {
      continue;
    }
    arguments[i] = convert(evaluator, arguments[i], parameter);
    if (isRefused(arguments[i], parameter)) {
      return arguments[i];
    }
  }
  Call call(evaluator, frame, node, mode, arguments);
  return entry.calculate(call);
}

/// Calls the function for each element of the arrays that are arguments for single values.
Value callByElement(Evaluator& evaluator, FunctionEntry const& entry, Frame const& frame,
                    std::uint32_t node, Mode mode, std::span<Value const> arguments) {
  std::span<Value> const spread = evaluator.arena().makeArray<Value>(arguments.size());
  std::span<Value> const current = evaluator.arena().makeArray<Value>(arguments.size());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    spread[i] = isSingle(entry.signature.at(i)) ? arguments[i] : Value::missing();
  }
  return mapElements(evaluator, spread, [&](std::span<Value const> elements) {
    constexpr std::uint64_t stepsOfCall = 8;
    evaluator.steps().spend(stepsOfCall);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      current[i] = isSingle(entry.signature.at(i)) ? elements[i] : arguments[i];
    }
    return callOnce(evaluator, entry, frame, node, mode, current);
  });
}

/// True where the arguments determine the result, and are areas that numbers may follow. (A number
/// that comes first is usually a search key, another one for each cell.)
bool isDeterminedByAreas(FunctionEntry const& entry, std::span<Value const> arguments) noexcept {
  FunctionTraits const& traits = entry.traits;
  if (traits.isVolatile || traits.dependsOnCell || traits.returnsReference || arguments.empty() ||
      arguments.size() > InlineList<CallArgument>::capacity || !arguments.front().isReference()) {
    return false;
  }
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    Parameter const parameter = entry.signature.at(i);
    bool const isArea = arguments[i].isReference() && !isSingle(parameter);
    if (!isArea && !(arguments[i].isNumber() && parameter == Parameter::Number)) {
      return false;
    }
  }
  return true;
}

/// Calls the function, or takes its earlier result for the same areas.
Value callOrReuse(Evaluator& evaluator, FunctionEntry const& entry, Frame const& frame,
                  std::uint32_t node, Mode mode, std::span<Value> arguments) {
  auto const calculate = [&] { return callOnce(evaluator, entry, frame, node, mode, arguments); };
  LookupSession* const lookups = evaluator.lookups();
  if (lookups != nullptr && isDeterminedByAreas(entry, arguments)) {
    std::uint16_t const function = frame.nodeAt(node).function;
    if (auto const result = lookups->getOrCompute(function, arguments, std::cref(calculate))) {
      return *result;
    }
  }
  return calculate();
}

Value callWith(Evaluator& evaluator, Frame const& frame, std::uint32_t node, Mode mode,
               std::span<Value> arguments) {
  Node const& entryNode = frame.nodeAt(node);
  FunctionEntry const& entry = evaluator.functions().at(entryNode.function);
  bool isByElement = false;
  std::uint32_t argument = entryNode.firstArgument;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    Parameter const parameter = entry.signature.at(i);
    // Made in its place: a value that was just written in parts is slow to copy.
    ::new (&arguments[i]) Value(evaluateArgument(evaluator, frame, argument, mode, parameter));
    if (arguments[i].isLambda()) {
      // The functions of the engine take functions as expressions only.
      arguments[i] = Value::error(FormulaErrorCode::Calculation);
    }
    isByElement = isByElement || (isSingle(parameter) && arguments[i].isArray());
    argument = frame.nodeAt(argument).next;
  }
  return isByElement ? callByElement(evaluator, entry, frame, node, mode, arguments)
                     : callOrReuse(evaluator, entry, frame, node, mode, arguments);
}

}  // namespace

Value callFunction(Evaluator& evaluator, Frame const& frame, std::uint32_t node, Mode mode) {
  constexpr std::size_t fewArguments = 4;
  std::uint32_t const count = frame.nodeAt(node).argumentCount;
  if (count <= fewArguments) {
    // Room for values that are made when they are evaluated.
    alignas(Value) std::array<std::byte, fewArguments * sizeof(Value)> room;
    return callWith(evaluator, frame, node, mode, {reinterpret_cast<Value*>(room.data()), count});
  }
  return callWith(evaluator, frame, node, mode, evaluator.arena().makeArray<Value>(count));
}

}  // namespace Zorv::Formulas
