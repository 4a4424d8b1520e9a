#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "Formulas/Evaluation/Value.h"

namespace Zorv::Formulas {

class Call;

/// How a function takes an argument.
///
/// The single kinds are evaluated before the call. An array in the place of one, or a range while
/// the formula is evaluated element by element, makes the engine call the function once for each
/// element; otherwise a range gives the one cell that lies in the row or column of the formula's
/// cell. An error in the place of one becomes the function's result, save for `ValueOrError`.
enum class Parameter : std::uint8_t {
  Number,        ///< `n`: a number; texts that read as numbers, booleans and empties are converted
  Text,          ///< `t`: a text; everything is converted
  Truth,         ///< `b`: a truth value; numbers and the words TRUE and FALSE are converted
  Value,         ///< `v`: a single value of any kind, as it is
  ValueOrError,  ///< `e`: the same, errors too
  Range,         ///< `r`: a reference, an array or a single value, as it is, errors too
  Array,         ///< `a`: the same, and what is written in the argument is evaluated by element
  Expression,    ///< `x`: not evaluated; the function calls Call::evaluate() when it wants it
};

/// The parameters of a function, told by one letter each: the required ones, then in brackets those
/// that may be absent, then in parentheses a group that may follow any number of times.
/// So `rv(rv)` are pairs, and `t[n]` is a text that a number may follow.
class Signature {
public:
  static constexpr std::size_t maximalArguments = 255;

  /// Ill-formed for a text that is no signature.
  consteval Signature(char const* text) {
    for (; *text != '\0'; ++text) {
      readLetter(*text);
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

  /// How the argument at an index is taken; requires that there may be one.
  [[nodiscard]] constexpr Parameter at(std::size_t index) const noexcept {
    std::size_t const fixed = std::size_t{_size} - _groupSize;
    if (index < fixed) {
      return _parameters[index];
    }
    // Most groups are of one parameter, and divisions take long.
    return _parameters[_groupSize == 1 ? fixed : fixed + (index - fixed) % _groupSize];
  }

private:
  consteval void readLetter(char letter) {
    switch (letter) {
      case '[':
        _isOptional = true;
        return;
      case '(':
        _repeats = true;
        _groupStart = _size;
        return;
      case ']':
      case ')':
        return;
      default:
        _parameters[_size++] = toParameter(letter);
        _required = static_cast<std::uint8_t>(_required + (_isOptional || _repeats ? 0 : 1));
    }
  }

  static consteval Parameter toParameter(char letter) {
    constexpr std::string_view letters = "ntbverax";
    std::size_t const place = letters.find(letter);
    if (place == std::string_view::npos) {
      throw "an unknown letter in a signature";
    }
    return static_cast<Parameter>(place);
  }

  std::array<Parameter, 12> _parameters{};
  std::uint8_t _size = 0;
  std::uint8_t _required = 0;
  std::uint8_t _groupStart = 0;
  std::uint8_t _groupSize = 0;
  bool _isOptional = false;
  bool _repeats = false;
};

/// What the analysis of formulas must know of a function.
struct FunctionTraits {
  /// The result may change although no argument does.
  bool isVolatile = false;
  /// Called without arguments, it asks for the cell at which the formula is evaluated.
  bool asksPosition = false;
  /// It asks for that cell whatever its arguments are.
  bool dependsOnCell = false;
  /// The result may be a reference to more than one cell.
  bool returnsReference = false;
};

/// One row of the table of functions.
struct FunctionEntry {
  std::string_view name;  ///< in upper case, without prefixes such as `_xlfn.`
  Signature signature;
  /// Never throws but for memory; a spreadsheet error is a value.
  Value (*calculate)(Call& call);
  FunctionTraits traits = {};
};

}  // namespace Zorv::Formulas
