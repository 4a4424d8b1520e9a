#include "tool/Input/RenderOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "tool/Input/Arguments.h"
#include "tool/Input/Errors.h"

namespace Zorv::Tool {

namespace {

PictureFormat readPictureFormat(std::string const& target) {
  if (target == "-") {
    throw UsageError("-o: the ending of a file says what is written; name one in place of -");
  }
  using Ending = std::pair<std::string_view, PictureFormat>;
  constexpr std::array<Ending, 4> endings = {{
      {".html", PictureFormat::Html},
      {".svg", PictureFormat::Svg},
      {".png", PictureFormat::Png},
      {".pdf", PictureFormat::Pdf},
  }};
  auto ending = std::filesystem::path(target).extension().string();
  std::ranges::transform(ending, ending.begin(), [](char letter) {
    return 'A' <= letter && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  auto const* const found = std::ranges::find(endings, ending, &Ending::first);
  if (found == endings.end()) {
    throw UsageError(
        fmt::format("-o: \"{}\" ends in none of .html, .svg, .png and .pdf, which say what is "
                    "written",
                    target));
  }
  return found->second;
}

double readScale(std::optional<std::string> const& text, PictureFormat format) {
  if (!text) {
    return 1;
  }
  if (format != PictureFormat::Png && format != PictureFormat::Svg) {
    throw UsageError("--scale is for .png and .svg; a page has its own size");
  }
  constexpr double smallest = 0.1;
  constexpr double largest = 10;
  double scale = 0;
  auto const* const end = text->data() + text->size();
  auto const [rest, error] = std::from_chars(text->data(), end, scale);
  if (error != std::errc() || rest != end || !(scale >= smallest && scale <= largest)) {
    throw UsageError(fmt::format("--scale: \"{}\" is no scale; write a number from {} to {}", *text,
                                 smallest, largest));
  }
  return scale;
}

Render::Theme readTheme(std::optional<std::string> const& text, PictureFormat format) {
  if (!text) {
    return Render::Theme::Auto;
  }
  if (format != PictureFormat::Html) {
    throw UsageError("--theme is for .html; a picture has the colours of the file");
  }
  return *text == "light"  ? Render::Theme::Light
         : *text == "dark" ? Render::Theme::Dark
                           : Render::Theme::Auto;
}

}  // namespace

RenderOptions readRenderOptions(Arguments const& arguments) {
  if (arguments.command != Command::Render) {
    return {};
  }
  auto const format = readPictureFormat(arguments.target);
  return {.target = arguments.target,
          .format = format,
          .scale = readScale(arguments.scale, format),
          .theme = readTheme(arguments.theme, format)};
}

}  // namespace Zorv::Tool
