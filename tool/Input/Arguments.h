#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tool/Input/Options.h"

namespace Zorv::Tool {

/// The arguments of a command as they are written.
struct Arguments {
  Command command = Command::Resolve;
  std::vector<std::string> files;
  std::vector<std::string> sheets;
  std::vector<std::string> ranges;
  std::optional<std::string> rule;
  std::optional<std::string> format;
  std::optional<std::string> threads;
  std::optional<std::string> now;
  std::string timeZone = "UTC";
  std::string locale = "en-US";
  std::string mostMemory = "4G";
  std::optional<std::string> timeout;
  std::string colour = "auto";
  std::string semantics = "own";
  bool strict = false;
  std::optional<std::string> width;  ///< of `show`
  std::optional<std::string> scale;  ///< of `render`
  std::optional<std::string> theme;  ///< of `render`
  std::string target;                ///< of `tidy` and `render`
  bool dryRun = false;               ///< of `tidy`
  bool mayReplace = false;           ///< of `tidy`
  std::vector<std::string> moments;  ///< of `diff`
};

/// Checks the arguments. Throws UsageError for one that names nothing, such as an unknown time zone
/// or locale.
[[nodiscard]] Options toOptions(Arguments arguments);

}  // namespace Zorv::Tool
