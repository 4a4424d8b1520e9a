#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/TimeZone.h"
#include "tool/Input/RenderOptions.h"
#include "tool/Input/SheetRange.h"
#include "tool/Text/Terminal.h"
#include "workbook/Semantics.h"

namespace Zorv::Tool {

enum class Command : std::uint8_t {
  Resolve,
  Explain,
  Rules,
  Verdicts,
  Check,
  Tidy,
  Diff,
  Render,
  Show
};

enum class OutputFormat : std::uint8_t {
  Table,      ///< columns for people
  Json,       ///< one document
  JsonLines,  ///< one object a line, each complete in itself
  Csv,        ///< RFC 4180, with a line of headings
  Sarif,      ///< SARIF 2.1.0
  Tsv,        ///< tab-separated values, with a line of headings
};

/// Options of `tidy`: where and how it writes.
struct TidyOptions {
  std::string target;  ///< empty if nothing is to be written
  bool dryRun = false;
  bool mayReplace = false;  ///< the target may be an existing file other than the input
};

/// The command line's options, checked as far as possible without the files.
struct Options {
  Command command = Command::Resolve;
  std::vector<std::string> files;   ///< at least one; "-" is standard input
  std::vector<std::string> sheets;  ///< none: all
  /// None: all cells. For Command::Explain, the cells that are explained.
  std::vector<SheetRange> ranges;
  std::optional<std::size_t> rule;  ///< number of the rule that is asked for
  OutputFormat format = OutputFormat::Table;
  unsigned threadCount = 1;  ///< at least 1
  OfficeUtils::Clock::TimePoint now;
  DOM::TimeZone timeZone;
  std::string localeName;
  Workbook::Semantics semantics = Workbook::Semantics::Own;  ///< the meaning of conditions
  bool strict = false;           ///< what is not as the file means it makes the exit status BadFile
  std::uint64_t mostMemory = 0;  ///< bytes
  std::chrono::milliseconds timeout{};  ///< processor time of all threads
  ColourChoice colour = ColourChoice::Auto;
  /// Of `show`: columns of a line; nothing: those of the terminal.
  std::optional<std::size_t> width;
  TidyOptions tidy;
  RenderOptions render;
  /// Of `diff`: the moment of both versions, or of each.
  std::vector<OfficeUtils::Clock::TimePoint> moments;
};

}  // namespace Zorv::Tool
