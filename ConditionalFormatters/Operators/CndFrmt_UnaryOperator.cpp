#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"

#include "ConditionalFormatters/Predicates/CndFrmt_Comparison.h"
#include "ConditionalFormatters/Predicates/CndFrmt_Truth.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ContextProvider.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::ConditionalFormatters {

namespace {

using Compare = std::function<bool(FormulaValue const&, boost::optional<FormulaValue> const&)>;

// Empty for an unknown kind: calling it then throws. The truth test keeps a copy of the locale,
// since the provider's may change or go after the operator was built.
Compare chooseComparison(DOM::UnaryConditionalFormatType type,
                         OfficeUtils::LocaleContext const& locale) {
  if (type == DOM::UnaryConditionalFormatType::FormulaIsTrue) {
    return
        [locale](FormulaValue const& /*cellValue*/, boost::optional<FormulaValue> const& argument) {
          return isTrue(argument, locale);
        };
  }
  return findComparison(type);
}

}  // namespace

UnaryOperator::UnaryOperator(DOM::UnaryConditionalFormatOperator const& record,
                             DOM::Table const& table,
                             Formulas::ContextProvider const& contextProvider, CellIndex baseCell)
    : _calculator(table, contextProvider, baseCell),
      _argument(record.getArgument()),
      // Every kind asks for the locale, though one alone keeps it.
      _compare(chooseComparison(record.getType(), contextProvider.getLocaleContext())) {}

bool UnaryOperator::operator()(FormulaValueData const& data) const {
  auto const argument = _calculator.calculate(_argument, data.cellIndex);
  return _compare(data.value, argument);
}

}  // namespace Zorv::ConditionalFormatters
