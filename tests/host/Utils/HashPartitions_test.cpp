#include "Utils/HashPartitions.h"

#include <bit>
#include <functional>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(HashPartitions, TheirCountFollowsThatOfTheEntries) {
  EXPECT_EQ(HashPartitions(0).count(), 1U);
  EXPECT_EQ(HashPartitions(16'383).count(), 1U);
  EXPECT_EQ(HashPartitions(16'384).count(), 2U);
  EXPECT_EQ(HashPartitions(65'535).count(), 4U);
  EXPECT_EQ(HashPartitions(65'536).count(), 8U);
  EXPECT_EQ(HashPartitions(std::size_t{1} << 40U).count(), 256U);
}

TEST(HashPartitions, OnePartitionTakesEveryKey) {
  EXPECT_EQ(HashPartitions(1).indexOf(0), 0U);
  EXPECT_EQ(HashPartitions(1).indexOf(~std::uint64_t{0}), 0U);
}

/// How many of the numbers below `count`, times `step`, go to each partition.
std::vector<std::size_t> countKeys(HashPartitions partitions, std::size_t count, double step) {
  std::vector<std::size_t> counts(partitions.count());
  for (std::size_t i = 0; i < count; ++i) {
    ++counts.at(partitions.indexOf(std::bit_cast<std::uint64_t>(static_cast<double>(i) * step)));
  }
  return counts;
}

TEST(HashPartitions, NumbersInARowSpreadEvenly) {
  constexpr std::size_t count = 1'000'000;
  HashPartitions const partitions(count);
  ASSERT_EQ(partitions.count(), 64U);
  for (double const step : {1.0, 0.01, 1000.0}) {
    for (std::size_t const keys : countKeys(partitions, count, step)) {
      EXPECT_NEAR(static_cast<double>(keys), count / 64.0, count / 640.0) << "step " << step;
    }
  }
}

struct Entry {
  std::uint64_t key;
  std::size_t order;
};

TEST(PartitionedEntries, KeepTheOrderOfEqualKeysWithinAPartition) {
  HashPartitions const partitions(100'000);
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < 10'000; ++i) {
    entries.push_back({i % 37, i});
  }
  PartitionedEntries<Entry> const sorted(entries, partitions, &Entry::key);
  std::size_t count = 0;
  for (std::size_t partition = 0; partition < partitions.count(); ++partition) {
    EXPECT_EQ(sorted.sizeOf(partition), sorted.at(partition).size());
    std::size_t last = 0;
    for (Entry const& entry : sorted.at(partition)) {
      EXPECT_EQ(partitions.indexOf(entry.key), partition);
      EXPECT_GE(entry.order, last);
      last = entry.order;
      ++count;
    }
  }
  EXPECT_EQ(count, entries.size());
}

TEST(PartitionedEntries, MayBeChangedInPlace) {
  std::vector<std::uint64_t> const keys{3, 1, 2};
  PartitionedEntries<std::uint64_t> sorted(keys, HashPartitions(3), std::identity());
  sorted.at(0)[1] = 7;
  EXPECT_EQ(sorted.all()[0], 3U);
  EXPECT_EQ(sorted.all()[1], 7U);
  EXPECT_EQ(sorted.sizeOf(0), 3U);
}

}  // namespace
}  // namespace Zorv
