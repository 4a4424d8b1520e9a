#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tool/Help/CommandDescription.h"

namespace Zorv::Tool {

/// The script with which a shell completes command lines of the tool: bash, zsh or fish. Nothing
/// for another shell.
[[nodiscard]] std::optional<std::string> writeCompletion(
    std::span<CommandDescription const> commands, std::string_view shell);

}  // namespace Zorv::Tool
