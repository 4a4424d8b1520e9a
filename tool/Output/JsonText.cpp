#include "tool/Output/JsonText.h"

#include <chrono>
#include <string_view>
#include <type_traits>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>
#include <nlohmann/json.hpp>

#include "DOM/A1Notation.h"
#include "DOM/CellStyle.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "tool/Output/RuleCounts.h"
#include "tool/Output/RulesOutput.h"
#include "tool/Text/ConditionText.h"
#include "tool/Text/Moment.h"
#include "tool/Text/StyleText.h"

namespace Zorv::Tool {

namespace {

/// Members keep the order in which they were added.
using Json = nlohmann::ordered_json;

std::string dump(Json const& json, int indent = -1) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

/// A number, a text, a truth value, null for empty, or `{"error": "#DIV/0!"}`.
class ValueToJson : public boost::static_visitor<Json> {
public:
  Json operator()(FormulaModel::FormulaEmpty const& /*empty*/) const { return nullptr; }
  Json operator()(FormulaModel::FormulaNumber const& number) const { return number.value.get(); }
  Json operator()(FormulaModel::FormulaString const& text) const { return text.value; }
  Json operator()(FormulaModel::FormulaBoolean const& boolean) const { return boolean.value; }
  Json operator()(FormulaModel::FormulaError const& error) const {
    return {{"error", FormulaModel::toText(error.code)}};
  }
};

Json propertyToJson(DOM::BorderLine const& line) {
  Json json = {{"style", toText(line.style)}};
  if (line.colour) {
    json["colour"] = toText(*line.colour);
  }
  return json;
}

template <class Value>
Json propertyToJson(Value const& value) {
  if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
    return value;
  } else {
    return toText(value);
  }
}

Json toJson(FormulaModel::FormulaValue const& value) {
  return boost::apply_visitor(ValueToJson(), value);
}

/// The properties that a style sets, by the names of their members.
Json toJson(DOM::CellStyle const& style) {
  auto json = Json::object();
  forEachSetProperty(
      style, [&](char const* name, auto const& value) { json[name] = propertyToJson(value); });
  return json;
}

Json describeRun(Selection const& selection) {
  auto const& options = selection.getOptions();
  auto const now = std::chrono::floor<std::chrono::seconds>(options.timeZone.toLocal(options.now));
  return {{"file", options.file},
          {"now", toText(now)},
          {"timeZone", options.timeZone.getName()},
          {"locale", options.localeName}};
}

Json summarise(Selection const& selection) {
  RuleCounts const counts(selection.getRules());
  auto notResolved = Json::object();
  for (auto const& [kind, count] : counts.notResolvedByKind) {
    notResolved[kind] = count;
  }
  return {{"read", counts.read},
          {"resolved", counts.resolved},
          {"notResolved", notResolved},
          {"unknownFunctions", counts.unknownFunctions}};
}

Json toJson(Workbook::Rule const& rule) {
  return {
      {"rule", rule.number},
      {"kind", rule.type},
      {"condition", describeCondition(rule)},
      {"ranges", rule.ranges.empty() ? rule.rangeText : DOM::A1Notation::toAddress(rule.ranges)},
      {"priority", rule.priority ? Json(*rule.priority) : Json(nullptr)},
      {"stop", rule.stopIfTrue}};
}

/// A rule with its formulas, and its style or the reason why it is not resolved.
Json describeRule(Workbook::Document const& document, Workbook::Rule const& rule) {
  auto json = toJson(rule);
  json["formulas"] = rule.formulas;
  json["resolved"] = rule.format != nullptr;
  if (rule.format) {
    json["style"] = toJson(findStyle(document, rule));
  } else {
    json["reason"] = rule.unresolvedReason;
  }
  return json;
}

}  // namespace

std::string toJsonText(std::string const& text) { return dump(text); }

std::string beginJsonDocument(Selection const& selection) {
  auto head = dump(describeRun(selection));
  head.pop_back();
  return head;
}

std::string toJsonSummary(Selection const& selection) { return dump(summarise(selection)); }

std::string toJsonText(ResolvedCell const& cell) {
  auto const* cellObject = cell.cellInfo.getCell();
  auto rules = Json::array();
  for (auto const* rule : cell.deciding) {
    rules.push_back(toJson(*rule));
  }
  return dump({{"cell", DOM::A1Notation::toAddress(cell.cellInfo.getCellIndex())},
               {"value", cellObject ? toJson(cellObject->value) : Json(nullptr)},
               {"style", toJson(cell.style->get())},
               {"rules", rules}});
}

std::string toJsonRules(Selection const& selection) {
  auto const& document = selection.getDocument();
  auto json = describeRun(selection);
  auto& sheets = json["sheets"] = Json::array();
  for (auto const sheet : selection.getSheets()) {
    auto rules = Json::array();
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      rules.push_back(describeRule(document, *rule));
    }
    sheets.push_back({{"name", document.getSheets()[sheet].name}, {"rules", rules}});
  }
  json["summary"] = summarise(selection);
  constexpr int indent = 2;
  return dump(json, indent);
}

}  // namespace Zorv::Tool
