#include "Formulas/Parsing/ExprBuilder.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Formulas/Parsing/ExprAnalysis.h"

namespace Zorv::Formulas {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::NameReference;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;
using DOM::FormulaSyntaxTree::StructuredReference;

namespace {

template <class Pool, class Entry>
std::uint32_t store(Pool& pool, Entry&& entry) {
  pool.push_back(std::forward<Entry>(entry));
  return static_cast<std::uint32_t>(pool.size() - 1);
}

}  // namespace

Subtree ExprBuilder::add(Node node, std::span<Subtree const> arguments) {
  auto const index = static_cast<std::uint32_t>(_parts.nodes.size());
  node.argumentCount = static_cast<std::uint32_t>(arguments.size());
  node.firstArgument = arguments.empty() ? DOM::FormulaSyntaxTree::noIndex : arguments.front().node;
  std::uint32_t depth = 0;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    bool const isLast = i + 1 == arguments.size();
    _parts.nodes[arguments[i].node].next = isLast ? index : arguments[i + 1].node;
    depth = std::max(depth, arguments[i].depth);
  }
  _parts.nodes.push_back(node);
  return {index, depth + 1};
}

Subtree ExprBuilder::addMissing() { return add({.kind = NodeKind::Missing}, {}); }

Subtree ExprBuilder::addNumber(double number) {
  return add({.kind = NodeKind::Number, .number = number}, {});
}

Subtree ExprBuilder::addText(std::string text) {
  return add({.kind = NodeKind::Text, .index = storeText(std::move(text))}, {});
}

Subtree ExprBuilder::addBoolean(bool value) {
  return add({.kind = NodeKind::Boolean, .index = value ? 1U : 0U}, {});
}

Subtree ExprBuilder::addError(FormulaModel::FormulaErrorCode code) {
  return add({.kind = NodeKind::Error, .index = static_cast<std::uint32_t>(code)}, {});
}

Subtree ExprBuilder::addArrayConstant(std::uint32_t rowCount, std::span<Subtree const> values) {
  return add({.kind = NodeKind::ArrayConstant, .index = rowCount}, values);
}

Subtree ExprBuilder::addReference(CellReference const& reference) {
  return add({.kind = NodeKind::Reference, .index = store(_parts.references, reference)}, {});
}

Subtree ExprBuilder::addStructuredReference(StructuredReference const& reference) {
  return add({.kind = NodeKind::StructuredReference,
              .index = store(_parts.structuredReferences, reference)},
             {});
}

Subtree ExprBuilder::addName(NameReference const& name) {
  return add({.kind = NodeKind::Name, .index = store(_parts.names, name)}, {});
}

Subtree ExprBuilder::addLocalName(std::uint32_t slot) {
  return add({.kind = NodeKind::LocalName, .index = slot}, {});
}

Subtree ExprBuilder::addUnary(Operator op, Subtree argument) {
  return add({.kind = NodeKind::Unary, .op = op}, std::span(&argument, 1));
}

Subtree ExprBuilder::addBinary(Operator op, Subtree left, Subtree right) {
  std::array const arguments = {left, right};
  bool const isInChain = isChained(left);
  Subtree tree = add({.kind = NodeKind::Binary, .op = op}, arguments);
  if (isInChain && isChained(tree)) {
    // The evaluation walks along a chain of operators instead of down.
    tree.depth = std::max(left.depth, right.depth + 1);
  }
  return tree;
}

bool ExprBuilder::isChained(Subtree tree) const noexcept { return isValueOperator(getNode(tree)); }

Subtree ExprBuilder::addFunction(std::uint16_t function, std::string name,
                                 std::span<Subtree const> arguments) {
  return add(
      {.kind = NodeKind::Function, .function = function, .index = storeText(std::move(name))},
      arguments);
}

Subtree ExprBuilder::addUnknownFunction(std::string name, std::span<Subtree const> arguments) {
  return add({.kind = NodeKind::UnknownFunction, .index = storeText(std::move(name))}, arguments);
}

Subtree ExprBuilder::addCall(std::span<Subtree const> arguments) {
  return add({.kind = NodeKind::Call}, arguments);
}

std::uint32_t ExprBuilder::storeText(std::string text) {
  return store(_parts.texts, std::move(text));
}

std::uint32_t ExprBuilder::makeLocalSlot(std::string name) {
  return store(_parts.localNames, std::move(name));
}

Expr ExprBuilder::finish(FunctionTable const& functions) {
  _parts.traits = analyse(_parts, functions);
  return Expr(std::move(_parts));
}

}  // namespace Zorv::Formulas
