#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DOM/StyleProps.h"
#include "Utils/TableRange.h"
#include "visuals/CellVisuals.h"

// Sheets as they look: what the writers of pages and pictures draw. Plain data, with every rule of
// appearance applied, so that writers decide nothing. Lengths are in CSS pixels, 1/96 of an inch.
// It borrows the document for bars only.
namespace Zorv::Render {

/// Row or column that is seen. Hidden ones are not in the picture.
struct Line {
  unsigned long index = 0;  ///< in the table, from 0
  double start = 0;         ///< from the edge of the first line; from the right in a sheet that is
                            ///< laid out from right to left
  double size = 0;
  /// Of its positions without a cell, as an index in SheetPicture::looks. That of the row counts,
  /// or that of the column if the row's is 0.
  std::uint32_t look = 0;
};

/// Lines around a cell, or through it, at its sides as they are seen: in a sheet that is laid out
/// from right to left, the next column lies at a cell's left. No line where its style is
/// LineStyle::None.
///
/// An edge that two cells of the picture share has the same line in both, the stronger one, so that
/// it does not matter which of them draws it. A line without a colour is black.
struct CellEdges {
  DOM::BorderLine left;
  DOM::BorderLine right;
  DOM::BorderLine top;
  DOM::BorderLine bottom;
  DOM::BorderLine diagonalUp;
  DOM::BorderLine diagonalDown;

  friend bool operator==(CellEdges const&, CellEdges const&) = default;
};

/// Background of a cell.
struct CellFill {
  DOM::FillPattern pattern = DOM::FillPattern::None;
  DOM::Colour colour{255, 255, 255};          ///< of a solid fill, and behind a pattern
  DOM::Colour patternColour{0, 0, 0};         ///< of the lines or dots of a pattern
  std::optional<DOM::GradientFill> gradient;  ///< of FillPattern::Gradient

  friend bool operator==(CellFill const&, CellFill const&) = default;
};

/// Characters that look alike.
struct Font {
  std::string name;
  double size = 11;  ///< in points
  DOM::Colour colour{0, 0, 0};
  bool bold = false;
  bool italic = false;
  DOM::Underline underline = DOM::Underline::None;
  bool strikethrough = false;
  DOM::VerticalRun verticalRun = DOM::VerticalRun::Baseline;

  friend bool operator==(Font const&, Font const&) = default;
};

/// Appearance that many cells share: the conditional style over the cell's own, property by
/// property.
struct Look {
  Font font;
  CellFill fill;  ///< without the colour of a colour scale
  DOM::VerticalAlignment vertical = DOM::VerticalAlignment::Bottom;
  double indent = 0;
  bool wraps = false;
  bool shrinksToFit = false;
  int rotation = 0;        ///< in degrees, counter-clockwise, -90 to 90
  bool isStacked = false;  ///< letters stand upright, one below the other
  bool readsRightToLeft = false;

  friend bool operator==(Look const&, Look const&) = default;
};

/// Part of a text with a font of its own. The runs of a cell make up its text.
struct TextRun {
  std::string text;
  Font font;
};

enum class CellContent : std::uint8_t { Empty, Number, Text, Boolean, Error };

/// A cell that is seen. What lies under a merged cell is not in the picture.
struct PictureCell {
  std::uint32_t row = 0;          ///< index in SheetPicture::rows
  std::uint32_t column = 0;       ///< index in SheetPicture::columns
  std::uint32_t rowCount = 1;     ///< rows of the picture that it covers
  std::uint32_t columnCount = 1;  ///< columns of the picture that it covers
  std::uint32_t look = 0;         ///< index in SheetPicture::looks
  std::uint32_t edges = 0;        ///< index in SheetPicture::edges
  std::uint32_t decision = 0;     ///< index in SheetPicture::decisions
  std::uint32_t link = 0;         ///< index in SheetPicture::links, plus one; 0: no link
  std::uint32_t runs = 0;         ///< index in SheetPicture::richTexts, plus one; 0: not rich
  /// Columns of the picture beside the cell into which its text may run, since they are empty: at
  /// its sides as they are seen. In a sheet that is laid out from right to left, the columns to the
  /// right are those before the cell. A text that is centred across a selection
  /// (HorizontalAlignment::CenterContinuous) stands in the middle of the cell and these columns.
  std::uint32_t freeLeft = 0;
  std::uint32_t freeRight = 0;
  CellContent content = CellContent::Empty;
  /// Never HorizontalAlignment::General.
  DOM::HorizontalAlignment horizontal = DOM::HorizontalAlignment::Left;
  /// As shown: by the number format, cut to the width, or `####`. Empty where a bar or an icon
  /// stands instead of the value. UTF-8, with LF between lines.
  std::string text;
  /// Bytes of the text that stand at the left edge of the cell, while the others stand at the right
  /// one, as in formats of accounting; whatever the alignment. Nothing: the text is in one piece.
  std::optional<std::uint32_t> splitAt;
  /// By a section of the number format, instead of the font's.
  std::optional<DOM::Colour> textColour;
  /// By a colour scale, instead of the fill.
  std::optional<DOM::Colour> scaleColour;
  std::optional<Visuals::ShownBar> bar;  ///< borrows its format
  std::optional<Visuals::Icon> icon;
};

/// Rule of a sheet that the picture shows.
struct PictureRule {
  std::size_t number = 0;             ///< in the workbook; see Workbook::Rule
  std::string text;                   ///< the condition: `formula $D4<TODAY()`
  std::string ranges;                 ///< `A4:G15`, shortened if there are many
  std::vector<TableRange> areas;      ///< all its ranges, in the table
  std::string style;                  ///< `fill #FFC7CE, bold`; of a visual rule, what it draws
  std::optional<DOM::Colour> colour;  ///< stands for the rule in a list of them
  std::optional<int> priority;
  bool stopsWhereTrue = false;
  std::size_t cellCount = 0;  ///< cells of the picture that it has a part in
};

/// Part of a sheet that is printed, in the picture's lines: half-open.
struct PrintArea {
  std::uint32_t rowBegin = 0;
  std::uint32_t rowEnd = 0;
  std::uint32_t columnBegin = 0;
  std::uint32_t columnEnd = 0;

