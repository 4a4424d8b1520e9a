#include "render/Html/CellMarkup.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <fmt/format.h>

#include "render/Html/EdgeCss.h"
#include "render/Html/FillCss.h"
#include "render/Html/LookCss.h"
#include "render/Html/Markup.h"
#include "render/Icons.h"

namespace Zorv::Render {

namespace {

/// Widths of the picture's columns from `begin` on.
double sumColumnWidths(SheetPicture const& sheet, std::uint32_t begin, std::uint32_t count) {
  double sum = 0;
  for (std::size_t column = begin; column < begin + std::size_t{count}; ++column) {
    sum += column < sheet.columns.size() ? sheet.columns[column].size : 0;
  }
  return sum;
}

void appendClassName(std::string& out, std::string const& name) {
  if (!name.empty()) {
    out += ' ';
    out += name;
  }
}

/// Width of a text in ems, as wide as it is in any font: digits and most lower-case letters are
/// narrower than the font is high. A character outside of ASCII has several bytes.
double findMostEms(std::string_view text) noexcept {
  constexpr double narrow = 0.75;
  constexpr std::string_view narrowSigns = " !'(),-./0123456789:;?";
  double ems = 0;
  for (char const character : text) {
    bool const isNarrowLetter =
        'a' <= character && character <= 'z' && character != 'm' && character != 'w';
    ems += isNarrowLetter || narrowSigns.find(character) != std::string_view::npos ? narrow : 1;
  }
  return ems;
}

std::string percentOf(double part) {
  constexpr double percent = 100;
  std::string text;
  appendNumber(text, part * percent);
  return text + "%";
}

}  // namespace

CellMarkup::CellMarkup(SheetPicture const& sheet, StyleSheet& styles, PageGraphics& graphics)
    : _sheet(sheet), _styles(styles), _graphics(graphics) {}

void CellMarkup::appendClasses(std::string& out, PictureCell const& cell, Neighbours neighbours) {
  appendClassName(out, classOf(cell.look, cell.horizontal));
  appendClassName(out, classOfEdges(cell.edges, neighbours));
  // These stand above the look, whichever of them the style sheet has first.
  if (cell.scaleColour) {
    appendClassName(out, _styles.classOf("background:" + toCss(*cell.scaleColour) + "!important"));
  }
  if (cell.textColour) {
    appendClassName(out, _styles.classOf("color:" + toCss(*cell.textColour) + "!important"));
  }
  if (cell.bar || cell.icon || isPathGradient(_sheet.looks[cell.look].fill)) {
    out += " g";
  }
  if (cell.splitAt && cell.runs == 0) {
    out += " sp";
  }
  appendOverflow(out, cell);
  if (cell.decision != 0) {
    out += fmt::format(" d{}", cell.decision);
  }
}

void CellMarkup::appendClass(std::string& out, std::uint32_t look) {
  appendClassName(out, classOf(look, DOM::HorizontalAlignment::Left));
}

void CellMarkup::appendContent(std::string& out, PictureCell const& cell) {
  auto const& look = _sheet.looks[cell.look];
  if (isPathGradient(look.fill)) {
    out += fmt::format("<svg class=\"b\" aria-hidden=\"true\"><use href=\"#{}\"/></svg>",
                       _graphics.addPathGradient(*look.fill.gradient));
  }
  if (cell.bar) {
    appendBar(out, *cell.bar);
  }
  if (cell.icon) {
    appendIcon(out, *cell.icon, cell.text.empty());
  }
  if (!cell.text.empty()) {
    appendLinkedText(out, cell);
  }
}

void CellMarkup::appendLinkedText(std::string& out, PictureCell const& cell) {
  auto const address = cell.link == 0 ? std::string_view() : _sheet.links[cell.link - 1];
  bool const isPlace = address.starts_with('#');
  auto const target = isPlace ? address : findSafeAddress(address);
  if (!target.empty()) {
    out += isPlace ? "<a href=\"#\" data-place=\"" : "<a href=\"";
    appendText(out, isPlace ? target.substr(1) : target);
    out += isPlace ? "\">" : "\" rel=\"noopener noreferrer\" target=\"_blank\">";
  }
  // Runs without an element around them would be items of the cell's layout, one beside the other.
  bool const needsSpan =
      isTurned(_sheet.looks[cell.look]) || (target.empty() && (cell.runs != 0 || runsOver(cell)));
  out += needsSpan ? "<span>" : "";
  cell.runs != 0 ? appendRuns(out, cell) : appendWords(out, cell);
  out += needsSpan ? "</span>" : "";
  out += target.empty() ? "" : "</a>";
}

void CellMarkup::appendWords(std::string& out, PictureCell const& cell) {
  std::string_view const text = cell.text;
  if (!cell.splitAt) {
    return appendText(out, text);
  }
  auto const split = std::min<std::size_t>(*cell.splitAt, text.size());
  out += "<span>";
  appendText(out, text.substr(0, split));
  out += "</span><span>";
  appendText(out, text.substr(split));
  out += "</span>";
}

void CellMarkup::appendRuns(std::string& out, PictureCell const& cell) {
  for (auto const& run : _sheet.richTexts[cell.runs - 1]) {
    out += "<span class=\"" + _styles.classOf(describeFont(run.font)) + "\">";
    appendText(out, run.text);
    out += "</span>";
  }
}

void CellMarkup::appendBar(std::string& out, Visuals::ShownBar const& bar) {
  bool const isMirrored =
      bar.bar->direction == Visuals::BarDirection::RightToLeft ||
      (bar.bar->direction == Visuals::BarDirection::Context && _sheet.rightToLeft);
  auto const place = [&](double part) { return isMirrored ? 1 - part : part; };
  auto const begin = std::min(place(bar.extent.from), place(bar.extent.to));
  auto const end = std::max(place(bar.extent.from), place(bar.extent.to));
  // A bar begins at the axis, so that one of a negative number runs against the others.
  bool const beginsRight = isMirrored != (bar.isNegative && bar.extent.axis.has_value());
  out += "<svg class=\"b\" aria-hidden=\"true\">";
  auto const& fill = bar.getFill();
  auto const& border = bar.getBorder();
  if (fill || border) {
    auto const paint = !fill ? std::string("none")
                       : bar.bar->isGradient
                           ? "url(#" + _graphics.addBarGradient(*fill, beginsRight) + ")"
                           : toCss(*fill);
    out += fmt::format("<rect x=\"{}\" width=\"{}\" height=\"100%\" fill=\"{}\"", percentOf(begin),
                       percentOf(end - begin), paint);
    out += border ? " stroke=\"" + toCss(*border) + "\"/>" : "/>";
  }
  if (bar.extent.axis) {
    out += fmt::format(
        "<line x1=\"{0}\" x2=\"{0}\" y2=\"100%\" stroke=\"{1}\" stroke-dasharray=\"2 2\"/>",
        percentOf(place(*bar.extent.axis)), toCss(bar.bar->axisColour.value_or(DOM::Colour())));
  }
  out += "</svg>";
}

void CellMarkup::appendIcon(std::string& out, Visuals::Icon const& icon, bool isAlone) {
  auto const& symbol = _graphics.addIcon(icon);
  if (symbol.empty()) {
    return;
  }
  out += isAlone ? "<svg class=\"i a\" role=\"img\" aria-label=\""
                 : "<svg class=\"i\" role=\"img\" aria-label=\"";
  appendText(out, nameIcon(icon));
  out += "\"><use href=\"#" + symbol + "\"/></svg>";
}

std::string const& CellMarkup::classOf(std::uint32_t look, DOM::HorizontalAlignment horizontal) {
  constexpr std::uint32_t alignments = 16;
  auto const [entry, isNew] =
      _lookClasses.try_emplace(look * alignments + static_cast<std::uint32_t>(horizontal));
  if (isNew) {
    auto const css = describeLook(_sheet.looks[look], horizontal, _sheet.looks[0]);
    if (!css.empty()) {
      entry->second = _styles.classOf(css);
    }
  }
  return entry->second;
}

std::string const& CellMarkup::classOfEdges(std::uint32_t edges, Neighbours neighbours) {
  constexpr std::uint32_t leftBit = 1;
  constexpr std::uint32_t aboveBit = 2;
  auto const [entry, isNew] = _edgeClasses.try_emplace(edges * 4 + (neighbours.left ? leftBit : 0) +
                                                       (neighbours.above ? aboveBit : 0));
  if (isNew) {
    auto own = _sheet.edges[edges];
    if (neighbours.left) {
      own.left = {};
    }
    if (neighbours.above) {
      own.top = {};
    }
    if (auto const css = describeEdges(own); !css.empty()) {
      entry->second = _styles.classOf(css);
    }
  }
  return entry->second;
}

bool CellMarkup::mayBeTooLong(PictureCell const& cell) const noexcept {
  constexpr double pixelsPerPoint = 96.0 / 72;
  constexpr double lineHeight = 1.25;
  auto const& look = _sheet.looks[cell.look];
  double size = look.font.size;
  if (cell.runs != 0) {
    for (auto const& run : _sheet.richTexts[cell.runs - 1]) {
      size = std::max(size, run.font.size);
    }
  }
  auto const letter = size * pixelsPerPoint;
  auto const height = cell.row < _sheet.rows.size() ? _sheet.rows[cell.row].size : 0;
  if (letter * lineHeight > height || look.wraps || isTurned(look)) {
    return true;
  }
  // A number is cut to the width when the picture is built. To cut it here, too, where a font is
  // wider than expected, would make another number of it; and browsers are slow with many clips.
  bool const isCut = cell.content == CellContent::Number && !look.shrinksToFit;
  auto const width = sumColumnWidths(_sheet, cell.column, cell.columnCount);
  return !isCut && findMostEms(cell.text) * letter > width;
}

bool CellMarkup::runsOver(PictureCell const& cell) const noexcept {
  return (cell.freeLeft != 0 || cell.freeRight != 0) && !_sheet.looks[cell.look].wraps &&
         mayBeTooLong(cell);
}

void CellMarkup::appendOverflow(std::string& out, PictureCell const& cell) {
  if (cell.text.empty() || !mayBeTooLong(cell)) {
    return;
  }
  auto const& look = _sheet.looks[cell.look];
  constexpr int upright = 90;
  if (look.rotation != 0 && std::abs(look.rotation) < upright) {
    return;  // it leans over its neighbours
  }
  if (!runsOver(cell)) {
    out += look.shrinksToFit ? " x k" : " x";
    return;
  }
  auto const free = freeColumnsOf(_sheet, cell);
  auto const before = sumColumnWidths(_sheet, cell.column - free.before, free.before);
  auto const after = sumColumnWidths(_sheet, cell.column + cell.columnCount, free.after);
  auto const [toLeft, toRight] =
      _sheet.rightToLeft ? std::pair(after, before) : std::pair(before, after);
  appendClassName(out, _styles.classOf(fmt::format("clip-path:inset(0 {} 0 {})", toPixels(-toRight),
                                                   toPixels(-toLeft))));
  out += " o";
}

}  // namespace Zorv::Render
