#pragma once

#include <iosfwd>
#include <variant>

#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"

namespace Zorv::Tool {

/// Parses the command line. For help, the version and mistakes, writes the text and returns the
/// program's exit status. Throws UsageError for a well-formed argument that names nothing, such as
/// an unknown time zone or locale.
[[nodiscard]] std::variant<Options, ExitStatus> parseCommandLine(int argc, char const* const* argv,
                                                                 std::ostream& out,
                                                                 std::ostream& err);

}  // namespace Zorv::Tool
