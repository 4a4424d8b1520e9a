#pragma once

#include <cstdint>

namespace Zorv::Render {

/// Colours of what surrounds the sheets of a page. Sheets keep the colours of the file.
enum class Theme : std::uint8_t {
  Auto,  ///< as the reader's system has it
  Light,
  Dark,
};

}  // namespace Zorv::Render
