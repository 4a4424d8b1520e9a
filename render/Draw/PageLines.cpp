#include "render/Draw/PageLines.h"

#include <algorithm>
#include <vector>

#include "render/Draw/Pages.h"
#include "render/Draw/Paper.h"
#include "render/Draw/Paragraph.h"

namespace Zorv::Render::Draw {

namespace {

using Pieces = std::vector<PageTextPiece>;

std::string writePieces(Pieces const& pieces, PageFacts const& facts) {
  std::string text;
  for (PageTextPiece const& piece : pieces) {
    switch (piece.kind) {
      case PageTextPiece::Kind::Text:
        text += piece.text;
        break;
      case PageTextPiece::Kind::PageNumber:
        text += std::to_string(facts.number + piece.offset);
        break;
      case PageTextPiece::Kind::PageCount:
        text += std::to_string(facts.count);
        break;
      case PageTextPiece::Kind::FileName:
        text += facts.fileName;
        break;
    }
  }
  return text;
}

/// The texts of a page: those of the first one, of even ones, or of all.
PageTexts const& chooseTexts(PageSetup const& setup, PageFacts const& facts) noexcept {
  if (facts.place == 0 && setup.textsOfFirstPage) {
    return *setup.textsOfFirstPage;
  }
  return facts.number % 2 == 0 && setup.textsOfEvenPages ? *setup.textsOfEvenPages : setup.texts;
}

/// Painter of one line of a page. Borrows everything.
struct LinePainter {
  cairo_t* cairo;
  Typesetter& typesetter;
  Font const& font;
  Box band;         ///< between the margins, from one end of the line to the other
  bool isAtBottom;  ///< the text ends at the band's bottom; else it begins at its top

  void paint(std::string const& text, PangoAlignment alignment) const {
    if (text.empty() || !(findPixelSize(font) > 0)) {
      return;
    }
    ParagraphSetting setting;
    setting.alignment = alignment;
    Paragraph const paragraph(typesetter, text, font, {}, setting);
    double const rest = band.width() - paragraph.getWidth();
    double left = band.left;
    if (alignment != PANGO_ALIGN_LEFT) {
      left += alignment == PANGO_ALIGN_CENTER ? rest / 2 : rest;
    }
    double const top = isAtBottom ? band.bottom - paragraph.getHeight() : band.top;
    paragraph.show(cairo, left, top, left, left + paragraph.getWidth());
  }

  void paint(PageText const& text, PageFacts const& facts) const {
    paint(writePieces(text.left, facts), PANGO_ALIGN_LEFT);
    paint(writePieces(text.centre, facts), PANGO_ALIGN_CENTER);
    paint(writePieces(text.right, facts), PANGO_ALIGN_RIGHT);
  }
};

}  // namespace

void paintPageLines(cairo_t* cairo, Typesetter& typesetter, SheetPicture const& sheet,
                    PageFacts const& facts) {
  PageSetup const& setup = sheet.page;
  PageTexts const& texts = chooseTexts(setup, facts);
  Box const paper = findPaper(setup);
  Box const printed = findPrintedPaper(setup);
  auto const within = [&](double distance) {
    return distance > 0 ? std::min(distance, paper.bottom) : 0;
  };
  Box const band{printed.left, within(setup.headerDistance), printed.right,
                 paper.bottom - within(setup.footerDistance)};
  Font const& font = sheet.looks.front().font;
  SavedState const saved(cairo);
  setColour(cairo, inkColour);
  LinePainter{cairo, typesetter, font, band, false}.paint(texts.header, facts);
  LinePainter{cairo, typesetter, font, band, true}.paint(texts.footer, facts);
}

}  // namespace Zorv::Render::Draw
