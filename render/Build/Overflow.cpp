#include "render/Build/Overflow.h"

#include <cstddef>

namespace Zorv::Render {

namespace {

/// Real fonts may be wider than the estimate.
constexpr double allowance = 1.5;
constexpr double textPadding = 5;

/// Free columns after one that give at least `missing` pixels, or all there are.
std::uint32_t countAfter(std::uint32_t column, double missing, std::span<Room const> rooms,
                         ShownLines const& columns) noexcept {
  std::uint32_t count = 0;
  for (std::size_t next = column + 1;
       missing > 0 && next < rooms.size() && rooms[next] != Room::Occupied; ++next) {
    missing -= columns[static_cast<std::uint32_t>(next)].size;
    ++count;
  }
  return count;
}

std::uint32_t countBefore(std::uint32_t column, double missing, std::span<Room const> rooms,
                          ShownLines const& columns) noexcept {
  std::uint32_t count = 0;
  while (missing > 0 && count < column && rooms[column - count - 1] != Room::Occupied) {
    ++count;
    missing -= columns[column - count].size;
  }
  return count;
}

std::uint32_t countCentred(std::uint32_t column, std::span<Room const> rooms) noexcept {
  std::uint32_t count = 0;
  while (column + count + 1 < rooms.size() && rooms[column + count + 1] == Room::Centred) {
    ++count;
  }
  return count;
}

}  // namespace

void findFreeColumns(RunningText const& text, std::span<Room const> rooms,
                     ShownLines const& columns, bool rightToLeft) {
  PictureCell& cell = *text.cell;
  std::uint32_t& freeAfter = rightToLeft ? cell.freeLeft : cell.freeRight;
  std::uint32_t& freeBefore = rightToLeft ? cell.freeRight : cell.freeLeft;
  double const missing = text.width * allowance + textPadding - columns[cell.column].size;
  switch (cell.horizontal) {
    case DOM::HorizontalAlignment::CenterContinuous:
      freeAfter = countCentred(cell.column, rooms);
      break;
    case DOM::HorizontalAlignment::Center:
      freeAfter = countAfter(cell.column, missing / 2, rooms, columns);
      freeBefore = countBefore(cell.column, missing / 2, rooms, columns);
      break;
    case DOM::HorizontalAlignment::Left:
    case DOM::HorizontalAlignment::Right:
      if ((cell.horizontal == DOM::HorizontalAlignment::Left) != rightToLeft) {
        freeAfter = countAfter(cell.column, missing, rooms, columns);
      } else {
        freeBefore = countBefore(cell.column, missing, rooms, columns);
      }
      break;
    default:
      break;
  }
}

}  // namespace Zorv::Render
