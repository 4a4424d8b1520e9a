#pragma once

#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"

namespace Zorv::Tool {

/// Parses the command line. For help, the version and mistakes, writes the text and returns the
/// program's exit status. Throws UsageError for a well-formed argument that names nothing, such as
/// an unknown time zone or locale.
[[nodiscard]] std::variant<Options, ExitStatus> parseCommandLine(int argc, char const* const* argv,
                                                                 std::ostream& out,
                                                                 std::ostream& err);

/// An option of a command, for the manual and for completions in shells.
struct OptionDescription {
  std::vector<std::string> names;    ///< such as `--sheet`; an argument's, such as `FILE`
  std::string parameter;             ///< its name, such as `TEXT`; empty for a flag
  std::vector<std::string> choices;  ///< the words that it takes; none: any text
  std::string meaning;
  bool isPositional = false;
};

struct CommandDescription {
  std::string name;
  std::string summary;
  std::string examples;  ///< lines, each a command or its explanation
  std::vector<OptionDescription> options;
};

/// The commands as parseCommandLine() knows them.
[[nodiscard]] std::vector<CommandDescription> describeCommands();

}  // namespace Zorv::Tool
