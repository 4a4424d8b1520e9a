#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "visuals/Export.h"

namespace Zorv::Visuals {

/// How a threshold is found (ISO/IEC 29500-1, 18.18.12, and its extension).
enum class ThresholdKind : std::uint8_t {
  Min,         ///< the lowest number of the ranges
  Max,         ///< the highest number of the ranges
  Number,      ///< the operand itself
  Percent,     ///< that part of the way from the lowest to the highest number, in percent
  Percentile,  ///< that percentile of the numbers, interpolated as PERCENTILE.INC does
  Formula,     ///< the operand itself
  AutoMin,     ///< the lowest number, or 0 if that is lower
  AutoMax,     ///< the highest number, or 0 if that is higher
};

/// True for the kinds whose operand counts.
[[nodiscard]] constexpr bool hasOperand(ThresholdKind kind) noexcept {
  return kind == ThresholdKind::Number || kind == ThresholdKind::Percent ||
         kind == ThresholdKind::Percentile || kind == ThresholdKind::Formula;
}

/// Name of a kind in workbook files: `percentile`.
[[nodiscard]] ZORV_VISUALS_EXPORT std::string_view toText(ThresholdKind kind) noexcept;

/// A point of a colour scale, an end of a data bar, or the lowest value of an icon.
struct Threshold {
  ThresholdKind kind = ThresholdKind::Min;  ///< how the threshold is found
  /// A number, or a formula that gives one. References are written as seen from the top-left cell
  /// of the ranges. A percentile outside 0 to 100 counts as the nearer of them.
  std::variant<double, DOM::FormulaSyntaxTree::Expr> operand = 0.0;
  std::string text{};  ///< the operand as the file writes it; for people
  /// Of icons: a value equal to the threshold reaches it.
  bool orEqual = true;
};

}  // namespace Zorv::Visuals
