#include <unistd.h>

#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <variant>

#include <fmt/format.h>

#include "OfficeUtils/Clock.h"
#include "Utils/WorkBudget.h"
#include "tool/Commands/Commands.h"
#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"
#include "tool/Input/Selection.h"
#include "tool/Output/ProgressBar.h"
#include "tool/Output/Report.h"
#include "tool/Process/MemoryLimit.h"
#include "tool/Process/StopWatcher.h"
#include "tool/Text/Amounts.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Printable.h"
#include "workbook/LoadWorkbook.h"

namespace {

using namespace Zorv::Tool;

/// JSON is printed during the work, and would mix with a bar on the same terminal.
bool canShowProgress(Options const& options) {
  return isatty(STDERR_FILENO) == 1 &&
         (options.format != OutputFormat::Json || isatty(STDOUT_FILENO) == 0);
}

void runCommand(CommandContext const& context) {
  switch (context.selection.getOptions().command) {
    case Command::Resolve: {
      ProgressBar progress(std::cerr, canShowProgress(context.selection.getOptions()));
      return runResolve(context, progress);
    }
    case Command::Rules:
      return runRules(context);
    case Command::Verdicts:
      return runVerdicts(context);
  }
}

/// Runs the command, prints what is known even if it fails, and lets its exception go on.
ExitStatus run(Options const& options, OutputBuffer& out, Zorv::WorkBudget& budget) {
  Zorv::OfficeUtils::ScopedClock const clock(options.now);
  auto const document =
      Zorv::Workbook::loadWorkbook(options.file, {.limits = {},
                                                  .localeName = options.localeName,
                                                  .timeZone = options.timeZone,
                                                  .budget = &budget});
  Selection const selection(document, options);
  Report report(std::cerr, selection);
  report.sayFindings();
  std::exception_ptr problem;
  try {
    runCommand({selection, out, report, budget});
  } catch (...) {
    problem = std::current_exception();
  }
  out.flush();
  if (!std::cout) {
    throw ContentError(options.file + ": the result could not be written; is the disk full?");
  }
  report.saySummary();
  if (problem) {
    std::rethrow_exception(problem);
  }
  bool const isGood = report.countFailedRules() == 0 && (!options.strict || report.isClean());
  return isGood ? ExitStatus::Success : ExitStatus::BadFile;
}

void say(std::string const& message) { std::cerr << toMessageLine("cndfrmt: " + message) << '\n'; }

std::string describeLackOfMemory(Options const& options) {
  return fmt::format(
      "{}: needs more memory than {}; the result is not complete (--max-memory allows more)",
      options.file, describeSize(options.mostMemory));
}

std::string describeStop(Options const& options, StopCause cause) {
  return cause == StopCause::OutOfTime
             ? fmt::format(
                   "{}: takes more processor time than {}; the result is not complete "
                   "(--timeout allows more)",
                   options.file, describeDuration(options.timeout))
             : fmt::format("{}: {}; the result is not complete", options.file,
                           cause == StopCause::Interrupted ? "interrupted" : "terminated");
}

ExitStatus statusOf(StopCause cause) noexcept {
  switch (cause) {
    case StopCause::Interrupted:
      return ExitStatus::Interrupted;
    case StopCause::Terminated:
      return ExitStatus::Terminated;
    default:
      return ExitStatus::BadFile;
  }
}

/// Ends the process while the work goes on in other threads.
[[noreturn]] void endProcess(Options const& options, StopCause cause, OutputBuffer& out) {
  out.endEarly();
  say(describeStop(options, cause));
  std::cerr.flush();
  _exit(static_cast<int>(statusOf(cause)));
}

ExitStatus runWithinLimits(Options const& options, OutputBuffer& out) {
  StopWatcher watcher(options.timeout, [&](StopCause cause) { endProcess(options, cause, out); });
  limitMemory(options.mostMemory, toMessageLine("cndfrmt: " + describeLackOfMemory(options)),
              static_cast<int>(ExitStatus::BadFile), watcher.getSource());
  Zorv::WorkBudget budget({}, watcher.getSource().get_token());
  try {
    return run(options, out, budget);
  } catch (std::bad_alloc const&) {
  } catch (std::exception const&) {
    // A lack of memory may show as another failure, such as a stop.
    if (watcher.getCause() == StopCause::None && !hasLackedMemory()) {
      throw;
    }
  }
  if (watcher.getCause() == StopCause::None) {
    say(describeLackOfMemory(options));
    return ExitStatus::BadFile;
  }
  say(describeStop(options, watcher.getCause()));
  return statusOf(watcher.getCause());
}

ExitStatus runCommandLine(int argc, char const* const* argv) {
  try {
    auto const parsed = parseCommandLine(argc, argv, std::cout, std::cerr);
    if (auto const* status = std::get_if<ExitStatus>(&parsed)) {
      return *status;
    }
    OutputBuffer out(std::cout);
    return runWithinLimits(std::get<Options>(parsed), out);
  } catch (UsageError const& error) {
    say(error.what());
    return ExitStatus::BadUsage;
  } catch (std::exception const& error) {
    say(error.what());
    return ExitStatus::BadFile;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  return static_cast<int>(runCommandLine(argc, argv));
}
