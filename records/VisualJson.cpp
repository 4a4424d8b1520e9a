#include "records/VisualJson.h"

#include <optional>

#include <fmt/format.h>

#include "words/StyleText.h"
#include "workbook/SheetRules.h"

namespace Zorv::Records {

namespace {

std::string quoteColour(std::optional<DOM::Colour> const& colour) {
  return colour ? fmt::format("\"{}\"", Words::toText(*colour)) : "null";
}

std::string quoteNumber(std::optional<double> const& number) {
  return number ? fmt::format("{}", *number) : "null";
}

std::string toJson(Visuals::ShownScale const& scale, Workbook::Rule const& rule) {
  return fmt::format(R"("scale":{{"rule":{},"colour":{},"behindFill":{}}},)", rule.number,
                     quoteColour(scale.colour), scale.isBehindFill);
}

std::string toJson(Visuals::ShownBar const& bar, Workbook::Rule const& rule) {
  return fmt::format(
      R"("bar":{{"rule":{},"from":{},"to":{},"axis":{},"negative":{},"fill":{},"gradient":{},)"
      R"("border":{},"axisColour":{},"direction":"{}"}},)",
      rule.number, bar.extent.from, bar.extent.to, quoteNumber(bar.extent.axis), bar.isNegative,
      quoteColour(bar.getFill()), bar.bar->isGradient, quoteColour(bar.getBorder()),
      quoteColour(bar.bar->axisColour), toText(bar.bar->direction));
}

std::string toJson(Visuals::ShownIcon const& shown, Workbook::Rule const& rule) {
  return fmt::format(R"("icon":{{"rule":{},"set":"{}","index":{},"count":{}}},)", rule.number,
                     toText(shown.icon.set), shown.icon.index, countIcons(shown.icon.set));
}

}  // namespace

void appendJsonVisuals(std::string& json, Visuals::CellVisuals const& visuals,
                       Workbook::VisualRules const& rules) {
  if (!visuals.isEmpty()) {
    json += ",\"visuals\":";
    json += toJsonText(visuals, rules);
  }
}

std::string toJsonText(Visuals::CellVisuals const& visuals, Workbook::VisualRules const& rules) {
  auto const& [scale, bar, icon, showValue] = visuals;
  std::string json = "{";
  if (scale) {
    json += toJson(*scale, *rules.scale);
  }
  if (bar) {
    json += toJson(*bar, *rules.bar);
  }
  if (icon) {
    json += toJson(*icon, *rules.icon);
  }
  return json + fmt::format("\"showValue\":{}}}", showValue);
}

}  // namespace Zorv::Records
