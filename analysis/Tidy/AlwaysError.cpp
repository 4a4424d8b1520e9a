#include "analysis/Tidy/AlwaysError.h"

#include <string>
#include <vector>

#include "Utils/CaseFolding.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

/// True if an error in an argument becomes the node's value, or keeps it from being true.
bool passesErrorsOn(Node const& node, ExprParts const& parts) {
  using DOM::FormulaSyntaxTree::Operator;
  switch (node.kind) {
    case NodeKind::Unary:
      return node.op == Operator::Plus || node.op == Operator::Negate ||
             node.op == Operator::Percent;
    case NodeKind::Binary:
      return isValueOperator(node);
    case NodeKind::Function: {
      std::string const name = foldCase(parts.texts[node.index]);
      return name == foldCase("AND") || name == foldCase("NOT");
    }
    default:
      return false;
  }
}

}  // namespace

bool isAlwaysError(DOM::FormulaSyntaxTree::Expr const& formula) {
  ExprParts const& parts = formula.getParts();
  std::vector<bool> isError(parts.nodes.size());
  for (std::size_t at = 0; at < parts.nodes.size(); ++at) {
    Node const& node = parts.nodes[at];
    isError[at] = node.kind == NodeKind::Error;
    if (!passesErrorsOn(node, parts)) {
      continue;
    }
    std::size_t argument = node.firstArgument;
    for (std::uint32_t count = 0; count < node.argumentCount; ++count) {
      isError[at] = isError[at] || isError[argument];
      argument = parts.nodes[argument].next;
    }
  }
  return !isError.empty() && isError.back();
}

}  // namespace Zorv::Analysis
