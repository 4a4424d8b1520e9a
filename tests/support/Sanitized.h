#pragma once

namespace Zorv::TestSupport {

/// True where a sanitizer watches the program, which then takes ten times as long. What tests show
/// by sheer size, like a limit of half a billion steps, is left to builds without one.
#if defined(__has_feature)
inline constexpr bool sanitized =
    __has_feature(address_sanitizer) != 0 || __has_feature(thread_sanitizer) != 0;
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif

}  // namespace Zorv::TestSupport
