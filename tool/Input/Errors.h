#pragma once

#include <stdexcept>
#include <string>

namespace Zorv::Tool {

/// Exit status of the program.
enum class ExitStatus : int {
  Success = 0,
  BadFile = 1,   ///< the file or its contents
  BadUsage = 2,  ///< the command line
  // Of `diff`, whose status 2 is any trouble.
  Different = 1,
  Trouble = 2,
  // As shells number the end by a signal.
  Interrupted = 130,
  Terminated = 143,
};

/// An argument that is wrong; what() says what to write instead.
class UsageError : public std::runtime_error {
public:
  explicit UsageError(std::string const& message) : std::runtime_error(message) {}
};

/// A file whose contents do not allow the command.
class ContentError : public std::runtime_error {
public:
  explicit ContentError(std::string const& message) : std::runtime_error(message) {}
};

}  // namespace Zorv::Tool
