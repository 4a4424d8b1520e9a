#include "render/Html/LookCss.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include <fmt/format.h>

#include "render/Fonts.h"
#include "render/Html/FillCss.h"
#include "render/Html/Markup.h"

namespace Zorv::Render {

namespace {

using DOM::HorizontalAlignment;
using DOM::VerticalAlignment;

bool isGeneric(std::string_view family) noexcept {
  return family == "sans-serif" || family == "serif" || family == "monospace" ||
         family == "cursive";
}

/// `listFontFamilies()` gives names that may stand between quotes.
std::string describeFamilies(std::string_view name) {
  std::string text;
  for (auto const& family : listFontFamilies(name)) {
    text += text.empty() ? "" : ",";
    text += isGeneric(family) ? family : "'" + family + "'";
  }
  return text.empty() ? "sans-serif" : text;
}

std::string describeDecoration(Font const& font) {
  using DOM::Underline;
  std::string text;
  bool const isDouble =
      font.underline == Underline::Double || font.underline == Underline::DoubleAccounting;
  if (font.underline != Underline::None) {
    text += " underline";
  }
  if (font.strikethrough) {
    text += " line-through";
  }
  if (text.empty()) {
    return {};
  }
  return "text-decoration:" + text.substr(1) + (isDouble ? " double;" : ";");
}

std::string describeHorizontal(HorizontalAlignment horizontal) {
  switch (horizontal) {
    case HorizontalAlignment::Center:
    case HorizontalAlignment::CenterContinuous:
      return "justify-content:center;text-align:center;";
    case HorizontalAlignment::Right:
      return "justify-content:right;text-align:right;";
    case HorizontalAlignment::Justify:
      return "text-align:justify;white-space:pre-wrap;overflow-wrap:anywhere;";
    case HorizontalAlignment::Distributed:
      return "text-align:justify;text-align-last:justify;white-space:pre-wrap;"
             "overflow-wrap:anywhere;";
    case HorizontalAlignment::General:
    case HorizontalAlignment::Left:
    case HorizontalAlignment::Fill:
      break;
  }
  return {};
}

std::string_view describeVertical(VerticalAlignment vertical) noexcept {
  switch (vertical) {
    case VerticalAlignment::Top:
    case VerticalAlignment::Justify:
      return "align-items:flex-start;";
    case VerticalAlignment::Center:
    case VerticalAlignment::Distributed:
      return "align-items:center;";
    case VerticalAlignment::Bottom:
      break;
  }
  return {};
}

std::string describeIndent(double indent, HorizontalAlignment horizontal) {
  constexpr double padding = 3;
  if (indent <= 0) {
    return {};
  }
  auto const length = toPixels(indent + padding);
  switch (horizontal) {
    case HorizontalAlignment::Right:
      return "padding-right:" + length + ";";
    case HorizontalAlignment::Distributed:
      return fmt::format("padding-left:{0};padding-right:{0};", length);
    default:
      return "padding-left:" + length + ";";
  }
}

/// Text that is turned by a slant stands on the corner of the cell at which it begins.
std::string describeSlant(int rotation, HorizontalAlignment horizontal) {
  constexpr double halfTurn = 180;
  constexpr double lineHeight = 1.2;
  double const rise = std::sin(std::abs(rotation) * std::numbers::pi / halfTurn) * lineHeight;
  std::string text = "z-index:1;&>span{white-space:pre;";
  if (horizontal == HorizontalAlignment::Center) {
    return text + fmt::format("transform:rotate({}deg)}}", -rotation);
  }
  bool const isRight = horizontal == HorizontalAlignment::Right;
  text += fmt::format("transform-origin:{} 100%;transform:translateX(", isRight ? "100%" : "0");
  appendNumber(text, (isRight ? rotation > 0 : rotation < 0) ? 0 : isRight ? -rise : rise);
  return text + fmt::format("em) rotate({}deg)}}", -rotation);
}

std::string describeRotation(Look const& look, HorizontalAlignment horizontal) {
  constexpr int upright = 90;
  if (look.isStacked) {
    return "&>span{writing-mode:vertical-rl;text-orientation:upright}";
  }
  if (look.rotation == 0) {
    return {};
  }
  if (std::abs(look.rotation) >= upright) {
    return look.rotation > 0 ? "&>span{writing-mode:vertical-rl;transform:rotate(180deg)}"
                             : "&>span{writing-mode:vertical-rl}";
  }
  return describeSlant(look.rotation, horizontal);
}

}  // namespace

std::string describeFont(Font const& font) {
  constexpr double smallest = 0.5;
  constexpr double largest = 500;
  bool const isRaised = font.verticalRun != DOM::VerticalRun::Baseline;
  constexpr double raisedPart = 2.0 / 3;
  double const size = std::clamp(font.size, smallest, largest) * (isRaised ? raisedPart : 1);
  std::string text = "font:";
  text += font.italic ? "italic " : "";
  text += font.bold ? "bold " : "";
  appendNumber(text, size);
  text += fmt::format("pt/1.2 {};color:{};{}", describeFamilies(font.name), toCss(font.colour),
                      describeDecoration(font));
  if (isRaised) {
    bool const isSuper = font.verticalRun == DOM::VerticalRun::Superscript;
    text += fmt::format("vertical-align:{};", isSuper ? "super" : "sub");
  }
  return text;
}

bool isTurned(Look const& look) noexcept { return look.isStacked || look.rotation != 0; }

std::string describeLook(Look const& look, HorizontalAlignment horizontal, Look const& base) {
  std::string text;
  if (look.font != base.font) {
    text += describeFont(look.font);
  }
  if (auto const fill = describeFill(look.fill); !fill.empty()) {
    text += fill + ";box-shadow:none;";
  }
  text += describeHorizontal(horizontal);
  text += describeVertical(look.vertical);
  text += describeIndent(look.indent, horizontal);
  if (look.wraps) {
    text += "white-space:pre-wrap;overflow-wrap:anywhere;";
  }
  if (look.readsRightToLeft) {
    text += "direction:rtl;unicode-bidi:isolate;";
  }
  return text + describeRotation(look, horizontal);
}

}  // namespace Zorv::Render
