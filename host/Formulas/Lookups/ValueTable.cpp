#include "Formulas/Lookups/ValueTable.h"

namespace Zorv::Formulas {

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
    return key.isText() && equalTexts(_texts[key.textIndex()], value.asText());
  }
  return !value.isEmpty() && value.isSingle() && key == makeKey(value);
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
