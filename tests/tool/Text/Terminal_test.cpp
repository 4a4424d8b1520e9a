#include "tool/Text/Terminal.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

using Render::ColourDepth;

/// A variable of the environment, until the end of its life.
class Variable {
public:
  Variable(char const* name, char const* value) : _name(name) {
    if (auto const* const before = std::getenv(name)) {
      _before = before;
    }
    set(value);
  }
  ~Variable() { set(_before ? _before->c_str() : nullptr); }
  Variable(Variable const&) = delete;
  Variable& operator=(Variable const&) = delete;

private:
  void set(char const* value) { value == nullptr ? unsetenv(_name) : setenv(_name, value, 1); }

  char const* _name;
  std::optional<std::string> _before;
};

constexpr int noTerminal = -1;

TEST(Terminal, ColoursAreThoseOfTheEnvironment) {
  struct Case {
    char const* term;
    char const* colorTerm;
    ColourDepth expected;
  };
  for (auto const& [term, colorTerm, expected] : {
           Case{"xterm-256color", "truecolor", ColourDepth::Direct},
           Case{"xterm", "24bit", ColourDepth::Direct},
           Case{"xterm-direct", nullptr, ColourDepth::Direct},
           Case{"xterm-256color", nullptr, ColourDepth::Indexed},
           Case{"screen", "", ColourDepth::Indexed},
           Case{nullptr, nullptr, ColourDepth::Indexed},
       }) {
    Variable const first("TERM", term);
    Variable const second("COLORTERM", colorTerm);
    EXPECT_EQ(Terminal::find(noTerminal, ColourChoice::Always).colours, expected);
  }
}

TEST(Terminal, WhatIsNoTerminalHasNeitherColoursNorAWidth) {
  Variable const first("COLORTERM", "truecolor");
  Variable const second("COLUMNS", "100");
  auto const terminal = Terminal::find(noTerminal, ColourChoice::Auto);
  EXPECT_FALSE(terminal.hasColours());
  EXPECT_FALSE(terminal.width);
}

}  // namespace
}  // namespace Zorv::Tool
