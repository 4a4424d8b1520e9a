#include "Formulas/FormulaParseError.h"

#include <fmt/format.h>

namespace Zorv::Formulas {

FormulaParseError::FormulaParseError(std::string const& reason, std::size_t position)
    : BaseRuntimeError(fmt::format("{} at position {}", reason, position + 1)),
      _reason(reason),
      _position(position) {}

FormulaParseError::~FormulaParseError() = default;

}  // namespace Zorv::Formulas
