#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <span>
#include <string_view>
#include <type_traits>

#include "Formulas/Limits/StepMeter.h"

namespace Zorv::Formulas {

/// The memory of one evaluation after the other: everything in it goes at once, when the evaluation
/// ends.
///
/// The first part lies in the object itself, so that ordinary formulas take nothing from the heap.
/// Throws EvaluationLimitError when an evaluation takes more than 256 MiB. To
/// fill an array is work: it is counted by the meter, which the arena borrows.
class Arena {
public:
  explicit Arena(StepMeter& steps) noexcept
      : _steps(&steps), _pool(_buffer.data(), _buffer.size(), &_heap) {}
  Arena(Arena const&) = delete;
  Arena& operator=(Arena const&) = delete;
  ~Arena() = default;

  /// Room for values, which are default-constructed.
  template <class T>
  [[nodiscard]] std::span<T> makeArray(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T>);
    if (count == 0) {
      return {};
    }
    _steps->spend(stepsOfBytes(count * sizeof(T)));
    void* const memory = _pool.allocate(count * sizeof(T), alignof(T));
    return std::span<T>(new (memory) T[count], count);
  }

  template <class T>
  [[nodiscard]] T& make(T const& value) {
    static_assert(std::is_trivially_destructible_v<T>);
    return *new (_pool.allocate(sizeof(T), alignof(T))) T(value);
  }

  [[nodiscard]] std::string_view copyText(std::string_view text) {
    std::span<char> const copy = makeArray<char>(text.size());
    text.copy(copy.data(), text.size());
    return {copy.data(), copy.size()};
  }

  [[nodiscard]] StepMeter& steps() const noexcept { return *_steps; }

  /// Ends the life of everything in it, and gives back what was taken from the heap.
  void release() noexcept { _pool.release(); }

private:
  /// The heap, up to a limit.
  class LimitedHeap : public std::pmr::memory_resource {
    void* do_allocate(std::size_t size, std::size_t alignment) override;
    void do_deallocate(void* memory, std::size_t size, std::size_t alignment) override;
    [[nodiscard]] bool do_is_equal(memory_resource const& other) const noexcept override {
      return this == &other;
    }

    std::size_t _taken = 0;
  };

  static constexpr std::size_t inlineSize = 1024;

  StepMeter* _steps;
  std::array<std::byte, inlineSize> _buffer;
  LimitedHeap _heap;
  std::pmr::monotonic_buffer_resource _pool;
};

}  // namespace Zorv::Formulas
