#include "tool/Input/CommandLine.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include "tool/Help/CommandDescription.h"
#include "tool/Help/Completion.h"
#include "tool/Help/ManPage.h"
#include "tool/Input/Arguments.h"
#include "words/Printable.h"

// The one source that includes the library of command lines, which is slow to compile.
namespace Zorv::Tool {

namespace {

void addFiles(CLI::App& command, Arguments& arguments) {
  command.add_option("FILE", arguments.files, "The workbooks, .xlsx or .xlsm; - is standard input")
      ->required()
      ->type_name("");
}

/// One of some words. The name lists them for completions.
CLI::Validator choice(std::vector<std::string> const& words) {
  return CLI::IsMember(words).description("").name(fmt::format("{}", fmt::join(words, " ")));
}

/// The argument of a command that takes one file.
void addFile(CLI::App& command, Arguments& arguments, std::string const& meaning) {
  command
      .add_option_function<std::string>(
          "FILE", [&arguments](std::string const& file) { arguments.files = {file}; }, meaning)
      ->required()
      ->type_name("");
}

/// An option that may be given several times, with one value each.
CLI::Option* addRepeated(CLI::App& command, std::string const& name,
                         std::vector<std::string>& values, std::string const& meaning) {
  return command.add_option(name, values, meaning)->expected(1)->take_all()->type_name("TEXT");
}

void addSelection(CLI::App& command, Arguments& arguments) {
  addRepeated(command, "--sheet", arguments.sheets, "Only the sheet of this name; may be repeated");
  addRepeated(command, "--range", arguments.ranges,
              "Only these cells, such as A1:C9 or 'Sheet 1'!B2; may be repeated");
}

void addFormat(CLI::App& command, Arguments& arguments, std::vector<std::string> const& formats) {
  command
      .add_option("--format", arguments.format,
                  fmt::format("How to print: {}", fmt::join(formats, ", ")))
      ->check(choice(formats))
      ->type_name("FORMAT");
}

void addZoneAndLocale(CLI::App& command, Arguments& arguments) {
  command.add_option("--time-zone", arguments.timeZone,
                     "The zone of that moment, such as Europe/Berlin (default: UTC)");
  command.add_option("--locale", arguments.locale,
                     "Language and country, such as de-DE (default: en-US)");
}

void addMoment(CLI::App& command, Arguments& arguments) {
  command.add_option("--now", arguments.now,
                     "The moment for date rules, as 2026-11-21T12:00:00 (default: the clock)");
  addZoneAndLocale(command, arguments);
}

void addSemantics(CLI::App& command, Arguments& arguments) {
  command
      .add_option("--semantics", arguments.semantics,
                  "The meaning of conditions: own (default), or widespread, that of other programs")
      ->check(choice({"own", "widespread"}))
      ->type_name("WHOSE");
}

void addBounds(CLI::App& command, Arguments& arguments) {
  command.add_flag("--strict", arguments.strict,
                   "Exit with status 1 if anything is not as the file means it");
  command
      .add_option("--max-memory", arguments.mostMemory,
                  "Refuse to use more memory, such as 512M or 2G (default: 4G)")
      ->type_name("SIZE");
  command
      .add_option("--timeout", arguments.timeout,
                  "Stop after this processor time, such as 30s (default: 10m, 50s for small files)")
      ->type_name("DURATION");
}

void addThreads(CLI::App& command, Arguments& arguments) {
  command.add_option("--threads", arguments.threads,
                     "How many threads work, 1 to 256 (default: one for each core)");
}

void addColour(CLI::App& command, Arguments& arguments) {
  command
      .add_option("--colour,--color", arguments.colour,
                  "Colours on the terminal: auto (default), always, never")
      ->check(choice({"auto", "always", "never"}))
      ->type_name("WHEN");
}

void addResolveOptions(CLI::App& command, Arguments& arguments) {
  addFiles(command, arguments);
  addSelection(command, arguments);
  addFormat(command, arguments, {"table", "json", "jsonl", "csv", "tsv"});
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addThreads(command, arguments);
  addColour(command, arguments);
}

void addExplainOptions(CLI::App& command, Arguments& arguments) {
  addFile(command, arguments, "The workbook, .xlsx or .xlsm; - is standard input");
  command
      .add_option("CELL", arguments.ranges,
                  "The cells, such as 'Sheet 1'!B7 or B7:C9; without a sheet, on each sheet")
      ->required()
      ->type_name("");
  addRepeated(command, "--sheet", arguments.sheets, "Only the sheet of this name; may be repeated");
  command
      .add_option("--rule", arguments.rule,
                  "Only what became of the rule of this number, wherever it lies")
      ->type_name("NUMBER");
  addFormat(command, arguments, {"table", "json", "jsonl"});
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addColour(command, arguments);
}

void addRulesOptions(CLI::App& command, Arguments& arguments) {
  addFiles(command, arguments);
  addSelection(command, arguments);
  addFormat(command, arguments, {"table", "json", "jsonl", "csv", "tsv"});
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addColour(command, arguments);
}

void addVerdictsOptions(CLI::App& command, Arguments& arguments) {
  addFiles(command, arguments);
  addSelection(command, arguments);
  addFormat(command, arguments, {"tsv", "csv", "jsonl"});
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addThreads(command, arguments);
}

void addCheckOptions(CLI::App& command, Arguments& arguments) {
  addFiles(command, arguments);
  addSelection(command, arguments);
  addFormat(command, arguments, {"table", "json", "jsonl", "sarif"});
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
}

void addTidyOptions(CLI::App& command, Arguments& arguments) {
  addFile(command, arguments, "The workbook, .xlsx or .xlsm");
  command.add_option("-o,--output", arguments.target, "The file to write; may be FILE itself")
      ->type_name("FILE");
  command.add_flag("--dry-run", arguments.dryRun, "Print the plan, and write nothing");
  command.add_flag("--force", arguments.mayReplace, "Replace another file that exists");
  addFormat(command, arguments, {"table", "json"});
  addMoment(command, arguments);
  addBounds(command, arguments);
  addThreads(command, arguments);
  addColour(command, arguments);
}

void addDiffOptions(CLI::App& command, Arguments& arguments) {
  command
      .add_option("FILE", arguments.files, "Two workbooks, .xlsx or .xlsm; or one, and --now twice")
      ->required()
      ->type_name("");
  addSelection(command, arguments);
  addFormat(command, arguments, {"table", "json", "csv", "tsv"});
  addRepeated(command, "--now", arguments.moments,
              "The moment for date rules, as 2026-11-21T12:00:00; twice: one for each side");
  addZoneAndLocale(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addThreads(command, arguments);
  addColour(command, arguments);
}

void addRenderOptions(CLI::App& command, Arguments& arguments) {
  addFile(command, arguments, "The workbook, .xlsx or .xlsm; - is standard input");
  command
      .add_option("-o,--output", arguments.target,
                  "The file to write; its ending says what: .html, .svg, .png, .pdf")
      ->required()
      ->type_name("FILE");
  addSelection(command, arguments);
  command
      .add_option("--scale", arguments.scale,
                  "The size of a .png or .svg, 0.1 to 10 (default: 1, that of the sheet)")
      ->type_name("NUMBER");
  command
      .add_option("--theme", arguments.theme,
                  "The colours around the sheets of an .html: auto (default), light, dark")
      ->check(choice({"auto", "light", "dark"}))
      ->type_name("THEME");
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addThreads(command, arguments);
}

void addShowOptions(CLI::App& command, Arguments& arguments) {
  addFiles(command, arguments);
  addSelection(command, arguments);
  command
      .add_option("--width", arguments.width,
                  "Columns of a line (default: those of the terminal, or as many as are needed)")
      ->type_name("COLUMNS");
  addMoment(command, arguments);
  addSemantics(command, arguments);
  addBounds(command, arguments);
  addThreads(command, arguments);
  addColour(command, arguments);
}

constexpr char const* commonExitStatuses =
    "0    the result is complete\n"
    "1    a file cannot be read or evaluated, or a limit was met\n"
    "2    the command line is wrong\n"
    "130  interrupted, 143 terminated\n";

constexpr char const* diffExitStatuses =
    "0    nothing differs\n"
    "1    something differs\n"
    "2    trouble: the command line is wrong, a file cannot be read, or a limit was met\n"
    "130  interrupted, 143 terminated\n";

/// A command as users see it. To add one: an entry below, its options above.
struct CommandEntry {
  Command command;
  char const* name;
  char const* summary;
  char const* examples;
  void (*addOptions)(CLI::App&, Arguments&);
  char const* exitStatuses = commonExitStatuses;
};

constexpr CommandEntry commandEntries[] = {
    {Command::Resolve, "resolve",
     "Print every cell that conditional formats style, its style, and why",
     "cndfrmt resolve budget.xlsx\n"
     "cndfrmt resolve budget.xlsx --sheet Sales --range B2:F20\n"
     "cndfrmt resolve *.xlsx --format jsonl >cells.jsonl\n",
     &addResolveOptions},
    {Command::Explain, "explain", "Say why a cell looks as it does: what became of each rule on it",
     "cndfrmt explain budget.xlsx \"'Sheet 1'!B7\"\n"
     "cndfrmt explain budget.xlsx Sales!B7:B9 Sales!F2 --format json\n"
     "cndfrmt explain budget.xlsx Sales!B7 --rule 3\n",
     &addExplainOptions},
    {Command::Rules, "rules", "Print the rules of each sheet by priority",
     "cndfrmt rules budget.xlsx\n"
     "cndfrmt rules budget.xlsx --format csv >rules.csv\n",
     &addRulesOptions},
    {Command::Verdicts, "verdicts",
     "Print for each rule and cell whether the rule's condition holds by itself",
     "cndfrmt verdicts budget.xlsx --range \"'Sheet 1'!A1:B9\"\n"
     "cndfrmt verdicts budget.xlsx --now 2026-12-31 --format csv\n",
     &addVerdictsOptions},
    {Command::Check, "check",
     "Print what is wrong, dead, repeated or slow among the rules, and what to do about it",
     "cndfrmt check budget.xlsx\n"
     "cndfrmt check *.xlsx --strict\n"
     "cndfrmt check budget.xlsx --format sarif >findings.sarif\n",
     &addCheckOptions},
    {Command::Tidy, "tidy",
     "Put fragments of rules together and drop dead rules; no cell looks different afterwards",
     "cndfrmt tidy budget.xlsx --dry-run\n"
     "cndfrmt tidy budget.xlsx -o tidied.xlsx\n"
     "cndfrmt tidy budget.xlsx -o budget.xlsx\n",
     &addTidyOptions},
    {Command::Diff, "diff",
     "Print the rules and cells that differ between two workbooks or two moments",
     "cndfrmt diff old.xlsx new.xlsx\n"
     "cndfrmt diff budget.xlsx --now 2026-11-30 --now 2026-12-01\n",
     &addDiffOptions, diffExitStatuses},
    {Command::Render, "render", "Write the sheets as they look to a page or a picture",
     "cndfrmt render budget.xlsx -o budget.html\n"
     "cndfrmt render budget.xlsx -o sales.png --sheet Sales --scale 2\n"
     "cndfrmt render budget.xlsx -o budget.pdf --now 2026-12-31\n",
     &addRenderOptions},
    {Command::Show, "show", "Show the sheets as they look, on the terminal",
     "cndfrmt show budget.xlsx\n"
     "cndfrmt show budget.xlsx --sheet Sales --range A1:H40\n"
     "cndfrmt show budget.xlsx --colour always | less -RS\n",
     &addShowOptions},
};

std::vector<std::string> splitText(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    auto const end = std::min(text.find(separator), text.size());
    parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

std::string indentLines(std::string_view text) {
  return fmt::format("  {}\n", fmt::join(splitText(text, '\n'), "\n  "));
}

std::unique_ptr<CLI::App> makeApp(Arguments& arguments) {
  auto app = std::make_unique<CLI::App>(
      "Tells which conditional formats of a workbook hold, and what they do.", "cndfrmt");
  app->require_subcommand(0, 1);  // checked later, so that the message names an unknown command
  app->failure_message([](CLI::App const*, CLI::Error const& error) {
    return Words::toMessageLine(
               fmt::format("cndfrmt: {}; cndfrmt --help says more", error.what())) +
           '\n';
  });
  app->set_help_flag("-h,--help", "Print this help and exit");
  app->set_version_flag("-V,--version", "cndfrmt " CNDFRMT_VERSION, "Print the version and exit");
  app->footer("cndfrmt help COMMAND says more about a command.\n");
  for (auto const& entry : commandEntries) {
    auto* const command = app->add_subcommand(entry.name, entry.summary);
    command->footer(fmt::format("Examples:\n{}\nExit status:\n{}", indentLines(entry.examples),
                                indentLines(entry.exitStatuses)));
    entry.addOptions(*command, arguments);
    command->callback([&arguments, &entry] { arguments.command = entry.command; });
  }
  return app;
}

std::string listCommands() {
  std::string text;
  for (auto const& entry : commandEntries) {
    text += fmt::format("{}{}", text.empty() ? "" : ", ", entry.name);
  }
  return text;
}

/// `help COMMAND` is `COMMAND --help`.
std::vector<std::string> readWords(std::span<char const* const> arguments) {
  std::vector<std::string> words(arguments.begin(), arguments.end());
  if (!words.empty() && words.front() == "help") {
    words.erase(words.begin());
    words.emplace_back("--help");
  }
  return words;
}

OptionDescription describe(CLI::Option& option) {
  OptionDescription description;
  description.meaning = option.get_description();
  description.isPositional = option.get_positional();
  if (option.get_positional()) {
    description.names.push_back(option.get_name(true));
    return description;
  }
  for (auto const& name : option.get_snames()) {
    description.names.push_back("-" + name);
  }
  for (auto const& name : option.get_lnames()) {
    description.names.push_back("--" + name);
  }
  if (option.get_items_expected_max() > 0) {
    description.parameter = option.get_type_name();
  }
  try {
    description.choices = splitText(option.get_validator()->get_name(), ' ');
  } catch (CLI::OptionNotFound const&) {
    // It takes any text.
  }
  return description;
}

/// The commands that work on files.
std::vector<CommandDescription> describeCommands(CLI::App const& app) {
  std::vector<CommandDescription> descriptions;
  for (auto const& entry : commandEntries) {
    auto& description = descriptions.emplace_back();
    description.name = entry.name;
    description.summary = entry.summary;
    description.examples = splitText(entry.examples, '\n');
    for (auto* option : app.get_subcommand(entry.name)->get_options()) {
      description.options.push_back(describe(*option));
    }
  }
  return descriptions;
}

/// The commands that print what helps with the others.
struct Helpers {
  CLI::App* manual = nullptr;
  CLI::App* completion = nullptr;
  std::string shell;
};

void addHelpers(CLI::App& app, Helpers& helpers) {
  helpers.manual = app.add_subcommand("manual", "Print the manual page, for man -l");
  helpers.completion = app.add_subcommand("completion", "Print the completions for a shell");
  helpers.completion->add_option("SHELL", helpers.shell, "bash, zsh or fish")
      ->required()
      ->check(choice({"bash", "zsh", "fish"}))
      ->type_name("");
}

/// Runs a command that needs no file; nothing if another was given.
std::optional<ExitStatus> runHelper(CLI::App const& app, Helpers const& helpers,
                                    std::ostream& out) {
  if (helpers.manual->parsed()) {
    out << writeManPage(describeCommands(app), CNDFRMT_VERSION, commonExitStatuses);
  } else if (helpers.completion->parsed()) {
    out << writeCompletion(describeCommands(app), helpers.shell).value();
  } else {
    return std::nullopt;
  }
  return ExitStatus::Success;
}

}  // namespace

std::variant<Options, ExitStatus> parseCommandLine(int argc, char const* const* argv,
                                                   std::ostream& out, std::ostream& err) {
  Arguments arguments;
  Helpers helpers;
  auto const app = makeApp(arguments);
  addHelpers(*app, helpers);
  try {
    auto words = readWords(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    std::ranges::reverse(words);  // as the library wants them
    app->parse(std::move(words));
    if (app->get_subcommands().empty()) {
      throw CLI::RequiredError(fmt::format("A command ({})", listCommands()));
    }
  } catch (CLI::ParseError const& error) {
    int const code = app->exit(error, out, err);
    return code == 0 ? ExitStatus::Success : ExitStatus::BadUsage;
  }
  if (auto const status = runHelper(*app, helpers, out)) {
    return *status;
  }
  return toOptions(std::move(arguments));
}

}  // namespace Zorv::Tool
