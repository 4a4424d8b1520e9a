#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Replaces the allocation functions of the whole program that Allocations.cpp is linked into, so
// that tests can count, fail and follow the allocations of their thread.
namespace Zorv::TestSupport {

/// Counts the allocations of its thread while it lives, and makes one of them fail.
class CountedScope {
public:
  /// `failing` is the number of the allocation that throws std::bad_alloc, from 1; 0 for none.
  explicit CountedScope(long failing = 0);
  CountedScope(CountedScope const&) = delete;
  CountedScope& operator=(CountedScope const&) = delete;
  ~CountedScope();

  [[nodiscard]] static long getCount();
};

/// Labels the blocks that its thread allocates while it lives. The label must outlive the blocks.
/// One scope at a time, and at most 1,000 living labelled blocks in a program; more stop it.
class LabelledScope {
public:
  explicit LabelledScope(char const* label);
  LabelledScope(LabelledScope const&) = delete;
  LabelledScope& operator=(LabelledScope const&) = delete;
  ~LabelledScope();
};

/// The number of living blocks with this label.
[[nodiscard]] std::size_t countLivingBlocks(char const* label);

/// The labels of the blocks that were freed since the last call, in the order of the frees. Of
/// several blocks of one label in a row only the first counts.
[[nodiscard]] std::vector<std::string> takeFreedLabels();

}  // namespace Zorv::TestSupport
