#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Zorv::Workbook {

/// The target of a hyperlink: `address`, and a place in what it names; without an address, a place
/// in the workbook, as `#Sheet2!A1`.
///
/// Nothing for an address of a scheme other than http, https and mailto, for one with control
/// characters, for one longer than spreadsheet programs allow, and where both are empty.
[[nodiscard]] std::optional<std::string> makeLinkTarget(std::string address,
                                                        std::string_view place);

}  // namespace Zorv::Workbook
