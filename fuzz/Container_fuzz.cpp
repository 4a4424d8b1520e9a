// Loads any bytes as a workbook file.
#include <string_view>

#include "fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Zorv::Fuzzing::loadAndResolve({reinterpret_cast<char const*>(data), size});
  return 0;
}
