#pragma once

#include <cstddef>
#include <string>

#include "Utils/WorkBudget.h"
#include "tool/Input/Errors.h"
#include "tool/Input/Options.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"
#include "workbook/LoadWorkbook.h"

namespace Zorv::Tool {

/// The run of a command over the files of the options, one after the other.
///
/// A file that cannot be read costs only itself: a message names it, and the others follow.
/// Borrows everything.
class FileRun {
public:
  FileRun(Options const& options, Terminal const& terminal, OutputBuffer& out, WorkBudget& budget)
      : _options(options), _terminal(terminal), _out(out), _budget(budget) {}

  /// Runs the command. What ends the work early is thrown after what is known was printed.
  [[nodiscard]] ExitStatus run();

  /// The name of the file that was worked on last.
  [[nodiscard]] std::string getCurrentFile() const;

private:
  [[nodiscard]] ExitStatus runFile(std::string const& file);
  void beginFile(std::string const& name);

  Options const& _options;
  Terminal const& _terminal;
  OutputBuffer& _out;
  WorkBudget& _budget;
  std::size_t _current = 0;  ///< index of the file that is worked on
  bool _hasOutput = false;
};

/// How a file of the command line is loaded. `file` is its argument.
[[nodiscard]] Workbook::LoadOptions makeLoadOptions(std::string const& file, Options const& options,
                                                    WorkBudget& budget);

/// Loads a file of the command line, which may be standard input. Throws what loadWorkbook() does.
[[nodiscard]] Workbook::Document loadFile(std::string const& file, Options const& options,
                                          WorkBudget& budget);

/// A file's name in messages.
[[nodiscard]] std::string nameOfFile(std::string const& argument);

/// Prints a message of the program on standard error.
void say(std::string const& message);

}  // namespace Zorv::Tool
