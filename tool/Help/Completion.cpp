#include "tool/Help/Completion.h"

#include <fmt/format.h>

namespace Zorv::Tool {

namespace {

/// A text between apostrophes, as all three shells read it.
std::string quoteForShell(std::string_view text) {
  std::string quoted = "'";
  for (char const c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + '\'';
}

std::string listCommands(std::span<CommandDescription const> commands) {
  std::string text = "help";
  for (auto const& command : commands) {
    text += ' ' + command.name;
  }
  return text;
}

std::string listOptions(CommandDescription const& command) {
  std::string text;
  for (auto const& option : command.options) {
    if (!option.isPositional) {
      text += fmt::format("{}{}", text.empty() ? "" : " ", fmt::join(option.names, " "));
    }
  }
  return text;
}

/// The branches of a case statement that find the words after an option.
std::string writeBashChoices(CommandDescription const& command) {
  std::string text;
  for (auto const& option : command.options) {
    if (option.choices.empty()) {
      continue;
    }
    std::string pattern;
    for (auto const& name : option.names) {
      pattern += fmt::format("{}'{} {}'", pattern.empty() ? "" : " | ", command.name, name);
    }
    text += fmt::format("      {}) words='{}' ;;\n", pattern, fmt::join(option.choices, " "));
  }
  return text;
}

std::string writeBash(std::span<CommandDescription const> commands) {
  std::string choices;
  std::string options;
  for (auto const& command : commands) {
    choices += writeBashChoices(command);
    options += fmt::format("        {}) words='{}' ;;\n", command.name, listOptions(command));
  }
  return "# Completion of cndfrmt for bash.\n"
         "_cndfrmt() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=\n"
         "  if ((COMP_CWORD == 1)); then\n"
         "    words='" +
         listCommands(commands) +
         "'\n"
         "  else\n"
         "    case \"${COMP_WORDS[1]} $previous\" in\n" +
         choices +
         "    esac\n"
         "    if [[ -z $words && $current == -* ]]; then\n"
         "      case ${COMP_WORDS[1]} in\n" +
         options +
         "      esac\n"
         "    fi\n"
         "  fi\n"
         "  if [[ -n $words ]]; then\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
         "  else\n"
         "    mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
         "  fi\n"
         "}\n"
         "complete -o filenames -F _cndfrmt cndfrmt\n";
}

/// A text inside of the brackets of an option of zsh.
std::string escapeForZsh(std::string_view text) {
  std::string escaped;
  for (char const c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') {
      escaped += '\\';
    }
    escaped += c;
  }
  return escaped;
}

std::string writeZshOption(OptionDescription const& option) {
  std::string text;
  for (auto const& name : option.names) {
    auto entry = fmt::format("{}[{}]", name, escapeForZsh(option.meaning));
    if (!option.parameter.empty()) {
      entry += fmt::format(
          ":{}:{}", option.parameter,
          option.choices.empty() ? "" : fmt::format("({})", fmt::join(option.choices, " ")));
    }
    text += fmt::format("        {} \\\n", quoteForShell(entry));
  }
  return text;
}

std::string writeZsh(std::span<CommandDescription const> commands) {
  std::string summaries;
  std::string options;
  for (auto const& command : commands) {
    summaries += fmt::format(
        "      {}\n",
        quoteForShell(fmt::format("{}:{}", command.name, escapeForZsh(command.summary))));
    options += fmt::format("    {})\n      _arguments \\\n", command.name);
    for (auto const& option : command.options) {
      options += option.isPositional ? "" : writeZshOption(option);
    }
    options += "        '*:file:_files' ;;\n";
  }
  return "#compdef cndfrmt\n"
         "_cndfrmt() {\n"
         "  if ((CURRENT == 2)); then\n"
         "    local -a commands=(\n" +
         summaries +
         "    )\n"
         "    _describe command commands\n"
         "    return\n"
         "  fi\n"
         "  shift words\n"
         "  ((CURRENT--))\n"
         "  case $words[1] in\n" +
         options +
         "  esac\n"
         "}\n"
         "_cndfrmt \"$@\"\n";
}

std::string writeFishOption(std::string const& command, OptionDescription const& option) {
  auto line = fmt::format("complete -c cndfrmt -n '__fish_seen_subcommand_from {}'", command);
  for (std::string_view const name : option.names) {
    line += name.starts_with("--") ? fmt::format(" -l {}", name.substr(2))
                                   : fmt::format(" -s {}", name.substr(1));
  }
  if (!option.choices.empty()) {
    line += fmt::format(" -x -a '{}'", fmt::join(option.choices, " "));
  } else if (!option.parameter.empty()) {
    line += " -x";
  }
  return fmt::format("{} -d {}\n", line, quoteForShell(option.meaning));
}

std::string writeFish(std::span<CommandDescription const> commands) {
  std::string text = "# Completion of cndfrmt for fish.\n";
  for (auto const& command : commands) {
    text += fmt::format("complete -c cndfrmt -n __fish_use_subcommand -f -a {} -d {}\n",
                        command.name, quoteForShell(command.summary));
  }
  for (auto const& command : commands) {
    for (auto const& option : command.options) {
      text += option.isPositional ? "" : writeFishOption(command.name, option);
    }
  }
  return text;
}

}  // namespace

std::optional<std::string> writeCompletion(std::span<CommandDescription const> commands,
                                           std::string_view shell) {
  if (shell == "bash") {
    return writeBash(commands);
  }
  if (shell == "zsh") {
    return writeZsh(commands);
  }
  return shell == "fish" ? std::optional(writeFish(commands)) : std::nullopt;
}

}  // namespace Zorv::Tool
