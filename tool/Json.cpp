#include "tool/Json.h"

#include <chrono>
#include <string_view>
#include <type_traits>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "tool/ConditionText.h"
#include "tool/Moment.h"
#include "tool/RuleCounts.h"
#include "tool/StyleText.h"
#include "workbook/Addresses.h"

namespace Zorv::Tool {

namespace {

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

}  // namespace

std::string toLine(Json const& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json toJson(FormulaModel::FormulaValue const& value) {
  return boost::apply_visitor(ValueToJson(), value);
}

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
  return {{"rule", rule.number},
          {"kind", rule.type},
          {"condition", describeCondition(rule)},
          {"ranges", rule.ranges.empty() ? rule.rangeText : Workbook::toAddress(rule.ranges)},
          {"priority", rule.priority ? Json(*rule.priority) : Json(nullptr)},
          {"stop", rule.stopIfTrue}};
}

}  // namespace Zorv::Tool
