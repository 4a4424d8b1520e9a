// Numbers written in other ways than the decimal one, and their bits.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

constexpr std::string_view digitCharacters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

/// The whole part of a number when it lies from `least` to below `end`. Requires bounds that 64
/// bits hold.
std::optional<std::int64_t> toWhole(double number, double least, double end) noexcept {
  double const whole = std::trunc(number);
  return least <= whole && whole < end ? std::optional(static_cast<std::int64_t>(whole))
                                       : std::nullopt;
}

std::optional<std::int64_t> toRadix(double number) noexcept { return toWhole(number, 2.0, 37.0); }

std::string writeDigits(std::uint64_t number, std::uint64_t radix) {
  std::string text;
  do {
    text += digitCharacters[number % radix];
    number /= radix;
  } while (number != 0);
  std::ranges::reverse(text);
  return text;
}

void padWithZeros(std::string& text, std::size_t length) {
  if (text.size() < length) {
    text.insert(0, length - text.size(), '0');
  }
}

/// BASE(number, radix, length): in digits and letters, with zeros in front up to a length.
Value writeInBase(Call& call) {
  constexpr double endOfLengths = 256.0;
  auto const number = toWhole(call.number(0), 0.0, 0x1p53);
  auto const radix = toRadix(call.number(1));
  auto const length = toWhole(call.number(2, 0.0), 0.0, endOfLengths);
  if (!number || !radix || !length) {
    return notANumber();
  }
  std::string text =
      writeDigits(static_cast<std::uint64_t>(*number), static_cast<std::uint64_t>(*radix));
  padWithZeros(text, static_cast<std::size_t>(*length));
  return call.makeText(text);
}

/// The number that digits of a radix say, or nothing. An empty text is 0.
std::optional<double> readDigits(std::string_view text, std::int64_t radix) noexcept {
  double number = 0.0;
  for (char const c : text) {
    std::size_t const digit = digitCharacters.find(toAsciiUpper(c));
    if (digit >= static_cast<std::size_t>(radix)) {
      return std::nullopt;
    }
    number = number * static_cast<double>(radix) + static_cast<double>(digit);
  }
  return number;
}

/// DECIMAL(text, radix)
Value readInBase(Call& call) {
  constexpr std::size_t longest = 255;
  auto const radix = toRadix(call.number(1));
  std::string_view const text = call.text(0);
  if (!radix || text.size() > longest) {
    return notANumber();
  }
  auto const number = readDigits(text, *radix);
  return number ? Value::number(*number) : notANumber();
}

/// The two's complement numbers of ten digits that engineering functions use.
constexpr std::size_t placesOfComplement = 10;

/// How many of them there are. Requires a radix whose tenth power 64 bits hold.
constexpr std::int64_t countComplements(std::int64_t radix) noexcept {
  std::int64_t count = 1;
  for (std::size_t i = 0; i < placesOfComplement; ++i) {
    count *= radix;
  }
  return count;
}

/// DEC2BIN(number, length), DEC2OCT and DEC2HEX.
template <std::int64_t radix>
Value writeComplement(Call& call) {
  constexpr std::int64_t count = countComplements(radix);
  constexpr std::int64_t half = count / 2;
  auto const number =
      toWhole(call.number(0), static_cast<double>(-half), static_cast<double>(half));
  auto const length = toWhole(call.number(1, 1.0), 1.0, placesOfComplement + 1.0);
  if (!number || !length) {
    return notANumber();
  }
  std::int64_t const complement = *number < 0 ? *number + count : *number;
  std::string text = writeDigits(static_cast<std::uint64_t>(complement), radix);
  if (call.has(1) && *number >= 0) {
    if (text.size() > static_cast<std::size_t>(*length)) {
      return notANumber();
    }
    padWithZeros(text, static_cast<std::size_t>(*length));
  }
  return call.makeText(text);
}

