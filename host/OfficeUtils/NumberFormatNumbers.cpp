#include "OfficeUtils/NumberFormatNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

#include "OfficeUtils/DecimalDigits.h"
#include "OfficeUtils/RationalApproximation.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

namespace {

using Tokens = std::span<Token const>;

int countDigits(Tokens tokens) noexcept {
  return static_cast<int>(std::ranges::count_if(tokens, isDigit));
}

Tokens untilPoint(Tokens tokens) noexcept {
  auto const point = std::ranges::find(tokens, TokenKind::Point, &Token::kind);
  return tokens.first(static_cast<std::size_t>(point - tokens.begin()));
}

/// NumberWriter of a number's digits into the placeholders of a section.
class NumberWriter {
public:
  NumberWriter(Section const& section, LocaleContext const& locale) noexcept
      : _section(&section), _locale(&locale) {}

  [[nodiscard]] std::string const& text() const noexcept { return _text; }

  /// Writes the integer part and the fraction. Requires digits rounded to the number of fraction
  /// placeholders. Each placeholder takes one digit; the first one also takes all digits before.
  void writeDecimal(Tokens tokens, DecimalDigits const& digits) {
    Tokens const whole = untilPoint(tokens);
    writeWhole(whole, digits);
    if (whole.size() == tokens.size()) {
      return;
    }
    if (countDigits(whole) == 0) {
      writeDigits(digits, digits.countWhole() - 1, 0);
    }
    _text += _locale->getDecimalSeparator();
    int place = 0;
    for (Token const& token : tokens.subspan(whole.size() + 1)) {
      if (isDigit(token)) {
        --place;
        writeDigit(token, digits, place, -place <= digits.countFraction());
      } else {
        writeOther(token);
      }
    }
  }

  void writeWhole(Tokens tokens, DecimalDigits const& digits) {
    int place = countDigits(tokens);
    bool isFirst = true;
    for (Token const& token : tokens) {
      if (!isDigit(token)) {
        writeOther(token);
        continue;
      }
      if (std::exchange(isFirst, false)) {
        writeDigits(digits, digits.countWhole() - 1, place);
      }
      --place;
      writeDigit(token, digits, place, place < digits.countWhole());
    }
  }

  void writeOther(Token const& token) {
    _text +=
        token.kind == TokenKind::Percent ? std::string_view("%") : std::string_view(token.text);
  }
  void write(std::string_view text) { _text += text; }
  void writeSpaces(std::size_t count) { _text.append(count, ' '); }

private:
  /// Writes all digits from one place down to another.
  void writeDigits(DecimalDigits const& digits, int firstPlace, int lastPlace) {
    for (int place = firstPlace; place >= lastPlace; --place) {
      _text += digits.at(place);
      writeSeparator(place, _locale->getGroupingSeparator());
    }
  }

  /// Writes one placeholder: a digit, or the substitute for an insignificant zero.
  void writeDigit(Token const& token, DecimalDigits const& digits, int place, bool isSignificant) {
    if (isSignificant || token.symbol == '0') {
      _text += digits.at(place);
      writeSeparator(place, _locale->getGroupingSeparator());
    } else if (token.symbol == '?') {
      _text += ' ';
      writeSeparator(place, " ");
    }
  }

  void writeSeparator(int place, std::string_view separator) {
    if (_section->hasGroups && place > 0 && place % 3 == 0) {
      _text += separator;
    }
  }

