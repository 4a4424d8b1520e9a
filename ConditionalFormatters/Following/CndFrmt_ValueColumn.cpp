#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Whole numbers up to this one, of as many values, add up without overflow.
constexpr double largestSmall = static_cast<double>(std::int64_t{1} << 40U);
constexpr std::size_t mostSmall = std::size_t{1} << 22U;
/// Up to here each whole number is a double.
constexpr std::uint64_t largestExact = std::uint64_t{1} << 53U;

constexpr ValueBits negativeZeroBits = ValueBits{1} << 63U;

std::optional<std::int64_t> asSmallWhole(ValueBits bits) noexcept {
  auto const number = std::bit_cast<double>(bits);
  if (std::abs(number) <= largestSmall && std::trunc(number) == number) {
    return static_cast<std::int64_t>(number);
  }
  return std::nullopt;
}

/// Adds the numbers among values. Of other values -0 is added, which changes no sum: branches on
/// the kinds of values would be mispredicted.
double addNumbers(double sum, std::vector<ValueBits> const& values) noexcept {
  for (ValueBits const bits : values) {
    ValueBits const mask = ValueBits{0} - static_cast<ValueBits>(isNumberBits(bits));
    sum += std::bit_cast<double>((bits & mask) | (negativeZeroBits & ~mask));
  }
  return sum;
}

}  // namespace

ValueBits ValueColumn::set(PlaceKey place, ValueBits value) {
  StoredPlace const stored = _places.store(place);
  if (_blocks.empty() || stored > _blocks.back().last()) {
    if (value != noValueBits) {
      append(stored, value);
      noteOrder(stored);
    }
    return noValueBits;
  }
  Spot const spot = find(stored);
  ValueBits const old = valueAt(spot);
  if (old == value) {
    return old;
  }
  touch(spot.block);
  if (old == noValueBits) {
    insertAt(spot, stored, value);
    noteOrder(stored);
  } else if (value == noValueBits) {
    eraseAt(spot);
  } else {
    _blocks[spot.block].values[spot.offset] = value;
  }
  countValue(old, -1);
  countValue(value, 1);
  return old;
}

ValueBits ValueColumn::get(PlaceKey place) const noexcept {
  return _blocks.empty() ? noValueBits : valueAt(find(_places.store(place)));
}

std::vector<ValueColumn::Entry> ValueColumn::list(std::size_t range, TableRange const& area,
                                                  std::size_t most) const {
  std::vector<Entry> entries;
  if (_blocks.empty() || area.isEmpty()) {
    return entries;
  }
  auto const columns = _places.list(columnIntervalOf(area));
  auto const storedOf = [range](unsigned long row) {
    return storedOfRow(rowOfPlace(placeKeyOf(range, positionKeyOf(row, 0))));
  };
  StoredPlace const end = storedOf(area.endRow);
  for (Spot spot = find(storedOf(area.firstRow));
       spot.block < _blocks.size() && _firstPlaces[spot.block] < end && entries.size() <= most;
       spot = {spot.block + 1, 0, false}) {
    Block const& block = _blocks[spot.block];
    if (!mayHaveColumns(block, columns)) {
      continue;
    }
    for (std::size_t offset = spot.offset; offset < block.size(); ++offset) {
      StoredPlace const stored = block.placeAt(offset);
      if (stored >= end || entries.size() > most) {
        break;
      }
      if (StoredColumns const* const found = StoredPlaces::findColumns(columns, stored)) {
        entries.push_back({found->placeOf(stored), block.values[offset]});
      }
    }
  }
  if (!_isInOrder) {
    std::ranges::sort(entries, {}, &Entry::place);
  }
  return entries;
}

/// False if a block has no values in some columns. The loop becomes vector instructions: to pass
/// over a block takes a fraction of looking at each of its values.
bool ValueColumn::mayHaveColumns(Block const& block, std::span<StoredColumns const> columns) {
  constexpr std::size_t few = 8;
  auto const first = static_cast<std::uint32_t>(block.first);
  return columns.size() > few || std::ranges::any_of(columns, [&](StoredColumns const& each) {
           std::uint32_t const count = each.end - each.first;
           std::uint32_t found = 0;
           for (std::uint32_t const offset : block.offsets) {
             std::uint32_t const identity = (first + offset) & storedColumnMask;
             found |= static_cast<std::uint32_t>(identity - each.first < count);
           }
           return found != 0;
         });
}

FloatNumber ValueColumn::sum() {
  bool const isExact =
      _smallCount == _numberCount && _smallCount <= mostSmall && _smallMagnitude <= largestExact;
  if (isExact) {
    return FloatNumber(static_cast<double>(_smallTotal));
  }
  restoreOrder();
  return FloatNumber(continueSum());
}

std::size_t ValueColumn::countBytes() const noexcept {
  std::size_t bytes =
      _blocks.capacity() * sizeof(Block) + _firstPlaces.capacity() * sizeof(PlaceKey);
  for (Block const& block : _blocks) {
    bytes += block.offsets.capacity() * sizeof(std::uint32_t) +
             block.values.capacity() * sizeof(ValueBits);
  }
  return bytes;
}

