#pragma once

#include "Utils/Exceptions.h"

namespace Zorv::Visuals {

/// Thrown for a cell whose visual format has a threshold formula that gives no number; what() says
/// what it gives instead.
class ThresholdError : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

}  // namespace Zorv::Visuals
