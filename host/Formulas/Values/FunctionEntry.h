#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

class Call;

/// How a function takes an argument.
///
/// The single kinds are evaluated before the call. An array in the place of one, or a range while
/// the formula is evaluated element by element, makes the engine call the function once for each
/// element; otherwise a range gives the one cell that lies in the row or column of the formula's
/// cell. An error in the place of one becomes the function's result, except for `ValueOrError`.
enum class Parameter : std::uint8_t {
  Number,        ///< `n`: a number; texts that read as numbers, booleans and empties are converted
  Text,          ///< `t`: a text; everything is converted
  Truth,         ///< `b`: a truth value; numbers and the words TRUE and FALSE are converted
  Value,         ///< `v`: a single value of any kind, as it is
  ValueOrError,  ///< `e`: the same, errors too
  Range,         ///< `r`: a reference, an array or a single value, as it is, errors too
  Array,         ///< `a`: the same, and the argument's expression is evaluated by element
  Expression,    ///< `x`: not evaluated; the function calls Call::evaluate() when it needs it
};

/// The parameters of a function, written as `name:letter`, with the letter of a Parameter.
///
/// The required ones come first, then in brackets those that may be absent, then in parentheses a
/// group that may be repeated any number of times, or never: `text:t, [count:n]`;
/// `range:r, criterion:e, (range:r, criterion:e)`.
class Signature {
public:
  static constexpr std::size_t maximalArguments = 255;

  /// Ill-formed for a text that is no signature.
  consteval Signature(char const* text) : _text(text) {
    for (std::size_t i = 0; i < _text.size(); ++i) {
      if (_text[i] == '[') {
        _isOptional = true;
      } else if (_text[i] == '(') {
        _repeats = true;
        _groupStart = _size;
      } else if (_text[i] == ':') {
        add(toParameter(_text[++i]));
      }
    }
    _groupSize = _repeats ? static_cast<std::uint8_t>(_size - _groupStart) : std::uint8_t{0};
  }

  [[nodiscard]] constexpr bool accepts(std::size_t count) const noexcept {
    if (count < _required || count > maximalArguments) {
      return false;
    }
    std::size_t const fixed = _size - _groupSize;
    return count <= fixed || (_groupSize != 0 && (count - fixed) % _groupSize == 0);
  }

  /// How the argument at an index is taken. Requires an index that a call may have.
  [[nodiscard]] constexpr Parameter at(std::size_t index) const noexcept {
    std::size_t const fixed = std::size_t{_size} - _groupSize;
    if (index < fixed) {
      return _parameters[index];
    }
    // Most groups have one parameter, and a division takes long.
    return _parameters[_groupSize == 1 ? fixed : fixed + (index - fixed) % _groupSize];
  }

  /// The text that it was made from.
  [[nodiscard]] constexpr std::string_view text() const noexcept { return _text; }

private:
  consteval void add(Parameter parameter) {
    _parameters[_size++] = parameter;
    _required = static_cast<std::uint8_t>(_required + (_isOptional || _repeats ? 0 : 1));
  }

  static consteval Parameter toParameter(char letter) {
    constexpr std::string_view letters = "ntbverax";
    std::size_t const index = letters.find(letter);
    if (index == std::string_view::npos) {
      throw "an unknown letter in a signature";
    }
    return static_cast<Parameter>(index);
  }

  std::array<Parameter, 12> _parameters{};
  std::uint8_t _size = 0;
  std::uint8_t _required = 0;
  std::uint8_t _groupStart = 0;
  std::uint8_t _groupSize = 0;
  bool _isOptional = false;
  bool _repeats = false;
  std::string_view _text;
};

/// Properties of a function that the parser and the analysis of formulas ask for.
struct FunctionTraits {
  /// The result may change although no argument does.
  bool isVolatile = false;
  /// Called without arguments, it asks for the cell at which the formula is evaluated.
  bool asksPosition = false;
  /// It asks for that cell whatever its arguments are.
  bool dependsOnCell = false;
  /// The result may be a reference to more than one cell.
  bool returnsReference = false;
  /// It uses the place of its first argument, a reference, and not the values of its cells.
  bool asksPlaceOfFirst = false;
  /// The result stands for a date, where it is a number.
  bool givesDate = false;
  /// Arguments may be names that it gives to values, as those of LET and LAMBDA; see Parser.
  bool bindsNames = false;
};

/// One function of the table of functions. docs/functions.md is made from these entries.
struct FunctionEntry {
  std::string_view name;  ///< in upper case, without prefixes such as `_xlfn.`
  Signature signature;
  /// Throws only where the evaluation meets a limit; a spreadsheet error is a value.
  Value (*calculate)(Call& call);
  std::string_view summary;  ///< for users: what it gives, in a line
  FunctionTraits traits = {};
};

}  // namespace Zorv::Formulas
