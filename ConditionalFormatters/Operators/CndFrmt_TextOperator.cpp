#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"

#include <memory>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operators/CndFrmt_NeverHolds.h"
#include "Formulas/ContextProvider.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "Utils/PtrUtils.h"

namespace Zorv::ConditionalFormatters {

namespace {

bool contains(std::string const& cellText, std::string const& pattern) {
  return cellText.find(pattern) != std::string::npos;
}

bool doesNotContain(std::string const& cellText, std::string const& pattern) {
  return !contains(cellText, pattern);
}

bool beginsWith(std::string const& cellText, std::string const& pattern) {
  return cellText.starts_with(pattern);
}

bool endsWith(std::string const& cellText, std::string const& pattern) {
  return cellText.ends_with(pattern);
}

using Test = bool (*)(std::string const& cellText, std::string const& pattern);

Test chooseTest(DOM::TextConditionalFormatType type) noexcept {
  using Type = DOM::TextConditionalFormatType;
  switch (type) {
    case Type::Contains:
      return contains;
    case Type::NotContains:
      return doesNotContain;
    case Type::BeginsWith:
      return beginsWith;
    case Type::EndsWith:
      return endsWith;
  }
  return neverHolds;
}

// The text of a value: its own where it is a text, and otherwise one that is made in `made`. Asks
// for the locale anew: the provider may answer otherwise after an evaluation.
std::string const& castToText(FormulaValue const& value,
                              Formulas::ContextProvider const& contextProvider, std::string& made) {
  OfficeUtils::LocaleContext const& locale = contextProvider.getLocaleContext();
  if (auto const* string = boost::get<FormulaModel::FormulaString>(&value)) {
    return string->value;
  }
  return made = OfficeUtils::FormulaValueCast::toString(value, locale, nullptr);
}

}  // namespace

TextOperator::TextOperator(DOM::TextConditionalFormatOperator const& record,
                           DOM::Table const& table,
                           Formulas::ContextProvider const& contextProvider, CellIndex baseCell)
    : _calculator(table, contextProvider, baseCell),
      _argument(record.getArgument()),
      _test(chooseTest(record.getType())) {}

bool TextOperator::operator()(FormulaValueData const& data) const {
  return judge(data, [&](std::size_t, DOM::FormulaSyntaxTree::Expr const& argument) {
    return _calculator.calculate(argument, data.cellIndex);
  });
}

bool TextOperator::testLiteral(FormulaValue const& cellValue, std::string const& literal) const {
  std::string made;
  return _test(castToText(cellValue, _calculator.getFormulasContextProvider(), made), literal);
}

bool TextOperator::testTextOf(FormulaValue const& cellValue, FormulaValue const& argument) const {
  auto const& contextProvider = _calculator.getFormulasContextProvider();
  // Two statements: where both casts throw, the pattern's exception is the one that callers see.
  std::string madePattern;
  std::string const& pattern = castToText(argument, contextProvider, madePattern);
  std::string madeText;
  std::string const& cellText = castToText(cellValue, contextProvider, madeText);
  return _test(cellText, pattern);
}

}  // namespace Zorv::ConditionalFormatters
