#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tool/Help/CommandDescription.h"

namespace Zorv::Tool {

/// The manual page cndfrmt(1), in the man macros of roff. `exitStatuses` are lines of a status and
/// its meaning.
[[nodiscard]] std::string writeManPage(std::span<CommandDescription const> commands,
                                       std::string_view version, std::string_view exitStatuses);

}  // namespace Zorv::Tool
