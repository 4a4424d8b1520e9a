#include "render/Html/EdgeCss.h"

#include <array>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "render/Html/Markup.h"

namespace Zorv::Render {

namespace {

/// Appearance of a line style: its width, and the lengths of its dashes and gaps, in turn. None: it
/// is solid.
struct Stroke {
  int width;
  std::span<int const> dashes;
};

constexpr std::array hairDashes = {1, 1};
constexpr std::array dottedDashes = {2, 2};
constexpr std::array dashedDashes = {4, 2};
constexpr std::array dashDotDashes = {8, 3, 3, 3};
constexpr std::array dashDotDotDashes = {8, 3, 3, 3, 3, 3};
constexpr std::array mediumDashes = {9, 3};

Stroke strokeOf(DOM::LineStyle style) noexcept {
  using DOM::LineStyle;
  switch (style) {
    case LineStyle::None:
      return {0, {}};
    case LineStyle::Thin:
      return {1, {}};
    case LineStyle::Medium:
      return {2, {}};
    case LineStyle::Thick:
    case LineStyle::Double:
      return {3, {}};
    case LineStyle::Hair:
      return {1, hairDashes};
    case LineStyle::Dotted:
      return {1, dottedDashes};
    case LineStyle::Dashed:
      return {1, dashedDashes};
    case LineStyle::DashDot:
      return {1, dashDotDashes};
    case LineStyle::DashDotDot:
      return {1, dashDotDotDashes};
    case LineStyle::MediumDashed:
      return {2, mediumDashes};
    case LineStyle::MediumDashDot:
    case LineStyle::SlantDashDot:
      return {2, dashDotDashes};
    case LineStyle::MediumDashDotDot:
      return {2, dashDotDotDashes};
  }
  return {1, {}};
}

std::string colourOf(DOM::BorderLine const& line) {
  return toCss(line.colour.value_or(DOM::Colour()));
}

/// An edge of a cell in the words of CSS.
struct Side {
  std::string_view position;
  std::string_view along;   ///< the direction in which dashes follow each other
  std::string_view across;  ///< the direction across the line
  bool isUpright;
};

constexpr Side leftSide{"0 0", "to bottom", "to right", true};
constexpr Side rightSide{"100% 0", "to bottom", "to right", true};
constexpr Side topSide{"0 0", "to right", "to bottom", false};
constexpr Side bottomSide{"0 100%", "to right", "to bottom", false};

/// The image of a line that runs along a side.
std::string imageOf(DOM::BorderLine const& line, Stroke const& stroke, Side const& side) {
  auto const colour = colourOf(line);
  if (line.style == DOM::LineStyle::Double) {
    return fmt::format("linear-gradient({0},{1} 1px,#0000 1px 2px,{1} 2px)", side.across, colour);
  }
  if (stroke.dashes.empty()) {
    return fmt::format("linear-gradient({0},{0})", colour);
  }
  std::string stops;
  int at = 0;
  bool isDash = true;
  for (int const length : stroke.dashes) {
    stops += fmt::format(",{} {}px {}px", isDash ? colour : "#0000", at, at + length);
    at += length;
    isDash = !isDash;
  }
  return fmt::format("repeating-linear-gradient({}{})", side.along, stops);
}

void appendSide(std::string& layers, DOM::BorderLine const& line, Side const& side) {
  auto const stroke = strokeOf(line.style);
  if (stroke.width == 0) {
    return;
  }
  layers += layers.empty() ? "" : ",";
  layers += fmt::format("{} {}/{} no-repeat", imageOf(line, stroke, side), side.position,
                        side.isUpright ? fmt::format("{}px 100%", stroke.width)
                                       : fmt::format("100% {}px", stroke.width));
}

/// A line from corner to corner. The gradient runs across it, so that its middle is the line.
void appendDiagonal(std::string& layers, DOM::BorderLine const& line, std::string_view towards) {
  auto const stroke = strokeOf(line.style);
  if (stroke.width == 0) {
    return;
  }
  layers += layers.empty() ? "" : ",";
  layers += fmt::format(
      "linear-gradient({0},#0000 calc(50% - {1}px),{2} calc(50% - {1}px) calc(50% + {1}px),#0000 "
      "calc(50% + {1}px))",
      towards, stroke.width / 2.0, colourOf(line));
}

}  // namespace

std::string describeEdges(CellEdges const& edges) {
  std::string layers;
  appendSide(layers, edges.left, leftSide);
  appendSide(layers, edges.right, rightSide);
  appendSide(layers, edges.top, topSide);
  appendSide(layers, edges.bottom, bottomSide);
  appendDiagonal(layers, edges.diagonalDown, "to top right");
  appendDiagonal(layers, edges.diagonalUp, "to bottom right");
  return layers.empty() ? std::string()
                        : fmt::format(
                              "position:relative;&::after{{content:'';position:absolute;"
                              "inset:0;pointer-events:none;background:{}}}",
                              layers);
}

}  // namespace Zorv::Render
