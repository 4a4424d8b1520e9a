#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/Prefetch.h"

namespace Zorv::Formulas {

/// Gives equal values one number, from 0 on in the order in which they come.
///
/// Values are equal that are of one kind and compare as equal, texts without regard to letter case.
/// A hash table with open addresses: nine bytes a value and some 24 for its slots, for a text 16
/// more. Borrows the texts.
class ValueTable {
public:
  ValueTable();

  /// The numbers of some values, given to them where they have none. Requires numbers, texts, truth
  /// values and errors, and a number's room for each. Best some dozens at once: then their places
  /// in memory are fetched together.
  void obtain(std::span<Value const> values, std::span<std::uint32_t> numbers);
  /// The number of a value, if it has one; none for other kinds.
  [[nodiscard]] std::optional<std::uint32_t> find(Value const& value) const noexcept;
  /// Whether a number is that of a value.
  [[nodiscard]] bool isNumberOf(std::uint32_t number, Value const& value) const noexcept;
  /// Makes the next isNumberOf() for a number fast.
  void prepare(std::uint32_t number) const noexcept {
    prefetch(_keys, number);
    prefetch(_kinds, number);
  }

  [[nodiscard]] std::uint32_t size() const noexcept {
    return static_cast<std::uint32_t>(_keys.size());
  }
  [[nodiscard]] std::size_t memory() const noexcept;

private:
  /// A value's key, equal for equal values; of a text the hash, in the upper half.
  struct Key {
    std::uint64_t bits;
    Value::Kind kind;
  };

  /// A place of the hash table. The hash beside the number spares looks at other values' keys.
  struct Slot {
    std::uint32_t hash;
    std::uint32_t number;
  };

  [[nodiscard]] static Key keyOf(Value const& value) noexcept;
  [[nodiscard]] static std::uint32_t hash(Key const& key) noexcept;
  [[nodiscard]] bool isEqual(std::uint32_t number, Key const& key,
                             Value const& value) const noexcept;
  /// The slot that holds a value's number, or the free one to which it goes.
  [[nodiscard]] std::size_t findSlot(Key const& key, Value const& value) const noexcept;
  [[nodiscard]] std::uint32_t obtain(Key const& key, Value const& value);
  void grow();

  std::vector<std::uint64_t> _keys;  ///< by number; of a text the hash and the place in `_texts`
  std::vector<Value::Kind> _kinds;   ///< by number
  std::vector<std::string_view> _texts;
  std::vector<Slot> _slots;  ///< a power of two
};

}  // namespace Zorv::Formulas
