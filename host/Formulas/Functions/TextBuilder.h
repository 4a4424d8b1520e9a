#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Formulas/Evaluation/Call.h"

namespace Zorv::Formulas {

/// Puts a function's result together and stops growing once it is longer than any cell's text.
class TextBuilder {
public:
  /// More than the characters that a cell holds take.
  static constexpr std::size_t mostBytes = std::size_t{4} * 32767;

  /// False when the text has become too long.
  bool append(std::string_view text) {
    if (_text.size() <= mostBytes) {
      _text += text;
    }
    return _text.size() <= mostBytes;
  }

  [[nodiscard]] bool isTooLong() const noexcept { return _text.size() > mostBytes; }

  /// `#VALUE!` for a text that no cell can hold.
  [[nodiscard]] Value toValue(Call const& call) const {
    return isTooLong() ? Value::error(FormulaErrorCode::Value) : call.makeText(_text);
  }

private:
  std::string _text;
};

}  // namespace Zorv::Formulas
