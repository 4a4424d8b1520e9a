#include "workbook/Read/RuleCondition.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "Formulas/ParseExpr.h"
#include "workbook/Quote.h"
#include "workbook/Read/TextNeedle.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

using DOM::ConditionalFormatOperator;
using DOM::NullaryConditionalFormatType;
using DOM::TextConditionalFormatType;
using DOM::UnaryConditionalFormatType;
using DOM::FormulaSyntaxTree::Expr;

/// Rule element with its formulas.
struct RuleElement {
  pugi::xml_node element;
  std::vector<std::string> const& formulas;

  [[nodiscard]] std::string_view getText(char const* name) const {
    return element.attribute(name).value();
  }
  [[nodiscard]] bool getFlag(char const* name, bool missing) const {
    return parseBoolean(getText(name)).value_or(missing);
  }
  [[nodiscard]] bool hasFormula(std::size_t index) const noexcept {
    return index < formulas.size() && !formulas[index].empty();
  }
};

Expr readFormula(RuleElement const& rule, std::size_t index) {
  if (!rule.hasFormula(index)) {
    throw UnresolvedRule(index == 0 ? "the rule has no formula" : "the rule has no second formula");
  }
  return parseRuleFormula(rule.formulas[index]);
}

ConditionalFormatOperator formulaIsTrue(Expr formula) {
  return DOM::UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                             std::move(formula));
}

ConditionalFormatOperator readExpression(RuleElement const& rule) {
  return formulaIsTrue(readFormula(rule, 0));
}

template <UnaryConditionalFormatType type>
ConditionalFormatOperator readComparison(RuleElement const& rule) {
  return DOM::UnaryConditionalFormatOperator(type, readFormula(rule, 0));
}

template <DOM::BinaryConditionalFormatType type>
ConditionalFormatOperator readInterval(RuleElement const& rule) {
  Expr first = readFormula(rule, 0);
  return DOM::BinaryConditionalFormatOperator(type, std::move(first), readFormula(rule, 1));
}

ConditionalFormatOperator makeText(TextConditionalFormatType type, std::string const& needle) {
  if (auto const literal = parseStringConstant(needle)) {
    return DOM::TextConditionalFormatOperator(type, *literal);
  }
  return DOM::TextConditionalFormatOperator(type, std::make_unique<Expr>(parseRuleFormula(needle)));
}

/// A text comparison written as `cellIs`: its formula is the text.
template <TextConditionalFormatType type>
ConditionalFormatOperator readTextComparison(RuleElement const& rule) {
  if (!rule.hasFormula(0)) {
    throw UnresolvedRule("the rule has no formula");
  }
  return makeText(type, rule.formulas[0]);
}

/// The text of a text rule as its formulas write it. If the rule refers to a cell for it, the
/// formula contains the reference; the later form of the rule has it as a second formula.
std::optional<std::string> findWrittenNeedle(RuleElement const& rule) {
  if (rule.hasFormula(1)) {
    return rule.formulas[1];
  }
  return rule.hasFormula(0) ? findNeedle(rule.formulas[0]) : std::nullopt;
}

/// The text is in the `text` attribute, which is missing or repeats the reference if the rule
/// refers to a cell. A formula of any other shape becomes the condition.
template <TextConditionalFormatType type>
ConditionalFormatOperator readText(RuleElement const& rule) {
  auto const needle = findWrittenNeedle(rule);
  pugi::xml_attribute const text = rule.element.attribute("text");
  if (text && (!needle || parseStringConstant(*needle))) {
    return DOM::TextConditionalFormatOperator(type, unescapeXstring(text.value()));
  }
  if (needle) {
    return makeText(type, *needle);
  }
  if (!rule.hasFormula(0)) {
    throw UnresolvedRule("the rule has neither a text nor a formula");
  }
  return formulaIsTrue(parseRuleFormula(rule.formulas[0]));
}

/// Files define blank by a formula, which takes a text of spaces for blank. If it is there, it
/// becomes the condition.
template <NullaryConditionalFormatType type>
ConditionalFormatOperator readBlanks(RuleElement const& rule) {
  if (rule.hasFormula(0)) {
    return formulaIsTrue(parseRuleFormula(rule.formulas[0]));
  }
  return DOM::NullaryConditionalFormatOperator(type);
}

