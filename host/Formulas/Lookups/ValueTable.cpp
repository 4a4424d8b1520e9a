#include "Formulas/Lookups/ValueTable.h"

#include <algorithm>
#include <bit>

namespace Zorv::Formulas {

namespace {

/// With these a piece takes about half of a processor's second cache.
constexpr std::uint64_t cellsInPiece = 16'384;
constexpr std::uint64_t mostPieces = 256;

}  // namespace

ValueTable::ValueTable(std::uint64_t cellCount)
    : _pieces(std::min(mostPieces, std::bit_ceil(cellCount / cellsInPiece + 1))) {}

void ValueTable::join() {
  _first.clear();
  First next;
  for (ValuePiece const& piece : _pieces) {
    _first.push_back(next);
    next.number += piece.size();
    next.text += piece.textCount();
  }
  _keys.resize(next.number, boost::container::default_init);
  _texts.resize(next.text);
}

void ValueTable::settle(std::size_t piece) noexcept {
  _pieces[piece].moveValues(_keys.data() + firstNumber(piece), _texts.data(), _first[piece].text);
}

bool ValueTable::isNumberOf(std::uint32_t number, Value const& value) const noexcept {
  ValueKey const key = _keys[number];
  if (value.isText()) {
    // Comparing a text costs less than its hash.
    return key.isText() && equalTexts(_texts[key.textPlace()], value.asText());
  }
  return !value.isEmpty() && value.isSingle() && key == ValueKey(value);
}

std::optional<std::uint32_t> ValueTable::find(Value const& value) const noexcept {
  if (value.isEmpty() || !value.isSingle()) {
    return std::nullopt;
  }
  KeyedValue const keyed(value);
  std::size_t const piece = pieceOf(keyed.key);
  std::uint32_t const number =
      _pieces[piece].find(keyed, _keys.data() + firstNumber(piece), _texts.data());
  return number == HashSlots::noNumber ? std::nullopt : std::optional(firstNumber(piece) + number);
}

std::size_t ValueTable::memory() const noexcept {
  std::size_t memory = _pieces.capacity() * sizeof(ValuePiece) + _first.capacity() * sizeof(First) +
                       _keys.capacity() * sizeof(ValueKey) +
                       _texts.capacity() * sizeof(std::string_view);
  for (ValuePiece const& piece : _pieces) {
    memory += piece.memory();
  }
  return memory;
}

}  // namespace Zorv::Formulas
