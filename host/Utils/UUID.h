#pragma once

#include <cstddef>
#include <string>

#include <boost/uuid/uuid.hpp>

#include "Utils/Export.h"

namespace Zorv {

/// Identity of a table or of a named style: 128 bits, ordered as bytes.
///
/// A default-constructed UUID is the empty identity. Copying allocates nothing.
class ZORV_HOST_EXPORT UUID {
public:
  /// The empty identity.
  constexpr UUID() noexcept : _value{} {}
  /// The identity of these bytes.
  constexpr explicit UUID(boost::uuids::uuid const& value) noexcept : _value(value) {}

  /// New random identity. Threads: may be called concurrently.
  [[nodiscard]] static UUID generate();

  /// True for the empty identity.
  [[nodiscard]] bool isEmpty() const noexcept { return _value.is_nil(); }

  /// Canonical text of 36 characters.
  [[nodiscard]] std::string toString() const;

  friend bool operator==(UUID const& a, UUID const& b) noexcept { return a._value == b._value; }
  friend bool operator!=(UUID const& a, UUID const& b) noexcept { return a._value != b._value; }
  friend bool operator<(UUID const& a, UUID const& b) noexcept { return a._value < b._value; }
  friend std::size_t hash_value(UUID const& uuid) noexcept {
    return boost::uuids::hash_value(uuid._value);
  }

private:
  boost::uuids::uuid _value;
};

}  // namespace Zorv
