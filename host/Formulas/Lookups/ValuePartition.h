#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Formulas/Lookups/HashIndex.h"
#include "Formulas/Lookups/KeyedValue.h"
#include "Formulas/Lookups/Memory.h"
#include "Formulas/Lookups/TextCopies.h"
#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

/// The distinct values of one hash partition of a ValueDictionary, indexed from 0 in the order of
/// adding.
///
/// Values are equal that are of one kind and compare as equal, texts without regard to letter case.
/// Copies texts as long as these take at most 16 bytes for a cell, and borrows the others.
class ValuePartition {
public:
  /// Texts are copied up to so many bytes for each cell.
  static constexpr std::size_t textBytesPerCell = 16;

  /// Makes room for the values of some cells, some of which are texts, and allows their copies.
  /// Requires an empty partition.
  void reserve(std::size_t cellCount, std::size_t textCount);
  /// Of the values of how many cells room is made at most: in a partition of many more most values
  /// repeat.
  static constexpr std::size_t mostReserved = 32'768;

  /// Has texts copied, up to the bytes for so many cells.
  void allowCopies(std::size_t cellCount) noexcept { _mostCopied = cellCount * textBytesPerCell; }
  /// The index of a value, which is added if it is new. Constant time on average.
  [[nodiscard]] std::uint32_t getOrCreate(KeyedValue const& value) {
    std::uint32_t const index = _indexes.getOrCreate(
        slotHash(value.key),
        [&](std::uint32_t candidate) { return isEqual(_keys[candidate], _texts.data(), value); });
    if (index == _keys.size()) {
      append(value);
    }
    return index;
  }
  /// Gives back unused room.
  void shrink();
  /// True if it borrows a text.
  [[nodiscard]] bool borrowsTexts() const noexcept { return _borrowsTexts; }

  [[nodiscard]] std::uint32_t size() const noexcept { return _indexes.size(); }
  [[nodiscard]] std::uint32_t textCount() const noexcept {
    return static_cast<std::uint32_t>(_texts.size());
  }

  /// Moves the values to arrays that all partitions share, the texts to those from `firstText` on.
  /// The indexes stay here. Requires room for size() keys and textCount() texts.
  void moveValues(ValueKey* keys, std::string_view* texts, std::uint32_t firstText) noexcept;
  /// The index of a value in the arrays to which the values were moved, or HashIndex::none.
  [[nodiscard]] std::uint32_t find(KeyedValue const& value, ValueKey const* keys,
                                   std::string_view const* texts) const noexcept {
    return _indexes.find(slotHash(value.key), [&](std::uint32_t candidate) {
      return isEqual(keys[candidate], texts, value);
    });
  }

  /// Adds a value that is new to an index that stays here, and its key and text to the ends of
  /// arrays.
  template <class Keys, class Texts>
  void addTo(Keys& keys, Texts& texts, KeyedValue const& value) {
    bool const isText = value.key.isText();
    resizeWithRoom(keys, keys.size() + 1);
    keys.back() =
        isText ? ValueKey::ofTextIndex(static_cast<std::uint32_t>(texts.size())) : value.key;
    if (isText) {
      resizeWithRoom(texts, texts.size() + 1);
      texts.back() = copy(value.text);
    }
    static_cast<void>(
        _indexes.getOrCreate(slotHash(value.key), [](std::uint32_t /*index*/) { return false; }));
  }

  /// The bytes that remain when the values were moved.
  [[nodiscard]] std::size_t memory() const noexcept { return _indexes.memory() + _copies.memory(); }

private:
  [[nodiscard]] static std::uint32_t slotHash(ValueKey key) noexcept {
    return static_cast<std::uint32_t>(key.hash());
  }
  [[nodiscard]] static bool isEqual(ValueKey known, std::string_view const* texts,
                                    KeyedValue const& value) noexcept {
    return known.isText() ? value.key.isText() && equalTexts(texts[known.textIndex()], value.text)
                          : known == value.key;
  }
  void append(KeyedValue const& value);
  [[nodiscard]] std::string_view copy(std::string_view text);

  HashIndex _indexes;
  std::vector<ValueKey> _keys;           ///< a text is known by its index in `_texts`
  std::vector<std::string_view> _texts;  ///< of the values that are texts
  TextCopies _copies;
  std::size_t _mostCopied = 0;  ///< bytes
  bool _borrowsTexts = false;
};

}  // namespace Zorv::Formulas
