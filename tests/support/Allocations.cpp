#include "support/Allocations.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>
#include <string_view>
#include <utility>

namespace Zorv::TestSupport {

namespace {

thread_local bool allocationsCount = false;
thread_local long allocationCount = 0;
thread_local long failingAllocation = 0;  // 0 for none
thread_local char const* currentLabel = nullptr;

// Fixed arrays: what keeps books on allocations must not allocate.
struct LabelledBlock {
  void* memory = nullptr;  // null in a free slot
  char const* label = nullptr;
};
std::array<LabelledBlock, 1000> labelledBlocks;
std::array<char const*, 1000> freedLabels;
std::size_t freedLabelCount = 0;
std::mutex labelsMutex;  // guards the three above

void label(void* memory) {
  std::lock_guard const lock(labelsMutex);
  auto* const slot =
      std::ranges::find(labelledBlocks, static_cast<void*>(nullptr), &LabelledBlock::memory);
  if (slot == labelledBlocks.end()) {
    std::fputs("Allocations: too many labelled blocks\n", stderr);
    std::abort();
  }
  *slot = {memory, currentLabel};
}

void* allocate(std::size_t size) {
  if (allocationsCount && ++allocationCount == failingAllocation) {
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  if (currentLabel != nullptr) {
    label(memory);
  }
  return memory;
}

void release(void* memory) noexcept {
  if (memory != nullptr) {
    std::lock_guard const lock(labelsMutex);
    auto* const slot = std::ranges::find(labelledBlocks, memory, &LabelledBlock::memory);
    if (slot != labelledBlocks.end()) {
      char const* const freed = std::exchange(*slot, {}).label;
      bool const isRepeated = freedLabelCount != 0 && freedLabels[freedLabelCount - 1] == freed;
      if (!isRepeated && freedLabelCount != freedLabels.size()) {
        freedLabels[freedLabelCount++] = freed;
      }
    }
  }
  std::free(memory);
}

}  // namespace

CountedScope::CountedScope(long failing) {
  allocationCount = 0;
  failingAllocation = failing;
  allocationsCount = true;
}

CountedScope::~CountedScope() { allocationsCount = false; }

long CountedScope::getCount() { return allocationCount; }

LabelledScope::LabelledScope(char const* label) { currentLabel = label; }

LabelledScope::~LabelledScope() { currentLabel = nullptr; }

std::size_t countLivingBlocks(char const* label) {
  std::lock_guard const lock(labelsMutex);
  return static_cast<std::size_t>(
      std::ranges::count_if(labelledBlocks, [&](LabelledBlock const& block) {
        return block.memory != nullptr && std::string_view(block.label) == label;
      }));
}

std::vector<std::string> takeFreedLabels() {
  std::array<char const*, freedLabels.size()> taken{};
  std::size_t count = 0;
  {
    std::lock_guard const lock(labelsMutex);
    taken = freedLabels;
    count = std::exchange(freedLabelCount, 0);
  }
  return {taken.begin(), taken.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace Zorv::TestSupport

void* operator new(std::size_t size) { return Zorv::TestSupport::allocate(size); }
void* operator new[](std::size_t size) { return Zorv::TestSupport::allocate(size); }
void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept {
  try {
    return Zorv::TestSupport::allocate(size);
  } catch (std::bad_alloc const&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept { Zorv::TestSupport::release(memory); }
void operator delete[](void* memory) noexcept { Zorv::TestSupport::release(memory); }
void operator delete(void* memory, std::size_t) noexcept { Zorv::TestSupport::release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Zorv::TestSupport::release(memory); }
