#include <unistd.h>

#include <exception>
#include <iostream>
#include <variant>

#include "OfficeUtils/Clock.h"
#include "tool/Commands/Commands.h"
#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"
#include "tool/Input/Selection.h"
#include "tool/Output/ProgressBar.h"
#include "tool/Output/Report.h"
#include "workbook/LoadWorkbook.h"

namespace {

using namespace Zorv::Tool;

/// JSON is printed during the work, and would mix with a bar on the same terminal.
bool canShowProgress(Options const& options) {
  return isatty(STDERR_FILENO) == 1 &&
         (options.format != OutputFormat::Json || isatty(STDOUT_FILENO) == 0);
}

ExitStatus runResolveWithProgress(Selection const& selection, std::ostream& out, std::ostream& err,
                                  Report& report) {
  ProgressBar progress(err, canShowProgress(selection.getOptions()));
  return runResolve(selection, out, report, progress);
}

ExitStatus runCommand(Selection const& selection, std::ostream& out, std::ostream& err,
                      Report& report) {
  switch (selection.getOptions().command) {
    case Command::Resolve:
      return runResolveWithProgress(selection, out, err, report);
    case Command::Rules:
      return runRules(selection, out);
    case Command::Verdicts:
      return runVerdicts(selection, out, report);
  }
  throw UsageError("there is no such command");
}

ExitStatus run(Options const& options, std::ostream& out, std::ostream& err) {
  Zorv::OfficeUtils::ScopedClock const clock(options.now);
  auto const document = Zorv::Workbook::loadWorkbook(
      options.file, {.limits = {}, .localeName = options.localeName, .timeZone = options.timeZone});
  Selection const selection(document, options);
  Report report(err, selection);
  report.sayFindings();
  auto const status = runCommand(selection, out, err, report);
  out.flush();
  if (!out) {
    throw ContentError(options.file + ": the result could not be written; is the disk full?");
  }
  report.saySummary();
  return status;
}

ExitStatus runCommandLine(int argc, char const* const* argv) {
  try {
    auto const parsed = parseCommandLine(argc, argv, std::cout, std::cerr);
    if (auto const* status = std::get_if<ExitStatus>(&parsed)) {
      return *status;
    }
    return run(std::get<Options>(parsed), std::cout, std::cerr);
  } catch (UsageError const& error) {
    std::cerr << "cndfrmt: " << error.what() << '\n';
    return ExitStatus::BadUsage;
  } catch (std::exception const& error) {
    std::cerr << "cndfrmt: " << error.what() << '\n';
    return ExitStatus::BadFile;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  return static_cast<int>(runCommandLine(argc, argv));
}
