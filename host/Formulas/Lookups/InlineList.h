#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include <boost/container_hash/hash.hpp>

namespace Zorv::Formulas {

/// A list of up to five values, stored in place. Requires that no more are added.
template <class T>
class InlineList {
public:
  static constexpr std::size_t capacity = 5;

  void push_back(T const& value) noexcept { _values[_size++] = value; }
  void clear() noexcept { _size = 0; }

  [[nodiscard]] std::size_t size() const noexcept { return _size; }
  [[nodiscard]] T const& front() const noexcept { return _values.front(); }
  [[nodiscard]] T const* data() const noexcept { return _values.data(); }
  [[nodiscard]] T* data() noexcept { return _values.data(); }
  [[nodiscard]] T* begin() noexcept { return _values.data(); }
  [[nodiscard]] T* end() noexcept { return _values.data() + _size; }
  [[nodiscard]] T const* begin() const noexcept { return _values.data(); }
  [[nodiscard]] T const* end() const noexcept { return _values.data() + _size; }

  friend bool operator==(InlineList const& a, InlineList const& b) noexcept {
    return std::ranges::equal(a, b);
  }
  friend std::size_t hash_value(InlineList const& list) noexcept {
    return boost::hash_range(list.begin(), list.end());
  }

private:
  std::array<T, capacity> _values{};
  std::size_t _size = 0;
};

}  // namespace Zorv::Formulas
