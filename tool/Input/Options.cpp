#include "tool/Input/Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <thread>
#include <utility>

#include <fmt/format.h>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Exceptions.h"
#include "tool/Input/Arguments.h"
#include "tool/Input/DefaultTimeout.h"
#include "tool/Input/Errors.h"
#include "words/Amounts.h"
#include "words/Moment.h"

namespace Zorv::Tool {

namespace {

DOM::TimeZone findTimeZone(std::string const& name) {
  try {
    return DOM::TimeZone(name);
  } catch (BaseRuntimeError const&) {
    throw UsageError(fmt::format(
        "--time-zone: there is no zone \"{}\"; write a name such as UTC or Europe/Berlin", name));
  }
}

void checkLocale(std::string const& name) {
  try {
    static_cast<void>(OfficeUtils::LocaleContext(name));
  } catch (BaseRuntimeError const&) {
    throw UsageError(fmt::format(
        "--locale: there is no locale \"{}\"; write a name such as en-US or de-DE", name));
  }
}

bool isDateOfASheet(OfficeUtils::Clock::TimePoint moment, DOM::TimeZone const& timeZone) {
  auto const day = std::chrono::floor<std::chrono::days>(timeZone.toLocal(moment));
  auto const year = static_cast<int>(std::chrono::year_month_day(day).year());
  return 1900 <= year && year <= 9999;
}

OfficeUtils::Clock::TimePoint readNow(std::optional<std::string> const& text,
                                      DOM::TimeZone const& timeZone) {
  if (!text) {
    return OfficeUtils::Clock::readCurrent();
  }
  auto const time = Words::parseCivilTime(*text);
  if (!time) {
    throw UsageError(
        fmt::format("--now: \"{}\" is no date and time; write it as 2026-11-21T12:00:00", *text));
  }
  auto const moment = Words::toMoment(*time, timeZone);
  if (!moment) {
    throw UsageError(
        fmt::format("--now: clocks in {} skip {}; name another time", timeZone.getName(), *text));
  }
  if (!isDateOfASheet(*moment, timeZone)) {
    throw UsageError(
        fmt::format("--now: \"{}\" lies outside the dates of a sheet; name one from 1900-01-01 to "
                    "9999-12-31",
                    *text));
  }
  return *moment;
}

SheetRange readRange(std::string const& text, std::string_view option) {
  auto range = parseSheetRange(text);
  if (!range) {
    throw UsageError(fmt::format(
        "{}: \"{}\" is no range of cells; write it as A1:C9 or 'Sheet 1'!A1:C9", option, text));
  }
  return *std::move(range);
}

/// The cells that are explained: as many as somebody may read.
void checkCellCount(std::vector<SheetRange> const& ranges) {
  constexpr std::uint64_t mostCells = 10'000;
  std::uint64_t count = 0;
  for (auto const& [sheet, range] : ranges) {
    count += std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn);
  }
  if (count > mostCells) {
    throw UsageError(
        fmt::format("CELL: {} cells are too many to explain, the limit is {}; "
                    "cndfrmt resolve prints every cell that has a style",
                    count, mostCells));
  }
}

std::size_t readRule(std::string const& text) {
  std::size_t number = 0;
  auto const* const end = text.data() + text.size();
  auto const [rest, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || rest != end) {
    throw UsageError(fmt::format(
        "--rule: \"{}\" is no number of a rule; cndfrmt rules lists the numbers", text));
  }
  return number;
}

constexpr unsigned mostThreads = 256;

unsigned readThreadCount(std::optional<std::string> const& text) {
  if (!text) {
    return std::clamp(std::thread::hardware_concurrency(), 1U, mostThreads);
  }
  unsigned count = 0;
  auto const* const end = text->data() + text->size();
  auto const [rest, error] = std::from_chars(text->data(), end, count);
  if (error != std::errc() || rest != end || count < 1 || count > mostThreads) {
    throw UsageError(fmt::format(
        "--threads: \"{}\" is no number of threads; write one from 1 to {}", *text, mostThreads));
  }
  return count;
}

std::uint64_t readMemory(std::string const& text) {
  auto const size = Words::parseSize(text);
  if (!size) {
    throw UsageError(
        fmt::format("--max-memory: \"{}\" is no amount of memory; write it as 512M or 2G", text));
  }
  return *size;
}

std::chrono::milliseconds readTimeout(std::string const& text) {
  auto const duration = Words::parseDuration(text);
  if (!duration) {
    throw UsageError(
        fmt::format("--timeout: \"{}\" is no duration; write it as 30s, 5m or 2h", text));
  }
  return *duration;
}

std::optional<std::size_t> readWidth(std::optional<std::string> const& text) {
  if (!text) {
    return std::nullopt;
  }
  constexpr std::size_t widest = 10'000;
  std::size_t width = 0;
  auto const* const end = text->data() + text->size();
  auto const [rest, error] = std::from_chars(text->data(), end, width);
  if (error != std::errc() || rest != end || width < 1 || width > widest) {
    throw UsageError(fmt::format("--width: \"{}\" is no number of columns; write one from 1 to {}",
                                 *text, widest));
  }
  return width;
}

OutputFormat readFormat(std::optional<std::string> const& text, Command command) {
  if (!text) {
    return command == Command::Verdicts ? OutputFormat::Tsv : OutputFormat::Table;
  }
  using Named = std::pair<std::string_view, OutputFormat>;
  constexpr std::array<Named, 6> formats = {{
      {"table", OutputFormat::Table},
      {"json", OutputFormat::Json},
      {"jsonl", OutputFormat::JsonLines},
      {"csv", OutputFormat::Csv},
      {"sarif", OutputFormat::Sarif},
      {"tsv", OutputFormat::Tsv},
  }};
  return std::ranges::find(formats, *text, &Named::first)->second;
}

ColourChoice readColour(std::string const& text) noexcept {
  return text == "always"  ? ColourChoice::Always
         : text == "never" ? ColourChoice::Never
                           : ColourChoice::Auto;
}

TidyOptions readTidy(Arguments& arguments) {
  if (arguments.command != Command::Tidy) {
    return {};
  }
  if (arguments.files.front() == "-") {
    throw UsageError("tidy reads its file more than once; name a file in place of -");
  }
  if (arguments.target.empty() && !arguments.dryRun) {
    throw UsageError("tidy needs -o FILE, the file to write, or --dry-run");
  }
  if (arguments.target == "-") {
    throw UsageError("-o: tidy writes a file; name one in place of -");
  }
  return {std::move(arguments.target), arguments.dryRun, arguments.mayReplace};
}

std::vector<OfficeUtils::Clock::TimePoint> readMoments(Arguments const& arguments,
                                                       DOM::TimeZone const& timeZone) {
  if (arguments.command != Command::Diff) {
    return {};
  }
  std::size_t const most = 2;
  if (arguments.files.size() > most || arguments.moments.size() > most) {
    throw UsageError("diff compares two files, or one file at two moments");
  }
  if (arguments.files.size() < most && arguments.moments.size() < most) {
    throw UsageError("diff needs a second file, or --now twice");
  }
  std::vector<OfficeUtils::Clock::TimePoint> moments;
  for (std::string const& text : arguments.moments) {
    moments.push_back(readNow(text, timeZone));
  }
  if (moments.empty()) {
    moments.push_back(readNow(std::nullopt, timeZone));
  }
  return moments;
}

}  // namespace

