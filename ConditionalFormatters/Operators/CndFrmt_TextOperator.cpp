#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"

#include <memory>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Predicates/CndFrmt_TextMatch.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/ContextProvider.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

// Asks for the locale anew: the provider may answer otherwise after an evaluation.
std::string castToText(FormulaValue const& value,
                       Formulas::ContextProvider const& contextProvider) {
  return OfficeUtils::FormulaValueCast::toString(value, contextProvider.getLocaleContext(),
                                                 nullptr);
}

}  // namespace

TextOperator::TextOperator(DOM::TextConditionalFormatOperator const& record,
                           DOM::Table const& table,
                           Formulas::ContextProvider const& contextProvider, CellIndex baseCell)
    : _calculator(table, contextProvider, baseCell),
      _argument(record.getArgument()),
      _test(findTextTest(record.getType())) {}

bool TextOperator::operator()(FormulaValueData const& data) const {
  auto const& contextProvider = _calculator.getFormulasContextProvider();
  if (auto const* literal = boost::get<std::string>(&_argument)) {
    return _test(castToText(data.value, contextProvider), *literal);
  }
  auto const& formula = boost::get<std::unique_ptr<DOM::FormulaSyntaxTree::Expr>>(_argument);
  auto const argument = _calculator.calculate(PtrUtils::derefHeld(formula), data.cellIndex);
  if (!argument) {
    return false;
  }
  // Two statements: where both casts throw, the pattern's exception is the one that callers see.
  std::string const pattern = castToText(*argument, contextProvider);
  std::string const cellText = castToText(data.value, contextProvider);
  return _test(cellText, pattern);
}

}  // namespace Zorv::ConditionalFormatters
