#pragma once

#include <string_view>

#include "FormulaModel/ValueKey.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

using FormulaModel::ValueKey;

/// The key of a number, a text, a truth value or an error. Texts that differ only in letter case
/// have one key.
[[nodiscard]] ValueKey makeKey(Value const& value) noexcept;

/// A value and its key. Borrows the text.
struct KeyedValue {
  ValueKey key;
  std::string_view text;  ///< empty for other kinds

  KeyedValue(ValueKey itsKey, std::string_view itsText) noexcept : key(itsKey), text(itsText) {}
  explicit KeyedValue(Value const& value) noexcept
      : key(makeKey(value)), text(value.isText() ? value.asText() : std::string_view()) {}
};

}  // namespace Zorv::Formulas