Options toOptions(Arguments arguments) {
  Options options;
  options.command = arguments.command;
  options.sheets = std::move(arguments.sheets);
  bool const explains = options.command == Command::Explain;
  for (auto const& range : arguments.ranges) {
    options.ranges.push_back(readRange(range, explains ? "CELL" : "--range"));
  }
  if (explains) {
    checkCellCount(options.ranges);
  }
  if (arguments.rule) {
    options.rule = readRule(*arguments.rule);
  }
  options.format = readFormat(arguments.format, arguments.command);
  options.threadCount = readThreadCount(arguments.threads);
  options.timeZone = findTimeZone(arguments.timeZone);
  options.render = readRenderOptions(arguments);
  options.tidy = readTidy(arguments);
  options.moments = readMoments(arguments, options.timeZone);
  options.now =
      options.moments.empty() ? readNow(arguments.now, options.timeZone) : options.moments.front();
  options.files = std::move(arguments.files);
  checkLocale(arguments.locale);
  options.localeName = std::move(arguments.locale);
  options.semantics = arguments.semantics == "widespread" ? Workbook::Semantics::Widespread
                                                          : Workbook::Semantics::Own;
  options.strict = arguments.strict;
  options.mostMemory = readMemory(arguments.mostMemory);
  options.timeout =
      arguments.timeout ? readTimeout(*arguments.timeout) : defaultTimeout(options.files);
  options.colour = readColour(arguments.colour);
  options.width = readWidth(arguments.width);
  return options;
}

}  // namespace Zorv::Tool
