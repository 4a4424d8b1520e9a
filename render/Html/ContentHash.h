#pragma once

#include <string>
#include <string_view>

namespace Zorv::Render {

/// The source expression that allows one text in a Content-Security-Policy: `'sha256-...'`, with
/// the hash of FIPS 180-4 in base 64 (W3C CSP 3, 2.3.1).
[[nodiscard]] std::string hashOfContent(std::string_view text);

}  // namespace Zorv::Render
