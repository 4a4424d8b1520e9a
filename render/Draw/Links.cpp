#include "render/Draw/Links.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

namespace Zorv::Render::Draw {

namespace {

bool isSafeAddress(std::string_view address) noexcept {
  constexpr std::size_t longest = 2000;
  constexpr std::array<std::string_view, 3> schemes{"https://", "http://", "mailto:"};
  bool const isKnown = std::ranges::any_of(
      schemes, [&](std::string_view scheme) { return address.starts_with(scheme); });
  return isKnown && address.size() <= longest &&
         std::ranges::all_of(address, [](char c) { return c > ' ' && c <= '~'; });
}

/// For cairo, which ends a text at an apostrophe.
std::string quote(std::string_view text) {
  std::string quoted;
  for (char const c : text) {
    if (c == '\'' || c == '\\') {
      quoted += '\\';
    }
    quoted += c;
  }
  return quoted;
}

}  // namespace

void markLink(cairo_t* cairo, std::string_view address, Box const& place) {
  if (!isSafeAddress(address)) {
    return;
  }
  std::string const attributes =
      fmt::format("rect=[{:.2f} {:.2f} {:.2f} {:.2f}] uri='{}'", place.left, place.top,
                  place.width(), place.height(), quote(address));
  cairo_tag_begin(cairo, CAIRO_TAG_LINK, attributes.c_str());
  cairo_tag_end(cairo, CAIRO_TAG_LINK);
}

}  // namespace Zorv::Render::Draw
