#pragma once

#include <stdexcept>
#include <string>

#include "Utils/Export.h"

namespace Zorv {

/// Base of the exceptions by which the host reports bad input or a failed operation.
class ZORV_HOST_EXPORT BaseRuntimeError : public std::runtime_error {
public:
  explicit BaseRuntimeError(std::string const& message);
  BaseRuntimeError(BaseRuntimeError const&) = default;
  BaseRuntimeError& operator=(BaseRuntimeError const&) = default;
  ~BaseRuntimeError() override;
};

/// Thrown when a number does not fit the type that it is converted to; see numCast().
class ZORV_HOST_EXPORT BadNumCastError : public BaseRuntimeError {
public:
  explicit BadNumCastError(std::string const& message);
  BadNumCastError(BadNumCastError const&) = default;
  BadNumCastError& operator=(BadNumCastError const&) = default;
  ~BadNumCastError() override;
};

}  // namespace Zorv
