#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/Operands/CndFrmt_OrderedKey.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Order-statistic index of the distinct numbers in a collection that follows edits: the result of
/// rankDistinct().
///
/// Sorted blocks of up to 512 numbers with their counts: twelve bytes for each distinct number. An
/// edit costs a binary search and a move within one block, a rank a walk over the blocks.
/// An operation that throws leaves an object that may only be destroyed.
class NumberRanking {
public:
  /// Adds numbers. Linear in all distinct numbers, plus a sort: for many at once.
  void insertMany(std::vector<FloatNumber> const& numbers);
  void insert(FloatNumber number);
  /// Requires that the number is there.
  void erase(FloatNumber number);
  /// Inserts numbers and erases others, which must be there then. Many numbers take a sort, and a
  /// step through each block that one of them lies in.
  void change(std::span<FloatNumber const> inserted, std::span<FloatNumber const> erased);

  /// How many distinct numbers there are. NaN counts only if there is nothing else.
  [[nodiscard]] std::size_t count() const noexcept {
    return _distinct == 0 && _nanCount > 0 ? 1 : _distinct;
  }
  /// The number at a rank, counted from 1. Requires `0 < rank <= count()`.
  [[nodiscard]] FloatNumber at(std::size_t rank, RankingOrder order) const noexcept;

  /// How many numbers of a collection lie below a number, are equal to it, and lie above it.
  struct Counts {
    std::size_t below;
    std::size_t equal;
    std::size_t above;
  };

  /// Makes what follows good until the next edit. Linear in the blocks.
  void indexCounts();
  /// How many numbers there are, with equal ones and without NaN.
  [[nodiscard]] std::size_t countAll() const noexcept { return _ends.empty() ? 0 : _ends.back(); }
  /// The number at an index of all numbers in ascending order. Requires `index < countAll()`.
  [[nodiscard]] FloatNumber atIndex(std::size_t index) const noexcept;
  /// Requires a number that is not NaN.
  [[nodiscard]] Counts countAround(FloatNumber number) const noexcept;

  /// About how many bytes it takes.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  static constexpr std::size_t mostInBlock = 512;

  struct Block {
    std::vector<OrderedKey> keys;  ///< ascending
    std::vector<std::uint32_t> counts;
    std::size_t total = 0;  ///< of the counts
  };

  /// A number that occurs more or less often than before.
  struct Change {
    OrderedKey key;
    std::int64_t count;  ///< how much more often; not 0
  };

  /// Of ascending numbers, ascending. Those that are inserted as often as erased are left out.
  [[nodiscard]] static std::vector<Change> listChanges(std::span<OrderedKey const> inserted,
                                                       std::span<OrderedKey const> erased);
  /// The numbers of a block after changes, of which there may be too many, or none.
  static void merge(Block const& block, std::span<Change const> changes, Block& merged);
  /// Appends the numbers of a merged block as one that takes the memory of the block before, or as
  /// several ones of equal length.
  static void appendMerged(Block const& merged, Block& before, std::vector<Block>& blocks);
  /// Appends a block after changes. `merged`: room for its numbers.
  static void appendChanged(Block& block, std::span<Change const> changes, Block& merged,
                            std::vector<Block>& blocks);
  /// Changes a number of a block. Leaves the block's first key to the caller.
  static void adjust(Block& block, Change const& change);
  void changeMany(std::span<Change const> changes);

  /// Appends a number that is above all others of a list of blocks.
  static void append(std::vector<Block>& blocks, OrderedKey key, std::uint32_t count);

  /// The index of the block that a key belongs to. Requires that there are blocks.
  [[nodiscard]] std::size_t blockOf(OrderedKey key) const noexcept;
  void splitBlock(std::size_t block);
  void indexBlocks();

  std::vector<Block> _blocks;  ///< none is empty
  std::vector<OrderedKey> _firstKeys;
  std::vector<std::size_t> _ends;  ///< how many numbers there are up to the end of each block
  std::size_t _distinct = 0;
  std::size_t _nanCount = 0;
};

}  // namespace Zorv::ConditionalFormatters
