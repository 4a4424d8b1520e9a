#include "render/Build/Overflow.h"

#include <cstddef>

namespace Zorv::Render {

namespace {

/// Real fonts may be wider than the estimate.
constexpr double allowance = 1.25;
constexpr double textPadding = 5;

/// Free columns to the right that give at least `missing` pixels, or all there are.
std::uint32_t countRight(std::uint32_t column, double missing, std::span<Room const> rooms,
                         ShownLines const& columns) noexcept {
  std::uint32_t count = 0;
  for (std::size_t next = column + 1;
       missing > 0 && next < rooms.size() && rooms[next] != Room::Occupied; ++next) {
    missing -= columns[static_cast<std::uint32_t>(next)].size;
    ++count;
  }
  return count;
}

std::uint32_t countLeft(std::uint32_t column, double missing, std::span<Room const> rooms,
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
                     ShownLines const& columns) {
  PictureCell& cell = *text.cell;
  if (cell.horizontal == DOM::HorizontalAlignment::CenterContinuous) {
    cell.freeRight = countCentred(cell.column, rooms);
    return;
  }
  double const missing = text.width * allowance + textPadding - columns[cell.column].size;
  switch (cell.horizontal) {
    case DOM::HorizontalAlignment::Left:
      cell.freeRight = countRight(cell.column, missing, rooms, columns);
      break;
    case DOM::HorizontalAlignment::Right:
      cell.freeLeft = countLeft(cell.column, missing, rooms, columns);
      break;
    case DOM::HorizontalAlignment::Center:
      cell.freeRight = countRight(cell.column, missing / 2, rooms, columns);
      cell.freeLeft = countLeft(cell.column, missing / 2, rooms, columns);
      break;
    default:
      break;
  }
}

}  // namespace Zorv::Render
