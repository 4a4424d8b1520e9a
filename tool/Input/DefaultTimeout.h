#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace Zorv::Tool {

/// The processor time that a command may use for its files if the command line does not say.
///
/// Ten minutes; or 50 seconds for each file if all are regular files of less than 1 MB: they are
/// soon done, unless they are made to take long. "-" is standard input, whose size is not known.
[[nodiscard]] std::chrono::milliseconds defaultTimeout(std::vector<std::string> const& files);

}  // namespace Zorv::Tool
