#include "DOM/FormulaSyntaxTree/Expr.h"

#include <utility>

#include <boost/variant/apply_visitor.hpp>

namespace Zorv::DOM::FormulaSyntaxTree {

namespace {

/// Writes the parts of a formula of one constant.
class ConstantWriter {
public:
  using result_type = void;

  explicit ConstantWriter(ExprParts& parts) noexcept : _parts(&parts) {}

  void operator()(FormulaModel::FormulaEmpty /*value*/) const { add({}); }
  void operator()(FormulaModel::FormulaNumber value) const {
    add({.kind = NodeKind::Number, .number = value.value.get()});
  }
  void operator()(FormulaModel::FormulaString const& value) const {
    _parts->texts.push_back(value.value);
    add({.kind = NodeKind::Text, .index = 0});
  }
  void operator()(FormulaModel::FormulaBoolean value) const {
    add({.kind = NodeKind::Boolean, .index = value.value ? 1U : 0U});
  }
  void operator()(FormulaModel::FormulaError value) const {
    add({.kind = NodeKind::Error, .index = static_cast<std::uint32_t>(value.code)});
  }

private:
  void add(Node const& node) const { _parts->nodes.push_back(node); }

  ExprParts* _parts;
};

}  // namespace

Expr::Expr(ExprParts parts) noexcept : _parts(std::move(parts)) {}

Expr Expr::constant(FormulaValue const& value) {
  ExprParts parts;
  boost::apply_visitor(ConstantWriter(parts), value);
  return Expr(std::move(parts));
}

}  // namespace Zorv::DOM::FormulaSyntaxTree
