#include "Formulas/Values/Arena.h"

#include "Formulas/EvaluationLimitError.h"

namespace Zorv::Formulas {

namespace {

constexpr std::size_t maximalSize = std::size_t{256} << 20U;

}  // namespace

void* Arena::LimitedHeap::do_allocate(std::size_t size, std::size_t alignment) {
  if (size > maximalSize - _taken) {
    throw EvaluationLimitError("the formula needs more than 256 MiB of memory");
  }
  void* const memory = std::pmr::new_delete_resource()->allocate(size, alignment);
  _taken += size;
  return memory;
}

void Arena::LimitedHeap::do_deallocate(void* memory, std::size_t size, std::size_t alignment) {
  std::pmr::new_delete_resource()->deallocate(memory, size, alignment);
  _taken -= size;
}

}  // namespace Zorv::Formulas
