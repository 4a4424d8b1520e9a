#include "DOM/StylePool.h"

#include <algorithm>
#include <utility>

namespace Zorv::DOM {

SharedCellStylePtr StylePool::obtain(CellStyle style) {
  std::size_t const hash = hash_value(style);
  std::scoped_lock const lock(_mutex);
  if (Style const* const living = findLiving(style, hash)) {
    return {living, false};
  }
  // The entry is made first, so that nothing can fail once the style is made; nobody looks at it
  // before the lock is given back.
  auto const entry = _stylesByHash.emplace(hash, nullptr);
  try {
    entry->second = new Style(std::move(style), hash, shared_from_this());
  } catch (...) {
    _stylesByHash.erase(entry);
    throw;
  }
  return {entry->second};
}

void StylePool::release(Style const* style) noexcept {
  // What other threads did with the style happened before its destruction: each count down releases
  // what that thread did, and the last one acquires it all.
  if (style->_references.fetch_sub(1, std::memory_order_acq_rel) != 1) {
    return;
  }
  // The style may hold the last reference to its pool.
  std::shared_ptr<StylePool> const pool = style->_pool;
  pool->forget(style);
  delete style;
}

StylePool::Style const* StylePool::findLiving(CellStyle const& style,
                                              std::size_t hash) const noexcept {
  auto const [first, last] = _stylesByHash.equal_range(hash);
  auto const found = std::find_if(first, last, [&](auto const& entry) {
    // A style that is dying is not destroyed before it has left the pool, so it may be compared.
    return entry.second->get() == style && countIfLiving(*entry.second);
  });
  return found != last ? found->second : nullptr;
}

bool StylePool::countIfLiving(Style const& style) noexcept {
  std::size_t count = style._references.load(std::memory_order_relaxed);
  while (count != 0) {
    if (style._references.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) {
      return true;
    }
  }
  return false;
}

void StylePool::forget(Style const* style) noexcept {
  std::scoped_lock const lock(_mutex);
  auto const [first, last] = _stylesByHash.equal_range(style->_hash);
  auto const entry =
      std::find_if(first, last, [&](auto const& other) { return other.second == style; });
  _stylesByHash.erase(entry);
}

}  // namespace Zorv::DOM
