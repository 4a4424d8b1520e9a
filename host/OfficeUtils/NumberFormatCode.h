#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The inside of compiled number formats.
namespace Zorv::OfficeUtils::NumberFormatCode {

enum class TokenKind : std::uint8_t {
  Literal,
  General,
  AnyText,  ///< `@`
  Digit,    ///< `0`, `#` or `?`
  Point,
  Comma,  ///< only until the section is read
  Percent,
  Exponent,
  Slash,
  // Of dates and times, from here on.
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
  std::size_t count = 1;  ///< how often the letter stands there
  char symbol = 0;        ///< the placeholder of a digit, or the sign of an exponent
  std::string text = {};  ///< a literal; a half of the day as it is written
};

enum class SectionKind : std::uint8_t { Number, General, DateTime, Text };

enum class Comparison : std::uint8_t {
  Less,
  LessOrEqual,
  Equal,
  NotEqual,
  GreaterOrEqual,
  Greater
};

/// Which numbers a section takes.
struct Condition {
  Comparison comparison = Comparison::Equal;
  double operand = 0.0;

  [[nodiscard]] bool holds(double number) const noexcept;
  /// Whether no number fulfils it but negative ones, which are then written without their sign.
  [[nodiscard]] bool isOfNegatives() const noexcept;
};

/// A number written as a fraction: the tokens that make it up, and the denominator where one is
/// given.
struct FractionLayout {
  std::size_t numerator = 0;  ///< the first token of it; those before are the whole part's
  std::size_t slash = 0;
  std::size_t end = 0;  ///< behind the denominator
  bool hasWhole = false;
  double fixedDenominator = 0.0;  ///< 0 where the best one is to be found
};

struct Section {
  SectionKind kind = SectionKind::Number;
  std::vector<Token> tokens = {};
  std::optional<Condition> condition = {};
  std::string locale = {};  ///< of the names in dates; empty for that of the context
  // Of numbers.
  bool hasGroups = false;
  int powerOfTen = 0;  ///< by which numbers are multiplied
  std::optional<std::size_t> exponent = {};
  std::optional<FractionLayout> fraction = {};
};

}  // namespace Zorv::OfficeUtils::NumberFormatCode
