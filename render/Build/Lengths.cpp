#include "render/Build/Lengths.h"

#include <algorithm>
#include <cmath>

namespace Zorv::Render {

double toColumnPixels(double digits, double digitWidth) noexcept {
  constexpr double mostDigits = 255;
  constexpr double parts = 256;
  double const rounding = std::trunc(parts / 2 / digitWidth);
  double const width = std::clamp(digits, 0.0, mostDigits);
  return std::trunc((parts * width + rounding) / parts * digitWidth);
}

double toRowPixels(double points) noexcept {
  constexpr double mostPoints = 409.5;
  constexpr double pixelsPerPoint = 96.0 / 72.0;
  return std::clamp(points, 0.0, mostPoints) * pixelsPerPoint;
}

/// Without a width in the file, a column has room for its digits and a padding, and is rounded up
/// so that it scrolls well.
double findDefaultColumnPixels(Workbook::SheetLayout const& layout, double digitWidth) noexcept {
  if (layout.defaultColumnWidth && *layout.defaultColumnWidth > 0) {
    return toColumnPixels(*layout.defaultColumnWidth, digitWidth);
  }
  constexpr double padding = 5;
  constexpr double unit = 8;
  return std::ceil((layout.baseColumnWidth * digitWidth + padding) / unit) * unit;
}

double findDefaultRowPixels(Workbook::SheetLayout const& layout) noexcept {
  constexpr double usualPoints = 15;
  bool const isWritten = layout.defaultRowHeight && *layout.defaultRowHeight > 0;
  return toRowPixels(isWritten ? *layout.defaultRowHeight : usualPoints);
}

}  // namespace Zorv::Render
