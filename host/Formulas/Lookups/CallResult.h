#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/InlineList.h"
#include "Formulas/Lookups/TableArea.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// An argument of a call whose result is kept: an area or a number.
struct CallArgument {
  TableArea area;                ///< without a table for a number
  std::uint64_t numberBits = 0;  ///< 0 for an area

  CallArgument() = default;
  /// Requires a reference to one area, or a number.
  explicit CallArgument(Value const& value) {
    if (value.isNumber()) {
      numberBits = std::bit_cast<std::uint64_t>(value.asNumber());
    } else {
      area = TableArea(value.asArea());
    }
  }

  friend bool operator==(CallArgument const&, CallArgument const&) noexcept = default;
  friend std::size_t hash_value(CallArgument const& argument) noexcept {
    std::size_t seed = hash_value(argument.area);
    boost::hash_combine(seed, argument.numberBits);
    return seed;
  }
};

/// A call of a function.
struct CallKey {
  std::uint16_t function = 0;  ///< its index in the table of functions
  InlineList<CallArgument> arguments;

  friend bool operator==(CallKey const&, CallKey const&) noexcept = default;
  friend std::size_t hash_value(CallKey const& key) noexcept {
    std::size_t seed = hash_value(key.arguments);
    boost::hash_combine(seed, key.function);
    return seed;
  }
};

/// The single value that a call gave, kept for the next calls. Immutable.
class CallResult {
public:
  using Key = CallKey;

  /// Copies the value, which must be a single one.
  explicit CallResult(Value const& value) : _value(value) {
    if (value.isText()) {
      _text = value.asText();
      _value = Value::text(_text);
    }
  }
  CallResult(CallResult const&) = delete;
  CallResult& operator=(CallResult const&) = delete;
  ~CallResult() = default;

  /// Borrows from this object.
  [[nodiscard]] Value const& value() const noexcept { return _value; }

  [[nodiscard]] std::size_t memory() const noexcept { return sizeof(*this) + _text.capacity(); }

private:
  std::string _text;
  Value _value;
};

}  // namespace Zorv::Formulas