  Section const* _section;
  LocaleContext const* _locale;
  std::string _text;
};

/// Writes the exponent into the placeholders after its sign.
void writeExponent(NumberWriter& writer, Tokens tokens, int exponent) {
  Token const& sign = tokens.front();
  writer.write("E");
  if (exponent < 0) {
    writer.write("-");
  } else if (sign.symbol == '+') {
    writer.write("+");
  }
  writer.writeWhole(tokens.subspan(1), DecimalDigits(std::abs(exponent)));
}

/// Writes a number in scientific notation. With several placeholders before the decimal point, the
/// exponent is a multiple of their count.
void writeScientific(NumberWriter& writer, Section const& section, DecimalDigits digits) {
  Tokens const tokens = section.tokens;
  Tokens const mantissa = tokens.first(*section.exponent);
  Tokens const whole = untilPoint(mantissa);
  int const step = std::max(countDigits(whole), 1);
  int const fractionDigits = countDigits(mantissa) - countDigits(whole);
  auto const toExponent = [&](DecimalDigits const& number) {
    int const place = number.firstPlace();
    return (place - (place % step + step) % step);
  };
  int exponent = toExponent(digits);
  digits.roundToFraction(fractionDigits - exponent);
  // Rounding may have carried into a new digit.
  exponent = toExponent(digits);
  digits.shift(-exponent);
  writer.writeDecimal(mantissa, digits);
  writeExponent(writer, tokens.subspan(*section.exponent), exponent);
}

/// The number, or the largest finite one in place of infinity.
double toFinite(double number) noexcept {
  return std::min(number, std::numeric_limits<double>::max());
}

/// NumberWriter of a number as a fraction, with a separate integer part if the format has one.
class FractionWriter {
public:
  FractionWriter(NumberWriter& writer, Section const& section) noexcept
      : _writer(&writer), _tokens(section.tokens), _layout(*section.fraction) {}

  void write(double number) {
    double whole = _layout.hasWhole ? std::floor(number) : 0.0;
    Ratio ratio = approximate(number - whole);
    if (_layout.hasWhole && ratio.numerator == ratio.denominator) {
      whole += 1.0;
      ratio.numerator = 0.0;
    }
    bool const isShown = !_layout.hasWhole || ratio.numerator != 0.0;
    writeWhole(whole, isShown);
    if (isShown) {
      writeNumerator(ratio.numerator);
      writeDenominator(ratio.denominator);
    } else {
      _writer->writeSpaces(_layout.end - _layout.numerator);
    }
    for (Token const& token : _tokens.subspan(_layout.end)) {
      _writer->writeOther(token);
    }
  }

private:
  [[nodiscard]] Ratio approximate(double number) const noexcept {
    constexpr std::size_t mostPlaces = 7;
    if (_layout.fixedDenominator != 0.0) {
      return {toFinite(std::round(number * _layout.fixedDenominator)), _layout.fixedDenominator};
    }
    std::size_t const places = std::min(_layout.end - _layout.slash - 1, mostPlaces);
    return findNearestRatio(number, std::pow(10.0, static_cast<double>(places)) - 1.0);
  }

  /// Writes the integer part. A zero is shown only if there is no fraction.
  void writeWhole(double whole, bool hasFraction) {
    Tokens const tokens = _tokens.first(_layout.numerator);
    if (whole != 0.0 || hasFraction) {
      _writer->writeWhole(tokens, DecimalDigits(whole));
      return;
    }
    int rest = countDigits(tokens);
    for (Token const& token : tokens) {
      bool const isLast = isDigit(token) && --rest == 0;
      isLast ? _writer->write("0") : writeOptional(token);
    }
  }

  void writeOptional(Token const& token) {
    if (!isDigit(token)) {
      _writer->writeOther(token);
    } else if (token.symbol != '#') {
      _writer->write(token.symbol == '0' ? "0" : " ");
    }
  }

  void writeNumerator(double numerator) {
    Tokens const tokens = _tokens.subspan(_layout.numerator, _layout.slash - _layout.numerator);
    if (numerator == 0.0) {
      _writer->writeSpaces(tokens.size() - 1);
      _writer->write("0");
      return;
    }
    _writer->writeWhole(tokens, DecimalDigits(numerator));
  }

  /// Writes the denominator aligned to the left, so that the text after it aligns across cells.
  void writeDenominator(double denominator) {
    _writer->write("/");
    DecimalDigits const digits(denominator);
    int const places = static_cast<int>(_layout.end - _layout.slash) - 1;
    std::string text;
    for (int place = digits.countWhole() - 1; place >= 0; --place) {
      text += digits.at(place);
    }
    int const missing = places - static_cast<int>(text.size());
    char const symbol = _tokens[_layout.slash + 1].symbol;
    if (missing > 0 && symbol != '#') {
      symbol == '0' ? text.insert(0, static_cast<std::size_t>(missing), '0')
                    : text.append(static_cast<std::size_t>(missing), ' ');
    }
    _writer->write(text);
  }

