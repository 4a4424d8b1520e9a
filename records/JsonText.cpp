#include "records/JsonText.h"

#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>
#include <boost/variant/static_visitor.hpp>
#include <nlohmann/json.hpp>

#include "DOM/A1Notation.h"
#include "DOM/CellStyle.h"
#include "DOM/SetProperties.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "analysis/Shared/Rules.h"
#include "words/ConditionText.h"
#include "words/Printable.h"
#include "words/StyleText.h"

namespace Zorv::Records {

namespace {

/// Members keep the order in which they were added.
using Json = nlohmann::ordered_json;

std::string dump(Json const& json, int indent = -1) {
  return Words::escapeUnprintable(json.dump(indent, ' ', false, Json::error_handler_t::replace));
}

/// True if a text can be quoted as it is.
bool needsNoEscape(std::string_view text) noexcept {
  return Words::isPlain(text) && text.find_first_of("\"\\") == std::string_view::npos;
}

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
  Json json = {{"style", Words::toText(line.style)}};
  if (line.colour) {
    json["colour"] = Words::toText(*line.colour);
  }
  return json;
}

Json propertyToJson(DOM::GradientFill const& gradient) {
  bool const isLinear = gradient.type == DOM::GradientType::Linear;
  Json json = {{"type", isLinear ? "linear" : "path"}};
  if (isLinear) {
    json["degree"] = gradient.degree;
  } else {
    json.update({{"left", gradient.left},
                 {"right", gradient.right},
                 {"top", gradient.top},
                 {"bottom", gradient.bottom}});
  }
  auto& stops = json["stops"] = Json::array();
  for (DOM::GradientStop const& stop : gradient.stops) {
    stops.push_back({{"position", stop.position}, {"colour", Words::toText(stop.colour)}});
  }
  return json;
}

template <class Value>
Json propertyToJson(Value const& value) {
  if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
    return value;
  } else {
    return Words::toText(value);
  }
}

/// The properties that a style sets, by the names of their members.
Json styleToJson(DOM::CellStyle const& style) {
  auto json = Json::object();
  forEachSetProperty(
      style, [&](char const* name, auto const& value) { json[name] = propertyToJson(value); });
  return json;
}

Json toJson(std::optional<DOM::Colour> const& colour) {
  return colour ? Json(Words::toText(*colour)) : Json(nullptr);
}

Json toJson(Visuals::Threshold const& threshold) {
  Json json = {{"type", toText(threshold.kind)}};
  if (hasOperand(threshold.kind)) {
    json["value"] = threshold.text;
  }
  return json;
}

/// Writer of what a visual rule draws.
struct VisualToJson {
  Json operator()(Visuals::ColourScale const& scale) const {
    auto points = Json::array();
    for (auto const& point : scale.points) {
      auto json = toJson(point.threshold);
      json["colour"] = Words::toText(point.colour);
      points.push_back(std::move(json));
    }
    return {{"points", points}};
  }

  Json operator()(Visuals::DataBar const& bar) const {
    return {{"minimum", toJson(bar.minimum)},
            {"maximum", toJson(bar.maximum)},
            {"minLength", bar.minLength},
            {"maxLength", bar.maxLength},
            {"fill", toJson(bar.fill)},
            {"gradient", bar.isGradient},
            {"border", toJson(bar.border)},
            {"negativeFill", toJson(bar.negativeFill)},
            {"negativeBorder", toJson(bar.negativeBorder)},
            {"axis", toText(bar.axis)},
            {"axisColour", toJson(bar.axisColour)},
            {"direction", toText(bar.direction)},
            {"showValue", bar.showValue}};
  }

  Json operator()(Visuals::IconSet const& set) const {
    auto steps = Json::array();
    for (auto const& step : set.steps) {
      auto json = toJson(step);
      json["orEqual"] = step.orEqual;
      steps.push_back(std::move(json));
    }
    auto ownIcons = Json::array();
    for (auto const& icon : set.ownIcons) {
      ownIcons.push_back({{"set", toText(icon.set)}, {"index", icon.index}});
    }
    return {{"set", toText(set.name)},
            {"steps", steps},
            {"ownIcons", ownIcons},
            {"reversed", set.isReversed},
            {"showValue", set.showValue}};
  }
};

Json toJson(Workbook::Rule const& rule, std::string const& condition, std::string const& ranges) {
  return {{"rule", rule.number},
          {"kind", rule.type},
          {"condition", condition},
          {"ranges", ranges},
          {"priority", rule.priority ? Json(*rule.priority) : Json(nullptr)},
          {"stop", rule.stopIfTrue}};
}

/// A rule with its formulas, and its style or the reason why it is not resolved.
Json describeRule(Workbook::Document const& document, Workbook::Rule const& rule) {
  auto json =
      toJson(rule, Words::describeCondition(rule),
             rule.ranges.empty() ? rule.rangeText : DOM::A1Notation::toAddress(rule.ranges));
  json["formulas"] = rule.formulas;
  json["resolved"] = rule.isResolved();
  if (!rule.isResolved()) {
    json["reason"] = rule.unresolvedReason;
    return json;
  }
  if (rule.visual != nullptr) {
    json["visual"] = std::visit(VisualToJson(), rule.visual->kind);
  } else {
    json["style"] = styleToJson(Analysis::findRuleStyle(document, rule));
  }
  json["doubts"] = rule.doubts;
  return json;
}

}  // namespace

void appendJsonText(std::string& json, std::string_view text) {
  if (needsNoEscape(text)) {
    json.append("\"").append(text).append("\"");
  } else {
    json += dump(text);
  }
}

void appendJsonValue(std::string& json, FormulaModel::FormulaValue const& value) {
  if (auto const* const text = boost::get<FormulaModel::FormulaString>(&value)) {
    appendJsonText(json, text->value);
  } else {
    json += dump(boost::apply_visitor(ValueToJson(), value));
  }
}

std::string toJsonText(DOM::CellStyle const& style) { return dump(styleToJson(style)); }

std::string toJsonText(std::span<Workbook::Rule const* const> deciding) {
  constexpr std::size_t widestCondition = 200;
  auto rules = Json::array();
  for (auto const* rule : deciding) {
    rules.push_back(toJson(*rule, Words::shorten(Words::describeCondition(*rule), widestCondition),
                           Words::describeRanges(*rule)));
  }
  return dump(rules);
}

std::string toJsonText(Workbook::Document const& document, Workbook::Rule const& rule) {
  return dump(describeRule(document, rule));
}

std::string indentJson(std::string_view json) {
  constexpr int indent = 2;
  return dump(Json::parse(json), indent);
}

}  // namespace Zorv::Records
