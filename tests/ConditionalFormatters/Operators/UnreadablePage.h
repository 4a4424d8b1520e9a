#pragma once

#include <cstddef>

#include <sys/mman.h>

namespace Zorv::TestSupport {

/// Memory that nothing can read: a program that tries to ends.
class UnreadablePage {
public:
  UnreadablePage() : _memory(mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {}
  UnreadablePage(UnreadablePage const&) = delete;
  UnreadablePage& operator=(UnreadablePage const&) = delete;
  ~UnreadablePage() { munmap(_memory, size); }

  [[nodiscard]] void const* get() const { return _memory == MAP_FAILED ? nullptr : _memory; }

private:
  static constexpr std::size_t size = 4096;

  void* _memory;
};

}  // namespace Zorv::TestSupport
