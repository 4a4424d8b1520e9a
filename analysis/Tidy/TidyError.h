#pragma once

#include "Utils/Exceptions.h"

namespace Zorv::Analysis {

/// Thrown when tidying ends without a new file; what() says why, without the input's name.
class TidyError : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

}  // namespace Zorv::Analysis
