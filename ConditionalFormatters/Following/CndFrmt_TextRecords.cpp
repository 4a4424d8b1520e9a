#include "ConditionalFormatters/Following/CndFrmt_TextRecords.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Zorv::ConditionalFormatters {

TextRecords::Index TextRecords::insert(std::string_view text, std::uint32_t hash) {
  std::size_t const kind = kindOf(text.size());
  std::string ofItsOwn(kind == longKind ? text : std::string_view());
  Index record = _firstFree[kind];
  if (record == none) {
    record = append(kind);
  } else {
    _firstFree[kind] = static_cast<Index>(unitAt(record));
  }
  setCells(record, CellTally());
  unitAt(record + 1) = joinHead(text, hash);
  if (kind == longKind) {
    _longTexts[unitAt(record + headUnits)] = std::move(ofItsOwn);
  } else if (kind > 0) {
    std::ranges::copy(text, reinterpret_cast<char*>(&unitAt(record + headUnits)));
  }
  return record;
}

void TextRecords::erase(Index record) noexcept {
  std::size_t const kind = kindOf(lengthOf(record));
  if (kind == longKind) {
    _longTexts[unitAt(record + headUnits)] = std::string();
  }
  unitAt(record) = std::exchange(_firstFree[kind], record);
}

std::string_view TextRecords::textOf(Index record) const noexcept {
  std::size_t const length = lengthOf(record);
  switch (kindOf(length)) {
    case 0:
      return {};
    case longKind:
      return _longTexts[unitAt(record + headUnits)];
    default: {
      Index const first = record + headUnits;
      auto const* const unit = &(*_chunks[first / unitsInChunk])[first % unitsInChunk];
      return {reinterpret_cast<char const*>(unit), length};
    }
  }
}

std::size_t TextRecords::countBytes() const noexcept {
  return _chunks.capacity() * sizeof(_chunks.front()) + _chunks.size() * sizeof(Chunk) +
         _longTexts.size() * sizeof(std::string);
}

TextRecords::Unit TextRecords::joinHead(std::string_view text, std::uint32_t hash) noexcept {
  constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
  return Unit{std::min(text.size(), most)} << 32U | hash;
}

std::size_t TextRecords::kindOf(std::size_t length) noexcept {
  return length > mostInPlace ? longKind : (length + sizeof(Unit) - 1) / sizeof(Unit);
}

TextRecords::Index TextRecords::append(std::size_t kind) {
  std::size_t const units = headUnits + (kind == longKind ? 1 : kind);
  if (std::size_t const room = _chunks.size() * unitsInChunk; _end + units > room) {
    _chunks.push_back(std::make_unique<Chunk>());
    _end = static_cast<Index>(room);
  }
  if (kind == longKind) {
    _longTexts.emplace_back();
    unitAt(_end + headUnits) = _longTexts.size() - 1;
  }
  return std::exchange(_end, static_cast<Index>(_end + units));
}

}  // namespace Zorv::ConditionalFormatters
