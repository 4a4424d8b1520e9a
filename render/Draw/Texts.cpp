#include "render/Draw/Texts.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "render/Draw/Paper.h"
#include "render/Draw/TextScan.h"

namespace Zorv::Render::Draw {

namespace {

using DOM::HorizontalAlignment;
using DOM::VerticalAlignment;

bool isJustified(TextPlace const& place) noexcept {
  return place.horizontal == HorizontalAlignment::Justify ||
         place.horizontal == HorizontalAlignment::Distributed;
}

bool isSpread(TextPlace const& place) noexcept {
  return place.look.vertical == VerticalAlignment::Justify ||
         place.look.vertical == VerticalAlignment::Distributed;
}

bool isWrapped(TextPlace const& place) noexcept {
  return place.look.wraps || isJustified(place) || isSpread(place);
}

double toRadians(int degrees) noexcept { return degrees * std::numbers::pi / 180; }

/// The width at which lines of a wrapped text end: that of the cell, or its height for a text that
/// is turned.
double findWrapWidth(TextPlace const& place) noexcept {
  constexpr double flattest = 0.2;
  double const sine = std::abs(std::sin(toRadians(place.look.rotation)));
  return place.look.rotation == 0 ? place.inner.width()
                                  : place.inner.height() / std::max(sine, flattest);
}

PangoAlignment toPango(HorizontalAlignment alignment) noexcept {
  switch (alignment) {
    case HorizontalAlignment::Center:
    case HorizontalAlignment::CenterContinuous:
    case HorizontalAlignment::Distributed:
      return PANGO_ALIGN_CENTER;
    case HorizontalAlignment::Right:
      return PANGO_ALIGN_RIGHT;
    default:
      return PANGO_ALIGN_LEFT;
  }
}

ParagraphSetting findSetting(std::string_view text, TextPlace const& place) noexcept {
  ParagraphSetting setting;
  if (isWrapped(place) && !place.look.isStacked) {
    setting.width = findWrapWidth(place);
  }
  setting.alignment = place.look.isStacked ? PANGO_ALIGN_CENTER : toPango(place.horizontal);
  setting.isJustified = isJustified(place);
  setting.justifiesLastLine = place.horizontal == HorizontalAlignment::Distributed;
  setting.isRightToLeft = place.look.readsRightToLeft || beginsRightToLeft(text);
  if (isSpread(place)) {
    setting.height = place.inner.height();
  }
  return setting;
}

double alignAcross(TextPlace const& place, double width) noexcept {
  switch (place.horizontal) {
    case HorizontalAlignment::Center:
    case HorizontalAlignment::Distributed:
      return (place.inner.left + place.inner.right - width) / 2;
    case HorizontalAlignment::CenterContinuous:
      return (place.allowed.left + place.allowed.right - width) / 2;
    case HorizontalAlignment::Right:
      return place.inner.right - width;
    default:
      return place.inner.left;
  }
}

/// Of several lines that do not fit, the first ones are seen.
double alignDown(TextPlace const& place, double height, bool hasLines) noexcept {
  Box const& inner = place.inner;
  if (hasLines && height > inner.height()) {
    return inner.top;
  }
  switch (place.look.vertical) {
    case VerticalAlignment::Top:
    case VerticalAlignment::Justify:
      return inner.top;
    case VerticalAlignment::Center:
    case VerticalAlignment::Distributed:
      return (inner.top + inner.bottom - height) / 2;
    case VerticalAlignment::Bottom:
      break;
  }
  return inner.bottom - height;
}

void clipTo(cairo_t* cairo, Box const& box) noexcept {
  cairo_rectangle(cairo, box.left, box.top, box.width(), box.height());
  cairo_clip(cairo);
}

bool contains(Box const& outer, Box const& inner) noexcept {
  return outer.left <= inner.left && inner.right <= outer.right && outer.top <= inner.top &&
         inner.bottom <= outer.bottom;
}

}  // namespace

void TextPainter::paint(cairo_t* cairo, PictureCell const& cell) {
  TextPlace place = findTextPlace(_geometry, cell);
  if (cell.text.empty() || place.whole.isEmpty() || !(findPixelSize(place.look.font) > 0)) {
    return;
  }
  setColour(cairo, cell.textColour.value_or(place.look.font.colour));
  std::string_view const text = cell.text;
  if (cell.splitAt && *cell.splitAt <= text.size()) {
    place.horizontal = HorizontalAlignment::Left;
    paintPiece(cairo, text.substr(0, *cell.splitAt), place);
    place.horizontal = HorizontalAlignment::Right;
    paintPiece(cairo, text.substr(*cell.splitAt), place);
  } else if (cell.horizontal == HorizontalAlignment::Fill) {
    paintPiece(cairo, repeat(text, place), place);
  } else {
    paintPiece(cairo, text, place);
  }
}

void TextPainter::paintPiece(cairo_t* cairo, std::string_view text, TextPlace const& place) {
  if (layOutPlain(text, place)) {
    paintBlock(cairo, _line, place);
  } else {
    paintParagraph(cairo, text, place);
  }
}

bool TextPainter::layOutPlain(std::string_view text, TextPlace const& place) {
  Look const& look = place.look;
  if (place.cell.runs != 0 || look.isStacked || look.readsRightToLeft ||
      place.horizontal == HorizontalAlignment::Distributed ||
      !_line.layOut(_typesetter.getTypeface(look.font), look.font, text)) {
    return false;
  }
  return !isWrapped(place) || _line.getWidth() <= findWrapWidth(place);
}

void TextPainter::paintParagraph(cairo_t* cairo, std::string_view text, TextPlace const& place) {
  std::string_view const seen = cutToPlace(text, place);
  std::string const stacked = place.look.isStacked ? stackLetters(seen) : std::string();
  std::span<TextRun const> runs;
  if (place.cell.runs != 0 && !place.look.isStacked) {
    runs = _geometry.getSheet().richTexts[place.cell.runs - 1];
  }
  Paragraph paragraph(_typesetter, place.look.isStacked ? stacked : seen, place.look.font, runs,
                      findSetting(seen, place));
  paintBlock(cairo, paragraph, place);
}

std::string TextPainter::repeat(std::string_view text, TextPlace const& place) {
  std::string repeated(text);
  if (_line.layOut(_typesetter.getTypeface(place.look.font), place.look.font, text) &&
      _line.getWidth() >= 1) {
    auto const count = static_cast<int>(place.inner.width() / _line.getWidth());
    for (int i = 1; i < count; ++i) {
      repeated += text;
    }
  }
  return repeated;
}

template <class Block>
void TextPainter::paintBlock(cairo_t* cairo, Block& block, TextPlace const& place) {
  if (place.look.rotation == 0) {
    paintLevel(cairo, block, place);
  } else {
    paintTurned(cairo, block, place);
  }
}

template <class Block>
void TextPainter::paintLevel(cairo_t* cairo, Block& block, TextPlace const& place) {
  bool const shrinks = place.look.shrinksToFit && !isWrapped(place) && block.getWidth() > 0;
  double const scale = shrinks ? std::min(1.0, place.inner.width() / block.getWidth()) : 1;
  double const width = block.getWidth() * scale;
  double const height = block.getHeight() * scale;
  double const left = std::round(alignAcross(place, width));
  double const top = alignDown(place, height, block.countLines() > 1);
  if (scale <= 0) {
    return;
  }
  hideGridLines(cairo, place, left, left + width);
  bool const fits = contains(place.allowed, {left, top, left + width, top + height});
  if (fits && scale == 1) {
    block.show(cairo, left, top, left, left + width);
    return;
  }
  SavedState const saved(cairo);
  clipTo(cairo, place.allowed);
  cairo_translate(cairo, left, top);
  cairo_scale(cairo, scale, scale);
  block.show(cairo, 0, 0, (place.allowed.left - left) / scale,
             (place.allowed.right - left) / scale);
}

/// The box around the turned text is aligned in the cell.
template <class Block>
void TextPainter::paintTurned(cairo_t* cairo, Block& block, TextPlace const& place) {
  double const angle = toRadians(place.look.rotation);
  double const sine = std::abs(std::sin(angle));
  double const cosine = std::abs(std::cos(angle));
  double const width = block.getWidth() * cosine + block.getHeight() * sine;
  double const height = block.getWidth() * sine + block.getHeight() * cosine;
  double const left = alignAcross(place, width);
  double const top = alignDown(place, height, false);
  SavedState const saved(cairo);
  if (!contains(place.allowed, {left, top, left + width, top + height})) {
    clipTo(cairo, place.allowed);
  }
  cairo_translate(cairo, left + width / 2, top + height / 2);
  cairo_rotate(cairo, -angle);
  block.show(cairo, -block.getWidth() / 2, -block.getHeight() / 2, -block.getWidth() / 2,
             block.getWidth() / 2);
}

void TextPainter::hideGridLines(cairo_t* cairo, TextPlace const& place, double left, double right) {
  LineSpan const columns = _geometry.cover(place.cell).columns;
  double const line = _geometry.getGrid().thickness(gridLineWidth);
  if (!_hasGridLines || (left >= place.whole.left && right <= place.whole.right)) {
    return;
  }
  SavedState const saved(cairo);
  setColour(cairo, paperColour);
  LineSpan const reach = _geometry.findReach(place.cell);
  for (std::uint32_t edge = reach.begin + 1; edge < reach.end; ++edge) {
    Box const next = _geometry.place({{place.cell.row, place.cell.row + 1}, {edge, edge + 1}});
    double const x = _geometry.getSheet().rightToLeft ? next.right : next.left;
    bool const isInside = edge > columns.begin && edge < columns.end;
    if (!isInside && left < x && x < right && isBare(place.cell.row, edge - 1) &&
        isBare(place.cell.row, edge)) {
      cairo_rectangle(cairo, x - line, place.whole.top, line, place.whole.height() - line);
    }
  }
  cairo_fill(cairo);
}

bool TextPainter::isBare(std::uint32_t row, std::uint32_t column) const noexcept {
  SheetPicture const& sheet = _geometry.getSheet();
  auto const cells = _geometry.cellsOfRow(row);
  auto const found = std::ranges::lower_bound(cells, column, {}, &PictureCell::column);
  std::uint32_t const rowLook = sheet.rows[row].look;
  std::uint32_t look = rowLook != 0 ? rowLook : sheet.columns[column].look;
  if (found != cells.end() && found->column == column) {
    if (found->scaleColour) {
      return false;
    }
    look = found->look;
  }
  return sheet.looks[look].fill.pattern == DOM::FillPattern::None;
}

}  // namespace Zorv::Render::Draw
