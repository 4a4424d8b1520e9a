#include "analysis/Check/Constants.h"

#include <algorithm>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "DOM/Ids.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/Context.h"
#include "Formulas/EvaluationLimitError.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "OfficeUtils/LocaleContext.h"
#include "workbook/Quote.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

/// True for a formula that reads no cell, no name and no clock.
bool readsNothing(Expr const& expr) {
  auto const& parts = expr.getParts();
  return parts.references.empty() && parts.names.empty() && parts.structuredReferences.empty() &&
         !parts.traits.callsVolatileFunctions && !parts.traits.dependsOnCell &&
         std::ranges::none_of(
             parts.nodes, [](Node const& node) { return node.kind == NodeKind::UnknownFunction; });
}

}  // namespace

std::optional<FormulaValue> evaluateConstant(Expr const& expr,
                                             Formulas::ContextProvider const& provider,
                                             DOM::Table const& table) {
  if (!readsNothing(expr)) {
    return std::nullopt;
  }
  Formulas::Context const context(provider.getTableContext(table), RowIndex(0), ColumnIndex(0),
                                  boost::none, DOM::RowID(0), DOM::ColumnID(0));
  Formulas::RuntimeDependenciesResolver resolver;
  try {
    auto const result = Formulas::calcExpr(expr, context, provider, resolver);
    auto const* const value = boost::get<FormulaValue>(&result);
    return value == nullptr ? std::nullopt : std::optional(*value);
  } catch (Formulas::EvaluationLimitError const&) {
    return std::nullopt;
  }
}

std::optional<FormulaValue> asConstant(ExprParts const& parts, Node const& node) {
  using DOM::FormulaSyntaxTree::Operator;
  switch (node.kind) {
    case NodeKind::Number:
      return FormulaModel::FormulaNumber{FloatNumber(node.number)};
    case NodeKind::Text:
      return FormulaModel::FormulaString{parts.texts[node.index]};
    case NodeKind::Boolean:
      return FormulaModel::FormulaBoolean{node.index != 0};
    case NodeKind::Unary: {
      Node const& argument = parts.nodes[node.firstArgument];
      bool const isNegative = node.op == Operator::Negate && argument.kind == NodeKind::Number;
      return isNegative ? std::optional<FormulaValue>(
                              FormulaModel::FormulaNumber{FloatNumber(-argument.number)})
                        : std::nullopt;
    }
    default:
      return std::nullopt;
  }
}

double numberOf(FormulaValue const& value) {
  return boost::get<FormulaModel::FormulaNumber>(value).value.get();
}

std::string toFormulaText(FormulaValue const& value) {
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&value)) {
    return fmt::format("\"{}\"", Workbook::quote(text->value, 40));
  }
  return OfficeUtils::FormulaValueCast::toString(value, OfficeUtils::LocaleContext(), nullptr);
}

}  // namespace Zorv::Analysis
