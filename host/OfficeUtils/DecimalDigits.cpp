#include "OfficeUtils/DecimalDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Zorv::OfficeUtils {

DecimalDigits::DecimalDigits(double number) noexcept {
  // "d.dddddddddddddde+ddd"
  std::array<char, 32> text{};
  auto const written = std::to_chars(text.data(), text.data() + text.size(), std::abs(number),
                                     std::chars_format::scientific, maximalCount - 1);
  _digits[0] = text[0];
  std::copy_n(text.data() + 2, maximalCount - 1, _digits.data() + 1);
  char const* exponent = text.data() + maximalCount + 2;
  exponent += *exponent == '+' ? 1 : 0;
  std::from_chars(exponent, written.ptr, _firstPlace);
  _count = maximalCount;
  dropZeros();
}

void DecimalDigits::dropZeros() noexcept {
  while (_count != 0 && _digits[static_cast<std::size_t>(_count - 1)] == '0') {
    --_count;
  }
}

void DecimalDigits::roundTo(int count) noexcept {
  if (count >= _count) {
    return;
  }
  if (count < 0) {
    _count = 0;
    return;
  }
  bool const roundsUp = _digits[static_cast<std::size_t>(count)] >= '5';
  _count = count;
  if (!roundsUp) {
    dropZeros();
    return;
  }
  while (_count != 0 && _digits[static_cast<std::size_t>(_count - 1)] == '9') {
    --_count;
  }
  if (_count == 0) {
    _digits[0] = '1';
    _count = 1;
    ++_firstPlace;
  } else {
    ++_digits[static_cast<std::size_t>(_count - 1)];
  }
}

int DecimalDigits::countWhole() const noexcept {
  return isZero() ? 0 : std::max(_firstPlace + 1, 0);
}

int DecimalDigits::countFraction() const noexcept {
  return isZero() ? 0 : std::max(_count - 1 - _firstPlace, 0);
}

char DecimalDigits::at(int place) const noexcept {
  int const index = _firstPlace - place;
  return 0 <= index && index < _count ? _digits[static_cast<std::size_t>(index)] : '0';
}

}  // namespace Zorv::OfficeUtils
