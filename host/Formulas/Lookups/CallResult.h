#pragma once

#include <cstddef>
#include <string>

#include "Formulas/Evaluation/Value.h"
#include "Formulas/Lookups/LookupIndex.h"

namespace Zorv::Formulas {

/// A single value that a function gave, to be given again.
class CallResult final : public LookupIndex {
public:
  /// Requires a single value, of which it keeps a copy.
  explicit CallResult(Value const& value) : _value(value) {
    if (value.isText()) {
      _text = value.asText();
      _value = Value::text(_text);
    }
  }

  /// Lasts as long as this.
  [[nodiscard]] Value const& value() const noexcept { return _value; }

  [[nodiscard]] std::size_t memory() const noexcept override {
    return sizeof(*this) + _text.capacity();
  }

private:
  std::string _text;
  Value _value;
};

}  // namespace Zorv::Formulas
