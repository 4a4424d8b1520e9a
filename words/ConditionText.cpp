#include "words/ConditionText.h"

#include <array>
#include <cstddef>
#include <map>
#include <memory>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>

#include "DOM/A1Notation.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/WriteExpr.h"
#include "words/Printable.h"
#include "words/VisualText.h"

namespace Zorv::Words {

namespace {

template <class Type, std::size_t size>
std::string_view wordOf(Type type, std::array<std::string_view, size> const& words) noexcept {
  auto const index = static_cast<std::size_t>(type);
  return index < size ? words[index] : std::string_view("unknown condition");
}

constexpr std::array<std::string_view, 14> nullaryWords = {
    "cell is blank",      "cell is not blank", "cell is an error",  "cell is no error",
    "date is yesterday",  "date is today",     "date is tomorrow",  "date in the last 7 days",
    "date in last week",  "date in this week", "date in next week", "date in last month",
    "date in this month", "date in next month"};
constexpr std::array<std::string_view, 6> comparisonWords = {"=", "<>", ">", ">=", "<", "<="};
constexpr std::array<std::string_view, 2> betweenWords = {"between", "not between"};
constexpr std::array<std::string_view, 4> matchWords = {"contains", "does not contain",
                                                        "begins with", "ends with"};
constexpr std::array<std::string_view, 2> topBottomWords = {"top", "bottom"};
constexpr std::array<std::string_view, 4> averageWords = {
    "above average", "equal or above average", "below average", "equal or below average"};
constexpr std::array<std::string_view, 2> uniquenessWords = {"duplicate value", "unique value"};

/// Describes each kind of record; formulas are shown as the file has them.
class ConditionDescriber : public boost::static_visitor<std::string> {
public:
  explicit ConditionDescriber(Workbook::Rule const& rule) noexcept : _rule(rule) {}

  std::string operator()(DOM::NullaryConditionalFormatOperator const& record) const {
    return std::string(wordOf(record.getType(), nullaryWords));
  }

  std::string operator()(DOM::UnaryConditionalFormatOperator const& record) const {
    if (record.getType() == DOM::UnaryConditionalFormatType::FormulaIsTrue) {
      return describeFormula(record.getArgument());
    }
    return fmt::format("cell {} {}", describeComparison(record.getType()), formula(0));
  }

  std::string operator()(DOM::BinaryConditionalFormatOperator const& record) const {
    return fmt::format("cell {} {} and {}", describeInterval(record.getType()), formula(0),
                       formula(1));
  }

  std::string operator()(DOM::TextConditionalFormatOperator const& record) const {
    auto const* literal = boost::get<std::string>(&record.getArgument());
    return fmt::format("text {} {}", describeMatch(record.getType()),
                       literal ? fmt::format("\"{}\"", *literal) : needle());
  }

  std::string operator()(DOM::TopBottomConditionalFormatOperator const& record) const {
    return fmt::format("{} {}{}", wordOf(record.getType(), topBottomWords), record.getValue(),
                       record.getUsePercent() ? " %" : "");
  }

  std::string operator()(DOM::AboveAverageConditionalFormatOperator const& record) const {
    auto const words = wordOf(record.getType(), averageWords);
    return record.getStdDev() ? fmt::format("{} by {} standard deviations (never holds)", words,
                                            *record.getStdDev())
                              : std::string(words);
  }

  std::string operator()(DOM::UniquenessConditionalFormatOperator const& record) const {
    return std::string(wordOf(record.type, uniquenessWords));
  }

private:
  /// Rules about blanks define blank by a formula of their own. A rule of another kind is one that
  /// was loaded as a formula, and the file does not have that formula.
  std::string describeFormula(DOM::FormulaSyntaxTree::Expr const& expr) const {
    if (_rule.type == "containsBlanks" || _rule.type == "notContainsBlanks") {
      return fmt::format("cell is {}blank by {}", _rule.type == "containsBlanks" ? "" : "not ",
                         formula(0));
    }
    return fmt::format("formula {}",
                       _rule.type == "expression" ? formula(0) : Formulas::writeExpr(expr));
  }

  /// Text rules are written with a helper formula around the formula of their text.
  std::string needle() const {
    return _rule.needleFormula.empty() ? formula(0) : _rule.needleFormula;
  }

  std::string formula(std::size_t index) const {
    return index < _rule.formulas.size() ? _rule.formulas[index] : "(nothing)";
  }

  Workbook::Rule const& _rule;
};

}  // namespace

std::string_view describeComparison(DOM::UnaryConditionalFormatType type) noexcept {
  return wordOf(type, comparisonWords);
}

std::string_view describeInterval(DOM::BinaryConditionalFormatType type) noexcept {
  return wordOf(type, betweenWords);
}

std::string_view describeMatch(DOM::TextConditionalFormatType type) noexcept {
  return wordOf(type, matchWords);
}

std::string describeType(std::string_view type) {
  static std::map<std::string_view, std::string_view> const names = {
      {"", "rule without a kind"},
      {"colorScale", "colour scale"},
      {"dataBar", "data bar"},
      {"iconSet", "icon set"},
      {"cellIs", "comparison"},
      {"expression", "formula rule"},
      {"containsText", "text rule"},
      {"notContainsText", "text rule"},
      {"beginsWith", "text rule"},
      {"endsWith", "text rule"},
      {"timePeriod", "date rule"},
      {"containsBlanks", "blanks rule"},
      {"notContainsBlanks", "blanks rule"},
      {"containsErrors", "errors rule"},
      {"notContainsErrors", "errors rule"},
      {"top10", "top or bottom rule"},
      {"aboveAverage", "average rule"},
      {"duplicateValues", "uniqueness rule"},
      {"uniqueValues", "uniqueness rule"}};
  auto const found = names.find(type);
  return std::string(found == names.end() ? type : found->second);
}

std::string describeCondition(Workbook::Rule const& rule) {
  if (rule.visual != nullptr) {
    return describeThresholds(rule.visual->kind) +
           (rule.visual->condition ? " where " + rule.formulas[0] : std::string());
  }
  return rule.format ? boost::apply_visitor(ConditionDescriber(rule), rule.format->getOperator())
                     : describeType(rule.type);
}

std::string listRanges(Workbook::Rule const& rule) {
  return rule.ranges.empty() ? rule.rangeText : DOM::A1Notation::toAddress(rule.ranges);
}

std::string describeRanges(Workbook::Rule const& rule) {
  constexpr std::size_t longest = 40;
  if (rule.ranges.empty()) {
    return shorten(rule.rangeText, longest);
  }
  auto text = DOM::A1Notation::toAddress(rule.ranges);
  if (text.size() > longest && rule.ranges.size() > 1) {
    text = fmt::format("{} and {} more", DOM::A1Notation::toAddress(rule.ranges.front()),
                       rule.ranges.size() - 1);
  }
  return text;
}

}  // namespace Zorv::Words
