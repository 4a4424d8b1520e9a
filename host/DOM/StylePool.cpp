#include "DOM/StylePool.h"

#include <algorithm>
#include <utility>

namespace Zorv::DOM {

SharedCellStylePtr StylePool::getOrCreate(CellStyle style) {
  std::size_t const hash = hash_value(style);
  std::scoped_lock const lock(_mutex);
  if (Style const* const living = findLiving(style, hash)) {
    return {living, false};
  }
  // The entry is created first, so that nothing can fail after the style is created. No thread
  // reads the entry before the lock is released.
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
  // Every use of the style on another thread must happen before its destruction: each decrement
  // releases the uses of its thread, and the last decrement acquires them all.
  if (style->_references.fetch_sub(1, std::memory_order_acq_rel) != 1) {
    return;
  }
  // The style may hold the last reference to its pool.
  std::shared_ptr<StylePool> const pool = style->_pool;
  pool->removeEntry(style);
  delete style;
}

StylePool::Style const* StylePool::findLiving(CellStyle const& style,
                                              std::size_t hash) const noexcept {
  auto const [first, last] = _stylesByHash.equal_range(hash);
  auto const found = std::find_if(first, last, [&](auto const& entry) {
    // A dying style is destroyed only after it has left the pool, so it may be compared.
    return entry.second->get() == style && addReferenceIfLiving(*entry.second);
  });
  return found != last ? found->second : nullptr;
}

bool StylePool::addReferenceIfLiving(Style const& style) noexcept {
  std::size_t count = style._references.load(std::memory_order_relaxed);
  while (count != 0) {
    if (style._references.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) {
      return true;
    }
  }
  return false;
}

void StylePool::removeEntry(Style const* style) noexcept {
  std::scoped_lock const lock(_mutex);
  auto const [first, last] = _stylesByHash.equal_range(style->_hash);
  auto const entry =
      std::find_if(first, last, [&](auto const& other) { return other.second == style; });
  _stylesByHash.erase(entry);
}

}  // namespace Zorv::DOM
