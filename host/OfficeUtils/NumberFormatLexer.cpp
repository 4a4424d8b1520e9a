#include "OfficeUtils/NumberFormatLexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <unicode/uloc.h>

#include "Utils/CaseFolding.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

namespace {

/// `word` is in lower case.
bool beginsWith(std::string_view text, std::string_view word) noexcept {
  return text.size() >= word.size() && std::ranges::equal(text.substr(0, word.size()), word, {},
                                                          [](char c) { return toAsciiLower(c); });
}

void addLiteral(Section& section, std::string_view text) {
  std::string literal(text);
  std::erase(literal, fillMark);
  section.tokens.push_back({.kind = TokenKind::Literal, .text = std::move(literal)});
}

/// Of several fills, the last one counts.
void addFill(Section& section, std::string_view character) {
  std::erase_if(section.tokens, [](Token const& token) { return token.kind == TokenKind::Fill; });
  section.tokens.push_back({.kind = TokenKind::Fill, .text = std::string(1, fillMark)});
  section.fill = character;
}

/// Token of a single character.
std::optional<TokenKind> findSymbol(char c) noexcept {
  switch (c) {
    case '0':
    case '#':
    case '?':
      return TokenKind::Digit;
    case '.':
      return TokenKind::Point;
    case ',':
      return TokenKind::Comma;
    case '%':
      return TokenKind::Percent;
    case '/':
      return TokenKind::Slash;
    case '@':
      return TokenKind::AnyText;
    default:
      return std::nullopt;
  }
}

/// Token of a date or time letter.
std::optional<TokenKind> findDateLetter(char letter) noexcept {
  switch (letter) {
    case 'y':
    case 'e':
      return TokenKind::Year;
    case 'm':
      return TokenKind::Month;
    case 'd':
      return TokenKind::Day;
    case 'h':
      return TokenKind::Hour;
    case 's':
      return TokenKind::Second;
    default:
      return std::nullopt;
  }
}

/// Token of elapsed time, such as `[h]` or `[mm]`, which does not wrap at the next larger unit.
std::optional<TokenKind> findElapsed(std::string_view content) noexcept {
  char const letter = content.empty() ? '\0' : toAsciiLower(content.front());
  if (!std::ranges::all_of(content, [&](char c) { return toAsciiLower(c) == letter; })) {
    return std::nullopt;
  }
  switch (letter) {
    case 'h':
      return TokenKind::ElapsedHours;
    case 'm':
      return TokenKind::ElapsedMinutes;
    case 's':
      return TokenKind::ElapsedSeconds;
    default:
      return std::nullopt;
  }
}

struct ComparisonSign {
  std::string_view sign;
  Comparison comparison;
};

// Longer signs first, since they begin with shorter ones.
constexpr std::array comparisonSigns = {
    ComparisonSign{"<=", Comparison::LessOrEqual}, ComparisonSign{">=", Comparison::GreaterOrEqual},
    ComparisonSign{"<>", Comparison::NotEqual},    ComparisonSign{"<", Comparison::Less},
    ComparisonSign{">", Comparison::Greater},      ComparisonSign{"=", Comparison::Equal},
};

std::optional<Condition> readCondition(std::string_view content) noexcept {
  auto const* const sign = std::ranges::find_if(comparisonSigns, [&](ComparisonSign const& known) {
    return content.starts_with(known.sign);
  });
  if (sign == comparisonSigns.end()) {
    return std::nullopt;
  }
  content.remove_prefix(sign->sign.size());
  Condition condition{.comparison = sign->comparison};
  auto const* const end = content.data() + content.size();
  auto const read = std::from_chars(content.data(), end, condition.operand);
  return read.ec == std::errc() && read.ptr == end ? std::optional(condition) : std::nullopt;
}

/// The number of a colour such as `Red` or `Color10`; 0 for another word.
unsigned readColour(std::string_view content) noexcept {
  constexpr std::array<std::string_view, 8> names{"black", "white",  "red",     "green",
                                                  "blue",  "yellow", "magenta", "cyan"};
  constexpr std::string_view numbered = "color";
  constexpr unsigned last = 56;
  for (unsigned i = 0; i < names.size(); ++i) {
    if (content.size() == names[i].size() && beginsWith(content, names[i])) {
      return i + 1;
    }
  }
  unsigned number = 0;
  if (beginsWith(content, numbered)) {
    content.remove_prefix(numbered.size());
    content.remove_prefix(std::min(content.find_first_not_of(' '), content.size()));
    std::from_chars(content.data(), content.data() + content.size(), number);
  }
  return number <= last ? number : 0;
}

/// The ICU name of the locale with a hexadecimal identifier; empty for an unknown one. The upper
/// digits select calendars and numerals, not the language.
std::string findLocale(std::string_view digits) {
  constexpr int hexadecimal = 16;
  constexpr std::uint32_t languageBits = 0xFFFF;
  std::uint32_t number = 0;
  auto const* const end = digits.data() + digits.size();
  auto const read = std::from_chars(digits.data(), end, number, hexadecimal);
  if (read.ec != std::errc() || read.ptr != end) {
    return {};
  }
  std::array<char, ULOC_FULLNAME_CAPACITY> name{};
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t const length = uloc_getLocaleForLCID(
      number & languageBits, name.data(), static_cast<std::int32_t>(name.size()), &status);
  // Identifiers of the system's own formats have no language.
  std::string const found(name.data(), static_cast<std::size_t>(std::max(length, 0)));
  return U_SUCCESS(status) != 0 && found != "root" ? found : std::string();
}

/// Reads `$€-407`: a text and a locale, both optional.
void readCurrency(Section& section, std::string_view content) {
  std::size_t const dash = content.rfind('-');
  addLiteral(section, content.substr(0, dash));
  if (dash != std::string_view::npos) {
    section.locale = findLocale(content.substr(dash + 1));
  }
}

}  // namespace

