#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <variant>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/TableRange.h"
#include "tool/Input/Errors.h"

namespace Zorv::Tool {

enum class Command { Resolve, Rules, Verdicts };
enum class OutputFormat { Table, Json };

/// The command line's options, checked as far as possible without the file.
struct Options {
  Command command = Command::Resolve;
  std::string file;
  std::optional<std::string> sheet;
  std::optional<TableRange> range;
  OutputFormat format = OutputFormat::Table;
  unsigned threadCount = 1;  ///< at least 1
  OfficeUtils::Clock::TimePoint now;
  DOM::TimeZone timeZone;
  std::string localeName;
  bool strict = false;           ///< what is not as the file means it makes the exit status BadFile
  std::uint64_t mostMemory = 0;  ///< bytes
  std::chrono::milliseconds timeout{};  ///< processor time of all threads
};

/// Parses the command line. For help, the version and mistakes, writes the text and returns the
/// program's exit status. Throws UsageError for a well-formed argument that names nothing, such as
/// an unknown time zone or locale.
[[nodiscard]] std::variant<Options, ExitStatus> parseCommandLine(int argc, char const* const* argv,
                                                                 std::ostream& out,
                                                                 std::ostream& err);

}  // namespace Zorv::Tool
