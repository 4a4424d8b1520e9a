#pragma once

#include <atomic>
#include <memory>
#include <mutex>

namespace Zorv::ConditionalFormatters {

/// A value that is created when it is first needed, and does not change until it is reset.
///
/// A creation that throws leaves nothing behind: the next caller tries again. A creation may ask
/// for the same value on its own thread; the value that is finished first is then kept.
///
/// Threads: may be asked from several threads. One pointer in size. Cost once created: one atomic
/// load.
template <class Value>
class Lazy {
public:
  Lazy() = default;
  Lazy(Lazy const&) = delete;
  Lazy& operator=(Lazy const&) = delete;
  ~Lazy() { std::unique_ptr<Value const> const owned(_value.load(std::memory_order_relaxed)); }

  /// The value, or null if it is not created yet.
  [[nodiscard]] Value const* find() const noexcept {
    return _value.load(std::memory_order_acquire);
  }

  /// `create()` returns a unique_ptr to the value. Several threads may create a value each, of
  /// which one is kept: for values that are cheap to create.
  template <class Create>
  Value const& getOrCreate(Create const& create) const {
    Value const* const created = find();
    return created != nullptr ? *created : keepFirst(create());
  }

  /// The same, but other threads that need the value wait while it is created. They all pass the
  /// same mutex, which values may share.
  template <class Create>
  Value const& getOrCreate(std::recursive_mutex& mutex, Create const& create) const {
    if (Value const* const created = find()) {
      return *created;
    }
    std::lock_guard const lock(mutex);
    return getOrCreate(create);
  }

  /// Keeps a value that was created elsewhere, unless there is one. Gives the one that is kept.
  Value const& keepFirst(std::unique_ptr<Value const> value) const noexcept {
    Value const* first = nullptr;
    if (_value.compare_exchange_strong(first, value.get(), std::memory_order_acq_rel)) {
      first = value.release();
    }
    return *first;
  }

  /// Destroys the value; the next caller creates another one. Needs exclusive access.
  void reset() noexcept {
    std::unique_ptr<Value const> const owned(_value.exchange(nullptr, std::memory_order_relaxed));
  }

private:
  mutable std::atomic<Value const*> _value = nullptr;  ///< owned
};

}  // namespace Zorv::ConditionalFormatters
