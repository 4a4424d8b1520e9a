#include "words/StyleText.h"

#include <array>
#include <cstddef>
#include <map>

#include <fmt/format.h>

#include "DOM/SetProperties.h"

namespace Zorv::Words {

namespace {

template <class Enum, std::size_t size>
std::string_view nameOf(Enum value, std::array<std::string_view, size> const& names) noexcept {
  auto const index = static_cast<std::size_t>(value);
  return index < size ? names[index] : std::string_view("unknown");
}

/// Word for a property in a line for people; its name if there is no other.
std::string_view wordOf(std::string_view name) {
  static std::map<std::string_view, std::string_view> const words = {
      {"fontName", "font"},
      {"fontSize", "size"},
      {"colour", "text"},
      {"verticalRun", "script"},
      {"horizontalAlignment", "align"},
      {"wrapText", "wrap"},
      {"shrinkToFit", "shrink"},
      {"textRotation", "rotate"},
      {"readingOrder", "reading order"},
      {"fillPattern", "pattern"},
      {"fillColour", "fill"},
      {"fillPatternColour", "pattern colour"},
      {"fillGradient", "gradient"},
      {"borderLeft", "left border"},
      {"borderRight", "right border"},
      {"borderTop", "top border"},
      {"borderBottom", "bottom border"},
      {"borderDiagonalUp", "rising diagonal"},
      {"borderDiagonalDown", "falling diagonal"},
      {"verticalAlignment", "vertical align"},
      {"numberFormat", "format"}};
  auto const found = words.find(name);
  return found == words.end() ? name : found->second;
}

/// The words for a property's value.
std::string describeProperty(std::string_view name, bool value) {
  return fmt::format("{}{}", value ? "" : "not ", wordOf(name));
}
template <class Number>
requires std::is_arithmetic_v<Number> std::string describeProperty(std::string_view name,
                                                                   Number value) {
  return fmt::format("{} {}", wordOf(name), value);
}
std::string describeProperty(std::string_view name, std::string const& value) {
  return fmt::format("{} {}", wordOf(name), value);
}
template <class Value>
requires(!std::is_arithmetic_v<Value>) std::string
    describeProperty(std::string_view name, Value const& value) {
  return fmt::format("{} {}", wordOf(name), toText(value));
}

template <class Value>
std::optional<DOM::Colour> colourOf(Value const& /*value*/) {
  return std::nullopt;
}
std::optional<DOM::Colour> colourOf(DOM::Colour const& value) { return value; }
std::optional<DOM::Colour> colourOf(DOM::BorderLine const& value) { return value.colour; }

/// A solid fill is described by its colour alone, and a gradient by its colours.
template <class Value>
bool isSaidByOthers(Value const& /*value*/) noexcept {
  return false;
}
bool isSaidByOthers(DOM::FillPattern value) noexcept {
  return value == DOM::FillPattern::Solid || value == DOM::FillPattern::Gradient;
}

bool hasFrame(DOM::CellProps const& props) noexcept {
  return props.borderLeft && props.borderLeft == props.borderRight &&
         props.borderLeft == props.borderTop && props.borderLeft == props.borderBottom;
}

/// Properties of a fill that does not show: rules set them one by one, so that a style may have
/// those of a gradient and of a plain fill.
bool isHiddenFill(std::string_view name, bool isGradient) noexcept {
  return isGradient ? name == "fillColour" || name == "fillPatternColour" : name == "fillGradient";
}

bool isSide(std::string_view name) noexcept {
  return name == "borderLeft" || name == "borderRight" || name == "borderTop" ||
         name == "borderBottom";
}

}  // namespace

std::string toText(DOM::Colour const& colour) {
  auto text = fmt::format("#{:02X}{:02X}{:02X}", colour.red, colour.green, colour.blue);
  if (colour.alpha != 255) {
    text += fmt::format("{:02X}", colour.alpha);
  }
  return text;
}

std::string_view toText(DOM::Underline value) noexcept {
  static constexpr std::array<std::string_view, 5> names = {"none", "single", "double",
                                                            "singleAccounting", "doubleAccounting"};
  return nameOf(value, names);
}

std::string_view toText(DOM::VerticalRun value) noexcept {
  static constexpr std::array<std::string_view, 3> names = {"baseline", "superscript", "subscript"};
  return nameOf(value, names);
}

std::string_view toText(DOM::HorizontalAlignment value) noexcept {
  static constexpr std::array<std::string_view, 8> names = {
      "general", "left", "center", "right", "fill", "justify", "centerContinuous", "distributed"};
  return nameOf(value, names);
}

std::string_view toText(DOM::VerticalAlignment value) noexcept {
  static constexpr std::array<std::string_view, 5> names = {"top", "center", "bottom", "justify",
                                                            "distributed"};
  return nameOf(value, names);
}

std::string_view toText(DOM::FillPattern value) noexcept {
  static constexpr std::array<std::string_view, 20> names = {
      "none",           "solid",           "mediumGray",    "darkGray",  "lightGray",
      "darkHorizontal", "darkVertical",    "darkDown",      "darkUp",    "darkGrid",
      "darkTrellis",    "lightHorizontal", "lightVertical", "lightDown", "lightUp",
      "lightGrid",      "lightTrellis",    "gray125",       "gray0625",  "gradient"};
  return nameOf(value, names);
}

std::string_view toText(DOM::LineStyle value) noexcept {
  static constexpr std::array<std::string_view, 14> names = {"none",
                                                             "thin",
                                                             "medium",
                                                             "dashed",
                                                             "dotted",
                                                             "thick",
                                                             "double",
                                                             "hair",
                                                             "mediumDashed",
                                                             "dashDot",
                                                             "mediumDashDot",
                                                             "dashDotDot",
                                                             "mediumDashDotDot",
                                                             "slantDashDot"};
  return nameOf(value, names);
}

std::string toText(DOM::BorderLine const& line) {
  std::string text(toText(line.style));
  if (line.colour) {
    text += fmt::format(" {}", toText(*line.colour));
  }
  return text;
}

std::string toText(DOM::GradientFill const& gradient) {
  std::string text;
  for (DOM::GradientStop const& stop : gradient.stops) {
    text += text.empty() ? "" : " to ";
    text += toText(stop.colour);
  }
  return text;
}

std::optional<DOM::Colour> findFillColour(DOM::CellStyle const& style) {
  auto const& props = style.getCellProps();
  if (!props || props->fillPattern == DOM::FillPattern::None) {
    return std::nullopt;
  }
  if (props->fillPattern == DOM::FillPattern::Gradient && props->fillGradient &&
      !props->fillGradient->stops.empty()) {
    return props->fillGradient->stops.front().colour;
  }
  return props->fillColour ? props->fillColour : props->fillPatternColour;
}

std::vector<StylePhrase> listPhrases(DOM::CellStyle const& style, bool joinsBorder) {
  std::vector<StylePhrase> phrases;
  auto const& props = style.getCellProps();
  bool const isFramed = joinsBorder && props && hasFrame(*props);
  bool const isGradient = props && props->fillPattern == DOM::FillPattern::Gradient;
  forEachSetProperty(style, [&](std::string_view name, auto const& value) {
    bool const isLaterSide = isFramed && isSide(name) && name != "borderLeft";
    if (isHiddenFill(name, isGradient) || isSaidByOthers(value) || isLaterSide) {
      return;
    }
    phrases.push_back({name, describeProperty(isFramed && isSide(name) ? "border" : name, value),
                       colourOf(value)});
  });
  return phrases;
}

std::string describe(DOM::CellStyle const& style) {
  std::string text;
  for (auto const& phrase : listPhrases(style)) {
    text += text.empty() ? "" : ", ";
    text += phrase.text;
  }
  return text.empty() ? "nothing" : text;
}

}  // namespace Zorv::Words
