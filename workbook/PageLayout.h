#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zorv::Workbook {

/// Lines above and below the cells of a page, as the file has them: with codes such as `&P`, the
/// number of the page (ISO/IEC 29500-1, 18.3.1.46).
struct PageTexts {
  std::string header;  ///< above the cells
  std::string footer;  ///< below the cells
};

/// How a sheet is laid out on paper: page setup, margins, print options and breaks
/// (ISO/IEC 29500-1, 18.3.1.63, 18.3.1.62, 18.3.1.70 and 18.3.1.74).
struct PageLayout {
  unsigned paperSize = 1;  ///< its code: 1 is Letter, 9 is A4
  bool isLandscape = false;
  double left = 0.7;                        ///< margin, in inches
  double right = 0.7;                       ///< margin, in inches
  double top = 0.75;                        ///< margin, in inches
  double bottom = 0.75;                     ///< margin, in inches
  unsigned scale = 100;                     ///< in percent, 10 to 400
  bool fitsPages = false;                   ///< the next two count instead of the scale
  unsigned fitWidth = 1;                    ///< most pages across; 0: as many as it takes
  unsigned fitHeight = 1;                   ///< most pages down; 0: as many as it takes
  std::vector<unsigned long> rowBreaks;     ///< a page begins at each of these rows; ascending
  std::vector<unsigned long> columnBreaks;  ///< a page begins at each of these columns; ascending
  bool isCentredAcross = false;
  bool isCentredDown = false;
  bool printsGridLines = false;
  bool printsHeadings = false;
  bool goesAcrossFirst = false;  ///< pages follow each other to the side before they go down
  PageTexts texts;               ///< of every page, unless the next two count
  std::optional<PageTexts> textsOfFirstPage;  ///< of the sheet's first page
  std::optional<PageTexts> textsOfEvenPages;  ///< of pages with even numbers
  double headerDistance = 0.3;                ///< of the header from the paper's edge, in inches
  double footerDistance = 0.3;                ///< of the footer from the paper's edge, in inches
  /// Number of the sheet's first page; nothing: it follows that of the sheet before.
  std::optional<long> firstPageNumber;
};

}  // namespace Zorv::Workbook
