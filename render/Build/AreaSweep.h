#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Zorv::Render {

/// Part of a picture: half-open, in its lines.
struct PictureArea {
  std::uint32_t rowBegin = 0;
  std::uint32_t rowEnd = 0;
  std::uint32_t columnBegin = 0;
  std::uint32_t columnEnd = 0;
  std::size_t index = 0;  ///< of what the area belongs to

  [[nodiscard]] bool isEmpty() const noexcept {
    return rowBegin >= rowEnd || columnBegin >= columnEnd;
  }
};

/// Areas of a picture that do not overlap, looked up row by row from the top.
///
/// Of areas that overlap, the one that begins further up counts, then the one further left, then
/// the one with the smaller index.
/// Cost: that of sorting, and then one step for each position of the rows that areas begin in.
class AreaSweep {
public:
  AreaSweep(std::vector<PictureArea> areas, std::uint32_t columnCount);

  /// Areas that were left out because of others.
  [[nodiscard]] std::size_t getOverlapCount() const noexcept { return _overlapCount; }

  /// Goes on to a row, which must be the next one; returns the areas that begin there, from the
  /// left.
  std::span<PictureArea const> advance(std::uint32_t row);

  /// The area at a column of the current row, or null.
  [[nodiscard]] PictureArea const* find(std::uint32_t column) const noexcept {
    std::size_t const area = _byColumn[column];
    return area > 0 && _row < _areas[area - 1].rowEnd ? &_areas[area - 1] : nullptr;
  }

private:
  std::vector<PictureArea> _areas;     ///< without overlaps, by first row, then by first column
  std::vector<std::size_t> _byColumn;  ///< index of the last area that began there, plus one
  std::size_t _next = 0;               ///< the first area that has not begun yet
  std::uint32_t _row = 0;
  std::size_t _overlapCount = 0;
};

}  // namespace Zorv::Render
