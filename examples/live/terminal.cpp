#include "terminal.h"

#include <cerrno>
#include <csignal>
#include <map>
#include <stdexcept>

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

/// Bytes that keys send; see ECMA-48.
std::map<std::string, std::string> const keyNames = {
    {"\x1b[A", "up"},       {"\x1b[B", "down"},       {"\x1b[C", "right"}, {"\x1b[D", "left"},
    {"\x1b[5~", "page up"}, {"\x1b[6~", "page down"}, {"\x1b[H", "home"},  {"\x1b[F", "last"},
    {"\x1b[2~", "insert"},  {"\x1b[3~", "delete"},    {"\r", "enter"},     {"\n", "enter"},
    {"\x7f", "backspace"},  {"\b", "backspace"},      {"\x11", "quit"},    {"\x03", "quit"},
    {"\x1b", "escape"},
};

bool waitForInput(int milliseconds) {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return poll(&input, 1, milliseconds) > 0;
}

std::optional<char> readByte() {
  char byte = 0;
  return read(STDIN_FILENO, &byte, 1) == 1 ? std::optional(byte) : std::nullopt;
}

void noteResize(int /*signal*/) {}  // that it came ends the wait for a key

}  // namespace

Terminal::Terminal() {
  if (tcgetattr(STDIN_FILENO, &_before) != 0) {
    throw std::runtime_error("standard input is no terminal");
  }
  termios raw = _before;
  cfmakeraw(&raw);
  tcsetattr(STDIN_FILENO, TCSANOW, &raw);
  struct sigaction onResize {};
  onResize.sa_handler = noteResize;
  sigaction(SIGWINCH, &onResize, nullptr);
  write("\x1b[?1049h\x1b[?25l");  // the other screen, without a cursor
}

Terminal::~Terminal() {
  write("\x1b[?25h\x1b[?1049l");
  tcsetattr(STDIN_FILENO, TCSANOW, &_before);
}

Terminal::Size Terminal::getSize() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
    return {24, 80};
  }
  return {size.ws_row, size.ws_col};
}

std::optional<std::string> Terminal::readKey(std::chrono::milliseconds wait) {
  constexpr int restOfKey = 20;  // milliseconds in which the rest of a sequence comes
  if (!waitForInput(static_cast<int>(wait.count()))) {
    return std::nullopt;
  }
  auto const first = readByte();
  if (!first) {
    return "end";
  }
  std::string key(1, *first);
  if (key == "\x1b") {
    constexpr std::size_t longest = 8;
    while (key.size() < longest && waitForInput(restOfKey)) {
      auto const next = readByte();
      if (!next) {
        break;
      }
      key += *next;
      if (key.size() > 2 && (*next == '~' || (*next >= 'A' && *next <= 'Z'))) {
        break;
      }
    }
  }
  auto const named = keyNames.find(key);
  return named != keyNames.end() ? named->second : key;
}

void Terminal::write(std::string const& text) {
  std::size_t written = 0;
  while (written < text.size()) {
    auto const count = ::write(STDOUT_FILENO, text.data() + written, text.size() - written);
    if (count < 0 && errno != EINTR) {
      return;
    }
    written += count > 0 ? static_cast<std::size_t>(count) : 0;
  }
}
