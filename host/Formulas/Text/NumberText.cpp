#include "Formulas/Text/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

bool takePrefix(std::string_view& text, std::string_view prefix) noexcept {
  if (prefix.empty() || !text.starts_with(prefix)) {
    return false;
  }
  text.remove_prefix(prefix.size());
  return true;
}

bool takeSuffix(std::string_view& text, std::string_view suffix) noexcept {
  if (!text.ends_with(suffix)) {
    return false;
  }
  text.remove_suffix(suffix.size());
  return true;
}

/// A number in the form that the language's own reader knows, without separators.
class PlainNumber {
public:
  /// False where the text is no number, or longer than any that people write.
  bool read(std::string_view text, OfficeUtils::LocaleContext const& locale) {
    bool inFraction = false;
    bool hasDigits = false;
    while (!text.empty() && toAsciiUpper(text.front()) != 'E') {
      if (isAsciiDigit(text.front())) {
        hasDigits = true;
        if (!append(text.front())) {
          return false;
        }
        text.remove_prefix(1);
      } else if (!inFraction && takePrefix(text, locale.getDecimalSeparator())) {
        inFraction = true;
        if (!append('.')) {
          return false;
        }
      } else if (inFraction || !hasDigits || !takeGroup(text, locale)) {
        return false;
      }
    }
    return hasDigits && appendExponent(text);
  }

  [[nodiscard]] std::optional<double> toNumber() const noexcept {
    double number = 0.0;
    char const* const end = _digits.data() + _size;
    auto const read = std::from_chars(_digits.data(), end, number);
    bool const isRead = read.ec == std::errc() && read.ptr == end;
    return isRead ? std::optional(number) : std::nullopt;
  }

private:
  /// A separator of groups, which three digits must follow.
  static bool takeGroup(std::string_view& text, OfficeUtils::LocaleContext const& locale) {
    if (!takePrefix(text, locale.getGroupingSeparator())) {
      return false;
    }
    std::size_t digits = 0;
    while (digits < text.size() && isAsciiDigit(text[digits])) {
      ++digits;
    }
    return digits == 3;
  }

  bool appendExponent(std::string_view text) {
    if (text.size() > 1 && text[1] == '+') {
      return append('E') && appendAll(text.substr(2)) && text.size() > 2;
    }
    return appendAll(text);
  }

  bool appendAll(std::string_view text) {
    for (char const c : text) {
      if (!append(c)) {
        return false;
      }
    }
    return true;
  }

  bool append(char c) noexcept {
    if (_size == _digits.size()) {
      return false;
    }
    _digits[_size++] = c;
    return true;
  }

  std::array<char, 128> _digits{};
  std::size_t _size = 0;
};

}  // namespace

std::optional<double> readNumber(std::string_view text, OfficeUtils::LocaleContext const& locale) {
  text = trimSpaces(text);
  bool isNegative = takePrefix(text, "-");
  if (!isNegative) {
    takePrefix(text, "+");
  }
  double const factor = takeSuffix(text, "%") ? 0.01 : 1.0;
  text = trimSpaces(text);
  PlainNumber plain;
  if (!plain.read(text, locale)) {
    return std::nullopt;
  }
  auto const number = plain.toNumber();
  if (!number) {
    return std::nullopt;
  }
  double const scaled = factor == 1.0 ? *number : *number / 100.0;
  return isNegative ? -scaled : scaled;
}

}  // namespace Zorv::Formulas
