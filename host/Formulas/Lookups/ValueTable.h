#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/container/vector.hpp>

#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/KeyedValue.h"
#include "Formulas/Lookups/Prefetch.h"
#include "Formulas/Lookups/ValuePiece.h"
#include "Utils/HashPartitions.h"

namespace Zorv::Formulas {

/// Gives equal values one number, from 0 on.
///
/// The values are sorted into pieces by their hashes, so that what is searched while a piece is
/// filled fits a processor's cache, and several threads can fill pieces. Then the pieces are joined
/// and settled, which gives the values of the first piece the lowest numbers. Eight bytes a value
/// and 16 to 32 for its slots, for a text 16 more. Borrows the texts.
///
/// Threads: different pieces may be put, and later settled, by several threads at once.
class ValueTable {
public:
  /// For the values of so many cells.
  explicit ValueTable(std::uint64_t cellCount)
      : _partitions(cellCount), _pieces(_partitions.count()) {}

  [[nodiscard]] HashPartitions partitions() const noexcept { return _partitions; }
  [[nodiscard]] std::size_t pieceCount() const noexcept { return _pieces.size(); }
  /// The piece to which a value goes.
  [[nodiscard]] std::size_t pieceOf(ValueKey key) const noexcept {
    return _partitions.indexOf(key.bits());
  }
  /// Takes a piece that was filled.
  void put(std::size_t piece, ValuePiece&& values) noexcept { _pieces[piece] = std::move(values); }

  /// Numbers the values of all pieces, once these are put.
  void join();
  /// Brings the values of a piece to those of the others, once these are joined.
  void settle(std::size_t piece) noexcept;
  /// By how much the numbers of a piece's values are higher than in the piece.
  [[nodiscard]] std::uint32_t firstNumber(std::size_t piece) const noexcept {
    return _first[piece].number;
  }

  // The rest requires that all pieces are settled.

  /// The number of a value, if it has one; none for other kinds.
  [[nodiscard]] std::optional<std::uint32_t> find(Value const& value) const noexcept;
  /// Whether a number is that of a value.
  [[nodiscard]] bool isNumberOf(std::uint32_t number, Value const& value) const noexcept;
  /// Makes the next isNumberOf() for a number fast, and before it completePreparing().
  void prepare(std::uint32_t number) const noexcept { prefetch(_keys, number); }
  /// Some time after prepare(), makes the next isNumberOf() fast for a text, too.
  void completePreparing(std::uint32_t number) const noexcept {
    if (_keys[number].isText()) {
      prefetch(_texts, _keys[number].textIndex());
    }
  }

  /// How many values there are, once the pieces are joined.
  [[nodiscard]] std::uint32_t size() const noexcept {
    return static_cast<std::uint32_t>(_keys.size());
  }
  [[nodiscard]] std::size_t memory() const noexcept;

private:
  /// What comes first of a piece.
  struct First {
    std::uint32_t number = 0;
    std::uint32_t text = 0;
  };

  HashPartitions _partitions;
  std::vector<ValuePiece> _pieces;  ///< by partition
  std::vector<First> _first;        ///< by piece
  // These can grow without touching their memory, which is done by the threads that settle.
  boost::container::vector<ValueKey> _keys;  ///< by number; a text is told by its place in `_texts`
  boost::container::vector<std::string_view> _texts;
};

}  // namespace Zorv::Formulas
