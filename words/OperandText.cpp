#include "words/OperandText.h"

#include <optional>
#include <string_view>
#include <variant>

#include <fmt/format.h>
#include <boost/variant/get.hpp>

#include "DOM/A1Notation.h"
#include "DOM/ConditionalFormatOperator.h"
#include "words/Amounts.h"
#include "words/ConditionText.h"
#include "words/Printable.h"

namespace Zorv::Words {

namespace {

namespace CF = ConditionalFormatters;
using FormulaModel::FormulaValue;

/// Describes the test against each kind of operands.
class TestDescriber {
public:
  TestDescriber(Analysis::RuleAccount const& account, FormulaValue const& value,
                NumberMeaning meaning, OfficeUtils::LocaleContext const& locale) noexcept
      : _account(account), _value(value), _meaning(meaning), _locale(locale) {}

  std::string operator()(std::monostate /*none*/) const { return {}; }

  std::string operator()(CF::ArgumentOperand const& operand) const {
    auto const* record = getRecord<DOM::UnaryConditionalFormatOperator>();
    if (record->getType() == DOM::UnaryConditionalFormatType::FormulaIsTrue) {
      return _account.formulas.empty() ? fmt::format("the formula is {}", text(operand.value)) : "";
    }
    return fmt::format("{} {} {}{}", valueText(), describeComparison(record->getType()),
                       text(operand.value), outcome(whyNoComparison(operand.value)));
  }

  std::string operator()(CF::BoundsOperand const& operand) const {
    auto const* record = getRecord<DOM::BinaryConditionalFormatOperator>();
    auto const why = whyNoComparison(operand.lower);
    return fmt::format("{} {} {} and {}{}", valueText(), describeInterval(record->getType()),
                       text(operand.lower), text(operand.upper),
                       outcome(why.empty() ? whyNoComparison(operand.upper) : why));
  }

  std::string operator()(CF::PatternOperand const& operand) const {
    auto const* record = getRecord<DOM::TextConditionalFormatOperator>();
    return fmt::format("{} {} {}{}", valueText(), describeMatch(record->getType()),
                       operand.pattern ? '"' + shorten(*operand.pattern, widestPattern) + '"'
                                       : std::string("a formula without a value"),
                       outcome(""));
  }

  std::string operator()(CF::MeanOperand const& operand) const {
    if (operand.count == 0) {
      return "there is no number in the ranges, and so no average";
    }
    return fmt::format("{}; the average of {} is {}", valueText(), countOf(operand.count, "number"),
                       numberText(operand.mean));
  }

  std::string operator()(CF::ThresholdOperand const& operand) const {
    if (!operand.threshold) {
      return "no number is inside";
    }
    return fmt::format("{}; the last number inside is {} (rank {} of the distinct numbers)",
                       valueText(), numberText(*operand.threshold), operand.rank);
  }

  std::string operator()(CF::OccurrenceOperand const& operand) const {
    if (operand.count == 0) {
      return fmt::format("{} does not count as a value of the ranges", valueText());
    }
    return fmt::format(
        "{} occurs {} in the ranges{}", valueText(),
        operand.count == 1 ? "once" : fmt::format("{} times", operand.count),
        operand.first ? fmt::format(", first in {}", DOM::A1Notation::toAddress(*operand.first))
                      : "");
  }

  std::string operator()(CF::PeriodOperand const& operand) const {
    switch (operand.unit) {
      case CF::DateUnit::Day:
        return fmt::format("{}; the period is {} to {}", valueText(), dateText(operand.first),
                           dateText(operand.last));
      case CF::DateUnit::Week:
        return fmt::format("{}; the period is {} of the year", valueText(),
                           span("week", operand.first, operand.last));
      case CF::DateUnit::Month:
        break;
    }
    return fmt::format("{}; the period is {} of the year", valueText(),
                       span("month", operand.first, operand.last));
  }

private:
  static constexpr std::size_t widestPattern = 40;

  template <class Record>
  [[nodiscard]] Record const* getRecord() const {
    return boost::get<Record>(&_account.rule->format->getOperator());
  }

  [[nodiscard]] std::string valueText() const { return describeValue(_value, _meaning, _locale); }
  [[nodiscard]] std::string text(boost::optional<FormulaValue> const& value) const {
    return value ? describeValue(*value, _meaning, _locale) : "a reference, which has no value";
  }
  [[nodiscard]] std::string numberText(FloatNumber number) const {
    return describeValue(FormulaModel::FormulaNumber{number}, _meaning, _locale);
  }
  [[nodiscard]] std::string dateText(double serial) const {
    return describeValue(FormulaModel::FormulaNumber{FloatNumber(serial)}, NumberMeaning::Date,
                         _locale);
  }
  static std::string span(std::string_view unit, double first, double last) {
    return first == last ? fmt::format("{} {}", unit, first)
                         : fmt::format("{}s {} to {}", unit, first, last);
  }

  /// ` is true`; or the reason why two values are not compared.
  [[nodiscard]] std::string outcome(std::string const& whyNot) const {
    bool const holds =
        _account.outcome == CF::FormatOutcome::Holds || _account.holdsByItself.value_or(false);
    return holds ? " is true" : whyNot.empty() ? " is false" : " is false: " + whyNot;
  }
  [[nodiscard]] std::string whyNoComparison(boost::optional<FormulaValue> const& operand) const {
    if (!operand || operand->which() == _value.which()) {
      return {};
    }
    return fmt::format("{} does not compare with {}", describeKind(_value), describeKind(*operand));
  }

  Analysis::RuleAccount const& _account;
  FormulaValue const& _value;
  NumberMeaning _meaning;
  OfficeUtils::LocaleContext const& _locale;
};

}  // namespace

std::string describeTest(Analysis::RuleAccount const& account, FormulaValue const& value,
                         NumberMeaning meaning, OfficeUtils::LocaleContext const& locale) {
  return std::visit(TestDescriber(account, value, meaning, locale), account.operands);
}

}  // namespace Zorv::Words
