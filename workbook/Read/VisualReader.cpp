#include "workbook/Read/VisualReader.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <fmt/format.h>

#include "Formulas/ParseExpr.h"
#include "workbook/Quote.h"
#include "workbook/Read/RuleCondition.h"
#include "workbook/Read/RuleElement.h"
#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

using Visuals::ColourScale;
using Visuals::DataBar;
using Visuals::IconSet;
using Visuals::Threshold;
using Visuals::ThresholdKind;
using Visuals::VisualKind;

std::vector<pugi::xml_node> listChildren(pugi::xml_node parent, std::string_view name) {
  std::vector<pugi::xml_node> children;
  for (pugi::xml_node const child : parent) {
    if (localName(child) == name) {
      children.push_back(child);
    }
  }
  return children;
}

/// The first child of that name, or an empty node.
pugi::xml_node findChild(pugi::xml_node parent, std::string_view name) {
  return parent.find_child([name](pugi::xml_node child) { return localName(child) == name; });
}

using Faults = std::vector<std::string>;

bool readFlag(pugi::xml_node element, char const* name, bool missing, Faults& faults) {
  pugi::xml_attribute const attribute = element.attribute(name);
  auto const flag = parseBoolean(attribute.value());
  if (attribute && !flag) {
    faults.push_back(describeFaultyFlag(attribute, missing));
  }
  return flag.value_or(missing);
}

/// The value of an attribute that takes one word for each value up to the last.
template <class Value>
Value readWord(pugi::xml_node element, char const* name, Value last, Value missing) {
  pugi::xml_attribute const attribute = element.attribute(name);
  if (!attribute) {
    return missing;
  }
  for (unsigned value = 0; value <= static_cast<unsigned>(last); ++value) {
    if (toText(static_cast<Value>(value)) == attribute.value()) {
      return static_cast<Value>(value);
    }
  }
  throw UnresolvedRule(fmt::format("{}=\"{}\" is not known", name, quote(attribute.value())));
}

ThresholdKind readThresholdKind(pugi::xml_node element) {
  if (!element.attribute("type")) {
    throw UnresolvedRule("a threshold names no type");
  }
  return readWord(element, "type", ThresholdKind::AutoMax, ThresholdKind::Min);
}

/// A `cfvo` element (ISO/IEC 29500-1, 18.3.1.11). The later form has its operand in a formula,
/// which may be a bare number.
Threshold readThreshold(pugi::xml_node element, Faults& faults) {
  Threshold threshold;
  threshold.kind = readThresholdKind(element);
  threshold.orEqual = readFlag(element, "gte", true, faults);
  if (!Visuals::hasOperand(threshold.kind)) {
    return threshold;
  }
  pugi::xml_attribute const value = element.attribute("val");
  threshold.text =
      unescapeXstring(trimXmlSpaces(value ? value.value() : findChild(element, "f").text().get()));
  if (threshold.text.empty()) {
    throw UnresolvedRule(
        fmt::format("a threshold of the type {} has no value", toText(threshold.kind)));
  }
  if (auto const number = parseNumber(threshold.text)) {
    threshold.operand = *number;
  } else {
    threshold.operand = parseRuleFormula(threshold.text);
  }
  return threshold;
}

/// Reads one threshold more than any kind may have, at most: the others of a hostile file are not
/// worth the work.
std::vector<Threshold> readThresholds(pugi::xml_node element, Faults& faults) {
  std::vector<Threshold> thresholds;
  for (pugi::xml_node const child : listChildren(element, "cfvo")) {
    if (thresholds.size() <= IconSet::mostSteps) {
      thresholds.push_back(readThreshold(child, faults));
    }
  }
  return thresholds;
}

std::optional<DOM::Colour> readColour(pugi::xml_node element, std::string_view name,
                                      Palette& palette) {
  return palette.read(findChild(element, name), AutomaticColour::Ink);
}

ColourScale readColourScale(pugi::xml_node element, Palette& palette, Faults& faults) {
  auto thresholds = readThresholds(element, faults);
  auto const colours = listChildren(element, "color");
  constexpr std::size_t fewest = 2;
  constexpr std::size_t most = 3;
  if (thresholds.size() < fewest || thresholds.size() > most ||
      colours.size() != thresholds.size()) {
    throw UnresolvedRule(
        fmt::format("a colour scale has two or three thresholds and as many colours, not {} and {}",
                    thresholds.size(), colours.size()));
  }
  ColourScale scale;
  for (std::size_t index = 0; index < colours.size(); ++index) {
    auto const colour = palette.read(colours[index], AutomaticColour::Ink);
    if (!colour) {
      throw UnresolvedRule("a colour of the scale cannot be read");
    }
    scale.points.push_back({std::move(thresholds[index]), *colour});
  }
  return scale;
}

/// A length in percent of the cell's width.
double readLength(pugi::xml_node element, char const* name, double missing, Faults& faults) {
  pugi::xml_attribute const attribute = element.attribute(name);
  if (!attribute) {
    return missing;
  }
  auto const length = parseNumber(attribute.value());
  if (!length) {
    throw UnresolvedRule(fmt::format("{}=\"{}\" is no number", name, quote(attribute.value())));
  }
  constexpr double longest = 100;
  double const fitting = std::clamp(*length, 0.0, longest);
  if (fitting != *length) {
    faults.push_back(fmt::format("has {}=\"{}\", which is not from 0 to {}; it counts as {}", name,
                                 quote(attribute.value()), longest, fitting));
  }
  return fitting;
}

