#include "workbook/Read/FormatElements.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "workbook/Read/Values.h"
#include "workbook/Sheet.h"

namespace Zorv::Workbook {

namespace {

template <class Value>
struct NamedValue {
  std::string_view name;
  Value value;
};

template <class Value, std::size_t count>
std::optional<Value> findNamed(std::array<NamedValue<Value>, count> const& values,
                               std::string_view name) noexcept {
  auto const found = std::find_if(values.begin(), values.end(),
                                  [name](auto const& entry) { return entry.name == name; });
  return found == values.end() ? std::nullopt : std::optional(found->value);
}

using DOM::FillPattern;
using DOM::HorizontalAlignment;
using DOM::LineStyle;
using DOM::Underline;
using DOM::VerticalAlignment;
using DOM::VerticalRun;

constexpr std::array underlines{
    NamedValue<Underline>{"none", Underline::None},
    NamedValue<Underline>{"single", Underline::Single},
    NamedValue<Underline>{"double", Underline::Double},
    NamedValue<Underline>{"singleAccounting", Underline::SingleAccounting},
    NamedValue<Underline>{"doubleAccounting", Underline::DoubleAccounting}};

constexpr std::array verticalRuns{NamedValue<VerticalRun>{"baseline", VerticalRun::Baseline},
                                  NamedValue<VerticalRun>{"superscript", VerticalRun::Superscript},
                                  NamedValue<VerticalRun>{"subscript", VerticalRun::Subscript}};

constexpr std::array horizontalAlignments{
    NamedValue<HorizontalAlignment>{"general", HorizontalAlignment::General},
    NamedValue<HorizontalAlignment>{"left", HorizontalAlignment::Left},
    NamedValue<HorizontalAlignment>{"center", HorizontalAlignment::Center},
    NamedValue<HorizontalAlignment>{"right", HorizontalAlignment::Right},
    NamedValue<HorizontalAlignment>{"fill", HorizontalAlignment::Fill},
    NamedValue<HorizontalAlignment>{"justify", HorizontalAlignment::Justify},
    NamedValue<HorizontalAlignment>{"centerContinuous", HorizontalAlignment::CenterContinuous},
    NamedValue<HorizontalAlignment>{"distributed", HorizontalAlignment::Distributed}};

constexpr std::array verticalAlignments{
    NamedValue<VerticalAlignment>{"top", VerticalAlignment::Top},
    NamedValue<VerticalAlignment>{"center", VerticalAlignment::Center},
    NamedValue<VerticalAlignment>{"bottom", VerticalAlignment::Bottom},
    NamedValue<VerticalAlignment>{"justify", VerticalAlignment::Justify},
    NamedValue<VerticalAlignment>{"distributed", VerticalAlignment::Distributed}};

constexpr std::array lineStyles{
    NamedValue<LineStyle>{"none", LineStyle::None},
    NamedValue<LineStyle>{"thin", LineStyle::Thin},
    NamedValue<LineStyle>{"medium", LineStyle::Medium},
    NamedValue<LineStyle>{"dashed", LineStyle::Dashed},
    NamedValue<LineStyle>{"dotted", LineStyle::Dotted},
    NamedValue<LineStyle>{"thick", LineStyle::Thick},
    NamedValue<LineStyle>{"double", LineStyle::Double},
    NamedValue<LineStyle>{"hair", LineStyle::Hair},
    NamedValue<LineStyle>{"mediumDashed", LineStyle::MediumDashed},
    NamedValue<LineStyle>{"dashDot", LineStyle::DashDot},
    NamedValue<LineStyle>{"mediumDashDot", LineStyle::MediumDashDot},
    NamedValue<LineStyle>{"dashDotDot", LineStyle::DashDotDot},
    NamedValue<LineStyle>{"mediumDashDotDot", LineStyle::MediumDashDotDot},
    NamedValue<LineStyle>{"slantDashDot", LineStyle::SlantDashDot}};

constexpr std::array fillPatterns{
    NamedValue<FillPattern>{"none", FillPattern::None},
    NamedValue<FillPattern>{"solid", FillPattern::Solid},
    NamedValue<FillPattern>{"mediumGray", FillPattern::MediumGray},
    NamedValue<FillPattern>{"darkGray", FillPattern::DarkGray},
    NamedValue<FillPattern>{"lightGray", FillPattern::LightGray},
    NamedValue<FillPattern>{"darkHorizontal", FillPattern::DarkHorizontal},
    NamedValue<FillPattern>{"darkVertical", FillPattern::DarkVertical},
    NamedValue<FillPattern>{"darkDown", FillPattern::DarkDown},
    NamedValue<FillPattern>{"darkUp", FillPattern::DarkUp},
    NamedValue<FillPattern>{"darkGrid", FillPattern::DarkGrid},
    NamedValue<FillPattern>{"darkTrellis", FillPattern::DarkTrellis},
    NamedValue<FillPattern>{"lightHorizontal", FillPattern::LightHorizontal},
    NamedValue<FillPattern>{"lightVertical", FillPattern::LightVertical},
    NamedValue<FillPattern>{"lightDown", FillPattern::LightDown},
    NamedValue<FillPattern>{"lightUp", FillPattern::LightUp},
    NamedValue<FillPattern>{"lightGrid", FillPattern::LightGrid},
    NamedValue<FillPattern>{"lightTrellis", FillPattern::LightTrellis},
    NamedValue<FillPattern>{"gray125", FillPattern::Gray125},
    NamedValue<FillPattern>{"gray0625", FillPattern::Gray0625}};

/// Value of an element's `val`, which is true if it is left out.
std::optional<bool> readSwitch(pugi::xml_node element) {
  if (!element) {
    return std::nullopt;
  }
  return parseBoolean(element.attribute("val").value()).value_or(true);
}

std::optional<unsigned> readCount(pugi::xml_attribute attribute) {
  auto const count = parseInteger(attribute.value());
  constexpr long limit = 1'000;
  return count && 0 <= *count && *count <= limit ? std::optional(static_cast<unsigned>(*count))
                                                 : std::nullopt;
}

/// In degrees, counter-clockwise; files write clockwise ones as 91 and above.
std::optional<int> readRotation(pugi::xml_attribute attribute) {
  auto const rotation = parseInteger(attribute.value());
  if (rotation == stackedRotation) {
    return stackedRotation;
  }
  if (!rotation || *rotation < 0 || *rotation > 180) {
    return std::nullopt;
  }
  return static_cast<int>(*rotation <= 90 ? *rotation : 90 - *rotation);
}

/// A line without a style does not change the cell's line.
std::optional<DOM::BorderLine> readLine(pugi::xml_node line, Palette& palette) {
  auto const style = findNamed(lineStyles, line.attribute("style").value());
  if (!style) {
    return std::nullopt;
  }
  return DOM::BorderLine{*style, palette.read(line.child("color"), AutomaticColour::Ink)};
}

/// Strict documents name the sides by the writing direction.
pugi::xml_node findSide(pugi::xml_node border, char const* side, char const* strictSide) {
  pugi::xml_node const found = border.child(side);
  return found ? found : border.child(strictSide);
}

/// Number of an attribute that is 0 if it is left out.
double readPlace(pugi::xml_node element, char const* name) {
  return parseNumber(element.attribute(name).value()).value_or(0);
}

/// A gradient without a colour sets nothing.
void readGradient(pugi::xml_node element, Palette& palette, DOM::CellProps& props) {
  constexpr std::size_t longest = 32;
  DOM::GradientFill gradient;
  for (pugi::xml_node const stop : element.children("stop")) {
    auto const colour = palette.read(stop.child("color"), AutomaticColour::Paper);
    if (colour && gradient.stops.size() < longest) {
      gradient.stops.push_back({readPlace(stop, "position"), *colour});
    }
  }
  if (gradient.stops.empty()) {
    return;
  }
  if (std::string_view(element.attribute("type").value()) == "path") {
    gradient.type = DOM::GradientType::Path;
    gradient.left = readPlace(element, "left");
    gradient.right = readPlace(element, "right");
    gradient.top = readPlace(element, "top");
    gradient.bottom = readPlace(element, "bottom");
  } else {
    gradient.degree = readPlace(element, "degree");
  }
  props.fillPattern = FillPattern::Gradient;
  props.fillGradient = std::move(gradient);
}

void setIfPresent(auto& target, auto const& value) {
  if (value) {
    target = value;
  }
}

}  // namespace

void readFont(pugi::xml_node font, Palette& palette, DOM::RunProps& props) {
  // Each cell format has a copy of the name; no font has a longer one.
  constexpr std::size_t longestName = 255;
  // Runs of a text have another name for it.
  pugi::xml_node const nameOfRun = font.child("rFont");
  std::string_view const name =
      (nameOfRun ? nameOfRun : font.child("name")).attribute("val").value();
  if (!name.empty() && name.size() <= longestName) {
    props.fontName = name;
  }
  setIfPresent(props.fontSize, parseNumber(font.child("sz").attribute("val").value()));
  setIfPresent(props.colour, palette.read(font.child("color"), AutomaticColour::Ink));
  setIfPresent(props.bold, readSwitch(font.child("b")));
  setIfPresent(props.italic, readSwitch(font.child("i")));
  setIfPresent(props.strikethrough, readSwitch(font.child("strike")));
  if (pugi::xml_node const underline = font.child("u")) {
    props.underline =
        findNamed(underlines, underline.attribute("val").value()).value_or(Underline::Single);
  }
  setIfPresent(props.verticalRun,
               findNamed(verticalRuns, font.child("vertAlign").attribute("val").value()));
}

void readAlignment(pugi::xml_node alignment, DOM::ParaProps& para, DOM::CellProps& cell) {
  setIfPresent(para.horizontalAlignment,
               findNamed(horizontalAlignments, alignment.attribute("horizontal").value()));
  setIfPresent(cell.verticalAlignment,
               findNamed(verticalAlignments, alignment.attribute("vertical").value()));
  setIfPresent(para.indent, readCount(alignment.attribute("indent")));
  setIfPresent(para.wrapText, parseBoolean(alignment.attribute("wrapText").value()));
  setIfPresent(para.shrinkToFit, parseBoolean(alignment.attribute("shrinkToFit").value()));
  setIfPresent(para.textRotation, readRotation(alignment.attribute("textRotation")));
  setIfPresent(para.readingOrder, readCount(alignment.attribute("readingOrder")));
}

void readBorder(pugi::xml_node border, Palette& palette, DOM::CellProps& props) {
  setIfPresent(props.borderLeft, readLine(findSide(border, "left", "start"), palette));
  setIfPresent(props.borderRight, readLine(findSide(border, "right", "end"), palette));
  setIfPresent(props.borderTop, readLine(border.child("top"), palette));
  setIfPresent(props.borderBottom, readLine(border.child("bottom"), palette));
  auto const diagonal = readLine(border.child("diagonal"), palette);
  if (parseBoolean(border.attribute("diagonalUp").value()).value_or(false)) {
    setIfPresent(props.borderDiagonalUp, diagonal);
  }
  if (parseBoolean(border.attribute("diagonalDown").value()).value_or(false)) {
    setIfPresent(props.borderDiagonalDown, diagonal);
  }
}

std::optional<DOM::BorderLine> readInnerLine(pugi::xml_node border, char const* name,
                                             Palette& palette) {
  return readLine(border.child(name), palette);
}

void readProtection(pugi::xml_node protection, DOM::CellProps& props) {
  setIfPresent(props.locked, parseBoolean(protection.attribute("locked").value()));
  setIfPresent(props.hidden, parseBoolean(protection.attribute("hidden").value()));
}

void readCellFill(pugi::xml_node fill, Palette& palette, DOM::CellProps& props) {
  readGradient(fill.child("gradientFill"), palette, props);
  pugi::xml_node const pattern = fill.child("patternFill");
  auto const kind = findNamed(fillPatterns, pattern.attribute("patternType").value());
  if (!kind || *kind == FillPattern::None) {
    return;
  }
  props.fillPattern = kind;
  auto const foreground = palette.read(pattern.child("fgColor"), AutomaticColour::Ink);
  auto const background = palette.read(pattern.child("bgColor"), AutomaticColour::Paper);
  if (*kind == FillPattern::Solid) {
    setIfPresent(props.fillColour, foreground);
  } else {
    setIfPresent(props.fillColour, background);
    setIfPresent(props.fillPatternColour, foreground);
  }
}

void readDifferentialFill(pugi::xml_node fill, Palette& palette, DOM::CellProps& props) {
  readGradient(fill.child("gradientFill"), palette, props);
  pugi::xml_node const pattern = fill.child("patternFill");
  if (!pattern) {
    return;
  }
  auto const kind = findNamed(fillPatterns, pattern.attribute("patternType").value());
  auto const foreground = palette.read(pattern.child("fgColor"), AutomaticColour::Ink);
  auto const background = palette.read(pattern.child("bgColor"), AutomaticColour::Paper);
  if (kind.value_or(FillPattern::Solid) == FillPattern::Solid) {
    // Some writers put the colour in the foreground, as in a cell format's fill.
    auto const colour = background ? background : foreground;
    props.fillPattern = colour ? std::optional(FillPattern::Solid) : kind;
    props.fillColour = colour;
    return;
  }
  props.fillPattern = kind;
  if (*kind != FillPattern::None) {
    setIfPresent(props.fillColour, background);
    setIfPresent(props.fillPatternColour, foreground);
  }
}

}  // namespace Zorv::Workbook
