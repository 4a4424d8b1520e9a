#pragma once

namespace Zorv::Tool {

/// Runs the tool with the arguments of a process, and gives the process's exit status. Writes to
/// the standard streams; to be called once. Exceptions become messages.
[[nodiscard]] int runProgram(int argc, char const* const* argv);

}  // namespace Zorv::Tool
