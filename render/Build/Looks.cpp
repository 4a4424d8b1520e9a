#include "render/Build/Looks.h"

#include <algorithm>
#include <cmath>

#include <boost/container_hash/hash.hpp>

#include "workbook/Sheet.h"

namespace Zorv::Render {

namespace {

using DOM::HorizontalAlignment;
using DOM::LineStyle;

void applyRunProps(DOM::RunProps const& props, Font& font) {
  constexpr double least = 1;
  constexpr double most = 409;
  font.name = props.fontName.value_or(font.name);
  font.size = std::clamp(props.fontSize.value_or(font.size), least, most);
  font.colour = props.colour.value_or(font.colour);
  font.bold = props.bold.value_or(font.bold);
  font.italic = props.italic.value_or(font.italic);
  font.underline = props.underline.value_or(font.underline);
  font.strikethrough = props.strikethrough.value_or(font.strikethrough);
  font.verticalRun = props.verticalRun.value_or(font.verticalRun);
}

/// A solid fill without a colour is that of the window.
CellFill makeFill(DOM::CellProps const& props) {
  CellFill fill;
  fill.pattern = props.fillPattern.value_or(DOM::FillPattern::None);
  if (fill.pattern == DOM::FillPattern::None) {
    return fill;
  }
  if (fill.pattern == DOM::FillPattern::Gradient) {
    fill.gradient = props.fillGradient;
    fill.pattern = fill.gradient ? fill.pattern : DOM::FillPattern::None;
    return fill;
  }
  fill.colour = props.fillColour.value_or(fill.colour);
  bool const isSolid = fill.pattern == DOM::FillPattern::Solid;
  fill.patternColour =
      isSolid ? fill.patternColour : props.fillPatternColour.value_or(fill.patternColour);
  return fill;
}

CellEdges makeEdges(DOM::CellProps const& props) {
  CellEdges edges;
  edges.left = props.borderLeft.value_or(edges.left);
  edges.right = props.borderRight.value_or(edges.right);
  edges.top = props.borderTop.value_or(edges.top);
  edges.bottom = props.borderBottom.value_or(edges.bottom);
  edges.diagonalUp = props.borderDiagonalUp.value_or(edges.diagonalUp);
  edges.diagonalDown = props.borderDiagonalDown.value_or(edges.diagonalDown);
  // Lines of no style are equal, whatever their colour.
  for (auto* const line : {&edges.left, &edges.right, &edges.top, &edges.bottom, &edges.diagonalUp,
                           &edges.diagonalDown}) {
    if (line->style == LineStyle::None) {
      line->colour.reset();
    }
  }
  return edges;
}

bool setsEdges(DOM::CellProps const* props) noexcept {
  return props != nullptr &&
         (props->borderLeft || props->borderRight || props->borderTop || props->borderBottom);
}

/// Indents count at the edge that a text is aligned to. A step is as wide as three spaces of the
/// default font.
double findIndent(DOM::ParaProps const& props, HorizontalAlignment horizontal) noexcept {
  constexpr double stepPixels = 9;
  constexpr unsigned mostSteps = 250;
  bool const counts = horizontal == HorizontalAlignment::Left ||
                      horizontal == HorizontalAlignment::Right ||
                      horizontal == HorizontalAlignment::Distributed;
  return counts ? stepPixels * std::min(props.indent.value_or(0), mostSteps) : 0;
}

void applyParaProps(DOM::ParaProps const& props, Look& look) {
  int const rotation = props.textRotation.value_or(0);
  look.isStacked = rotation == Workbook::stackedRotation;
  look.rotation = look.isStacked ? 0 : rotation;
  look.wraps = props.wrapText.value_or(false);
  // A text that is wrapped is not shrunk.
  look.shrinksToFit = props.shrinkToFit.value_or(false) && !look.wraps;
  constexpr unsigned fromTheRight = 2;
  look.readsRightToLeft = props.readingOrder == fromTheRight;
  look.indent = findIndent(props, props.horizontalAlignment.value_or(HorizontalAlignment::General));
}

std::size_t hashOf(DOM::Colour const& colour) noexcept {
  constexpr unsigned byte = 8;
  return (std::size_t{colour.red} << (3 * byte)) | (std::size_t{colour.green} << (2 * byte)) |
         (std::size_t{colour.blue} << byte) | colour.alpha;
}

std::size_t hashOf(Look const& look) {
  std::size_t hash = boost::hash<std::string>()(look.font.name);
  boost::hash_combine(hash, look.font.size);
  boost::hash_combine(hash, hashOf(look.font.colour));
  boost::hash_combine(hash, look.font.bold);
  boost::hash_combine(hash, look.font.italic);
  boost::hash_combine(hash, static_cast<int>(look.fill.pattern));
  boost::hash_combine(hash, hashOf(look.fill.colour));
  boost::hash_combine(hash, hashOf(look.fill.patternColour));
  boost::hash_combine(hash, look.indent);
  boost::hash_combine(hash, look.rotation);
  boost::hash_combine(hash, look.wraps);
  return hash;
}

/// Two built-in formats of dates (ISO/IEC 29500-1, 18.8.30) stand for those of the locale.
std::string toLocaleCode(std::string const& code, OfficeUtils::LocaleContext const& locale) {
  if (code == "mm-dd-yy") {
    return OfficeUtils::NumberFormat::findDateCode(locale);
  }
  return code == "m/d/yy h:mm" ? OfficeUtils::NumberFormat::findDateCode(locale) + " h:mm" : code;
}

OfficeUtils::NumberFormat compileGeneral() {
  return *OfficeUtils::NumberFormat::compile("General");
}

}  // namespace

std::size_t Looks::PairHash::operator()(
    std::pair<Style const*, Style const*> const& pair) const noexcept {
  return boost::hash<std::pair<Style const*, Style const*>>()(pair);
}

Looks::Looks(Style const* usual, OfficeUtils::LocaleContext const& locale)
    : _usual(usual), _locale(locale), _general(compileGeneral()) {
  // The first look is that of a cell without a style.
  static_cast<void>(find(nullptr, nullptr));
}

StyleLook const& Looks::find(Style const* own, Style const* conditional) {
  std::pair const key(own, conditional);
  auto const found = _known.find(key);
  return found != _known.end() ? found->second
                               : _known.emplace(key, makeStyleLook(own, conditional)).first->second;
}

Font Looks::makeFont(std::uint32_t look, DOM::RunProps const& props) const {
  Font font = _looks[look].font;
  applyRunProps(props, font);
  return font;
}

StyleLook Looks::makeStyleLook(Style const* own, Style const* conditional) {
  Style const* const base = own != nullptr ? own : _usual;
  DOM::CellStyle style = base != nullptr ? base->get() : DOM::CellStyle();
  if (conditional != nullptr) {
    override(style, conditional->get());
  }
  Look look;
  StyleLook result;
  look.font.name = "Calibri";
  if (auto const& props = style.getRunProps()) {
    applyRunProps(*props, look.font);
  }
  if (auto const& props = style.getParaProps()) {
    applyParaProps(*props, look);
    result.horizontal = props->horizontalAlignment.value_or(result.horizontal);
  }
  if (auto const& props = style.getCellProps()) {
    look.fill = makeFill(*props);
    look.vertical = props->verticalAlignment.value_or(look.vertical);
    result.edges = makeEdges(*props);
    result.hasEdges = result.edges != CellEdges();
    result.hasFill = look.fill.pattern != DOM::FillPattern::None;
  }
  result.hasConditionalEdges =
      conditional != nullptr && setsEdges(conditional->get().getCellProps().get());
  result.isFixedInWidth = look.rotation == 0 && !look.isStacked && !look.shrinksToFit;
  result.wraps = look.wraps;
  result.measures = findMeasures(look.font);
  result.format = findFormat(style.getCellFormat().get());
  result.look = intern(std::move(look));
  return result;
}

std::uint32_t Looks::intern(Look look) {
  std::size_t const hash = hashOf(look);
  auto const [begin, end] = _looksByHash.equal_range(hash);
  auto const found =
      std::find_if(begin, end, [&](auto const& entry) { return _looks[entry.second] == look; });
  if (found != end) {
    return found->second;
  }
  auto const index = static_cast<std::uint32_t>(_looks.size());
  _looks.push_back(std::move(look));
  _looksByHash.emplace(hash, index);
  return index;
}

/// A code that is no number format counts as the general one.
OfficeUtils::NumberFormat const* Looks::findFormat(DOM::CellFormat const* format) {
  if (format == nullptr) {
    return &_general;
  }
  auto found = _formats.find(format->code);
  if (found == _formats.end()) {
    std::string const code = toLocaleCode(format->code, _locale);
    found = _formats.emplace(format->code, OfficeUtils::NumberFormat::compile(code)).first;
  }
  return found->second ? &*found->second : &_general;
}

}  // namespace Zorv::Render
