#pragma once

#include <compare>
#include <cstddef>

#include <boost/container_hash/hash.hpp>

namespace Zorv {

/// Number with a tag type, so that numbers of different meanings do not mix.
template <class Value, class Tag>
class TaggedValue {
public:
  constexpr TaggedValue() noexcept = default;
  /// The number with its tag.
  constexpr explicit TaggedValue(Value value) noexcept : _value(value) {}

  /// The bare number.
  [[nodiscard]] constexpr Value get() const noexcept { return _value; }

  friend constexpr auto operator<=>(TaggedValue, TaggedValue) noexcept = default;
  friend std::size_t hash_value(TaggedValue value) noexcept {
    return boost::hash<Value>()(value._value);
  }

private:
  Value _value{};
};

/// One tag of a family of tags.
template <class Family, int member>
struct ValueTag {};

}  // namespace Zorv
