#include "analysis/Explain/RuleFormulas.h"

#include <cstddef>
#include <memory>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/ConditionalFormatOperator.h"

namespace Zorv::Analysis {

namespace {

using DOM::FormulaSyntaxTree::Expr;

/// Lists the formulas of each kind of record.
class FormulaLister : public boost::static_visitor<std::vector<RuleFormula>> {
public:
  explicit FormulaLister(Workbook::Rule const& rule) noexcept : _rule(rule) {}

  result_type operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    return {{written(0), &record.getArgument()}};
  }
  result_type operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    return {{written(0), &record.getFirstArgument()}, {written(1), &record.getSecondArgument()}};
  }
  result_type operator()(DOM::TextConditionalFormatOperator const& record) const {
    if (auto const* expr = boost::get<std::unique_ptr<Expr>>(&record.getArgument())) {
      // Text rules are written with a helper formula around the formula of their text.
      return {{_rule.needleFormula.empty() ? written(0) : _rule.needleFormula, expr->get()}};
    }
    return {};
  }
  template <class Record>
  result_type operator()(Record const& /*record*/) const {
    return {};
  }

private:
  [[nodiscard]] std::string_view written(std::size_t index) const {
    return index < _rule.formulas.size() ? std::string_view(_rule.formulas[index])
                                         : std::string_view();
  }

  Workbook::Rule const& _rule;
};

}  // namespace

std::vector<RuleFormula> listFormulas(Workbook::Rule const& rule) {
  return boost::apply_visitor(FormulaLister(rule), rule.format->getOperator());
}

}  // namespace Zorv::Analysis
