#include "tool/Text/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace Zorv::Tool {

namespace {

constexpr std::size_t usualWidth = 80;

std::string_view readVariable(char const* name) noexcept {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing changes the environment.
  auto const* const text = std::getenv(name);
  return text == nullptr ? std::string_view() : text;
}

std::size_t findWidth(int descriptor) noexcept {
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    return size.ws_col;
  }
  auto const columns = readVariable("COLUMNS");
  std::size_t width = 0;
  std::from_chars(columns.data(), columns.data() + columns.size(), width);
  return width > 0 ? width : usualWidth;
}

Render::ColourDepth findDepth() noexcept {
  auto const hint = readVariable("COLORTERM");
  bool const isDirect =
      hint == "truecolor" || hint == "24bit" || readVariable("TERM").ends_with("-direct");
  return isDirect ? Render::ColourDepth::Direct : Render::ColourDepth::Indexed;
}

}  // namespace

Terminal Terminal::find(int descriptor, ColourChoice colour) noexcept {
  bool const isTerminal = isatty(descriptor) == 1;
  bool const mayColour =
      isTerminal && readVariable("NO_COLOR").empty() && readVariable("TERM") != "dumb";
  bool const hasColours =
      colour == ColourChoice::Always || (colour == ColourChoice::Auto && mayColour);
  return {.width = isTerminal ? std::optional(findWidth(descriptor)) : std::nullopt,
          .colours = hasColours ? findDepth() : Render::ColourDepth::None};
}

}  // namespace Zorv::Tool
