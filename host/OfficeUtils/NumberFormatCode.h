#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Parsed form of number formats.
namespace Zorv::OfficeUtils::NumberFormatCode {

enum class TokenKind : std::uint8_t {
  Literal,
  General,
  AnyText,  ///< `@`
  Fill,     ///< `*x`: its text is the mark at which the section's fill goes
  Digit,    ///< `0`, `#` or `?`
  Point,
  Comma,  ///< only while the section is parsed
  Percent,
  Exponent,
  Slash,
  // Dates and times.
  Year,
  Month,
  Day,
  Hour,
  Minute,
  Second,
  SecondFraction,
  HalfOfDay,
  ElapsedHours,
  ElapsedMinutes,
  ElapsedSeconds,
};

struct Token {
  TokenKind kind = TokenKind::Literal;
  std::size_t count = 1;  ///< repetitions of the letter
  char symbol = 0;        ///< the digit's placeholder, or the exponent's sign
  std::string text = {};  ///< the literal, or `AM/PM` or `A/P` as written
};

/// Mark of the place of a fill in a text that is being written. Literals do not contain it.
inline constexpr char fillMark = '\0';

[[nodiscard]] inline bool isDigit(Token const& token) noexcept {
  return token.kind == TokenKind::Digit;
}

enum class SectionKind : std::uint8_t { Number, General, DateTime, Text };

enum class Comparison : std::uint8_t {
  Less,
  LessOrEqual,
  Equal,
  NotEqual,
  GreaterOrEqual,
  Greater
};

/// Condition on the numbers that a section formats.
struct Condition {
  Comparison comparison = Comparison::Equal;
  double operand = 0.0;

  [[nodiscard]] bool holds(double number) const noexcept;
  /// True if only negative numbers fulfil the condition. They are written without their sign.
  [[nodiscard]] bool isOfNegatives() const noexcept;
};

/// Token indices of a number written as a fraction.
struct FractionLayout {
  std::size_t numerator = 0;  ///< first token of the numerator; the whole part precedes it
  std::size_t slash = 0;
  std::size_t end = 0;  ///< after the denominator
  bool hasWhole = false;
  double fixedDenominator = 0.0;  ///< 0 unless the format names one
};

struct Section {
  SectionKind kind = SectionKind::Number;
  std::vector<Token> tokens = {};
  std::optional<Condition> condition = {};
  std::string locale = {};  ///< locale of date names; empty for the one of the context
  unsigned colour = 0;      ///< number of the text's colour, from 1; 0 for none
  std::string fill = {};    ///< the character of the last `*x`, in UTF-8; empty for none
  // Numbers only.
  bool hasGroups = false;
  int powerOfTen = 0;  ///< scale of the number: 2 for percent, -3 for each scaling comma
  std::optional<std::size_t> exponent = {};
  std::optional<FractionLayout> fraction = {};
};

}  // namespace Zorv::OfficeUtils::NumberFormatCode