template <NullaryConditionalFormatType type>
ConditionalFormatOperator readNullary(RuleElement const& /*rule*/) {
  return DOM::NullaryConditionalFormatOperator(type);
}

template <DOM::UniquenessType type>
ConditionalFormatOperator readUniqueness(RuleElement const& /*rule*/) {
  return DOM::UniquenessConditionalFormatOperator{type};
}

ConditionalFormatOperator readTopBottom(RuleElement const& rule) {
  constexpr std::uint32_t defaultRank = 10;
  std::string_view const text = rule.getText("rank");
  auto const rank = text.empty() ? std::optional<long>(defaultRank) : parseInteger(text);
  if (!rank || *rank < 0 || *rank > std::numeric_limits<std::uint32_t>::max()) {
    throw UnresolvedRule(fmt::format("the rank \"{}\" is no count", quote(text)));
  }
  auto const type = rule.getFlag("bottom", false) ? DOM::TopBottomConditionalFormatType::Bottom
                                                  : DOM::TopBottomConditionalFormatType::Top;
  return DOM::TopBottomConditionalFormatOperator(type, static_cast<std::uint32_t>(*rank),
                                                 rule.getFlag("percent", false));
}

/// A deviation of 0 means the plain average.
ConditionalFormatOperator readAverage(RuleElement const& rule) {
  using Type = DOM::AboveAverageConditionalFormatType;
  bool const orEqual = rule.getFlag("equalAverage", false);
  auto const type = rule.getFlag("aboveAverage", true)
                        ? (orEqual ? Type::EqualOrAbove : Type::Above)
                        : (orEqual ? Type::EqualOrBelow : Type::Below);
  auto const deviations = parseInteger(rule.getText("stdDev"));
  if (!deviations || *deviations == 0) {
    return DOM::AboveAverageConditionalFormatOperator(type);
  }
  return DOM::AboveAverageConditionalFormatOperator(
      type, static_cast<std::uint32_t>(
                std::clamp<long>(*deviations, 1, std::numeric_limits<std::uint32_t>::max())));
}

struct Kind {
  std::string_view name;
  ConditionalFormatOperator (*read)(RuleElement const& rule);
};

template <std::size_t count>
Kind const* findKind(std::array<Kind, count> const& kinds, std::string_view name) noexcept {
  auto const found = std::find_if(kinds.begin(), kinds.end(),
                                  [name](Kind const& kind) { return kind.name == name; });
  return found == kinds.end() ? nullptr : &*found;
}

constexpr std::array comparisons{
    Kind{"equal", readComparison<UnaryConditionalFormatType::Equal>},
    Kind{"notEqual", readComparison<UnaryConditionalFormatType::NotEqual>},
    Kind{"greaterThan", readComparison<UnaryConditionalFormatType::Greater>},
    Kind{"greaterThanOrEqual", readComparison<UnaryConditionalFormatType::GreaterOrEqual>},
    Kind{"lessThan", readComparison<UnaryConditionalFormatType::Less>},
    Kind{"lessThanOrEqual", readComparison<UnaryConditionalFormatType::LessOrEqual>},
    Kind{"between", readInterval<DOM::BinaryConditionalFormatType::Between>},
    Kind{"notBetween", readInterval<DOM::BinaryConditionalFormatType::NotBetween>},
    Kind{"containsText", readTextComparison<TextConditionalFormatType::Contains>},
    Kind{"notContains", readTextComparison<TextConditionalFormatType::NotContains>},
    Kind{"beginsWith", readTextComparison<TextConditionalFormatType::BeginsWith>},
    Kind{"endsWith", readTextComparison<TextConditionalFormatType::EndsWith>}};

ConditionalFormatOperator readCellIs(RuleElement const& rule) {
  std::string_view const name = rule.getText("operator");
  Kind const* const comparison = findKind(comparisons, name);
  if (!comparison) {
    throw UnresolvedRule(name.empty()
                             ? "the comparison names no operator"
                             : fmt::format("the operator \"{}\" is not known", quote(name)));
  }
  return comparison->read(rule);
}

