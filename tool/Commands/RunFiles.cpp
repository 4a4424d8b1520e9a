#include "tool/Commands/RunFiles.h"

#include <unistd.h>

#include <exception>
#include <iostream>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "OfficeUtils/Clock.h"
#include "tool/Commands/Commands.h"
#include "tool/Commands/DiffCommand.h"
#include "tool/Input/Selection.h"
#include "tool/Output/CheckOutput.h"
#include "tool/Output/ProgressBar.h"
#include "tool/Output/Report.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

/// Lines that are printed during the work would mix with a bar on the same terminal.
bool canShowProgress(Options const& options, Terminal const& terminal) {
  return isatty(STDERR_FILENO) == 1 && (options.format == OutputFormat::Table || !terminal.width);
}

void runCommand(CommandContext const& context) {
  switch (context.selection.getOptions().command) {
    case Command::Resolve: {
      ProgressBar progress(std::cerr,
                           canShowProgress(context.selection.getOptions(), context.terminal));
      return runResolve(context, progress);
    }
    case Command::Explain:
      return runExplain(context);
    case Command::Rules:
      return runRules(context);
    case Command::Verdicts:
      return runVerdicts(context);
    case Command::Check:
      return runCheck(context);
    case Command::Tidy:
      return runTidy(context);
    case Command::Render:
      return runRender(context);
    case Command::Show:
      return runShow(context);
    case Command::Diff:
      return;  // is about two files at once; see FileRun::run()
  }
}

/// True if the messages of a command are about the file as a whole. An explanation says itself what
/// there is to say about its cells.
bool isAboutFile(Options const& options) noexcept { return options.command != Command::Explain; }

bool isOneOfSeveral(Options const& options) noexcept { return options.files.size() > 1; }

/// Texts around the outputs of all files.
struct Frame {
  std::string_view begin;
  std::string_view end;
};

std::optional<Frame> findFrame(Options const& options) noexcept {
  if (options.format == OutputFormat::Sarif) {
    return Frame{sarifBegin, sarifEnd};
  }
  return isOneOfSeveral(options) && options.format == OutputFormat::Json
             ? std::optional(Frame{"[\n", "]\n"})
             : std::nullopt;
}

/// True after a request to stop, such as that of a lack of memory: it may show as another failure,
/// and the next file would fare no better.
bool isStopped(WorkBudget& budget) {
  try {
    budget.spend(0);
    return false;
  } catch (WorkEnded const&) {
    return true;
  }
}

}  // namespace

ExitStatus FileRun::run() {
  if (_options.command == Command::Diff) {
    return runDiff(_options, _terminal, _out, _budget);
  }
  OfficeUtils::ScopedClock const clock(_options.now);
  auto const frame = findFrame(_options);
  if (frame) {
    _out.text() += frame->begin;
    _out.setLastEnd(std::string(frame->end));
  }
  auto status = ExitStatus::Success;
  std::exception_ptr problem;
  for (std::size_t index = 0; index < _options.files.size() && !problem; ++index) {
    _current = index;
    try {
      status = std::max(status, runFile(_options.files[index]));
    } catch (WorkEnded const&) {
      problem = std::current_exception();
    } catch (std::bad_alloc const&) {
      problem = std::current_exception();
    } catch (std::exception const& error) {
      if (isStopped(_budget)) {
        problem = std::current_exception();
      } else {
        say(error.what());
        status = ExitStatus::BadFile;
      }
    }
  }
  if (frame) {
    _out.text() += frame->end;
  }
  _out.flush();
  if (!std::cout) {
    throw ContentError("the result could not be written; is the disk full?");
  }
  if (problem) {
    std::rethrow_exception(problem);
  }
  return status;
}

std::string FileRun::getCurrentFile() const { return nameOfFile(_options.files[_current]); }

ExitStatus FileRun::runFile(std::string const& file) {
  auto const document = loadFile(file, _options, _budget);
  Selection const selection(document, _options, nameOfFile(file));
  Report report(std::cerr, selection);
  if (isAboutFile(_options)) {
    report.sayFindings();
  }
  bool const isFirst = !_hasOutput;
  beginFile(selection.getFile());
  std::exception_ptr problem;
  try {
    runCommand({selection, _terminal, _out, report, _budget, isFirst});
  } catch (...) {
    problem = std::current_exception();
  }
  _out.flush();
  if (isAboutFile(_options)) {
    report.saySummary();
  }
  if (problem) {
    std::rethrow_exception(problem);
  }
  bool const isGood = report.countFailedRules() == 0 && (!_options.strict || report.isClean());
  return isGood ? ExitStatus::Success : ExitStatus::BadFile;
}

void FileRun::beginFile(std::string const& name) {
  if (isOneOfSeveral(_options)) {
    if (_options.format == OutputFormat::Table) {
      _out.text() +=
          fmt::format("{}==> {} <==\n", _hasOutput ? "\n" : "", Words::toPrintable(name));
    } else if (findFrame(_options) && _hasOutput) {
      _out.text() += ",\n";
    }
  }
  _hasOutput = true;
}

Workbook::LoadOptions makeLoadOptions(std::string const& file, Options const& options,
                                      WorkBudget& budget) {
  return {.limits = {},
          .localeName = options.localeName,
          .timeZone = options.timeZone,
          .name = nameOfFile(file),
          .semantics = options.semantics,
          .budget = &budget};
}

Workbook::Document loadFile(std::string const& file, Options const& options, WorkBudget& budget) {
  return Workbook::loadWorkbook(file == "-" ? "/dev/stdin" : file,
                                makeLoadOptions(file, options, budget));
}

std::string nameOfFile(std::string const& argument) {
  if (argument == "-") {
    return "standard input";
  }
  return argument.empty() ? "\"\"" : argument;
}

void say(std::string const& message) {
  std::cerr << Words::toMessageLine("cndfrmt: " + message) << '\n';
}

}  // namespace Zorv::Tool
