#pragma once

#include <string>

#include "Utils/Exceptions.h"
#include "visuals/Export.h"

namespace Zorv::Visuals {

/// Thrown for a cell whose visual format has a threshold formula that gives no number; what() says
/// what it gives instead.
class ZORV_VISUALS_EXPORT ThresholdError : public BaseRuntimeError {
public:
  explicit ThresholdError(std::string const& message);
  ThresholdError(ThresholdError const&) = default;
  ThresholdError& operator=(ThresholdError const&) = default;
  ~ThresholdError() override;
};

}  // namespace Zorv::Visuals
