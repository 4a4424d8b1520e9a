#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "Utils/CellIndex.h"

// Cells and values as integers, for structures that hold a million of them.
namespace Zorv::ConditionalFormatters {

/// A position of the sheet: its row, then its column. Ascends row by row, each row from the left;
/// the column after the last one is the first of the next row.
using PositionKey = std::uint64_t;

inline constexpr unsigned columnKeyBits = 14;                    ///< 16,384 columns
inline constexpr unsigned positionKeyBits = 20 + columnKeyBits;  ///< 1,048,576 rows

[[nodiscard]] constexpr PositionKey positionKeyOf(unsigned long row,
                                                  unsigned long column) noexcept {
  return (PositionKey{row} << columnKeyBits) + column;
}
[[nodiscard]] constexpr unsigned long rowOfKey(PositionKey key) noexcept {
  return key >> columnKeyBits;
}
[[nodiscard]] constexpr unsigned long columnOfKey(PositionKey key) noexcept {
  return key & ((PositionKey{1} << columnKeyBits) - 1);
}
[[nodiscard]] inline CellIndex cellIndexOfKey(PositionKey key) noexcept {
  return {RowIndex(rowOfKey(key)), ColumnIndex(columnOfKey(key))};
}

/// A place in the order in which the cells of some ranges are added up: the index of the range,
/// then the position. A cell of two ranges has two places.
using PlaceKey = std::uint64_t;

/// Requires fewer than 2^29 ranges.
[[nodiscard]] constexpr PlaceKey placeKeyOf(std::size_t range, PositionKey position) noexcept {
  return (PlaceKey{range} << positionKeyBits) + position;
}
[[nodiscard]] constexpr PositionKey positionOfPlace(PlaceKey place) noexcept {
  return place & ((PlaceKey{1} << positionKeyBits) - 1);
}
[[nodiscard]] constexpr std::size_t rangeOfPlace(PlaceKey place) noexcept {
  return place >> positionKeyBits;
}

/// A value in 64 bits. A number is its own bits, with one zero and one NaN; the other kinds lie
/// among the remaining NaNs, see FormulaModel::ValueKey.
using ValueBits = std::uint64_t;

inline constexpr ValueBits nanBits = 0x7FF8'0000'0000'0000;
/// The bits of a value that is left out.
inline constexpr ValueBits noValueBits = ~ValueBits{0};

[[nodiscard]] inline ValueBits bitsOfNumber(double number) noexcept {
  return std::isnan(number) ? nanBits : std::bit_cast<ValueBits>(number == 0.0 ? 0.0 : number);
}
[[nodiscard]] constexpr bool isNumberBits(ValueBits bits) noexcept {
  constexpr ValueBits infinityBits = 0x7FF0'0000'0000'0000;
  constexpr ValueBits withoutSign = ~(ValueBits{1} << 63U);
  // Without a branch: see where numbers are summed.
  return (static_cast<unsigned>((bits & withoutSign) <= infinityBits) |
          static_cast<unsigned>(bits == nanBits)) != 0;
}

}  // namespace Zorv::ConditionalFormatters