/// BIN2DEC(text), OCT2DEC and HEX2DEC.
template <std::int64_t radix>
Value readComplement(Call& call) {
  std::string_view const text = call.text(0);
  if (text.size() > placesOfComplement) {
    return notANumber();
  }
  auto const number = readDigits(text, radix);
  if (!number) {
    return notANumber();
  }
  constexpr auto count = static_cast<double>(countComplements(radix));
  return Value::number(*number < count / 2.0 ? *number : *number - count);
}

/// The numbers of which bit functions take the bits.
constexpr double endOfBitNumbers = 0x1p48;

std::optional<std::uint64_t> toBits(double number) noexcept {
  bool const isInDomain = 0.0 <= number && number < endOfBitNumbers && std::trunc(number) == number;
  return isInDomain ? std::optional(static_cast<std::uint64_t>(number)) : std::nullopt;
}

template <class Combine>
Value combineBits(Call const& call, Combine const& combine) {
  auto const a = toBits(call.number(0));
  auto const b = toBits(call.number(1));
  return a && b ? Value::number(static_cast<double>(combine(*a, *b))) : notANumber();
}

Value bitAnd(Call& call) {
  return combineBits(call, [](std::uint64_t a, std::uint64_t b) { return a & b; });
}
Value bitOr(Call& call) {
  return combineBits(call, [](std::uint64_t a, std::uint64_t b) { return a | b; });
}
Value bitXor(Call& call) {
  return combineBits(call, [](std::uint64_t a, std::uint64_t b) { return a ^ b; });
}

/// Moves bits to the left, or for a negative distance to the right.
Value shiftBits(double number, double distance) noexcept {
  constexpr double longestDistance = 53.0;
  auto const bits = toBits(number);
  double const whole = std::trunc(distance);
  if (!bits || std::abs(whole) > longestDistance) {
    return notANumber();
  }
  double const shifted = std::floor(std::ldexp(number, static_cast<int>(whole)));
  return shifted < endOfBitNumbers ? Value::number(shifted) : notANumber();
}

Value shiftLeft(Call& call) { return shiftBits(call.number(0), call.number(1)); }
Value shiftRight(Call& call) { return shiftBits(call.number(0), -call.number(1)); }

}  // namespace

std::span<FunctionEntry const> numberBaseFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{
          "BASE", "number:n, base:n, [length:n]", writeInBase,
          "Whole number written in a base from 2 to 36, with zeros before it up to a length."},
      FunctionEntry{"BIN2DEC", "text:t", readComplement<2>,
                    "Number that binary digits stand for, in two's complement."},
      FunctionEntry{"BITAND", "a:n, b:n", bitAnd, "Bits that are set in both numbers."},
      FunctionEntry{"BITLSHIFT", "number:n, count:n", shiftLeft,
                    "Number with its bits moved left."},
      FunctionEntry{"BITOR", "a:n, b:n", bitOr,
                    "Bits that are set in at least one of two numbers."},
      FunctionEntry{"BITRSHIFT", "number:n, count:n", shiftRight,
                    "Number with its bits moved right."},
      FunctionEntry{"BITXOR", "a:n, b:n", bitXor, "Bits that are set in one of two numbers only."},
      FunctionEntry{"DEC2BIN", "number:n, [length:n]", writeComplement<2>,
                    "Whole number in binary digits, in two's complement."},
      FunctionEntry{"DEC2HEX", "number:n, [length:n]", writeComplement<16>,
                    "Whole number in hexadecimal digits, in two's complement."},
      FunctionEntry{"DEC2OCT", "number:n, [length:n]", writeComplement<8>,
                    "Whole number in octal digits, in two's complement."},
      FunctionEntry{"DECIMAL", "text:t, base:n", readInBase,
                    "Number that digits in a base from 2 to 36 stand for."},
      FunctionEntry{"HEX2DEC", "text:t", readComplement<16>,
                    "Number that hexadecimal digits stand for, in two's complement."},
      FunctionEntry{"OCT2DEC", "text:t", readComplement<8>,
                    "Number that octal digits stand for, in two's complement."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
