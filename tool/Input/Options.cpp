#include "tool/Input/Options.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ostream>
#include <thread>
#include <utility>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include "DOM/A1Notation.h"
#include "Utils/Exceptions.h"
#include "tool/Text/Amounts.h"
#include "tool/Text/Moment.h"
#include "tool/Text/Printable.h"

namespace Zorv::Tool {

namespace {

/// Arguments as written.
struct Arguments {
  std::string file;
  std::optional<std::string> sheet;
  std::optional<std::string> range;
  std::string format = "table";
  std::optional<std::string> threads;
  std::optional<std::string> now;
  std::string timeZone = "UTC";
  std::string locale = "en-US";
  std::string mostMemory = "4G";
  std::string timeout = "10m";
  bool strict = false;
};

void addOptions(CLI::App& command, Arguments& arguments, bool withFormat) {
  command.add_option("FILE", arguments.file, "The workbook, .xlsx or .xlsm")->required();
  command.add_option("--sheet", arguments.sheet, "Only the sheet of this name");
  command.add_option("--range", arguments.range, "Only these cells, such as A1:C9");
  if (withFormat) {
    command.add_option("--format", arguments.format, "How to print: table (default) or json")
        ->check(CLI::IsMember({"table", "json"}).description(""))
        ->type_name("FORMAT");
  }
  command.add_option("--now", arguments.now,
                     "The moment for date rules, as 2026-11-21T12:00:00 (default: the clock)");
  command.add_option("--time-zone", arguments.timeZone,
                     "The zone of that moment, such as Europe/Berlin (default: UTC)");
  command.add_option("--locale", arguments.locale,
                     "Language and country, such as de-DE (default: en-US)");
  command.add_flag("--strict", arguments.strict,
                   "Exit with status 1 if anything is not as the file means it");
  command
      .add_option("--max-memory", arguments.mostMemory,
                  "Refuse to use more memory, such as 512M or 2G (default: 4G)")
      ->type_name("SIZE");
  command
      .add_option("--timeout", arguments.timeout,
                  "Stop after this processor time, such as 30s or 5m (default: 10m)")
      ->type_name("DURATION");
}

void addThreads(CLI::App& command, Arguments& arguments) {
  command.add_option("--threads", arguments.threads,
                     "How many threads work, 1 to 256 (default: one for each core)");
}

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
  auto const time = parseCivilTime(*text);
  if (!time) {
    throw UsageError(
        fmt::format("--now: \"{}\" is no date and time; write it as 2026-11-21T12:00:00", *text));
  }
  auto const moment = toMoment(*time, timeZone);
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

TableRange readRange(std::string const& text) {
  auto const range = DOM::A1Notation::parseRange(text);
  if (!range) {
    throw UsageError(fmt::format("--range: \"{}\" is no range of cells; write it as A1:C9", text));
  }
  return *range;
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
  auto const size = parseSize(text);
  if (!size) {
    throw UsageError(
        fmt::format("--max-memory: \"{}\" is no amount of memory; write it as 512M or 2G", text));
  }
  return *size;
}

std::chrono::milliseconds readTimeout(std::string const& text) {
  auto const duration = parseDuration(text);
  if (!duration) {
    throw UsageError(
        fmt::format("--timeout: \"{}\" is no duration; write it as 30s, 5m or 2h", text));
  }
  return *duration;
}

Options toOptions(Arguments arguments, Command command) {
  Options options;
  options.command = command;
  options.file = std::move(arguments.file);
  options.sheet = std::move(arguments.sheet);
  if (arguments.range) {
    options.range = readRange(*arguments.range);
  }
  options.format = arguments.format == "json" ? OutputFormat::Json : OutputFormat::Table;
  options.threadCount = readThreadCount(arguments.threads);
  options.timeZone = findTimeZone(arguments.timeZone);
  options.now = readNow(arguments.now, options.timeZone);
  checkLocale(arguments.locale);
  options.localeName = std::move(arguments.locale);
  options.strict = arguments.strict;
  options.mostMemory = readMemory(arguments.mostMemory);
  options.timeout = readTimeout(arguments.timeout);
  return options;
}

}  // namespace

std::variant<Options, ExitStatus> parseCommandLine(int argc, char const* const* argv,
                                                   std::ostream& out, std::ostream& err) {
  CLI::App app("Tells which conditional formats of a workbook hold, and what they do.", "cndfrmt");
  app.require_subcommand(0, 1);  // checked below, so that the message names an unknown command
  app.failure_message([](CLI::App const*, CLI::Error const& error) {
    return toMessageLine(fmt::format("cndfrmt: {}; cndfrmt --help says more", error.what())) + '\n';
  });
  app.set_version_flag("--version", "cndfrmt " CNDFRMT_VERSION);
  Arguments arguments;
  auto* const resolve = app.add_subcommand(
      "resolve", "Print every cell that conditional formats style, its style, and why");
  auto* const rules = app.add_subcommand("rules", "Print the rules of each sheet by priority");
  auto* const verdicts = app.add_subcommand(
      "verdicts", "Print for each rule and cell whether the rule's condition holds by itself");
  addOptions(*resolve, arguments, true);
  addThreads(*resolve, arguments);
  addOptions(*rules, arguments, true);
  addOptions(*verdicts, arguments, false);
  try {
    app.parse(argc, argv);
    if (app.get_subcommands().empty()) {
      throw CLI::RequiredError("A command (resolve, rules or verdicts)");
    }
  } catch (CLI::ParseError const& error) {
    int const code = app.exit(error, out, err);
    return code == 0 ? ExitStatus::Success : ExitStatus::BadUsage;
  }
  auto const command = resolve->parsed() ? Command::Resolve
                       : rules->parsed() ? Command::Rules
                                         : Command::Verdicts;
  return toOptions(std::move(arguments), command);
}

}  // namespace Zorv::Tool
