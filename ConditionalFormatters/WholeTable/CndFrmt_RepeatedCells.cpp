#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <boost/sort/pdqsort/pdqsort.hpp>
#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "FormulaModel/ValueKey.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

namespace {

using FormulaModel::ValueKey;

struct Position {
  std::uint32_t row;
  std::uint32_t column;
};

/// A value's key, and the index of its cell.
struct Entry {
  ValueKey key;
  std::uint64_t cell;
};

/// The same for a text, whose key is a hash.
struct TextEntry {
  ValueKey key;
  std::uint64_t cell;
  std::string const* text;
};

bool isComparable(FormulaValue const& value) noexcept {
  auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value);
  return number == nullptr ? !FormulaModel::isFormulaEmpty(value)
                           : !std::isnan(number->value.get());
}

/// The values of one row block. Its cells have indices in the order of the walk.
struct BlockValues {
  std::vector<Position> positions;
  std::size_t firstCell = 0;  ///< index of its first cell among those of all blocks
  std::vector<std::string> strings;
  PartitionedEntries<TextEntry> texts;
  PartitionedEntries<Entry> others;
};

class BlockSink {
public:
  explicit BlockSink(HashPartitions partitions) noexcept : _partitions(partitions) {}

  void add(DOM::CellInfo const& cellInfo, FormulaValue value) {
    if (!isComparable(value)) {
      return;
    }
    ValueKey const key = FormulaModel::makeValueKey(value, std::hash<std::string>());
    if (auto* const string = boost::get<FormulaModel::FormulaString>(&value)) {
      _texts.push_back({key, _block.positions.size(), nullptr});
      _block.strings.push_back(std::move(string->value));
    } else {
      _others.push_back({key, _block.positions.size()});
    }
    _block.positions.push_back({static_cast<std::uint32_t>(cellInfo.getRowIndex()),
                                static_cast<std::uint32_t>(cellInfo.getColIndex())});
  }

  [[nodiscard]] BlockValues finalize() {
    for (std::size_t index = 0; index < _texts.size(); ++index) {
      _texts[index].text = &_block.strings[index];
    }
    constexpr auto keyOf = [](auto const& entry) { return entry.key.bits(); };
    _block.texts = PartitionedEntries(_texts, _partitions, keyOf);
    _block.others = PartitionedEntries(_others, _partitions, keyOf);
    return std::move(_block);
  }

private:
  HashPartitions _partitions;
  BlockValues _block;
  std::vector<TextEntry> _texts;
  std::vector<Entry> _others;
};

/// Flags by cell index. Threads may set flags of different cells at once.
using Marks = std::vector<std::uint8_t>;

template <class AnyEntry>
void markIfSeveral(std::span<AnyEntry const> equal, Marks& marks) {
  if (equal.size() > 1) {
    for (AnyEntry const& entry : equal) {
      marks[entry.cell] = 1;
    }
  }
}

/// Calls `onGroup(group)` for each group of equal entries among sorted ones.
template <class AnyEntry, class IsLess, class OnGroup>
void forEachGroup(std::span<AnyEntry> entries, IsLess const& isLess, OnGroup const& onGroup) {
  for (std::size_t begin = 0; begin < entries.size();) {
    std::size_t end = begin + 1;
    while (end < entries.size() && !isLess(entries[begin], entries[end])) {
      ++end;
    }
    onGroup(entries.subspan(begin, end - begin));
    begin = end;
  }
}

constexpr auto hasLessKey = [](auto const& a, auto const& b) { return a.key < b.key; };
constexpr auto hasLessText = [](TextEntry const& a, TextEntry const& b) {
  return *a.text < *b.text;
};

/// The entries of one partition of all blocks, sorted by key.
template <class AnyEntry>
std::vector<AnyEntry> gatherPartition(std::vector<BlockValues> const& blocks,
                                      PartitionedEntries<AnyEntry> BlockValues::*entries,
                                      std::size_t partition) {
  std::vector<AnyEntry> gathered;
  for (BlockValues const& block : blocks) {
    for (AnyEntry entry : (block.*entries).at(partition)) {
      entry.cell += block.firstCell;
      gathered.push_back(entry);
    }
  }
  // Branchless: comparisons of random keys are mispredicted.
  boost::sort::pdqsort_branchless(gathered.begin(), gathered.end(), hasLessKey);
  return gathered;
}

void markPartition(std::vector<BlockValues> const& blocks, std::size_t partition, Marks& marks) {
  auto others = gatherPartition(blocks, &BlockValues::others, partition);
  forEachGroup(std::span(others), hasLessKey,
               [&](std::span<Entry const> equal) { markIfSeveral(equal, marks); });
  auto texts = gatherPartition(blocks, &BlockValues::texts, partition);
  forEachGroup(std::span(texts), hasLessKey, [&](std::span<TextEntry> sameHash) {
    boost::sort::pdqsort(sameHash.begin(), sameHash.end(), hasLessText);
    forEachGroup(sameHash, hasLessText,
                 [&](std::span<TextEntry const> equal) { markIfSeveral(equal, marks); });
  });
}

}  // namespace

CellSet findRepeatedCells(CollectedRanges const& from) {
  HashPartitions const partitions(from.table.getCellCount());
  std::vector<BlockValues> blocks;
  std::size_t cellCount = 0;
  collectAtMostTwice(
      from, [&] { return BlockSink(partitions); },
      [&](BlockValues& block) {
        block.firstCell = cellCount;
        cellCount += block.positions.size();
        blocks.push_back(std::move(block));
      });

  Marks isRepeated(cellCount);
  auto const makeWorker = [&] {
    return [&](std::size_t partition) {
      markPartition(blocks, partition, isRepeated);
      return partition;
    };
  };
  auto const deliver = [](std::size_t /*partition*/) {};
  OrderedTasks(partitions.count(), from.resources.threadCount, makeWorker, deliver).run();

  CellSet repeated;
  for (BlockValues const& block : blocks) {
    for (std::size_t index = 0; index < block.positions.size(); ++index) {
      if (isRepeated[block.firstCell + index] != 0) {
        repeated.insert(block.positions[index].row, block.positions[index].column);
      }
    }
  }
  return repeated;
}

}  // namespace Zorv::ConditionalFormatters
