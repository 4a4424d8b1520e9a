#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <boost/sort/pdqsort/pdqsort.hpp>

#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"

namespace Zorv::ConditionalFormatters {

namespace {

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
constexpr auto hasLessText = [](OccurrenceBlock::TextEntry const& a,
                                OccurrenceBlock::TextEntry const& b) { return *a.text < *b.text; };

/// The entries of one partition of all blocks, sorted by key.
template <class AnyEntry>
std::vector<AnyEntry> gatherPartition(std::vector<OccurrenceBlock> const& blocks,
                                      PartitionedEntries<AnyEntry> OccurrenceBlock::*entries,
                                      std::size_t partition) {
  std::vector<AnyEntry> gathered;
  for (OccurrenceBlock const& block : blocks) {
    for (AnyEntry entry : (block.*entries).at(partition)) {
      entry.cell += block.firstCell;
      gathered.push_back(entry);
    }
  }
  // Branchless: comparisons of random keys are mispredicted.
  boost::sort::pdqsort_branchless(gathered.begin(), gathered.end(), hasLessKey);
  return gathered;
}

void markPartition(std::vector<OccurrenceBlock> const& blocks, std::size_t partition,
                   Marks& marks) {
  auto others = gatherPartition(blocks, &OccurrenceBlock::others, partition);
  forEachGroup(std::span(others), hasLessKey,
               [&](std::span<OccurrenceBlock::Entry const> equal) { markIfSeveral(equal, marks); });
  auto texts = gatherPartition(blocks, &OccurrenceBlock::texts, partition);
  forEachGroup(std::span(texts), hasLessKey, [&](std::span<OccurrenceBlock::TextEntry> sameHash) {
    boost::sort::pdqsort(sameHash.begin(), sameHash.end(), hasLessText);
    forEachGroup(sameHash, hasLessText, [&](std::span<OccurrenceBlock::TextEntry const> equal) {
      markIfSeveral(equal, marks);
    });
  });
}

}  // namespace

CellSet findRepeatedCells(std::vector<OccurrenceBlock> blocks, HashPartitions partitions,
                          unsigned threadCount) {
  std::size_t cellCount = 0;
  for (OccurrenceBlock& block : blocks) {
    block.firstCell = cellCount;
    cellCount += block.positions.size();
  }
  Marks isRepeated(cellCount);
  auto const makeWorker = [&] {
    return [&](std::size_t partition) {
      markPartition(blocks, partition, isRepeated);
      return partition;
    };
  };
  auto const deliver = [](std::size_t /*partition*/) {};
  OrderedTasks(partitions.count(), threadCount, makeWorker, deliver).run();

  CellSet repeated;
  for (OccurrenceBlock const& block : blocks) {
    for (std::size_t index = 0; index < block.positions.size(); ++index) {
      if (isRepeated[block.firstCell + index] != 0) {
        repeated.insert(block.positions[index].row, block.positions[index].column);
      }
    }
  }
  return repeated;
}

}  // namespace Zorv::ConditionalFormatters
