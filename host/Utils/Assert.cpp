#include "Utils/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace Zorv {

void doFailAssert(char const* file, int line, char const* expression) noexcept {
  (void)std::fprintf(stderr, "%s:%d: assertion failed: \"%s\"\n", file, line, expression);
  std::abort();
}

void doFailAssert(char const* file, int line, char const* expression,
                  boost::string_ref message) noexcept {
  (void)std::fprintf(stderr, "%s:%d: assertion failed: \"%s\": %.*s\n", file, line, expression,
                     static_cast<int>(message.size()), message.data());
  std::abort();
}

}  // namespace Zorv