  NumberWriter* _writer;
  Tokens _tokens;
  FractionLayout _layout;
};

/// A number in plain decimal notation, without trailing zeros.
std::string writePlain(DecimalDigits const& digits, LocaleContext const& locale) {
  std::string text;
  for (int place = std::max(digits.countWhole() - 1, 0); place >= 0; --place) {
    text += digits.at(place);
  }
  int const fraction = digits.countFraction();
  if (fraction != 0) {
    text += locale.getDecimalSeparator();
  }
  for (int place = -1; place >= -fraction; --place) {
    text += digits.at(place);
  }
  return text;
}

/// A number with one digit before the point and an exponent of at least two digits.
std::string writeWithExponent(DecimalDigits digits, int significant, LocaleContext const& locale) {
  digits.roundToSignificant(significant);
  int const exponent = digits.firstPlace();
  digits.shift(-exponent);
  std::string const figures = std::to_string(std::abs(exponent));
  return writePlain(digits, locale) + (exponent < 0 ? "E-" : "E+") +
         (figures.size() < 2 ? "0" : "") + figures;
}

constexpr int ordinaryDigits = 10;  // next to the decimal point
constexpr int ordinaryCharacters = 11;
constexpr int scientificDigits = 6;

/// True for numbers that the general format writes without an exponent where there is room.
bool isPlain(DecimalDigits const& digits) noexcept {
  constexpr int leastPlace = -4;
  return digits.firstPlace() < ordinaryCharacters && digits.firstPlace() >= leastPlace;
}

/// Digits after the decimal point in that many characters, the separator among them.
int countDecimals(DecimalDigits const& digits, int characters) noexcept {
  return std::max(std::min(ordinaryDigits, characters - 1) - std::max(digits.countWhole(), 1), 0);
}

/// Characters of a text in UTF-8.
unsigned countCharacters(std::string_view text) noexcept {
  constexpr unsigned continuationMask = 0xC0;
  constexpr unsigned continuation = 0x80;
  return static_cast<unsigned>(std::ranges::count_if(text, [](char c) {
    return (static_cast<unsigned char>(c) & continuationMask) != continuation;
  }));
}

}  // namespace

std::string writeNumber(Section const& section, double number, LocaleContext const& locale) {
  NumberWriter writer(section, locale);
  DecimalDigits digits(number);
  digits.shift(section.powerOfTen);
  Tokens const tokens = section.tokens;
  if (section.fraction) {
    FractionWriter(writer, section).write(toFinite(number * std::pow(10.0, section.powerOfTen)));
  } else if (section.exponent) {
    writeScientific(writer, section, digits);
  } else {
    digits.roundToFraction(countDigits(tokens) - countDigits(untilPoint(tokens)));
    writer.writeDecimal(tokens, digits);
  }
  return writer.text();
}

std::string writeGeneral(double number, LocaleContext const& locale) {
  DecimalDigits digits(number);
  if (!isPlain(digits)) {
    return writeWithExponent(digits, scientificDigits, locale);
  }
  digits.roundToFraction(countDecimals(digits, ordinaryCharacters));
  return writePlain(digits, locale);
}

std::optional<std::string> writeGeneral(double number, LocaleContext const& locale,
                                        unsigned mostCharacters) {
  if (mostCharacters >= static_cast<unsigned>(ordinaryCharacters)) {
    return writeGeneral(number, locale);
  }
  auto const most = static_cast<int>(mostCharacters);
  auto const fits = [&](std::string const& text) {
    return countCharacters(text) <= mostCharacters;
  };
  DecimalDigits const digits(number);
  DecimalDigits rounded = digits;
  rounded.roundToFraction(countDecimals(digits, most));
  bool const vanishes = rounded.isZero() && !digits.isZero();
  std::string plain = writePlain(rounded, locale);
  if (isPlain(digits) && !vanishes && fits(plain)) {
    return plain;
  }
  for (int significant = std::min(scientificDigits, most); significant > 0; --significant) {
    if (std::string text = writeWithExponent(digits, significant, locale); fits(text)) {
      return text;
    }
  }
  return vanishes && fits(plain) ? std::optional(std::move(plain)) : std::nullopt;
}

}  // namespace Zorv::OfficeUtils::NumberFormatCode
