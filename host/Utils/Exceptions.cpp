#include "Utils/Exceptions.h"

namespace Zorv {

// The destructors are out of line so that the type information exists once: an exception that one
// shared object throws is then caught by its type in another.

BaseRuntimeError::BaseRuntimeError(std::string const& message) : std::runtime_error(message) {}
BaseRuntimeError::~BaseRuntimeError() = default;

BadNumCastError::BadNumCastError(std::string const& message) : BaseRuntimeError(message) {}
BadNumCastError::~BadNumCastError() = default;

}  // namespace Zorv
