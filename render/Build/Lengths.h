#pragma once

#include "workbook/Sheet.h"

/// Sizes of rows and columns in CSS pixels. Sizes beyond those of spreadsheet programs are cut.
namespace Zorv::Render {

/// Width of the digit 0 of the default font.
inline constexpr double digitWidth = 7;

/// Width of a column of so many digits (ISO/IEC 29500-1, 18.3.1.13).
[[nodiscard]] double toColumnPixels(double digits) noexcept;

/// Height of a row in points.
[[nodiscard]] double toRowPixels(double points) noexcept;

/// Width of the columns of a sheet that have none of their own.
[[nodiscard]] double findDefaultColumnPixels(Workbook::SheetLayout const& layout) noexcept;

/// Height of the rows of a sheet that have none of their own.
[[nodiscard]] double findDefaultRowPixels(Workbook::SheetLayout const& layout) noexcept;

}  // namespace Zorv::Render
