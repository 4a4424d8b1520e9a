#include "Formulas/Evaluation/Coercion.h"

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Evaluation/Texts.h"
#include "Formulas/Evaluation/ValueText.h"
#include "OfficeUtils/FormulaValueCast.h"

namespace Zorv::Formulas {

namespace {

using FormulaModel::FormulaNumber;

std::string_view writeNumber(double number, Evaluator& evaluator) {
  FormulaValue const value = FormulaNumber{FloatNumber(number)};
  return evaluator.arena().copyText(
      OfficeUtils::FormulaValueCast::toString(value, evaluator.locale(), nullptr));
}

}  // namespace

Outcome<double> toNumber(Value const& value, OfficeUtils::LocaleContext const& locale) {
  switch (value.kind()) {
    case Value::Kind::Number:
      return value.asNumber();
    case Value::Kind::Empty:
    case Value::Kind::Missing:
      return 0.0;
    case Value::Kind::Boolean:
      return value.asBoolean() ? 1.0 : 0.0;
    case Value::Kind::Error:
      return value.asError();
    case Value::Kind::Text: {
      auto const number = readValue(value.asText(), locale);
      return number ? Outcome<double>(*number) : Outcome<double>(FormulaErrorCode::Value);
    }
    default:
      return FormulaErrorCode::Value;
  }
}

Outcome<bool> toTruth(Value const& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
      return value.asBoolean();
    case Value::Kind::Number:
      return value.asNumber() != 0.0;
    case Value::Kind::Empty:
    case Value::Kind::Missing:
      return false;
    case Value::Kind::Error:
      return value.asError();
    case Value::Kind::Text:
      if (equalTexts(value.asText(), "TRUE")) {
        return true;
      }
      return equalTexts(value.asText(), "FALSE") ? Outcome<bool>(false)
                                                 : Outcome<bool>(FormulaErrorCode::Value);
    default:
      return FormulaErrorCode::Value;
  }
}

Outcome<std::string_view> toText(Value const& value, Evaluator& evaluator) {
  switch (value.kind()) {
    case Value::Kind::Text:
      return value.asText();
    case Value::Kind::Number:
      return writeNumber(value.asNumber(), evaluator);
    case Value::Kind::Boolean:
      return std::string_view(value.asBoolean() ? "TRUE" : "FALSE");
    case Value::Kind::Empty:
    case Value::Kind::Missing:
      return std::string_view();
    case Value::Kind::Error:
      return value.asError();
    default:
      return FormulaErrorCode::Value;
  }
}

}  // namespace Zorv::Formulas
