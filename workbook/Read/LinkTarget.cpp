#include "workbook/Read/LinkTarget.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "Utils/CaseFolding.h"

namespace Zorv::Workbook {

namespace {

/// Schemes that lead to nothing on the reader's own machine and run no script.
bool hasHarmlessScheme(std::string_view address) noexcept {
  constexpr std::array<std::string_view, 3> schemes{"http://", "https://", "mailto:"};
  return std::ranges::any_of(schemes, [address](std::string_view scheme) {
    return address.size() > scheme.size() &&
           std::ranges::equal(address.substr(0, scheme.size()), scheme, {}, toAsciiLower);
  });
}

bool isControlCharacter(char character) noexcept {
  constexpr unsigned char lastLow = 0x1F;
  constexpr unsigned char last = 0x7F;
  auto const code = static_cast<unsigned char>(character);
  return code <= lastLow || code == last;
}

}  // namespace

std::optional<std::string> makeLinkTarget(std::string address, std::string_view place) {
  constexpr std::size_t longest = 2'083;
  if (!address.empty() && !hasHarmlessScheme(address)) {
    return std::nullopt;
  }
  if (!place.empty()) {
    address.append("#").append(place);
  }
  bool const isUsable = !address.empty() && address.size() <= longest &&
                        std::ranges::none_of(address, isControlCharacter);
  return isUsable ? std::optional(std::move(address)) : std::nullopt;
}

}  // namespace Zorv::Workbook
