#pragma once

#include <boost/utility/string_ref.hpp>

#include "Utils/Export.h"

namespace Zorv {

/// Reports a broken internal rule on standard error and aborts the process.
///
/// The report is one line: `FILE:LINE: assertion failed: "EXPRESSION"`. `file` is the source path
/// below the source tree's root, with `/code/` in front. Never returns, never throws, and may be
/// called from any thread.
[[noreturn]] ZORV_HOST_EXPORT void doFailAssert(char const* file, int line,
                                                char const* expression) noexcept;

/// Reports likewise, with `: MESSAGE` at the end of the line.
[[noreturn]] ZORV_HOST_EXPORT void doFailAssert(char const* file, int line, char const* expression,
                                                boost::string_ref message) noexcept;

}  // namespace Zorv