  friend bool operator==(PrintArea const&, PrintArea const&) = default;
};

/// Piece of a line above or below the cells of a page.
struct PageTextPiece {
  enum class Kind : std::uint8_t {
    Text,
    PageNumber,  ///< of the page that it stands on, with `offset` added
    PageCount,   ///< of the file
    FileName,    ///< the picture's
  };

  Kind kind = Kind::Text;
  std::string text = {};  ///< UTF-8, with LF between lines
  long offset = 0;
};

/// Header or footer of a page: at its left, in its middle and at its right.
struct PageText {
  std::vector<PageTextPiece> left;
  std::vector<PageTextPiece> centre;
  std::vector<PageTextPiece> right;
};

struct PageTexts {
  PageText header;
  PageText footer;
};

/// How a sheet is laid out on paper (ISO/IEC 29500-1, 18.3.1.63 and 18.3.1.62).
struct PageSetup {
  double width = 816;  ///< of the paper, as it is held; Letter upright
  double height = 1056;
  double left = 67.2;  ///< margins
  double right = 67.2;
  double top = 72;
  double bottom = 72;
  double scale = 1;
  /// Most pages across and down; 0: as many as it takes. They count instead of the scale.
  unsigned fitWidth = 0;
  unsigned fitHeight = 0;
  bool fitsPages = false;
  std::vector<std::uint32_t> rowBreaks;     ///< indices in SheetPicture::rows: pages begin there
  std::vector<std::uint32_t> columnBreaks;  ///< indices in SheetPicture::columns
  /// Rows and columns repeated on each page: half-open, in the picture's indices.
  std::uint32_t titleRowsBegin = 0;
  std::uint32_t titleRowsEnd = 0;
  std::uint32_t titleColumnsBegin = 0;
  std::uint32_t titleColumnsEnd = 0;
  std::vector<PrintArea> areas;  ///< each begins a page; none: all of the picture is printed
  bool isCentredAcross = false;
  bool isCentredDown = false;
  bool printsGridLines = false;
  bool printsHeadings = false;   ///< letters of columns and numbers of rows
  bool goesAcrossFirst = false;  ///< pages follow each other to the side before they go down
  PageTexts texts;               ///< of every page, unless the next two count
  std::optional<PageTexts> textsOfFirstPage;
  std::optional<PageTexts> textsOfEvenPages;  ///< of pages with even numbers
  double headerDistance = 28.8;               ///< of the header from the paper's edge
  double footerDistance = 28.8;               ///< of the footer from the paper's edge
  /// Number of the sheet's first page; nothing: it follows that of the sheet before.
  std::optional<long> firstPageNumber;
};

/// A sheet as it looks.
struct SheetPicture {
  std::size_t sheet = 0;  ///< index in the document
  std::string name;
  TableRange range{};  ///< of the table; what is drawn, its hidden lines included
  std::vector<Line> rows;
  std::vector<Line> columns;
  double width = 0;   ///< of all columns
  double height = 0;  ///< of all rows
  /// Counted in the picture's lines: the first ones that stay in sight.
  std::uint32_t frozenRows = 0;
  std::uint32_t frozenColumns = 0;
  bool showsGridLines = true;
  bool rightToLeft = false;
  /// Row by row, from the first column on. Positions that are neither here nor below a merged cell
  /// have the look of their row or column and no text.
  std::vector<PictureCell> cells;
  std::vector<Look> looks;       ///< the first is that of a cell without a style
  std::vector<CellEdges> edges;  ///< the first has no lines
  std::vector<std::vector<TextRun>> richTexts;
  std::vector<std::string> links;  ///< an address, or a place in the workbook such as `#Sheet2!A1`
  std::vector<PictureRule> rules;
  /// Which rules have a part in a cell, as indices in `rules`, by priority. The first is none.
  std::vector<std::vector<std::uint32_t>> decisions;
  PageSetup page;
};

/// Columns of a picture before and after a cell into which its text may run. Those before it are at
/// its right where the sheet is laid out from right to left.
struct FreeColumns {
  std::uint32_t before;
  std::uint32_t after;
};

[[nodiscard]] inline FreeColumns freeColumnsOf(SheetPicture const& sheet,
                                               PictureCell const& cell) noexcept {
  return sheet.rightToLeft ? FreeColumns{cell.freeRight, cell.freeLeft}
                           : FreeColumns{cell.freeLeft, cell.freeRight};
}

/// A workbook as it looks.
struct Picture {
  std::string name;  ///< of the file
  std::vector<SheetPicture> sheets;
  std::vector<std::string> findings;  ///< what could not be drawn as the file means it
};

}  // namespace Zorv::Render
