#pragma once

#include <array>
#include <cstddef>

namespace Zorv::OfficeUtils {

/// Decimal digits of a number's absolute value, as spreadsheets show them: 15 significant ones.
///
/// A place is a power of ten: 0 for the ones, 1 for the tens, -1 for the tenths.
class DecimalDigits {
public:
  /// Requires a finite number.
  explicit DecimalDigits(double number) noexcept;

  /// Multiplies by a power of ten.
  void shift(int places) noexcept { _firstPlace += places; }

  /// Rounds to `count` digits after the decimal point, halves up. A negative count rounds to tens,
  /// hundreds and so on.
  void roundToFraction(int count) noexcept { roundTo(_firstPlace + 1 + count); }

  /// Rounds to `count` significant digits. Requires `count > 0`.
  void roundToSignificant(int count) noexcept { roundTo(count); }

  [[nodiscard]] bool isZero() const noexcept { return _count == 0; }
  /// The place of the first digit that is not 0; the ones for zero.
  [[nodiscard]] int firstPlace() const noexcept { return isZero() ? 0 : _firstPlace; }
  /// The number of digits before the decimal point; 0 for a number below 1.
  [[nodiscard]] int countWhole() const noexcept;
  /// The number of digits after the decimal point, up to the last one that is not 0.
  [[nodiscard]] int countFraction() const noexcept;
  /// The digit at a place, as a character.
  [[nodiscard]] char at(int place) const noexcept;

private:
  static constexpr int maximalCount = 15;

  void roundTo(int count) noexcept;
  void dropZeros() noexcept;

  std::array<char, maximalCount> _digits{};
  int _count = 0;       ///< digits up to the last one that is not 0; 0 for zero
  int _firstPlace = 0;  ///< the place of the first digit
};

}  // namespace Zorv::OfficeUtils
