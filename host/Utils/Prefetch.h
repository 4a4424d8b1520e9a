#pragma once

#include <cstddef>

namespace Zorv {

/// Fetches an element of a large vector into the cache while other work is done. An index past the
/// end does nothing.
template <class Vector>
void prefetch(Vector const& values, std::size_t index) noexcept {
  if (index < values.size()) {
    __builtin_prefetch(values.data() + index);
  }
}

}  // namespace Zorv