constexpr std::array periods{
    Kind{"yesterday", readNullary<NullaryConditionalFormatType::Yesterday>},
    Kind{"today", readNullary<NullaryConditionalFormatType::Today>},
    Kind{"tomorrow", readNullary<NullaryConditionalFormatType::Tomorrow>},
    Kind{"last7Days", readNullary<NullaryConditionalFormatType::Last7Days>},
    Kind{"lastWeek", readNullary<NullaryConditionalFormatType::LastWeek>},
    Kind{"thisWeek", readNullary<NullaryConditionalFormatType::ThisWeek>},
    Kind{"nextWeek", readNullary<NullaryConditionalFormatType::NextWeek>},
    Kind{"lastMonth", readNullary<NullaryConditionalFormatType::LastMonth>},
    Kind{"thisMonth", readNullary<NullaryConditionalFormatType::ThisMonth>},
    Kind{"nextMonth", readNullary<NullaryConditionalFormatType::NextMonth>}};

ConditionalFormatOperator readPeriod(RuleElement const& rule) {
  std::string_view const name = rule.getText("timePeriod");
  Kind const* const period = findKind(periods, name);
  if (!period) {
    throw UnresolvedRule(name.empty() ? "the rule names no period"
                                      : fmt::format("the period \"{}\" is not known", quote(name)));
  }
  return period->read(rule);
}

constexpr std::array kinds{
    Kind{"expression", readExpression},
    Kind{"cellIs", readCellIs},
    Kind{"containsText", readText<TextConditionalFormatType::Contains>},
    Kind{"notContainsText", readText<TextConditionalFormatType::NotContains>},
    Kind{"beginsWith", readText<TextConditionalFormatType::BeginsWith>},
    Kind{"endsWith", readText<TextConditionalFormatType::EndsWith>},
    Kind{"top10", readTopBottom},
    Kind{"aboveAverage", readAverage},
    Kind{"duplicateValues", readUniqueness<DOM::UniquenessType::Duplicate>},
    Kind{"uniqueValues", readUniqueness<DOM::UniquenessType::Unique>},
    Kind{"timePeriod", readPeriod},
    Kind{"containsBlanks", readBlanks<NullaryConditionalFormatType::Blanks>},
    Kind{"notContainsBlanks", readBlanks<NullaryConditionalFormatType::NoBlanks>},
    Kind{"containsErrors", readNullary<NullaryConditionalFormatType::Errors>},
    Kind{"notContainsErrors", readNullary<NullaryConditionalFormatType::NoErrors>}};

}  // namespace

ConditionalFormatOperator readCondition(pugi::xml_node rule,
                                        std::vector<std::string> const& formulas) {
  RuleElement const element{rule, formulas};
  std::string_view const type = element.getText("type");
  Kind const* const kind = findKind(kinds, type);
  if (!kind) {
    throw UnresolvedRule(type.empty() ? "the rule names no type"
                                      : fmt::format("the type \"{}\" is not known", quote(type)));
  }
  return kind->read(element);
}

std::string findNeedleFormula(pugi::xml_node rule, std::vector<std::string> const& formulas) {
  constexpr std::array<std::string_view, 4> textTypes{"containsText", "notContainsText",
                                                      "beginsWith", "endsWith"};
  RuleElement const element{rule, formulas};
  if (std::ranges::find(textTypes, element.getText("type")) == textTypes.end()) {
    return {};
  }
  auto const needle = findWrittenNeedle(element);
  return needle && !parseStringConstant(*needle) ? *needle : std::string();
}

DOM::FormulaSyntaxTree::Expr parseRuleFormula(std::string const& formula) {
  try {
    return Formulas::parseExpr(formula);
  } catch (Formulas::FormulaParseError const& error) {
    throw UnresolvedRule(
        fmt::format("the formula \"{}\" cannot be read: {}", quote(formula), error.what()));
  }
}

}  // namespace Zorv::Workbook
