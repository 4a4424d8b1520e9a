#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "DOM/CellStyle.h"
#include "Utils/Export.h"

namespace Zorv::DOM {

class StylePool;

/// Interned immutable style: equal styles are one object.
///
/// Owned by `boost::intrusive_ptr<SharedStyle<Style> const>`. Destroyed with its last pointer, on
/// the thread that releases it; may outlive the SharedObjectFactory that created it. Threads:
/// pointers may be copied and released on any thread.
template <class Style>
class SharedStyle {
public:
  SharedStyle(SharedStyle const&) = delete;
  SharedStyle& operator=(SharedStyle const&) = delete;

  /// The style.
  [[nodiscard]] Style const& get() const noexcept { return _style; }
  /// The style.
  [[nodiscard]] Style const& operator*() const noexcept { return _style; }
  /// The style.
  [[nodiscard]] Style const* operator->() const noexcept { return &_style; }

private:
  friend class StylePool;
  friend void intrusive_ptr_add_ref(SharedStyle<CellStyle> const* style) noexcept;
  friend void intrusive_ptr_release(SharedStyle<CellStyle> const* style) noexcept;

  SharedStyle(Style style, std::size_t hash, std::shared_ptr<StylePool> pool) noexcept
      : _style(std::move(style)), _hash(hash), _pool(std::move(pool)) {}
  ~SharedStyle() = default;

  Style const _style;
  std::size_t const _hash;
  mutable std::atomic<std::size_t> _references{0};
  /// The pool in which equal styles are found. Kept alive, since the style removes itself from it.
  std::shared_ptr<StylePool> const _pool;
};

/// Increments the reference count.
inline void intrusive_ptr_add_ref(SharedStyle<CellStyle> const* style) noexcept {
  style->_references.fetch_add(1, std::memory_order_relaxed);
}

/// Decrements the reference count; destroys the style when it reaches zero.
ZORV_HOST_EXPORT void intrusive_ptr_release(SharedStyle<CellStyle> const* style) noexcept;

/// Shared pointer to an interned style; may be null. Equal styles have equal pointers.
using SharedCellStylePtr = boost::intrusive_ptr<SharedStyle<CellStyle> const>;

/// Interning factory of styles: equal styles are one object while any pointer to it lives.
///
/// Threads: create() may run concurrently, also while other threads release the last pointer to an
/// equal style. Cost: one hash of the style and one look-up under a lock.
class ZORV_HOST_EXPORT SharedObjectFactory {
public:
  SharedObjectFactory();
  SharedObjectFactory(SharedObjectFactory const&) = delete;
  SharedObjectFactory& operator=(SharedObjectFactory const&) = delete;
  ~SharedObjectFactory();

  /// The shared object for all styles equal to `style`. Never null.
  [[nodiscard]] SharedCellStylePtr create(CellStyle style) const;

private:
  std::shared_ptr<StylePool> _pool;
};

}  // namespace Zorv::DOM
