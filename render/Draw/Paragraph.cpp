#include "render/Draw/Paragraph.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

namespace Zorv::Render::Draw {

namespace {

struct AttributesDeleter {
  void operator()(PangoAttrList* list) const noexcept { pango_attr_list_unref(list); }
};
using AttributesPtr = std::unique_ptr<PangoAttrList, AttributesDeleter>;

/// Bytes of a text, half-open.
struct TextSpan {
  guint begin = 0;
  guint end = std::numeric_limits<guint>::max();
};

/// The list takes the attribute.
void insert(PangoAttrList* list, PangoAttribute* attribute, TextSpan const& span) {
  attribute->start_index = span.begin;
  attribute->end_index = span.end;
  pango_attr_list_insert(list, attribute);
}

PangoUnderline toPango(DOM::Underline underline) noexcept {
  switch (underline) {
    case DOM::Underline::None:
      return PANGO_UNDERLINE_NONE;
    case DOM::Underline::Single:
    case DOM::Underline::SingleAccounting:
      return PANGO_UNDERLINE_SINGLE;
    case DOM::Underline::Double:
    case DOM::Underline::DoubleAccounting:
      return PANGO_UNDERLINE_DOUBLE;
  }
  return PANGO_UNDERLINE_NONE;
}

int toPangoUnits(double pixels) noexcept {
  constexpr double most = 1e6;
  return static_cast<int>(std::lround(std::clamp(pixels, -most, most) * PANGO_SCALE));
}

void insertLines(PangoAttrList* list, Font const& font, TextSpan const& span) {
  insert(list, pango_attr_underline_new(toPango(font.underline)), span);
  insert(list, pango_attr_strikethrough_new(font.strikethrough ? TRUE : FALSE), span);
  insert(list, pango_attr_rise_new(toPangoUnits(findRise(font))), span);
}

void insertFont(PangoAttrList* list, Font const& font, TextSpan const& span) {
  insert(list, pango_attr_font_desc_new(describeFont(font).get()), span);
  auto const part = [](std::uint8_t value) { return static_cast<guint16>(value * 0x101U); };
  insert(list,
         pango_attr_foreground_new(part(font.colour.red), part(font.colour.green),
                                   part(font.colour.blue)),
         span);
  insertLines(list, font, span);
}

AttributesPtr makeAttributes(Font const& font, std::span<TextRun const> runs) {
  AttributesPtr list(pango_attr_list_new());
  // As spreadsheet programs set texts: no pairs of characters that move together or become one, and
  // no hyphens where a word is divided.
  insert(list.get(), pango_attr_insert_hyphens_new(FALSE), {});
  insert(list.get(), pango_attr_font_features_new("kern=0,liga=0,clig=0"), {});
  if (runs.empty()) {
    insertLines(list.get(), font, {});
  }
  guint begin = 0;
  for (TextRun const& run : runs) {
    guint const end = begin + static_cast<guint>(run.text.size());
    if (findPixelSize(run.font) > 0) {
      insertFont(list.get(), run.font, {begin, end});
    }
    begin = end;
  }
  return list;
}

}  // namespace

Paragraph::Paragraph(Typesetter& typesetter, std::string_view text, Font const& font,
                     std::span<TextRun const> runs, ParagraphSetting const& setting)
    : _typesetter(typesetter) {
  PangoLayout* const layout = _typesetter.getLayout();
  pango_layout_set_font_description(layout, describeFont(font).get());
  pango_layout_set_attributes(layout, makeAttributes(font, runs).get());
  setText(text);
  setLines(setting);
  justifyLastLine(setting);
  Typeface const& typeface = _typesetter.getTypeface(font);
  measure(typeface, setting);
  int const lines = countLines();
  if (setting.height && lines > 1 && *setting.height > _height) {
    double const more = (*setting.height - _height) / (lines - 1);
    pango_layout_set_line_spacing(layout, static_cast<float>(1 + more / typeface.getLineHeight()));
    measure(typeface, setting);
  }
}

/// Pango complains of malformed UTF-8 on standard error, so it gets none.
void Paragraph::setText(std::string_view text) const {
  PangoLayout* const layout = _typesetter.getLayout();
  auto const size = static_cast<gssize>(text.size());
  if (g_utf8_validate(text.data(), size, nullptr) != FALSE) {
    pango_layout_set_text(layout, text.data(), static_cast<int>(size));
    return;
  }
  std::unique_ptr<gchar, decltype(&g_free)> const valid(g_utf8_make_valid(text.data(), size),
                                                        &g_free);
  pango_layout_set_text(layout, valid.get(), -1);
}

void Paragraph::setLines(ParagraphSetting const& setting) const {
  PangoLayout* const layout = _typesetter.getLayout();
  pango_layout_set_width(layout, setting.width ? toPangoUnits(std::max(1.0, *setting.width)) : -1);
  pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
  pango_layout_set_alignment(layout, setting.alignment);
  pango_layout_set_justify(layout, setting.isJustified ? TRUE : FALSE);
  pango_layout_set_justify_last_line(layout, FALSE);
  pango_layout_set_line_spacing(layout, 1);
  // Else Pango would turn the alignment round for texts from right to left.
  pango_layout_set_auto_dir(layout, FALSE);
  PangoDirection const direction =
      setting.isRightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR;
  PangoContext* const context = _typesetter.getContext();
  if (pango_context_get_base_dir(context) != direction) {
    pango_context_set_base_dir(context, direction);
    pango_layout_context_changed(layout);
  }
}

/// Pango would draw the letters of a single word apart.
void Paragraph::justifyLastLine(ParagraphSetting const& setting) const {
  PangoLayout* const layout = _typesetter.getLayout();
  PangoLayoutLine const* const last = setting.justifiesLastLine
                                          ? pango_layout_get_line_readonly(layout, countLines() - 1)
                                          : nullptr;
  if (last == nullptr) {
    return;
  }
  std::string_view const text = pango_layout_get_text(layout);
  auto const start = static_cast<std::size_t>(last->start_index);
  if (text.substr(start, static_cast<std::size_t>(last->length)).find(' ') !=
      std::string_view::npos) {
    pango_layout_set_justify_last_line(layout, TRUE);
  }
}

void Paragraph::measure(Typeface const& typeface, ParagraphSetting const& setting) {
  PangoLayout* const layout = _typesetter.getLayout();
  PangoRectangle logical{};
  pango_layout_get_extents(layout, nullptr, &logical);
  double const baseline = static_cast<double>(pango_layout_get_baseline(layout)) / PANGO_SCALE;
  _ascent = std::max(baseline, typeface.getAscent());
  _leading = _ascent - baseline;
  _width = setting.width.value_or(static_cast<double>(logical.width) / PANGO_SCALE);
  _height = _leading + static_cast<double>(logical.height) / PANGO_SCALE;
}

void Paragraph::show(cairo_t* cairo, double left, double top, double /*from*/,
                     double /*to*/) const {
  cairo_move_to(cairo, left, std::round(top + _ascent) - _ascent + _leading);
  pango_cairo_show_layout(cairo, _typesetter.getLayout());
}

}  // namespace Zorv::Render::Draw
