#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "DOM/SharedStyle.h"

namespace Zorv::DOM {

/// Where equal styles of one factory find each other.
///
/// The pool owns no style. A style whose count of pointers has reached zero is dying: its entry
/// stays until the thread that released the last pointer takes it out, and meanwhile nothing can
/// bring it back, so an equal style may stand beside it. Entries are told apart by address, never
/// by content.
/// Threads: every operation may be called from several threads at once.
class StylePool : public std::enable_shared_from_this<StylePool> {
public:
  [[nodiscard]] SharedCellStylePtr obtain(CellStyle style);

  /// Counts one pointer less; the style and its entry go with the last one.
  static void release(SharedStyle<CellStyle> const* style) noexcept;

private:
  using Style = SharedStyle<CellStyle>;

  /// A living style equal to `style`, counted for the caller, or null. Requires the lock.
  [[nodiscard]] Style const* findLiving(CellStyle const& style, std::size_t hash) const noexcept;
  [[nodiscard]] static bool countIfLiving(Style const& style) noexcept;
  void forget(Style const* style) noexcept;

  std::mutex _mutex;
  std::unordered_multimap<std::size_t, Style const*> _stylesByHash;  ///< guarded by the mutex
};

}  // namespace Zorv::DOM
