#pragma once

#include <cstdint>
#include <stop_token>
#include <string>

namespace Zorv::Tool {

/// Lets the process use so many more bytes of data memory than it uses now; what needs more fails
/// with std::bad_alloc.
///
/// The first failure requests a stop, since work that goes on after an exception would fail again
/// and again, and raises the limit a little, so that the work can be wound up. A failure where no
/// exception may pass ends the process: with `message` as a line on standard error, and with
/// `exitStatus`. Call it once.
void limitMemory(std::uint64_t bytes, std::string message, int exitStatus, std::stop_source stop);

/// True after the first failure.
[[nodiscard]] bool hasLackedMemory() noexcept;

}  // namespace Zorv::Tool
