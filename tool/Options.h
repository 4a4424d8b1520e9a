#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <variant>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/TableRange.h"
#include "tool/Errors.h"

namespace Zorv::Tool {

enum class Command { Resolve, Rules, Verdicts };
enum class OutputFormat { Table, Json };

/// What the command line asks for, checked as far as that goes without the file.
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
};

/// Reads the command line. Where that is all there is to do (help, the version, a mistake), writes
/// what there is to say and gives the status with which the program ends.
/// Throws UsageError for an argument that is well formed and names nothing: a time zone, a locale.
[[nodiscard]] std::variant<Options, ExitStatus> parseCommandLine(int argc, char const* const* argv,
                                                                 std::ostream& out,
                                                                 std::ostream& err);

}  // namespace Zorv::Tool
