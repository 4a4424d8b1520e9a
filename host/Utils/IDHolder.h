#pragma once

#include <memory>
#include <utility>

namespace Zorv {

/// Base of objects that have an identity.
///
/// The object can be neither copied nor moved. Threads: getID() may run concurrently.
class IDHolder {
  struct ControlBlock {};

public:
  /// Weak reference to an identified object, ordered by identity.
  ///
  /// An ID may outlive its object. It stays distinct from every other ID, including those of
  /// objects created later. Copying it increments one reference count and allocates nothing.
  class ID {
  public:
    friend bool operator<(ID const& a, ID const& b) noexcept {
      return a._control.owner_before(b._control);
    }

  private:
    friend class IDHolder;
    explicit ID(std::weak_ptr<ControlBlock const> control) noexcept
        : _control(std::move(control)) {}

    std::weak_ptr<ControlBlock const> _control;
  };

  IDHolder(IDHolder const&) = delete;
  IDHolder& operator=(IDHolder const&) = delete;

  /// The identity of this object.
  [[nodiscard]] ID getID() const noexcept { return ID(_control); }

protected:
  IDHolder() : _control(std::make_shared<ControlBlock const>()) {}
  ~IDHolder() = default;

private:
  std::shared_ptr<ControlBlock const> _control;
};

}  // namespace Zorv
