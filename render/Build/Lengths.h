#pragma once

#include "workbook/Sheet.h"

/// Sizes of rows and columns in CSS pixels. Sizes beyond those of spreadsheet programs are cut.
namespace Zorv::Render {

/// Width of a column of so many digits (ISO/IEC 29500-1, 18.3.1.13). `digitWidth` is the width of a
/// digit of the workbook's default font, in whole pixels.
[[nodiscard]] double toColumnPixels(double digits, double digitWidth) noexcept;

/// Height of a row in points.
[[nodiscard]] double toRowPixels(double points) noexcept;

/// Width of the columns of a sheet that have none of their own.
[[nodiscard]] double findDefaultColumnPixels(Workbook::SheetLayout const& layout,
                                             double digitWidth) noexcept;

/// Height of the rows of a sheet that have none of their own.
[[nodiscard]] double findDefaultRowPixels(Workbook::SheetLayout const& layout) noexcept;

}  // namespace Zorv::Render
