#include "workbook/ConditionFormulas.h"

#include <memory>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

namespace Zorv::Workbook {

namespace {

using DOM::FormulaSyntaxTree::Expr;

class ConditionFormulaLister : public boost::static_visitor<std::vector<Expr const*>> {
public:
  result_type operator()(DOM::UnaryConditionalFormatOperator const& condition) const {
    return {&condition.getArgument()};
  }
  result_type operator()(DOM::BinaryConditionalFormatOperator const& condition) const {
    return {&condition.getFirstArgument(), &condition.getSecondArgument()};
  }
  result_type operator()(DOM::TextConditionalFormatOperator const& condition) const {
    auto const* const formula = boost::get<std::unique_ptr<Expr>>(&condition.getArgument());
    return formula == nullptr || *formula == nullptr ? result_type() : result_type{formula->get()};
  }
  template <class ConditionWithoutFormulas>
  result_type operator()(ConditionWithoutFormulas const& /*condition*/) const {
    return {};
  }
};

}  // namespace

std::vector<Expr const*> listFormulas(DOM::ConditionalFormatOperator const& condition) {
  return boost::apply_visitor(ConditionFormulaLister(), condition);
}

}  // namespace Zorv::Workbook
