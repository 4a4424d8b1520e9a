#include "tool/Text/Swatch.h"

#include <fmt/format.h>

namespace Zorv::Tool {

void appendSwatch(std::string& text, DOM::Colour const& colour) {
  fmt::format_to(std::back_inserter(text), "\x1B[48;2;{};{};{}m{:{}}\x1B[0m", colour.red,
                 colour.green, colour.blue, "", swatchWidth);
}

}  // namespace Zorv::Tool
