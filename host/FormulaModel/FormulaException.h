#pragma once

#include <string>

#include "Utils/Exceptions.h"

namespace Zorv::FormulaModel {

/// Thrown when a formula or a cast cannot use a value.
class ZORV_HOST_EXPORT FormulaException : public BaseRuntimeError {
public:
  explicit FormulaException(std::string const& message);
  FormulaException(FormulaException const&) = default;
  FormulaException& operator=(FormulaException const&) = default;
  ~FormulaException() override;
};

}  // namespace Zorv::FormulaModel
