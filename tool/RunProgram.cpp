#include "tool/RunProgram.h"

#include <unistd.h>

#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <variant>

#include <fmt/format.h>

#include "Utils/WorkBudget.h"
#include "tool/Commands/RunFiles.h"
#include "tool/Input/CommandLine.h"
#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"
#include "tool/Process/MemoryLimit.h"
#include "tool/Process/StopWatcher.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"
#include "words/Amounts.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

/// The file, or files, that the work as a whole is about.
std::string describeFiles(Options const& options) {
  return options.files.size() == 1 ? nameOfFile(options.files.front())
                                   : fmt::format("one of {} files", options.files.size());
}

std::string describeLackOfMemory(std::string const& file, Options const& options) {
  return fmt::format(
      "{}: needs more memory than {}; the result is not complete (--max-memory allows more)", file,
      Words::describeSize(options.mostMemory));
}

std::string describeStop(std::string const& file, Options const& options, StopCause cause) {
  return cause == StopCause::OutOfTime
             ? fmt::format(
                   "{}: takes more processor time than {}; the result is not complete "
                   "(--timeout allows more)",
                   file, Words::describeDuration(options.timeout))
             : fmt::format("{}: {}; the result is not complete", file,
                           cause == StopCause::Interrupted ? "interrupted" : "terminated");
}

/// The status of work that failed: 1 of `diff` says that something differs.
ExitStatus failureOf(Options const& options) noexcept {
  return options.command == Command::Diff ? ExitStatus::Trouble : ExitStatus::BadFile;
}

ExitStatus statusOf(Options const& options, StopCause cause) noexcept {
  switch (cause) {
    case StopCause::Interrupted:
      return ExitStatus::Interrupted;
    case StopCause::Terminated:
      return ExitStatus::Terminated;
    default:
      return failureOf(options);
  }
}

/// Ends the process while the work goes on in other threads.
[[noreturn]] void endProcess(std::string const& message, ExitStatus status, OutputBuffer& out) {
  out.endEarly();
  say(message);
  std::cerr.flush();
  _exit(static_cast<int>(status));
}

ExitStatus runWithinLimits(Options const& options, OutputBuffer& out) {
  StopWatcher watcher(options.timeout, [&](StopCause cause) {
    endProcess(describeStop(describeFiles(options), options, cause), statusOf(options, cause), out);
  });
  limitMemory(
      options.mostMemory,
      Words::toMessageLine("cndfrmt: " + describeLackOfMemory(describeFiles(options), options)),
      static_cast<int>(failureOf(options)), watcher.getSource());
  WorkBudget budget({}, watcher.getSource().get_token());
  auto const terminal = Terminal::find(STDOUT_FILENO, options.colour);
  FileRun run(options, terminal, out, budget);
  try {
    return run.run();
  } catch (std::bad_alloc const&) {
  } catch (std::exception const&) {
    // A lack of memory may show as another failure, such as a stop.
    if (watcher.getCause() == StopCause::None && !hasLackedMemory()) {
      throw;
    }
  }
  if (watcher.getCause() == StopCause::None) {
    say(describeLackOfMemory(run.getCurrentFile(), options));
    return failureOf(options);
  }
  say(describeStop(run.getCurrentFile(), options, watcher.getCause()));
  return statusOf(options, watcher.getCause());
}

ExitStatus runOptions(Options const& options) {
  OutputBuffer out(std::cout);
  try {
    return runWithinLimits(options, out);
  } catch (std::exception const& error) {
    say(error.what());
    return failureOf(options);
  }
}

ExitStatus runCommandLine(int argc, char const* const* argv) {
  try {
    auto const parsed = parseCommandLine(argc, argv, std::cout, std::cerr);
    if (auto const* status = std::get_if<ExitStatus>(&parsed)) {
      return *status;
    }
    return runOptions(std::get<Options>(parsed));
  } catch (UsageError const& error) {
    say(error.what());
    return ExitStatus::BadUsage;
  } catch (std::exception const& error) {
    say(error.what());
    return ExitStatus::BadFile;
  }
}

}  // namespace

int runProgram(int argc, char const* const* argv) {
  std::ios::sync_with_stdio(false);
  return static_cast<int>(runCommandLine(argc, argv));
}

}  // namespace Zorv::Tool
