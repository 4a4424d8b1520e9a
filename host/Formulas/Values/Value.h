#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "FormulaModel/FormulaValue.h"
#include "Formulas/Values/Area.h"

namespace Zorv::Formulas {

struct Array;
struct AreaList;
struct Lambda;
using FormulaModel::FormulaErrorCode;

/// A value on its way through a formula.
///
/// Small and trivially copied. It borrows what it does not hold: texts lie in cells, in the
/// expression or in the evaluation's arena, arrays and lists of areas in the arena; all of them
/// outlive the evaluation's values. A number is always finite.
class Value {
public:
  enum class Kind : std::uint8_t {
    Empty,
    Number,
    Text,
    Boolean,
    Error,
    Missing,     ///< an argument left out: `IF(A1,,2)`
    Reference,   ///< one area
    References,  ///< several areas, a union
    Lambda,      ///< a function that LAMBDA made
    Array,
  };

  constexpr Value() noexcept : _number(0.0) {}

  /// `#NUM!` for what is no finite number.
  [[nodiscard]] static Value number(double number) noexcept {
    return std::isfinite(number) ? Value(number) : error(FormulaErrorCode::Number);
  }
  /// Borrows the text.
  [[nodiscard]] static constexpr Value text(std::string_view text) noexcept { return Value(text); }
  [[nodiscard]] static constexpr Value boolean(bool value) noexcept {
    Value result(Kind::Boolean);
    result._boolean = value;
    return result;
  }
  [[nodiscard]] static constexpr Value error(FormulaErrorCode code) noexcept {
    Value result(Kind::Error);
    result._error = code;
    return result;
  }
  [[nodiscard]] static constexpr Value missing() noexcept { return Value(Kind::Missing); }
  [[nodiscard]] static constexpr Value reference(Area const& area) noexcept { return Value(area); }
  /// Borrows the list.
  [[nodiscard]] static constexpr Value references(AreaList const& areas) noexcept {
    Value result(Kind::References);
    result._areas = &areas;
    return result;
  }
  /// Borrows the function.
  [[nodiscard]] static constexpr Value lambda(Lambda const& lambda) noexcept {
    Value result(Kind::Lambda);
    result._lambda = &lambda;
    return result;
  }
  /// Borrows the array.
  [[nodiscard]] static constexpr Value array(Array const& array) noexcept {
    Value result(Kind::Array);
    result._array = &array;
    return result;
  }

  [[nodiscard]] constexpr Kind kind() const noexcept { return _kind; }
  /// An empty value, or an argument left out.
  [[nodiscard]] constexpr bool isEmpty() const noexcept {
    return _kind == Kind::Empty || _kind == Kind::Missing;
  }
  [[nodiscard]] constexpr bool isMissing() const noexcept { return _kind == Kind::Missing; }
  [[nodiscard]] constexpr bool isNumber() const noexcept { return _kind == Kind::Number; }
  [[nodiscard]] constexpr bool isText() const noexcept { return _kind == Kind::Text; }
  [[nodiscard]] constexpr bool isBoolean() const noexcept { return _kind == Kind::Boolean; }
  [[nodiscard]] constexpr bool isError() const noexcept { return _kind == Kind::Error; }
  [[nodiscard]] constexpr bool isReference() const noexcept { return _kind == Kind::Reference; }
  [[nodiscard]] constexpr bool isReferences() const noexcept { return _kind == Kind::References; }
  [[nodiscard]] constexpr bool isLambda() const noexcept { return _kind == Kind::Lambda; }
  [[nodiscard]] constexpr bool isArray() const noexcept { return _kind == Kind::Array; }
  /// A reference of either kind or a function: no value, but what gives one.
  [[nodiscard]] constexpr bool needsReading() const noexcept {
    return Kind::Reference <= _kind && _kind <= Kind::Lambda;
  }
  /// Neither an array nor what needs reading.
  [[nodiscard]] constexpr bool isSingle() const noexcept { return _kind < Kind::Reference; }

  // Each requires the kind that it names.
  [[nodiscard]] constexpr double asNumber() const noexcept { return _number; }
  [[nodiscard]] constexpr std::string_view asText() const noexcept { return _text; }
  [[nodiscard]] constexpr bool asBoolean() const noexcept { return _boolean; }
  [[nodiscard]] constexpr FormulaErrorCode asError() const noexcept { return _error; }
  [[nodiscard]] constexpr Area const& asArea() const noexcept { return _area; }
  [[nodiscard]] constexpr AreaList const& asAreas() const noexcept { return *_areas; }
  [[nodiscard]] constexpr Lambda const& asLambda() const noexcept { return *_lambda; }
  [[nodiscard]] constexpr Array const& asArray() const noexcept { return *_array; }

private:
  constexpr explicit Value(Kind kind) noexcept : _kind(kind), _number(0.0) {}
  constexpr explicit Value(double number) noexcept : _kind(Kind::Number), _number(number) {}
  constexpr explicit Value(std::string_view text) noexcept : _kind(Kind::Text), _text(text) {}
  constexpr explicit Value(Area const& area) noexcept : _kind(Kind::Reference), _area(area) {}

  Kind _kind = Kind::Empty;
  union {
    double _number;
    std::string_view _text;
    bool _boolean;
    FormulaErrorCode _error;
    Area _area;
    AreaList const* _areas;
    Lambda const* _lambda;
    Array const* _array;
  };
};

/// `#NUM!`
[[nodiscard]] constexpr Value notANumber() noexcept {
  return Value::error(FormulaErrorCode::Number);
}

/// `#VALUE!`
[[nodiscard]] constexpr Value wrongValue() noexcept {
  return Value::error(FormulaErrorCode::Value);
}

/// `#DIV/0!`
[[nodiscard]] constexpr Value divisionByZero() noexcept {
  return Value::error(FormulaErrorCode::DivisionByZero);
}

/// `#N/A`
[[nodiscard]] constexpr Value notAvailable() noexcept {
  return Value::error(FormulaErrorCode::NotAvailable);
}

/// A rectangle of single values in the arena, row by row.
///
/// Only the first `storedRows` rows are stored; each row below equals the last stored one. So a
/// whole column costs what its cells cost, and a single row spreads over any number of rows.
struct Array {
  std::uint32_t rows = 0;
  std::uint32_t columns = 0;
  std::uint32_t storedRows = 0;  ///< from 1 to `rows`
  Value const* values = nullptr;

  [[nodiscard]] Value const& at(std::uint32_t row, std::uint32_t column) const noexcept {
    std::uint32_t const stored = row < storedRows ? row : storedRows - 1;
    return values[std::size_t{stored} * columns + column];
  }
};

/// The areas of a union, in the order written; they may overlap.
struct AreaList {
  Area const* areas = nullptr;
  std::size_t count = 0;

  [[nodiscard]] Area const* begin() const noexcept { return areas; }
  [[nodiscard]] Area const* end() const noexcept { return areas + count; }
};

}  // namespace Zorv::Formulas
