#include "workbook/WidespreadDifference.h"

#include <string>
#include <variant>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::Workbook {

namespace {

namespace CF = ConditionalFormatters;
using FormulaModel::FormulaString;

std::string const* asText(FormulaValue const& value) noexcept {
  auto const* const text = boost::get<FormulaString>(&value);
  return text == nullptr ? nullptr : &text->value;
}

constexpr std::string_view letterCase =
    "text is compared without regard to letter case there, and byte by byte here";

/// Why a cell compares otherwise with an operand; empty if nothing of the two tells why.
std::string_view explainComparison(FormulaValue const& value,
                                   boost::optional<FormulaValue> const& operand) {
  if (!operand) {
    return "the formula yields several cells, of which one is taken there and none here";
  }
  if (FormulaModel::isFormulaError(value) || FormulaModel::isFormulaError(*operand)) {
    return "no comparison with an error holds there; here equal errors are equal";
  }
  if (FormulaModel::isFormulaEmpty(value)) {
    return "an empty cell counts as 0 or as an empty text there; here it is no number and no text";
  }
  if (FormulaModel::isFormulaEmpty(*operand)) {
    return "the empty cell of the formula counts as 0 or as an empty text there; here it is no "
           "number and no text";
  }
  if (value.which() != operand->which()) {
    return "numbers are smaller than texts, and texts than TRUE and FALSE, there; here values of "
           "different kinds are never compared";
  }
  return asText(value) != nullptr ? letterCase : std::string_view();
}

/// True if a text means other texts, too, where it is searched.
bool hasWildcards(std::string const& pattern) noexcept {
  return pattern.find_first_of("*?~") != std::string::npos;
}

class DifferenceReason : public boost::static_visitor<std::string_view> {
public:
  DifferenceReason(FormulaValue const& value, CF::ConditionOperands const& operands) noexcept
      : _value(value), _operands(operands) {}

  std::string_view operator()(DOM::NullaryConditionalFormatOperator const& condition) const {
    using Type = DOM::NullaryConditionalFormatType;
    switch (condition.getType()) {
      case Type::Blanks:
      case Type::NoBlanks:
        return FormulaModel::isFormulaError(_value)
                   ? "an error is neither blank nor not blank there; here it is not blank"
                   : "a text of nothing but spaces, or of nothing at all, is blank there; here "
                     "only "
                     "an empty cell is";
      case Type::LastWeek:
      case Type::ThisWeek:
      case Type::NextWeek:
        return asText(_value) != nullptr ? dateText
                                         : "a week is an interval of the calendar from Sunday on "
                                           "there; here its number within the year is compared, "
                                           "and it begins where the locale says";
      case Type::LastMonth:
      case Type::ThisMonth:
      case Type::NextMonth:
        return asText(_value) != nullptr
                   ? dateText
                   : "the year counts there; here the number of the month within the year is "
                     "compared";
      default:
        return asText(_value) != nullptr ? dateText : "truth values count as numbers there";
    }
  }

  std::string_view operator()(DOM::UnaryConditionalFormatOperator const& /*condition*/) const {
    auto const* const operand = std::get_if<CF::ArgumentOperand>(&_operands);
    return operand == nullptr ? std::string_view() : explainComparison(_value, operand->value);
  }

  std::string_view operator()(DOM::BinaryConditionalFormatOperator const& /*condition*/) const {
    auto const* const bounds = std::get_if<CF::BoundsOperand>(&_operands);
    if (bounds == nullptr) {
      return {};
    }
    std::string_view const lower = explainComparison(_value, bounds->lower);
    std::string_view const upper = explainComparison(_value, bounds->upper);
    return !lower.empty() && lower != letterCase   ? lower
           : !upper.empty() && upper != letterCase ? upper
           : lower.empty() || areReversed(*bounds) ? reversedBounds
                                                   : letterCase;
  }

  std::string_view operator()(DOM::TextConditionalFormatOperator const& /*condition*/) const {
    auto const* const operand = std::get_if<CF::PatternOperand>(&_operands);
    if (operand == nullptr || !operand->pattern) {
      return "the text that is looked for is taken from several cells, or from none";
    }
    if (FormulaModel::isFormulaError(_value)) {
      return "an error has no text there; here its text is searched";
    }
    return hasWildcards(*operand->pattern)
               ? "* and ? stand for other characters there; here they stand for themselves"
               : letterCase;
  }

  std::string_view operator()(DOM::TopBottomConditionalFormatOperator const& condition) const {
    return condition.getUsePercent()
               ? "the percentage is taken of all numbers, and is at least one, there; here it is "
                 "taken of the different numbers, and may be none"
               : "each number has a rank of its own there, and an error in the ranges ends the "
                 "rule; here equal numbers share a rank";
  }

  std::string_view operator()(DOM::AboveAverageConditionalFormatOperator const& condition) const {
    return condition.getStdDev()
               ? "the distance from the average is measured in standard deviations there; here a "
                 "rule that measures so never holds"
               : "the average is rounded otherwise there";
  }

  std::string_view operator()(DOM::UniquenessConditionalFormatOperator const& /*condition*/) const {
    auto const* const text = asText(_value);
    return text != nullptr && hasWildcards(*text)
               ? "* and ? stand for other characters there; here they stand for themselves"
               : "values are counted without regard to letter case, a text such as \"5\" like the "
                 "number, and a cell of two ranges once, there; here byte by byte, by kind, and "
                 "once for each range";
  }

private:
  static constexpr std::string_view dateText =
      "a text that reads as a date counts as that date there; here it is a text";
  static constexpr std::string_view reversedBounds =
      "the smaller bound is the lower one there; here the first is, and these are the other way "
      "round";

  [[nodiscard]] static bool areReversed(CF::BoundsOperand const& bounds) {
    auto const* const lower = asText(*bounds.lower);
    auto const* const upper = asText(*bounds.upper);
    return lower != nullptr && upper != nullptr && *lower > *upper;
  }

  FormulaValue const& _value;
  CF::ConditionOperands const& _operands;
};

}  // namespace

std::string_view explainDifference(DOM::ConditionalFormatOperator const& condition,
                                   FormulaValue const& value,
                                   CF::ConditionOperands const& operands) {
  std::string_view const reason =
      boost::apply_visitor(DifferenceReason(value, operands), condition);
  return reason.empty() ? "numbers and texts are compared otherwise there" : reason;
}

}  // namespace Zorv::Workbook
