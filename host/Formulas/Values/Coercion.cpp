#include "Formulas/Values/Coercion.h"

#include "Formulas/Text/Texts.h"
#include "Formulas/Text/ValueText.h"

namespace Zorv::Formulas {

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

}  // namespace Zorv::Formulas
