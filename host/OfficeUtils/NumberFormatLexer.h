#pragma once

#include <string_view>

#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// Lexer of a number format's text. Borrows the text.
class Lexer {
public:
  explicit Lexer(std::string_view code) noexcept : _rest(code) {}

  /// Reads one section to its end: its tokens, its condition and its locale. False where the text
  /// is no number format.
  [[nodiscard]] bool readSection(Section& section);

  /// Skips the semicolon after a section; false if there is none.
  [[nodiscard]] bool takeSeparator() noexcept;

private:
  bool readToken(Section& section);
  bool readQuoted(Section& section);
  bool readBrackets(Section& section);
  bool readWord(Section& section);
  void readLetters(Section& section, TokenKind kind, char letter);
  bool readExponent(Section& section);
  bool readSecondFraction(Section& section);
  std::string_view takeCharacter() noexcept;

  std::string_view _rest;
};

}  // namespace Zorv::OfficeUtils::NumberFormatCode