void readLengths(pugi::xml_node element, DataBar& bar, Faults& faults) {
  bar.minLength = readLength(element, "minLength", bar.minLength, faults);
  bar.maxLength = readLength(element, "maxLength", bar.maxLength, faults);
  if (bar.maxLength < bar.minLength) {
    faults.push_back(
        fmt::format("has a maxLength of {} below its minLength of {}; both count as {}",
                    bar.maxLength, bar.minLength, bar.minLength));
    bar.maxLength = bar.minLength;
  }
}

/// Reads the properties that only the later form has.
void readBarAppearance(pugi::xml_node element, Palette& palette, DataBar& bar, Faults& faults) {
  bar.axis =
      readWord(element, "axisPosition", Visuals::BarAxis::Middle, Visuals::BarAxis::Automatic);
  bar.direction = readWord(element, "direction", Visuals::BarDirection::RightToLeft,
                           Visuals::BarDirection::Context);
  bar.isGradient = readFlag(element, "gradient", true, faults);
  bar.axisColour = readColour(element, "axisColor", palette);
  if (readFlag(element, "border", false, faults)) {
    auto const border = readColour(element, "borderColor", palette);
    bar.border = border ? border : bar.fill;
  }
  if (!readFlag(element, "negativeBarColorSameAsPositive", false, faults)) {
    bar.negativeFill = readColour(element, "negativeFillColor", palette);
  }
  if (!readFlag(element, "negativeBarBorderColorSameAsPositive", true, faults)) {
    bar.negativeBorder = readColour(element, "negativeBorderColor", palette);
  }
}

DataBar readDataBar(pugi::xml_node element, bool isLaterForm, Palette& palette,
                    DataBar const* first, Faults& faults) {
  auto thresholds = readThresholds(element, faults);
  if (thresholds.size() != 2) {
    throw UnresolvedRule(fmt::format("a data bar has two thresholds, not {}", thresholds.size()));
  }
  DataBar bar;
  bar.minimum = std::move(thresholds[0]);
  bar.maximum = std::move(thresholds[1]);
  readLengths(element, bar, faults);
  bar.showValue =
      readFlag(element, "showValue", true, faults) && (first == nullptr || first->showValue);
  bar.fill = readColour(element, isLaterForm ? "fillColor" : "color", palette);
  if (!bar.fill && first != nullptr) {
    bar.fill = first->fill;
  }
  if (isLaterForm) {
    readBarAppearance(element, palette, bar, faults);
  }
  return bar;
}

Visuals::IconSetName readIconSetName(pugi::xml_node element) {
  pugi::xml_attribute const attribute = element.attribute("iconSet");
  auto const name = attribute ? Visuals::parseIconSetName(attribute.value())
                              : Visuals::IconSetName::TrafficLights3One;
  if (!name) {
    throw UnresolvedRule(fmt::format("the icon set \"{}\" is not known", quote(attribute.value())));
  }
  return *name;
}

Visuals::Icon readOwnIcon(pugi::xml_node element) {
  auto const name = readIconSetName(element);
  auto const index = parseInteger(element.attribute("iconId").value());
  bool const isDrawn = name != Visuals::IconSetName::NoIcons;
  if (!index || *index < 0 || (isDrawn && *index >= static_cast<long>(countIcons(name)))) {
    throw UnresolvedRule(fmt::format("the set {} has no icon \"{}\"", toText(name),
                                     quote(element.attribute("iconId").value())));
  }
  return {name, isDrawn ? static_cast<unsigned>(*index) : 0};
}

IconSet readIconSet(pugi::xml_node element, IconSet const* first, Faults& faults) {
  IconSet set;
  set.name = readIconSetName(element);
  set.steps = readThresholds(element, faults);
  set.isReversed = readFlag(element, "reverse", false, faults);
  set.showValue =
      readFlag(element, "showValue", true, faults) && (first == nullptr || first->showValue);
  if (set.steps.size() != countIcons(set.name)) {
    throw UnresolvedRule(fmt::format("the set {} has {} icons, and the rule {} thresholds",
                                     toText(set.name), countIcons(set.name), set.steps.size()));
  }
  if (readFlag(element, "custom", false, faults)) {
    for (pugi::xml_node const icon : listChildren(element, "cfIcon")) {
      set.ownIcons.push_back(readOwnIcon(icon));
    }
    if (set.ownIcons.size() != set.steps.size()) {
      throw UnresolvedRule(fmt::format("the rule has {} icons of its own for {} thresholds",
                                       set.ownIcons.size(), set.steps.size()));
    }
  }
  return set;
}

/// The element of the rule's type, which says what is drawn.
pugi::xml_node findDrawing(pugi::xml_node rule, std::string_view type) {
  pugi::xml_node const drawing = findChild(rule, type);
  if (!drawing) {
    throw UnresolvedRule(fmt::format("the rule has no {} element", type));
  }
  return drawing;
}

}  // namespace

bool isVisual(std::string_view type) noexcept {
  return type == "colorScale" || type == "dataBar" || type == "iconSet";
}

VisualKind readVisual(pugi::xml_node rule, Palette& palette, VisualKind const* first,
                      std::vector<std::string>& faults) {
  std::string_view const type = rule.attribute("type").value();
  pugi::xml_node const drawing = findDrawing(rule, type);
  bool const isLaterForm = localName(rule) != rule.name();
  if (type == "colorScale") {
    return readColourScale(drawing, palette, faults);
  }
  if (type == "dataBar") {
    return readDataBar(drawing, isLaterForm, palette, std::get_if<DataBar>(first), faults);
  }
  return readIconSet(drawing, std::get_if<IconSet>(first), faults);
}

}  // namespace Zorv::Workbook
