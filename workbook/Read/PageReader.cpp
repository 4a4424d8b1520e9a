#include "workbook/Read/PageReader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "workbook/Read/Values.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

/// Nothing for a number that no page has.
std::optional<long> readPageNumber(std::string_view text) {
  constexpr long most = 32'767;
  auto const number = parseInteger(text);
  return number && -most <= *number && *number <= most ? number : std::nullopt;
}

}  // namespace

void PageReader::readElement() {
  if (_reader.is("pageSetUpPr")) {
    _page.fitsPages = getFlag("fitToPage");
  } else if (_reader.is("pageMargins")) {
    readMargins();
  } else if (_reader.is("pageSetup")) {
    readSetup();
  } else if (_reader.is("printOptions")) {
    readOptions();
  } else if (_reader.is("brk")) {
    readBreak();
  } else {
    _breaks = _reader.is("rowBreaks") ? &_page.rowBreaks : &_page.columnBreaks;
  }
}

void PageReader::finish() {
  for (auto* const breaks : {&_page.rowBreaks, &_page.columnBreaks}) {
    std::ranges::sort(*breaks);
    breaks->erase(std::unique(breaks->begin(), breaks->end()), breaks->end());
  }
}

void PageReader::readMargins() {
  readMargin("left", _page.left);
  readMargin("right", _page.right);
  readMargin("top", _page.top);
  readMargin("bottom", _page.bottom);
  readMargin("header", _page.headerDistance);
  readMargin("footer", _page.footerDistance);
}

void PageReader::readSetup() {
  constexpr unsigned lastPaper = 118;
  constexpr unsigned leastScale = 10;
  constexpr unsigned mostScale = 400;
  constexpr unsigned mostPages = 32'767;
  readCount("paperSize", 1, lastPaper, _page.paperSize);
  readCount("scale", leastScale, mostScale, _page.scale);
  readCount("fitToWidth", 0, mostPages, _page.fitWidth);
  readCount("fitToHeight", 0, mostPages, _page.fitHeight);
  _page.isLandscape = _reader.getAttribute("orientation") == "landscape";
  if (getFlag("useFirstPageNumber")) {
    _page.firstPageNumber = readPageNumber(_reader.getAttribute("firstPageNumber").value_or(""));
  }
  _page.goesAcrossFirst = _reader.getAttribute("pageOrder") == "overThenDown";
}

void PageReader::readOptions() {
  _page.isCentredAcross = getFlag("horizontalCentered");
  _page.isCentredDown = getFlag("verticalCentered");
  _page.printsGridLines =
      getFlag("gridLines") &&
      parseBoolean(_reader.getAttribute("gridLinesSet").value_or("")).value_or(true);
  _page.printsHeadings = getFlag("headings");
}

/// A break lies after the line that it names, counted from 1: its number is that of the next line,
/// counted from 0. Spreadsheet programs allow as many.
void PageReader::readBreak() {
  constexpr std::size_t most = 1'026;
  auto const line = parseInteger(_reader.getAttribute("id").value_or(""));
  if (_breaks != nullptr && line && *line > 0 && _breaks->size() < most) {
    _breaks->push_back(static_cast<unsigned long>(*line));
  }
}

void PageReader::readTexts() {
  if (getFlag("differentFirst")) {
    _page.textsOfFirstPage.emplace();
  }
  if (getFlag("differentOddEven")) {
    _page.textsOfEvenPages.emplace();
  }
  for (auto event = _reader.next(); event != XmlReader::Event::End; event = _reader.next()) {
    if (event == XmlReader::Event::Start) {
      std::string const element(_reader.getName());
      readText(element, _reader.readElementText());
    }
  }
}

/// Spreadsheet programs write up to 255 characters.
void PageReader::readText(std::string_view element, std::string text) {
  constexpr std::size_t longest = 4'096;
  if (text.size() > longest) {
    return;
  }
  text = unescapeXstring(text);
  auto const take = [&](std::string_view header, std::string_view footer, PageTexts* texts) {
    if (texts != nullptr && (element == header || element == footer)) {
      (element == header ? texts->header : texts->footer) = text;
    }
  };
  auto const addressOf = [](std::optional<PageTexts>& texts) { return texts ? &*texts : nullptr; };
  take("oddHeader", "oddFooter", &_page.texts);
  take("evenHeader", "evenFooter", addressOf(_page.textsOfEvenPages));
  take("firstHeader", "firstFooter", addressOf(_page.textsOfFirstPage));
}

void PageReader::readMargin(std::string_view attribute, double& margin) const {
  constexpr double widest = 49;
  auto const inches = parseNumber(_reader.getAttribute(attribute).value_or(""));
  if (inches && 0 <= *inches && *inches <= widest) {
    margin = *inches;
  }
}

void PageReader::readCount(std::string_view attribute, unsigned least, unsigned most,
                           unsigned& count) const {
  auto const number = parseInteger(_reader.getAttribute(attribute).value_or(""));
  if (number && static_cast<long>(least) <= *number && *number <= static_cast<long>(most)) {
    count = static_cast<unsigned>(*number);
  }
}

bool PageReader::getFlag(std::string_view attribute) const {
  return parseBoolean(_reader.getAttribute(attribute).value_or("")).value_or(false);
}

}  // namespace Zorv::Workbook
