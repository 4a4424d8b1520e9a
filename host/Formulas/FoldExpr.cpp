#include "Formulas/FoldExpr.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/Functions/BuiltinFunctions.h"
#include "Formulas/Parsing/ExprAnalysis.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;

/// The constants that replace calls and operators, by node.
using Constants = std::map<std::size_t, Node>;

/// A single value as a node; a text is put into the pool.
std::optional<Node> makeConstant(Value const& value, std::vector<std::string>& texts) {
  switch (value.kind()) {
    case Value::Kind::Number:
      return Node{.kind = NodeKind::Number, .number = value.asNumber()};
    case Value::Kind::Text:
      texts.emplace_back(value.asText());
      return Node{.kind = NodeKind::Text, .index = static_cast<std::uint32_t>(texts.size() - 1)};
    case Value::Kind::Boolean:
      return Node{.kind = NodeKind::Boolean, .index = value.asBoolean() ? 1U : 0U};
    case Value::Kind::Error:
      return Node{.kind = NodeKind::Error, .index = static_cast<std::uint32_t>(value.asError())};
    default:
      return std::nullopt;
  }
}

Constants evaluateCalls(ExprParts const& parts, std::vector<InnerCall> const& calls,
                        Evaluator& evaluator, std::vector<std::string>& texts) {
  Constants constants;
  Frame const frame{&parts, Offset{}, {}};
  for (InnerCall const& call : calls) {
    Mode const mode = call.isByElement ? Mode::ByElement : Mode::Single;
    if (auto const constant = makeConstant(evaluator.evaluateNode(frame, call.node, mode), texts)) {
      constants.emplace(call.node, *constant);
    }
  }
  return constants;
}

bool isConstant(Node const& node) noexcept {
  return node.kind == NodeKind::Number || node.kind == NodeKind::Text ||
         node.kind == NodeKind::Boolean || node.kind == NodeKind::Error;
}

/// The operators of which all operands are constants, or such operators themselves. Arguments stand
/// before what they are arguments of.
std::vector<bool> findConstant(std::vector<Node> const& nodes) {
  std::vector<bool> areConstant(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    bool const isOperator = nodes[i].kind == NodeKind::Unary || nodes[i].kind == NodeKind::Binary;
    areConstant[i] = isConstant(nodes[i]) || isOperator;
    std::uint32_t argument = nodes[i].firstArgument;
    for (std::uint32_t count = isOperator ? nodes[i].argumentCount : 0; count > 0; --count) {
      areConstant[i] = areConstant[i] && areConstant[argument];
      argument = nodes[argument].next;
    }
  }
  return areConstant;
}

/// Evaluates the outermost of these operators.
Constants evaluateOperators(ExprParts const& parts, Evaluator& evaluator,
                            std::vector<std::string>& texts) {
  Constants constants;
  Frame const frame{&parts, Offset{}, {}};
  auto const areConstant = findConstant(parts.nodes);
  std::vector<bool> areInside(parts.nodes.size());
  for (std::size_t i = parts.nodes.size(); i-- > 0;) {
    Node const& node = parts.nodes[i];
    if (!areConstant[i] || isConstant(node)) {
      continue;
    }
    std::uint32_t argument = node.firstArgument;
    for (std::uint32_t count = node.argumentCount; count > 0; --count) {
      areInside[argument] = true;
      argument = parts.nodes[argument].next;
    }
    auto const index = static_cast<std::uint32_t>(i);
    auto const constant =
        areInside[i] ? std::nullopt
                     : makeConstant(evaluator.evaluateNode(frame, index, Mode::Single), texts);
    if (constant) {
      constants.emplace(i, *constant);
    }
  }
  return constants;
}

/// Which nodes are left when some become constants.
std::vector<bool> findKept(ExprParts const& parts, Constants const& constants) {
  std::vector<bool> isKept(parts.nodes.size());
  isKept.back() = true;
  for (std::size_t i = parts.nodes.size(); i-- > 0;) {
    if (isKept[i] && !constants.contains(i)) {
      std::uint32_t argument = parts.nodes[i].firstArgument;
      for (std::uint32_t count = parts.nodes[i].argumentCount; count > 0; --count) {
        isKept[argument] = true;
        argument = parts.nodes[argument].next;
      }
    }
  }
  return isKept;
}

std::vector<Node> replaceNodes(ExprParts const& parts, Constants const& constants) {
  auto const isKept = findKept(parts, constants);
  std::vector<std::uint32_t> newIndexes(parts.nodes.size());
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < isKept.size(); ++i) {
    newIndexes[i] = count;
    count += isKept[i] ? 1 : 0;
  }
  auto const move = [&](std::uint32_t node) {
    return node == noIndex ? noIndex : newIndexes[node];
  };
  std::vector<Node> nodes;
  nodes.reserve(count);
  for (std::size_t i = 0; i < isKept.size(); ++i) {
    if (isKept[i]) {
      auto const constant = constants.find(i);
      nodes.push_back(constant == constants.end() ? parts.nodes[i] : constant->second);
      nodes.back().firstArgument = move(nodes.back().firstArgument);
      nodes.back().next = move(parts.nodes[i].next);
    }
  }
  return nodes;
}

}  // namespace

std::optional<Expr> foldExpr(Expr const& expr, Context const& context,
                             ContextProvider const& contextProvider, EvaluationSession& session) {
  ExprParts const& parts = expr.getParts();
  auto const calls = findInvariantCalls(parts, builtinFunctions());
  if (calls.empty()) {
    return std::nullopt;
  }
  ExprParts folded = parts;
  try {
    RuntimeDependenciesResolver nothingIsFound;
    Evaluator evaluator(context, contextProvider, nothingIsFound, session.getOrCreateWorkspace(),
                        builtinFunctions());
    auto const constants = evaluateCalls(parts, calls, evaluator, folded.texts);
    if (constants.empty()) {
      return std::nullopt;
    }
    folded.nodes = replaceNodes(parts, constants);
    ExprParts const withoutCalls = folded;
    auto const results = evaluateOperators(withoutCalls, evaluator, folded.texts);
    folded.nodes = replaceNodes(withoutCalls, results);
  } catch (EvaluationLimitError const&) {
    // The expression stays unfolded. Each evaluation that needs the same part meets the limit, too.
    return std::nullopt;
  }
  folded.traits = analyse(folded, builtinFunctions());
  return Expr(std::move(folded));
}

}  // namespace Zorv::Formulas
