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

/// An immutable style that everything which needs an equal style shares.
///
/// Handled through `boost::intrusive_ptr<SharedStyle<Style> const>`; it dies with its last pointer,
/// on whichever thread that is, and may outlive the SharedObjectFactory that made it.
/// Threads: pointers may be copied and released from any thread.
template <class Style>
class SharedStyle {
public:
  SharedStyle(SharedStyle const&) = delete;
  SharedStyle& operator=(SharedStyle const&) = delete;

  [[nodiscard]] Style const& get() const noexcept { return _style; }
  [[nodiscard]] Style const& operator*() const noexcept { return _style; }
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
  /// Where equal styles are looked up; each style keeps it alive to be able to leave it.
  std::shared_ptr<StylePool> const _pool;
};

/// Counts one pointer more.
inline void intrusive_ptr_add_ref(SharedStyle<CellStyle> const* style) noexcept {
  style->_references.fetch_add(1, std::memory_order_relaxed);
}

/// Counts one pointer less, and destroys the style with the last.
ZORV_HOST_EXPORT void intrusive_ptr_release(SharedStyle<CellStyle> const* style) noexcept;

using SharedCellStylePtr = boost::intrusive_ptr<SharedStyle<CellStyle> const>;

/// Makes equal styles one object for as long as any pointer to it lives.
///
/// Threads: create() may be called from several threads at once, also while other threads release
/// the last pointer to an equal style. Cost: one hash of the style and one look-up under a lock.
class ZORV_HOST_EXPORT SharedObjectFactory {
public:
  SharedObjectFactory();
  SharedObjectFactory(SharedObjectFactory const&) = delete;
  SharedObjectFactory& operator=(SharedObjectFactory const&) = delete;
  ~SharedObjectFactory();

  /// The shared object of all styles equal to `style`. Never null.
  [[nodiscard]] SharedCellStylePtr create(CellStyle style) const;

private:
  std::shared_ptr<StylePool> _pool;
};

}  // namespace Zorv::DOM
