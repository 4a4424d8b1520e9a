#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/NumberFormat.h"
#include "render/Build/Looks.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Text of a cell as its place shows it.
struct CellText {
  CellContent content = CellContent::Empty;
  std::string text;
  std::optional<std::uint32_t> splitAt;  ///< see PictureCell
  unsigned colour = 0;                   ///< see OfficeUtils::ShownText
  DOM::HorizontalAlignment horizontal = DOM::HorizontalAlignment::Left;
  bool isAsStored = false;  ///< the text is the cell's value, but for control characters
};

/// Writer of the texts of cells: by their number formats, cut to the width of their columns.
///
/// A number that its format cannot show, or that is wider than its column, is a row of `#`; as are
/// truth values and errors that are too wide. Texts longer than spreadsheet programs allow are cut.
/// Borrows the locale.
class CellTexts {
public:
  /// `rightToLeft`: the sheet is laid out from right to left.
  CellTexts(OfficeUtils::LocaleContext const& locale, bool rightToLeft) noexcept
      : _locale(locale), _rightToLeft(rightToLeft) {}

  /// The text of a value in a place that is `width` pixels wide.
  [[nodiscard]] CellText write(FormulaModel::FormulaValue const& value, StyleLook const& look,
                               double width) const;

private:
  [[nodiscard]] CellText writeNumber(double number, StyleLook const& look, double width) const;
  [[nodiscard]] CellText writeString(std::string const& value, StyleLook const& look,
                                     double width) const;
  [[nodiscard]] static CellText writeWord(std::string word, CellContent content,
                                          StyleLook const& look, double width);
  [[nodiscard]] DOM::HorizontalAlignment findSide(std::string_view text) const noexcept;

  OfficeUtils::LocaleContext const& _locale;
  bool _rightToLeft;
};

/// A text as a cell can show it: without control characters but line ends, which are LF; without
/// these, too, unless `wraps`.
[[nodiscard]] std::string cleanText(std::string_view text, bool wraps);

}  // namespace Zorv::Render
