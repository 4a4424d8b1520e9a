#include "Formulas/Evaluation/Call.h"

namespace Zorv::Formulas {

Value Call::evaluate(std::size_t index) const {
  return _evaluator->evaluateNode(*_frame, findNode(index), _mode);
}

DOM::FormulaSyntaxTree::Node const& Call::nodeOf(std::size_t index) const noexcept {
  return _frame->nodeAt(findNode(index));
}

std::uint32_t Call::findNode(std::size_t index) const noexcept {
  std::uint32_t node = _frame->nodeAt(_node).firstArgument;
  for (; index != 0; --index) {
    node = _frame->nodeAt(node).next;
  }
  return node;
}

}  // namespace Zorv::Formulas
