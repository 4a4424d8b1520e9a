#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "DOM/SharedStyle.h"

namespace Zorv::DOM {

/// Hash table of the living styles of one factory.
///
/// The pool owns no style. A style whose reference count has reached zero is dying: its entry
/// remains until the thread that released the last pointer removes it. A dying style is never
/// revived, so an equal style may have an entry of its own meanwhile. Entries are identified by
/// address, never by content.
/// Threads: all operations may run concurrently.
class StylePool : public std::enable_shared_from_this<StylePool> {
public:
  /// The living style equal to `style`; created if there is none.
  [[nodiscard]] SharedCellStylePtr getOrCreate(CellStyle style);

  /// Decrements the reference count; removes and destroys the style when it reaches zero.
  static void release(SharedStyle<CellStyle> const* style) noexcept;

private:
  using Style = SharedStyle<CellStyle>;

  /// A living style equal to `style`, with one reference added for the caller, or null. Requires
  /// the lock.
  [[nodiscard]] Style const* findLiving(CellStyle const& style, std::size_t hash) const noexcept;
  /// Adds a reference unless the style is dying.
  [[nodiscard]] static bool addReferenceIfLiving(Style const& style) noexcept;
  void removeEntry(Style const* style) noexcept;

  std::mutex _mutex;
  std::unordered_multimap<std::size_t, Style const*> _stylesByHash;  ///< guarded by the mutex
};

}  // namespace Zorv::DOM
