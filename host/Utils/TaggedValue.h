#pragma once

#include <compare>
#include <cstddef>

#include <boost/container_hash/hash.hpp>

namespace Zorv {

/// A number that its tag keeps apart from numbers of another meaning.
template <class Value, class Tag>
class TaggedValue {
public:
  constexpr TaggedValue() noexcept = default;
  constexpr explicit TaggedValue(Value value) noexcept : _value(value) {}

  [[nodiscard]] constexpr Value get() const noexcept { return _value; }

  friend constexpr auto operator<=>(TaggedValue, TaggedValue) noexcept = default;
  friend std::size_t hash_value(TaggedValue value) noexcept {
    return boost::hash<Value>()(value._value);
  }

private:
  Value _value{};
};

/// Makes one tag out of a family of them.
template <class Family, int member>
struct ValueTag {};

}  // namespace Zorv
