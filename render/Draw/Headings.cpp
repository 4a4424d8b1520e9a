#include "render/Draw/Headings.h"

#include <algorithm>
#include <span>
#include <string>

#include "DOM/A1Notation.h"
#include "render/Draw/Paper.h"
#include "render/Draw/PlainLine.h"

namespace Zorv::Render::Draw {

namespace {

constexpr DOM::Colour headingLineColour{0x80, 0x80, 0x80};

std::string nameColumn(unsigned long index) {
  std::string address = DOM::A1Notation::toAddress(CellIndex(RowIndex(0), ColumnIndex(index)));
  address.pop_back();  // the number of the row, 1
  return address;
}

/// Calls the visitor for each line of a part, with the piece of it that the part has.
template <class Visitor>
void visitLines(std::span<double const> edges, Extent const& part, Visitor const& visit) {
  auto const after = std::ranges::upper_bound(edges, part.from);
  for (auto line = static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - edges.begin(), 1));
       line < edges.size() && edges[line - 1] < part.to; ++line) {
    Extent const piece{std::max(edges[line - 1], part.from), std::min(edges[line], part.to)};
    if (piece.length() > 0) {
      visit(line - 1, piece);
    }
  }
}

}  // namespace

HeadingSize findHeadingSize(SheetPicture const& sheet) noexcept {
  constexpr double padding = 10;
  constexpr double digitWidth = 7;
  constexpr double height = 20;
  if (!sheet.page.printsHeadings || sheet.rows.empty() || sheet.columns.empty()) {
    return {};
  }
  unsigned digits = 1;
  for (unsigned long number = sheet.rows.back().index + 1; number >= 10; number /= 10) {
    ++digits;
  }
  return {padding + digitWidth * std::max(digits, 2U), height};
}

void HeadingPainter::paintColumns(cairo_t* cairo, Extent const& columns, double start) {
  SheetPicture const& sheet = _geometry.getSheet();
  double const height = findHeadingSize(sheet).height;
  visitLines(_geometry.getColumnEdges(), columns, [&](std::size_t column, Extent const& piece) {
    double const left =
        start + (sheet.rightToLeft ? columns.to - piece.to : piece.from - columns.from);
    paintHeading(cairo, nameColumn(sheet.columns[column].index),
                 {left, 0, left + piece.length(), height});
  });
}

void HeadingPainter::paintRows(cairo_t* cairo, Extent const& rows, double start, double left) {
  SheetPicture const& sheet = _geometry.getSheet();
  double const width = findHeadingSize(sheet).width;
  visitLines(_geometry.getRowEdges(), rows, [&](std::size_t row, Extent const& piece) {
    double const top = start + piece.from - rows.from;
    paintHeading(cairo, std::to_string(sheet.rows[row].index + 1),
                 {left, top, left + width, top + piece.length()});
  });
}

void HeadingPainter::paintHeading(cairo_t* cairo, std::string const& text, Box const& box) {
  SavedState const saved(cairo);
  cairo_rectangle(cairo, box.left - gridLineWidth, box.top - gridLineWidth,
                  box.width() + gridLineWidth, box.height() + gridLineWidth);
  cairo_clip(cairo);
  setColour(cairo, headingLineColour);
  cairo_set_line_width(cairo, gridLineWidth);
  cairo_rectangle(cairo, box.left - gridLineWidth / 2, box.top - gridLineWidth / 2, box.width(),
                  box.height());
  cairo_stroke(cairo);
  Font const& font = _geometry.getSheet().looks.front().font;
  PlainLine line;
  if (!(findPixelSize(font) > 0) || !line.layOut(_typesetter.getTypeface(font), font, text)) {
    return;
  }
  setColour(cairo, inkColour);
  double const left = (box.left + box.right - line.getWidth()) / 2;
  line.show(cairo, left, (box.top + box.bottom - line.getHeight()) / 2, left,
            left + line.getWidth());
}

}  // namespace Zorv::Render::Draw
