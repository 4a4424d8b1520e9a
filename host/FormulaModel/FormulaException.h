#pragma once

#include <string>

#include "Utils/Exceptions.h"

namespace Zorv::FormulaModel {

/// A value that cannot be used as a formula or a cast demands.
class ZORV_HOST_EXPORT FormulaException : public BaseRuntimeError {
public:
  explicit FormulaException(std::string const& message);
  FormulaException(FormulaException const&) = default;
  FormulaException& operator=(FormulaException const&) = default;
  ~FormulaException() override;
};

}  // namespace Zorv::FormulaModel
