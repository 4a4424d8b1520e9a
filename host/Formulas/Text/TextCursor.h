#pragma once

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

/// A whole number as it is written.
struct Figures {
  int value = 0;
  std::size_t length = 0;

  [[nodiscard]] bool isYear() const noexcept { return length == 4; }
};

/// Walks along a text that people typed and takes its parts. Borrows the text.
class TextCursor {
public:
  explicit TextCursor(std::string_view text) noexcept : _rest(text) {}

  [[nodiscard]] std::string_view rest() const noexcept { return _rest; }
  [[nodiscard]] bool isAtEnd() const noexcept { return _rest.empty(); }
  [[nodiscard]] bool isAtDigit() const noexcept {
    return !_rest.empty() && isAsciiDigit(_rest.front());
  }

  void skipSpaces() noexcept {
    while (!_rest.empty() && isSpace(_rest.front())) {
      _rest.remove_prefix(1);
    }
  }

  /// Takes a character if it is there.
  bool take(char c) noexcept {
    bool const isThere = _rest.starts_with(c);
    _rest.remove_prefix(isThere ? 1 : 0);
    return isThere;
  }

  /// Takes the next character. Requires that the end is not reached.
  char takeCharacter() noexcept {
    char const c = _rest.front();
    _rest.remove_prefix(1);
    return c;
  }

  /// Takes a number of at most five digits.
  [[nodiscard]] std::optional<Figures> takeFigures() noexcept {
    constexpr std::size_t mostDigits = 5;
    std::size_t length = 0;
    while (length < _rest.size() && isAsciiDigit(_rest[length])) {
      ++length;
    }
    if (length == 0 || length > mostDigits) {
      return std::nullopt;
    }
    Figures figures{0, length};
    std::from_chars(_rest.data(), _rest.data() + length, figures.value);
    _rest.remove_prefix(length);
    return figures;
  }

  /// Takes letters; nothing where there are none.
  std::string_view takeWord() noexcept {
    std::size_t length = 0;
    while (length < _rest.size() &&
           (isAsciiLetter(_rest[length]) || isBeyondAscii(_rest[length]))) {
      ++length;
    }
    std::string_view const word = _rest.substr(0, length);
    _rest.remove_prefix(length);
    return word;
  }

private:
  std::string_view _rest;
};

}  // namespace Zorv::Formulas
