#include "tool/Help/ManPage.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace Zorv::Tool {

namespace {

/// A text of which roff takes no character for a request or an escape.
std::string escapeRoff(std::string_view text) {
  std::string result;
  for (char const c : text) {
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else {
      bool const beginsLine = result.empty() || result.back() == '\n';
      result += beginsLine && (c == '.' || c == '\'') ? "\\&" : "";
      result += c;
    }
  }
  return result;
}

std::string describeArguments(CommandDescription const& command) {
  std::string text;
  for (auto const& option : command.options) {
    if (option.isPositional) {
      text += fmt::format(" \\fI{}\\fR", escapeRoff(option.names.front()));
    }
  }
  return text;
}

std::string writeOptionNames(OptionDescription const& option) {
  std::string text;
  for (auto const& name : option.names) {
    text += fmt::format("{}\\fB{}\\fR", text.empty() ? "" : ", ", escapeRoff(name));
  }
  return option.parameter.empty() ? text : fmt::format("{} \\fI{}\\fR", text, option.parameter);
}

void writeCommand(std::string& page, CommandDescription const& command) {
  page += fmt::format(".TP\n\\fB{}\\fR{}\n{}.\n", command.name, describeArguments(command),
                      escapeRoff(command.summary));
}

/// An option, and the commands that take it.
struct SharedOption {
  OptionDescription const* option;
  std::vector<std::string> commands;
};

/// Each option of some command once, in the order of the commands.
std::vector<SharedOption> shareOptions(std::span<CommandDescription const> commands) {
  std::vector<SharedOption> shared;
  for (auto const& command : commands) {
    for (auto const& option : command.options) {
      if (option.isPositional) {
        continue;
      }
      auto const found = std::ranges::find_if(shared, [&](SharedOption const& other) {
        return other.option->names == option.names && other.option->meaning == option.meaning;
      });
      if (found != shared.end()) {
        found->commands.push_back(command.name);
      } else {
        shared.push_back({&option, {command.name}});
      }
    }
  }
  return shared;
}

void writeOptions(std::string& page, std::span<CommandDescription const> commands) {
  page += ".SH OPTIONS\n";
  for (auto const& [option, takers] : shareOptions(commands)) {
    page += fmt::format(".TP\n{}\n{}.\n", writeOptionNames(*option), escapeRoff(option->meaning));
    if (takers.size() < commands.size()) {
      page += fmt::format("For {}.\n", fmt::join(takers, ", "));
    }
  }
}

void writeExamples(std::string& page, std::span<CommandDescription const> commands) {
  page += ".SH EXAMPLES\n.nf\n";
  for (auto const& command : commands) {
    for (auto const& example : command.examples) {
      page += escapeRoff(example) + '\n';
    }
  }
  page += ".fi\n";
}

}  // namespace

std::string writeManPage(std::span<CommandDescription const> commands, std::string_view version,
                         std::string_view exitStatuses) {
  auto page = fmt::format(
      ".TH CNDFRMT 1 \"\" \"cndfrmt {}\"\n"
      ".SH NAME\ncndfrmt \\- what the conditional formats of a workbook do, and why\n"
      ".SH SYNOPSIS\n\\fBcndfrmt\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR] \\fIFILE\\fR...\n"
      ".SH DESCRIPTION\nReads workbooks (.xlsx, .xlsm) and tells which of their conditional "
      "formats "
      "hold for a cell, and what they do. A file is never changed in place.\n"
      ".SH COMMANDS\n",
      version);
  for (auto const& command : commands) {
    writeCommand(page, command);
  }
  writeOptions(page, commands);
  page += fmt::format(".SH EXIT STATUS\n.nf\n{}.fi\n", escapeRoff(exitStatuses));
  writeExamples(page, commands);
  return page;
}

}  // namespace Zorv::Tool
