#pragma once

#include <string>
#include <string_view>

#include "analysis/Check/CheckFinding.h"

/// Findings about rules in words.
namespace Zorv::Words {

/// `error`, `warning` or `note`.
[[nodiscard]] std::string_view toText(Analysis::Severity severity) noexcept;

/// A finding as a printable sentence, cut if it is very long: `rule 5 never holds: its first bound,
/// 9, is above its second, 1`.
[[nodiscard]] std::string describeFinding(Analysis::CheckFinding const& finding);

}  // namespace Zorv::Words
