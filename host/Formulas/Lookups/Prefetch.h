#pragma once

#include <cstddef>
#include <vector>

namespace Zorv::Formulas {

/// Has a value of a large vector fetched from memory while other work is done. Places beyond its
/// end will do, too.
template <class T>
inline void prefetch(std::vector<T> const& values, std::size_t place) noexcept {
  if (place < values.size()) {
    __builtin_prefetch(values.data() + place);
  }
}

}  // namespace Zorv::Formulas
