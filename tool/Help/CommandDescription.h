#pragma once

#include <string>
#include <vector>

namespace Zorv::Tool {

/// An option of a command, or an argument without a name, such as FILE.
struct OptionDescription {
  std::vector<std::string> names;  ///< such as `-h`, `--help`; an argument has one, such as `FILE`
  std::string parameter;           ///< of its value, such as `TEXT`; empty for a flag
  std::vector<std::string> choices;  ///< the words that it takes; none: any text
  std::string meaning;
  bool isPositional = false;
};

/// A command of the tool, for its manual and for completions.
struct CommandDescription {
  std::string name;
  std::string summary;
  std::vector<std::string> examples;  ///< command lines
  std::vector<OptionDescription> options;
};

}  // namespace Zorv::Tool