bool Lexer::readSection(Section& section) {
  while (!_rest.empty() && _rest.front() != ';') {
    if (!readToken(section)) {
      return false;
    }
  }
  return true;
}

bool Lexer::takeSeparator() noexcept {
  if (_rest.empty()) {
    return false;
  }
  _rest.remove_prefix(1);
  return true;
}

bool Lexer::readToken(Section& section) {
  char const c = _rest.front();
  switch (c) {
    case '"':
      return readQuoted(section);
    case '[':
      return readBrackets(section);
    case '\\':
      _rest.remove_prefix(1);
      addLiteral(section, takeCharacter());
      return true;
    case '_':
      // A space as wide as the next character.
      _rest.remove_prefix(1);
      takeCharacter();
      addLiteral(section, " ");
      return true;
    case '*':
      // Repeats the next character to the width of the cell.
      _rest.remove_prefix(1);
      if (std::string_view const character = takeCharacter(); !character.empty()) {
        addFill(section, character);
      }
      return true;
    default:
      break;
  }
  if (readWord(section) || readExponent(section) || readSecondFraction(section)) {
    return true;
  }
  auto const symbol = findSymbol(c);
  std::string_view const character = takeCharacter();
  if (c != fillMark) {
    section.tokens.push_back(
        {.kind = symbol.value_or(TokenKind::Literal), .symbol = c, .text = std::string(character)});
  }
  return true;
}

bool Lexer::readQuoted(Section& section) {
  std::size_t const end = _rest.find('"', 1);
  if (end == std::string_view::npos) {
    return false;
  }
  addLiteral(section, _rest.substr(1, end - 1));
  _rest.remove_prefix(end + 1);
  return true;
}

