#pragma once

#include <cstddef>

namespace Zorv::Formulas {

/// The bytes that a vector takes on the heap.
template <class Vector>
[[nodiscard]] std::size_t memoryOf(Vector const& values) noexcept {
  return values.capacity() * sizeof(typename Vector::value_type);
}

/// Resizes a vector that grows by few elements, with room for some more. A vector by itself would
/// take room for as many again.
template <class Vector>
void resizeWithRoom(Vector& values, std::size_t size) {
  if (size > values.capacity()) {
    values.reserve(size + size / 16);
  }
  values.resize(size);
}

}  // namespace Zorv::Formulas
