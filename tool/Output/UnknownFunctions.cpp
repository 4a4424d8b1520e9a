#include "tool/Output/UnknownFunctions.h"

#include <memory>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/FormulaSyntaxTree/Node.h"

namespace Zorv::Tool {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::NodeKind;

/// Collects the unknown functions in the formulas of a record.
class Gatherer : public boost::static_visitor<void> {
public:
  explicit Gatherer(std::set<std::string>& names) noexcept : _names(names) {}

  void operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    gather(record.getArgument());
  }
  void operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    gather(record.getFirstArgument());
    gather(record.getSecondArgument());
  }
  void operator()(DOM::TextConditionalFormatOperator const& record) const {
    if (auto const* expr = boost::get<std::unique_ptr<Expr>>(&record.getArgument());
        expr && *expr) {
      gather(**expr);
    }
  }
  template <class RecordWithoutFormulas>
  void operator()(RecordWithoutFormulas const& /*record*/) const noexcept {}

private:
  void gather(Expr const& expr) const {
    auto const& parts = expr.getParts();
    for (auto const& node : parts.nodes) {
      if (node.kind == NodeKind::UnknownFunction) {
        _names.insert(parts.texts.at(node.index));
      }
    }
  }

  std::set<std::string>& _names;
};

}  // namespace

std::set<std::string> findUnknownFunctions(std::vector<Workbook::Rule const*> const& rules) {
  std::set<std::string> names;
  for (auto const* rule : rules) {
    if (rule->format) {
      boost::apply_visitor(Gatherer(names), rule->format->getOperator());
    }
  }
  return names;
}

}  // namespace Zorv::Tool
