#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "DOM/Cell.h"
#include "DOM/StyleProps.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/NumberFormat.h"

namespace Zorv::Words {

/// Writes the values of cells as a sheet shows them: in their number formats.
///
/// Dates are unmistakable: where the shown text is not year first, the year-first date follows, as
/// in `21.10.2026 (2026-10-21)`. A number that its format cannot show is in general format.
///
/// Borrows the locale. Memory: one compiled format for each number format that was asked for. One
/// thread at a time.
class CellFormatter {
public:
  explicit CellFormatter(OfficeUtils::LocaleContext const& locale) noexcept : _locale(locale) {}

  /// The text of a cell. A number format in `format` replaces the cell's own; null if there is
  /// none. Not printable as it is; valid until the next call or as long as the cell.
  [[nodiscard]] std::string_view toText(DOM::Cell const& cell, DOM::CellFormat const* format);

  /// True for a number that a format shows as a date.
  [[nodiscard]] bool showsDate(double number, DOM::CellFormat const& format);

private:
  using NumberFormat = OfficeUtils::NumberFormat;

  [[nodiscard]] NumberFormat const* findFormat(std::string const& code);
  [[nodiscard]] std::string formatNumber(double number, NumberFormat const& format) const;

  OfficeUtils::LocaleContext const& _locale;
  std::unordered_map<std::string, std::optional<NumberFormat>> _formats;  ///< by code
  std::string _text;
};

/// A value as a formula would write it: `167.9`, `TRUE`, `#DIV/0!`, a text as it is; none for
/// empty.
[[nodiscard]] std::string toRawText(FormulaModel::FormulaValue const& value);

}  // namespace Zorv::Words
