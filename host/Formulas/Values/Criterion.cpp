#include "Formulas/Values/Criterion.h"

#include <array>
#include <utility>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/NumberOrder.h"
#include "Formulas/Text/Texts.h"
#include "Formulas/Text/ValueText.h"
#include "Formulas/Text/Wildcards.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Comparison.h"

namespace Zorv::Formulas {

Criterion::Criterion(Value const& value, OfficeUtils::LocaleContext const& locale)
    : _locale(&locale), _operand(value) {
  if (value.isEmpty()) {
    _operand = Value::number(0.0);
  } else if (value.isText()) {
    readText(value.asText());
  }
  _matchesEmpty = decideEmpty();
}

void Criterion::readText(std::string_view text) {
  // A sign comes before its own prefix.
  constexpr std::array<std::pair<std::string_view, Operator>, 6> signs = {{
      {"<>", Operator::NotEqual},
      {"<=", Operator::LessOrEqual},
      {">=", Operator::GreaterOrEqual},
      {"=", Operator::Equal},
      {"<", Operator::Less},
      {">", Operator::Greater},
  }};
  for (auto const& [sign, op] : signs) {
    if (text.starts_with(sign)) {
      _op = op;
      _hasOperator = true;
      text.remove_prefix(sign.size());
      break;
    }
  }
  readOperand(text);
}

void Criterion::readOperand(std::string_view text) {
  if (auto const number = readValue(text, *_locale)) {
    _operand = Value::number(*number);
  } else if (equalTexts(text, "TRUE") || equalTexts(text, "FALSE")) {
    _operand = Value::boolean(equalTexts(text, "TRUE"));
  } else if (auto const error = FormulaModel::parseErrorCode(text)) {
    _operand = Value::error(*error);
  } else {
    _operand = Value::text(text);
    _hasWildcards = hasWildcards(text);
  }
}

bool Criterion::decideEmpty() const noexcept {
  bool const isEmptyText = _operand.isText() && _operand.asText().empty();
  switch (_op) {
    case Operator::Equal:
      return isEmptyText;
    case Operator::NotEqual:
      return !isEmptyText;
    default:
      return false;
  }
}

bool Criterion::matches(Value const& value, StepMeter& steps) const {
  if (value.isEmpty()) {
    return _matchesEmpty;
  }
  switch (_op) {
    case Operator::Equal:
      return equals(value, steps);
    case Operator::NotEqual:
      return !equals(value, steps);
    default:
      return isOrdered(value);
  }
}

bool Criterion::equals(Value const& value, StepMeter& steps) const {
  switch (_operand.kind()) {
    case Value::Kind::Number:
      return equalsNumber(value, steps);
    case Value::Kind::Boolean:
      return value.isBoolean() && value.asBoolean() == _operand.asBoolean();
    case Value::Kind::Error:
      return value.isError() && value.asError() == _operand.asError();
    default:
      return value.isText() && equalsText(value.asText(), steps);
  }
}

/// A text that reads as the number counts as it.
bool Criterion::equalsNumber(Value const& value, StepMeter& steps) const {
  if (value.isNumber()) {
    return value.asNumber() == _operand.asNumber();
  }
  if (!value.isText()) {
    return false;
  }
  steps.spend(stepsOfReading(value.asText()));
  return readValue(value.asText(), *_locale) == _operand.asNumber();
}

bool Criterion::equalsText(std::string_view text, StepMeter& steps) const {
  if (_operand.asText().empty()) {
    // `""` matches empty texts; `=` and `<>` match empty cells and all others.
    return !_hasOperator && text.empty();
  }
  return _hasWildcards ? matchesWildcards(text, _operand.asText(), steps)
                       : equalTexts(text, _operand.asText());
}

/// Only values of the operand's own kind are above or below it.
bool Criterion::isOrdered(Value const& value) const noexcept {
  if (value.kind() != _operand.kind() || value.isError()) {
    return false;
  }
  return holdsFor(_op, compareValues(value, _operand));
}

}  // namespace Zorv::Formulas
