#pragma once

#include <bit>
#include <cstdint>

namespace Zorv::DOM {

/// Set of columns that does not tell apart those that are equal modulo 64.
///
/// Columns count from 0. Value type; all operations take constant time.
class ColumnSet {
public:
  /// The empty set.
  ColumnSet() noexcept = default;
  /// `count` neighbouring columns from `first` on.
  ColumnSet(unsigned long first, unsigned long count) noexcept
      : _bits(count < different
                  ? std::rotl((std::uint64_t{1} << count) - 1, static_cast<int>(first % different))
                  : ~std::uint64_t{0}) {}

  /// Adds a column.
  void add(unsigned long column) noexcept { _bits |= std::uint64_t{1} << column % different; }
  /// Adds all columns of another set.
  void add(ColumnSet other) noexcept { _bits |= other._bits; }

  /// If false, the sets have no column in common.
  [[nodiscard]] bool mayMeet(ColumnSet other) const noexcept { return (_bits & other._bits) != 0; }

private:
  static constexpr unsigned long different = 64;

  std::uint64_t _bits = 0;
};

}  // namespace Zorv::DOM
