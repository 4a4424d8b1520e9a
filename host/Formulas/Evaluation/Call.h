#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Values/Cells.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// One call of a function: its arguments, taken as its signature says, and its surroundings.
class Call {
public:
  Call(Evaluator& evaluator, Frame const& frame, std::uint32_t node, Mode mode,
       std::span<Value const> arguments) noexcept
      : _evaluator(&evaluator), _frame(&frame), _node(node), _mode(mode), _arguments(arguments) {}

  /// How many arguments are given, those left out between commas included.
  [[nodiscard]] std::size_t count() const noexcept { return _arguments.size(); }
  [[nodiscard]] bool has(std::size_t index) const noexcept { return index < count(); }
  /// True for an argument that is given and not left out between commas. Not for converted kinds.
  [[nodiscard]] bool isGiven(std::size_t index) const noexcept {
    return has(index) && !_arguments[index].isMissing();
  }

  [[nodiscard]] std::span<Value const> arguments() const noexcept { return _arguments; }
  [[nodiscard]] Value const& operator[](std::size_t index) const noexcept {
    return _arguments[index];
  }

  // The converted kinds. Each requires that the parameter is of its kind; the second form gives
  // `absent` for an argument that is not there. One left out between commas is 0, "" or false.

  [[nodiscard]] double number(std::size_t index) const noexcept {
    return _arguments[index].asNumber();
  }
  [[nodiscard]] double number(std::size_t index, double absent) const noexcept {
    return has(index) ? number(index) : absent;
  }
  [[nodiscard]] std::string_view text(std::size_t index) const noexcept {
    return _arguments[index].asText();
  }
  [[nodiscard]] std::string_view text(std::size_t index, std::string_view absent) const noexcept {
    return has(index) ? text(index) : absent;
  }
  [[nodiscard]] bool truth(std::size_t index) const noexcept {
    return _arguments[index].asBoolean();
  }
  [[nodiscard]] bool truth(std::size_t index, bool absent) const noexcept {
    return has(index) ? truth(index) : absent;
  }

  /// The value of an argument of the kind Expression, references unread. Each use evaluates it
  /// anew.
  [[nodiscard]] Value evaluate(std::size_t index) const;
  /// The same, with references read: a single value or an array.
  [[nodiscard]] Value evaluateOperand(std::size_t index) const {
    return _evaluator->toOperand(evaluate(index), _mode);
  }
  /// The same as an array; evaluated by element.
  [[nodiscard]] Array const& evaluateArray(std::size_t index) const {
    return _evaluator->toArray(_evaluator->evaluateNode(*_frame, findNode(index), Mode::ByElement));
  }
  /// The index of the call itself in its formula.
  [[nodiscard]] std::uint32_t node() const noexcept { return _node; }
  /// The entry of the tree that an argument is.
  [[nodiscard]] DOM::FormulaSyntaxTree::Node const& nodeOf(std::size_t index) const noexcept;

  [[nodiscard]] Evaluator& evaluator() const noexcept { return *_evaluator; }
  [[nodiscard]] StepMeter& steps() const noexcept { return _evaluator->steps(); }
  [[nodiscard]] Frame const& frame() const noexcept { return *_frame; }
  [[nodiscard]] OfficeUtils::LocaleContext const& locale() const { return _evaluator->locale(); }
  /// A copy of a text as the function's result.
  [[nodiscard]] Value makeText(std::string_view text) const { return _evaluator->makeText(text); }

private:
  [[nodiscard]] std::uint32_t findNode(std::size_t index) const noexcept;

  Evaluator* _evaluator;
  Frame const* _frame;
  std::uint32_t _node;
  Mode _mode;
  std::span<Value const> _arguments;
};

}  // namespace Zorv::Formulas