/// Reads a condition, elapsed time, a colour, or a currency with its locale. Ignores other words.
bool Lexer::readBrackets(Section& section) {
  std::size_t const end = _rest.find(']');
  if (end == std::string_view::npos) {
    return false;
  }
  std::string_view const content = _rest.substr(1, end - 1);
  _rest.remove_prefix(end + 1);
  if (auto const elapsed = findElapsed(content)) {
    section.tokens.push_back({.kind = *elapsed, .count = content.size()});
  } else if (content.starts_with('$')) {
    readCurrency(section, content.substr(1));
  } else if (auto const condition = readCondition(content)) {
    section.condition = condition;
  } else if (auto const colour = readColour(content)) {
    section.colour = colour;
  }
  return true;
}

bool Lexer::readWord(Section& section) {
  constexpr std::string_view general = "general";
  if (beginsWith(_rest, general)) {
    section.tokens.push_back({.kind = TokenKind::General});
    _rest.remove_prefix(general.size());
    return true;
  }
  for (std::string_view const halves : {"am/pm", "a/p"}) {
    if (beginsWith(_rest, halves)) {
      section.tokens.push_back(
          {.kind = TokenKind::HalfOfDay, .text = std::string(_rest.substr(0, halves.size()))});
      _rest.remove_prefix(halves.size());
      return true;
    }
  }
  // East Asian formats use the letter a for weekdays.
  if (beginsWith(_rest, "aaa")) {
    readLetters(section, TokenKind::Day, 'a');
    return true;
  }
  char const letter = toAsciiLower(_rest.front());
  bool const isExponent = letter == 'e' && _rest.size() > 1 && (_rest[1] == '+' || _rest[1] == '-');
  auto const kind = isExponent ? std::nullopt : findDateLetter(letter);
  if (kind) {
    readLetters(section, *kind, letter);
  }
  return kind.has_value();
}

void Lexer::readLetters(Section& section, TokenKind kind, char letter) {
  auto const* const end =
      std::ranges::find_if(_rest, [&](char c) { return toAsciiLower(c) != letter; });
  auto const count = static_cast<std::size_t>(end - _rest.begin());
  // The letter e is the full year for any number of letters.
  constexpr std::size_t wholeYear = 4;
  section.tokens.push_back({.kind = kind, .count = letter == 'e' ? wholeYear : count});
  _rest.remove_prefix(count);
}

bool Lexer::readExponent(Section& section) {
  bool const isExponent = toAsciiLower(_rest.front()) == 'e' && _rest.size() > 1 &&
                          (_rest[1] == '+' || _rest[1] == '-');
  if (isExponent) {
    section.tokens.push_back({.kind = TokenKind::Exponent, .symbol = _rest[1], .text = "E"});
    _rest.remove_prefix(2);
  }
  return isExponent;
}

/// Reads a point and zeros directly after seconds.
bool Lexer::readSecondFraction(Section& section) {
  auto const isSeconds = [](Token const& token) {
    return token.kind == TokenKind::Second || token.kind == TokenKind::ElapsedSeconds;
  };
  if (section.tokens.empty() || !isSeconds(section.tokens.back()) || !_rest.starts_with(".0")) {
    return false;
  }
  std::size_t const end = std::min(_rest.find_first_not_of('0', 1), _rest.size());
  section.tokens.push_back({.kind = TokenKind::SecondFraction, .count = end - 1});
  _rest.remove_prefix(end);
  return true;
}

/// Takes one UTF-8 character; empty at the end.
std::string_view Lexer::takeCharacter() noexcept {
  std::size_t length = std::min<std::size_t>(_rest.size(), 1);
  constexpr unsigned continuationMask = 0xC0;
  constexpr unsigned continuation = 0x80;
  while (length < _rest.size() &&
         (static_cast<unsigned char>(_rest[length]) & continuationMask) == continuation) {
    ++length;
  }
  std::string_view const character = _rest.substr(0, length);
  _rest.remove_prefix(length);
  return character;
}

}  // namespace Zorv::OfficeUtils::NumberFormatCode