double ValueColumn::continueSum() {
  if (_blocks.empty()) {
    return 0;
  }
  if (_knownSums == 0) {
    _blocks.front().sumBefore = 0;
    _knownSums = 1;
  }
  for (; _knownSums < _blocks.size(); ++_knownSums) {
    Block const& before = _blocks[_knownSums - 1];
    _blocks[_knownSums].sumBefore = addNumbers(before.sumBefore, before.values);
  }
  return addNumbers(_blocks.back().sumBefore, _blocks.back().values);
}

void ValueColumn::append(StoredPlace place, ValueBits value) {
  Block& block = roomAtEnd(_blocks, place);
  if (_firstPlaces.size() < _blocks.size()) {
    _firstPlaces.push_back(place);
  }
  block.offsets.push_back(static_cast<std::uint32_t>(place - block.first));
  block.values.push_back(value);
  ++_size;
  countValue(value, 1);
}

ValueColumn::Block& ValueColumn::roomAtEnd(std::vector<Block>& blocks, StoredPlace place) {
  if (blocks.empty() || blocks.back().size() == mostInBlock || !blocks.back().reaches(place)) {
    Block added{.first = place, .offsets = {}, .values = {}};
    added.offsets.reserve(mostInBlock);
    added.values.reserve(mostInBlock);
    blocks.push_back(std::move(added));
  }
  return blocks.back();
}

ValueColumn::Spot ValueColumn::find(StoredPlace place) const noexcept {
  auto const next = std::ranges::upper_bound(_firstPlaces, place);
  if (next == _firstPlaces.begin()) {
    return {0, 0, false};
  }
  auto const index = static_cast<std::size_t>(next - _firstPlaces.begin()) - 1;
  Block const& block = _blocks[index];
  auto const found = std::ranges::lower_bound(block.offsets, place - block.first);
  bool const isThere = found != block.offsets.end() && *found == place - block.first;
  return {index, static_cast<std::size_t>(found - block.offsets.begin()), isThere};
}

ValueBits ValueColumn::valueAt(Spot const& spot) const noexcept {
  return spot.isThere ? _blocks[spot.block].values[spot.offset] : noValueBits;
}

void ValueColumn::insertBlock(std::size_t index, Block block) {
  auto const offset = static_cast<std::ptrdiff_t>(index);
  _firstPlaces.insert(_firstPlaces.begin() + offset, block.first);
  _blocks.insert(_blocks.begin() + offset, std::move(block));
}

void ValueColumn::insertAt(Spot spot, StoredPlace place, ValueBits value) {
  ++_size;
  bool const isBefore = place < _blocks[spot.block].first;
  if (isBefore || !_blocks[spot.block].reaches(place)) {
    // No block has room for it: it lies before the first one, or far behind its neighbour.
    insertBlock(spot.block + (isBefore ? 0 : 1),
                {.first = place, .offsets = {0}, .values = {value}});
    return;
  }
  if (_blocks[spot.block].size() == mostInBlock) {
    cutBlock(spot.block, mostInBlock / 2);
    spot = find(place);
  }
  Block& block = _blocks[spot.block];
  auto const offset = static_cast<std::ptrdiff_t>(spot.offset);
  block.offsets.insert(block.offsets.begin() + offset,
                       static_cast<std::uint32_t>(place - block.first));
  block.values.insert(block.values.begin() + offset, value);
}

void ValueColumn::eraseAt(Spot const& spot) {
  Block& block = _blocks[spot.block];
  --_size;
  if (block.size() == 1) {
    auto const index = static_cast<std::ptrdiff_t>(spot.block);
    _blocks.erase(_blocks.begin() + index);
    _firstPlaces.erase(_firstPlaces.begin() + index);
    _knownSums = std::min(_knownSums, spot.block);
    return;
  }
  auto const offset = static_cast<std::ptrdiff_t>(spot.offset);
  block.offsets.erase(block.offsets.begin() + offset);
  block.values.erase(block.values.begin() + offset);
  if (std::uint32_t const gap = block.offsets.front(); gap != 0) {
    block.first += gap;
    _firstPlaces[spot.block] = block.first;
    std::ranges::for_each(block.offsets, [gap](std::uint32_t& each) { each -= gap; });
  }
}

ValueColumn::Block ValueColumn::slice(Block const& block, std::size_t begin, std::size_t end,
                                      StoredPlace first) {
  Block part{.first = first, .offsets = {}, .values = {}};
  std::uint32_t const gap = block.offsets[begin];
  part.offsets.reserve(end - begin);
  for (std::size_t index = begin; index < end; ++index) {
    part.offsets.push_back(block.offsets[index] - gap);
  }
  part.values.assign(block.values.begin() + static_cast<std::ptrdiff_t>(begin),
                     block.values.begin() + static_cast<std::ptrdiff_t>(end));
  return part;
}

void ValueColumn::cutBlock(std::size_t block, std::size_t index) {
  Block& lower = _blocks[block];
  Block upper = slice(lower, index, lower.size(), lower.placeAt(index));
  lower.offsets.resize(index);
  lower.values.resize(index);
  insertBlock(block + 1, std::move(upper));
}

void ValueColumn::countValue(ValueBits value, int sign) noexcept {
  if (!isNumberBits(value)) {
    return;
  }
  _numberCount += static_cast<std::size_t>(sign);
  if (auto const whole = asSmallWhole(value)) {
    _smallCount += static_cast<std::size_t>(sign);
    _smallTotal += sign * *whole;
    _smallMagnitude += static_cast<std::uint64_t>(sign * std::abs(*whole));
  }
}

}  // namespace Zorv::ConditionalFormatters
