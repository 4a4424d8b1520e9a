#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Formulas/Evaluation/Texts.h"
#include "Formulas/Lookups/HashSlots.h"
#include "Formulas/Lookups/KeyedValue.h"

namespace Zorv::Formulas {

/// The values of a table whose keys fall into one piece, numbered from 0 on in the order in which
/// they come.
///
/// Values are equal that are of one kind and compare as equal, texts without regard to letter case.
/// Borrows the texts.
class ValuePiece {
public:
  /// Makes room for the values of some cells, some of them texts. Requires that there are none yet.
  void reserve(std::size_t cellCount, std::size_t textCount);
  /// The number of a value, given to it where it has none.
  [[nodiscard]] std::uint32_t obtain(KeyedValue const& value) {
    std::uint32_t const number = _slots.obtain(slotHash(value.key), [&](std::uint32_t candidate) {
      return isEqual(_keys[candidate], _texts.data(), value);
    });
    if (number == _keys.size()) {
      append(value);
    }
    return number;
  }
  /// Gives room back that is not needed.
  void shrink();

  [[nodiscard]] std::uint32_t size() const noexcept { return _slots.size(); }
  [[nodiscard]] std::uint32_t textCount() const noexcept {
    return static_cast<std::uint32_t>(_texts.size());
  }

  /// Moves the values to lists that several pieces share, the texts to those from `firstText` on;
  /// what remains are their numbers. Requires room for size() keys and textCount() texts.
  void moveValues(ValueKey* keys, std::string_view* texts, std::uint32_t firstText) noexcept;
  /// The number of a value whose values were moved, by the same lists; HashSlots::noNumber where it
  /// has none.
  [[nodiscard]] std::uint32_t find(KeyedValue const& value, ValueKey const* keys,
                                   std::string_view const* texts) const noexcept {
    return _slots.find(slotHash(value.key), [&](std::uint32_t candidate) {
      return isEqual(keys[candidate], texts, value);
    });
  }

  /// Memory that remains when the values were moved.
  [[nodiscard]] std::size_t memory() const noexcept { return _slots.memory(); }

private:
  /// The other half of the hash tells the piece.
  [[nodiscard]] static std::uint32_t slotHash(ValueKey key) noexcept {
    return static_cast<std::uint32_t>(key.hash());
  }
  [[nodiscard]] static bool isEqual(ValueKey known, std::string_view const* texts,
                                    KeyedValue const& value) noexcept {
    return known.isText() ? value.key.isText() && equalTexts(texts[known.textIndex()], value.text)
                          : known == value.key;
  }
  void append(KeyedValue const& value);

  HashSlots _slots;
  std::vector<ValueKey> _keys;           ///< by number; a text is told by its place in `_texts`
  std::vector<std::string_view> _texts;  ///< those of the values that are texts
};

}  // namespace Zorv::Formulas
