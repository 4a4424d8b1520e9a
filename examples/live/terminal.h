#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <termios.h>

/// The terminal as a whole screen, for as long as the object lives.
class Terminal {
public:
  Terminal();
  Terminal(Terminal const&) = delete;
  Terminal& operator=(Terminal const&) = delete;
  ~Terminal();

  struct Size {
    unsigned long rows;
    unsigned long columns;
  };
  [[nodiscard]] static Size getSize();

  /// Waits for a key: a letter as it is typed, or the name of another one, such as "up". Nothing
  /// after the time, or where the window has got another size; "end" where there is no more input.
  [[nodiscard]] static std::optional<std::string> readKey(std::chrono::milliseconds wait);

  /// Writes a screen in one piece, so that none is seen half.
  static void write(std::string const& text);

private:
  termios _before{};
};
