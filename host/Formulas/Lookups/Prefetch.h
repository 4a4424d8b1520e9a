#pragma once

#include <cstddef>

namespace Zorv::Formulas {

/// Has a value of a large vector fetched from memory while other work is done. Places beyond its
/// end will do, too.
template <class Vector>
inline void prefetch(Vector const& values, std::size_t place) noexcept {
  if (place < values.size()) {
    __builtin_prefetch(values.data() + place);
  }
}

}  // namespace Zorv::Formulas
