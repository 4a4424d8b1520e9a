#pragma once

#include <cstddef>
#include <string>

#include "Utils/Exceptions.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Thrown for a text that is no formula.
class ZORV_HOST_EXPORT FormulaParseError : public BaseRuntimeError {
public:
  /// `position` counts the bytes of the text before the place of the error.
  FormulaParseError(std::string const& reason, std::size_t position);
  FormulaParseError(FormulaParseError const&) = default;
  FormulaParseError& operator=(FormulaParseError const&) = default;
  ~FormulaParseError() override;

  /// The reason alone; what() has the position, too, counted from 1.
  [[nodiscard]] std::string const& getReason() const noexcept { return _reason; }
  /// The number of bytes before the place of the error.
  [[nodiscard]] std::size_t getPosition() const noexcept { return _position; }

private:
  std::string _reason;
  std::size_t _position;
};

}  // namespace Zorv::Formulas
