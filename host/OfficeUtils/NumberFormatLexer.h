#pragma once

#include <string_view>

#include "OfficeUtils/NumberFormatCode.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

/// Takes the text of a number format apart. Borrows the text.
class Lexer {
public:
  explicit Lexer(std::string_view code) noexcept : _rest(code) {}

  /// Reads one section up to its end: the tokens, as they are written, the condition and the
  /// locale. False where the text is no format.
  [[nodiscard]] bool readSection(Section& section);

  /// Goes on behind the semicolon at the end of a section, if one is there.
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
