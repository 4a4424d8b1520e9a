#include "render/Build/Pages.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/NumberFormat.h"
#include "render/Build/PageTexts.h"
#include "workbook/PrintNames.h"

namespace Zorv::Render {

namespace {

constexpr double pixelsPerInch = 96;
constexpr double pixelsPerMillimetre = 96 / 25.4;

/// Size of a paper as it is held upright, in millimetres (ISO/IEC 29500-1, 18.3.1.63).
struct Paper {
  unsigned code;
  double width;
  double height;
};

constexpr std::array papers{
    Paper{1, 215.9, 279.4},   // Letter
    Paper{3, 279.4, 431.8},   // Tabloid
    Paper{4, 431.8, 279.4},   // Ledger
    Paper{5, 215.9, 355.6},   // Legal
    Paper{6, 139.7, 215.9},   // Statement
    Paper{7, 184.15, 266.7},  // Executive
    Paper{8, 297, 420},       // A3
    Paper{9, 210, 297},       // A4
    Paper{10, 210, 297},      // A4 small
    Paper{11, 148, 210},      // A5
    Paper{12, 250, 353},      // B4
    Paper{13, 176, 250},      // B5
    Paper{66, 420, 594},      // A2
    Paper{70, 105, 148},      // A6
};

Paper const& findPaper(unsigned code) noexcept {
  auto const* const found = std::ranges::find(papers, code, &Paper::code);
  return found != papers.end() ? *found : papers.front();
}

/// The lines of a picture at which pages begin; none before the first line.
std::vector<std::uint32_t> placeBreaks(std::vector<unsigned long> const& breaks,
                                       ShownLines const& lines) {
  std::vector<std::uint32_t> places;
  for (unsigned long const line : breaks) {
    std::uint32_t const place = lines.atOrAfter(line);
    bool const isNew = places.empty() || places.back() != place;
    if (0 < place && place < lines.size() && isNew) {
      places.push_back(place);
    }
  }
  return places;
}

void placeTitles(Workbook::PrintTitles const& titles, ShownLines const& rows,
                 ShownLines const& columns, PageSetup& setup) {
  if (titles.rows) {
    setup.titleRowsBegin = rows.atOrAfter(titles.rows->firstRow);
    setup.titleRowsEnd = rows.atOrAfter(titles.rows->endRow);
  }
  if (titles.columns) {
    setup.titleColumnsBegin = columns.atOrAfter(titles.columns->firstColumn);
    setup.titleColumnsEnd = columns.atOrAfter(titles.columns->endColumn);
  }
}

/// A sheet has some areas that people print; a file may have any number.
void placeAreas(std::vector<TableRange> const& ranges, ShownLines const& rows,
                ShownLines const& columns, PageSetup& setup) {
  constexpr std::size_t most = 1'000;
  for (TableRange const& range : ranges) {
    PrintArea const area{.rowBegin = rows.atOrAfter(range.firstRow),
                         .rowEnd = rows.atOrAfter(range.endRow),
                         .columnBegin = columns.atOrAfter(range.firstColumn),
                         .columnEnd = columns.atOrAfter(range.endColumn)};
    bool const isEmpty = area.rowBegin == area.rowEnd || area.columnBegin == area.columnEnd;
    if (!isEmpty && setup.areas.size() < most) {
      setup.areas.push_back(area);
    }
  }
}

PageFacts findPageFacts(BuildState const& state, std::size_t sheet) {
  auto const now = OfficeUtils::DateTime::getNow(state.options.timeZone, state.locale);
  auto const write = [&](std::string const& code) {
    auto const format = OfficeUtils::NumberFormat::compile(code);
    return format ? format->formatNumber(now.getSerial().get(), state.locale).value_or("") : "";
  };
  return {state.document.getSheets()[sheet].name,
          write(OfficeUtils::NumberFormat::findDateCode(state.locale)), write("h:mm")};
}

void placeTexts(Workbook::PageLayout const& page, PageFacts const& facts, PageSetup& setup) {
  auto const parse = [&](Workbook::PageTexts const& texts) {
    return PageTexts{parsePageText(texts.header, facts), parsePageText(texts.footer, facts)};
  };
  setup.texts = parse(page.texts);
  if (page.textsOfFirstPage) {
    setup.textsOfFirstPage = parse(*page.textsOfFirstPage);
  }
  if (page.textsOfEvenPages) {
    setup.textsOfEvenPages = parse(*page.textsOfEvenPages);
  }
}

}  // namespace

PageSetup makePageSetup(BuildState const& state, std::size_t sheet, ShownLines const& rows,
                        ShownLines const& columns) {
  Workbook::Document const& document = state.document;
  Workbook::PageLayout const& page = document.getSheets()[sheet].page;
  Paper const& paper = findPaper(page.paperSize);
  constexpr double percent = 100;
  PageSetup setup;
  setup.width = paper.width * pixelsPerMillimetre;
  setup.height = paper.height * pixelsPerMillimetre;
  if (page.isLandscape) {
    std::swap(setup.width, setup.height);
  }
  setup.left = page.left * pixelsPerInch;
  setup.right = page.right * pixelsPerInch;
  setup.top = page.top * pixelsPerInch;
  setup.bottom = page.bottom * pixelsPerInch;
  setup.scale = page.scale / percent;
  setup.fitsPages = page.fitsPages;
  setup.fitWidth = page.fitWidth;
  setup.fitHeight = page.fitHeight;
  setup.rowBreaks = placeBreaks(page.rowBreaks, rows);
  setup.columnBreaks = placeBreaks(page.columnBreaks, columns);
  placeTitles(Workbook::findPrintTitles(document, sheet), rows, columns, setup);
  placeAreas(Workbook::findPrintAreas(document, sheet), rows, columns, setup);
  setup.isCentredAcross = page.isCentredAcross;
  setup.isCentredDown = page.isCentredDown;
  setup.printsGridLines = page.printsGridLines;
  setup.printsHeadings = page.printsHeadings;
  setup.goesAcrossFirst = page.goesAcrossFirst;
  setup.headerDistance = page.headerDistance * pixelsPerInch;
  setup.footerDistance = page.footerDistance * pixelsPerInch;
  setup.firstPageNumber = page.firstPageNumber;
  placeTexts(page, findPageFacts(state, sheet), setup);
  return setup;
}

}  // namespace Zorv::Render
