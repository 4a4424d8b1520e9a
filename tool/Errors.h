#pragma once

#include <stdexcept>
#include <string>

namespace Zorv::Tool {

/// How the program ended, as its exit status.
enum class ExitStatus : int {
  Success = 0,
  BadFile = 1,   ///< the file or its contents
  BadUsage = 2,  ///< the command line
};

/// A command line that asks for what there is not; what() says what to write instead.
class UsageError : public std::runtime_error {
public:
  explicit UsageError(std::string const& message) : std::runtime_error(message) {}
};

/// A file whose contents do not allow what was asked for.
class ContentError : public std::runtime_error {
public:
  explicit ContentError(std::string const& message) : std::runtime_error(message) {}
};

}  // namespace Zorv::Tool
