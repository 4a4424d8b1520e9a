#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "FormulaModel/FormulaValue.h"

namespace Zorv::FormulaModel {

/// Iterator over an array's values, row by row. Valid while the array lives unchanged.
class FormulaArrayConstIterator {
public:
  /// Points to a value of an array, or behind the last one.
  explicit FormulaArrayConstIterator(FormulaValue const* position) noexcept : _position(position) {}

  /// The value.
  [[nodiscard]] FormulaValue const& operator*() const noexcept { return *_position; }
  /// Goes to the next value.
  FormulaArrayConstIterator& operator++() noexcept {
    ++_position;
    return *this;
  }
  friend bool operator==(FormulaArrayConstIterator a, FormulaArrayConstIterator b) noexcept {
    return a._position == b._position;
  }

private:
  FormulaValue const* _position;
};

/// Rectangle of values, stored row by row.
class FormulaArray {
public:
  /// Requires `values.size() == height * width`.
  FormulaArray(std::size_t height, std::size_t width, std::vector<FormulaValue> values) noexcept
      : _height(height), _width(width), _values(std::move(values)) {}

  /// The number of rows.
  [[nodiscard]] std::size_t getHeight() const noexcept { return _height; }
  /// The number of columns.
  [[nodiscard]] std::size_t getWidth() const noexcept { return _width; }

  /// The value at a row and a column inside the array, both from 0.
  [[nodiscard]] FormulaValue const& at(std::size_t row, std::size_t column) const noexcept {
    return _values[row * _width + column];
  }
  /// The same, to be changed.
  [[nodiscard]] FormulaValue& at(std::size_t row, std::size_t column) noexcept {
    return _values[row * _width + column];
  }

  /// The first value.
  [[nodiscard]] FormulaArrayConstIterator begin() const noexcept {
    return FormulaArrayConstIterator(_values.data());
  }
  /// Behind the last value.
  [[nodiscard]] FormulaArrayConstIterator end() const noexcept {
    return FormulaArrayConstIterator(_values.data() + _values.size());
  }

private:
  std::size_t _height;
  std::size_t _width;
  std::vector<FormulaValue> _values;
};

}  // namespace Zorv::FormulaModel
