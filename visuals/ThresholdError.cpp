#include "visuals/ThresholdError.h"

namespace Zorv::Visuals {

ThresholdError::ThresholdError(std::string const& message) : BaseRuntimeError(message) {}
ThresholdError::~ThresholdError() = default;

}  // namespace Zorv::Visuals
