#pragma once

#include <array>
#include <cstddef>

namespace Zorv::OfficeUtils {

/// The decimal digits of a number, as spreadsheets show them: 15 significant ones, whatever the
/// sign.
///
/// Places count from the decimal point: 0 is that of the ones, 1 that of the tens, -1 that of the
/// tenths. A plain value.
class DecimalDigits {
public:
  /// Requires a finite number.
  explicit DecimalDigits(double number) noexcept;

  /// Multiplies by a power of ten.
  void shift(int places) noexcept { _firstPlace += places; }

  /// Rounds to a number of digits after the decimal point, halves up. A negative number rounds to
  /// tens, hundreds and so on.
  void roundToFraction(int count) noexcept { roundTo(_firstPlace + 1 + count); }

  /// Rounds to a number of significant digits, at least one.
  void roundToSignificant(int count) noexcept { roundTo(count); }

  [[nodiscard]] bool isZero() const noexcept { return _count == 0; }
  /// The place of the first digit that is not 0; of zero, that of the ones.
  [[nodiscard]] int firstPlace() const noexcept { return isZero() ? 0 : _firstPlace; }
  /// How many digits stand before the decimal point; none for a number below 1.
  [[nodiscard]] int countWhole() const noexcept;
  /// How many digits stand behind the decimal point, up to the last one that is not 0.
  [[nodiscard]] int countFraction() const noexcept;
  /// The digit at a place, as a character.
  [[nodiscard]] char at(int place) const noexcept;

private:
  static constexpr int maximalCount = 15;

  void roundTo(int count) noexcept;
  void dropZeros() noexcept;

  std::array<char, maximalCount> _digits{};
  int _count = 0;       ///< digits up to the last one that is not 0; none for zero
  int _firstPlace = 0;  ///< the place of the first digit
};

}  // namespace Zorv::OfficeUtils
