#pragma once

#include <memory>
#include <utility>

#include "Utils/Assert.h"

namespace Zorv {

/// Shared pointer that stops the process on any access while it is null.
///
/// Ownership: shares the object. Threads: as `std::shared_ptr`.
template <class T>
class CheckedPtr {
public:
  /// May be null as long as nobody accesses it.
  explicit CheckedPtr(std::shared_ptr<T> ptr) noexcept : _ptr(std::move(ptr)) {}

  /// The object. Stops the process at a null pointer.
  [[nodiscard]] T& operator*() const noexcept {
    checkNotNull();
    return *_ptr;
  }

  /// The object. Stops the process at a null pointer.
  [[nodiscard]] T* operator->() const noexcept {
    checkNotNull();
    return _ptr.get();
  }

private:
  void checkNotNull() const noexcept {
    if (!_ptr) {
      doFailAssert("/code/Utils/Public/Ptr/CheckedPtr", 145, "_ptr");
    }
  }

  std::shared_ptr<T> _ptr;
};

}  // namespace Zorv
